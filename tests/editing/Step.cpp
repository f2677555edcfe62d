#include "tests/editing/Step.h"

#include "tests/editing/Operations.h"

#include <fstream>
#include <numeric>
#include <sstream>
#include <stdexcept>

namespace editing {

namespace {

constexpr int kLargestNumber = 100000;

Step StepOf(const char* name, Luck& luck) {
    Step step;
    step.operation = FindOperation(name);
    for (int& number : step.numbers) {
        number = luck.Below(kLargestNumber);
    }
    step.luck = luck.Next();
    return step;
}

bool IsPress(const Step& step) {
    return std::string(Operations()[static_cast<std::size_t>(step.operation)].name).starts_with("press-");
}

void AppendGesture(Luck& luck, std::vector<Step>& steps) {
    for (int moves = luck.Below(6); moves >= 0; --moves) {
        steps.push_back(luck.OneIn(12) ? RandomStep(luck) : StepOf("drag", luck));
    }
    const int end = luck.Below(12);
    if (end < 10) {
        steps.push_back(StepOf("release", luck));
    } else if (end == 10) {
        steps.push_back(StepOf("lose-capture", luck));
    }
}

/// What a hand does with the editor of a row.
void AppendEdit(Luck& luck, std::vector<Step>& steps) {
    static const char* const edits[] = {"attributes-type",   "attributes-type",  "attributes-choice",
                                        "attributes-choice", "attributes-wheel", "attributes-key",
                                        "attributes-browse", "attributes-link"};
    for (int count = 1 + luck.Below(3); count > 0; --count) {
        steps.push_back(StepOf(edits[luck.Below(8)], luck));
    }
}

} // namespace

std::string ToText(const Step& step) {
    std::ostringstream text;
    text << Operations()[static_cast<std::size_t>(step.operation)].name;
    for (const int number : step.numbers) {
        text << ' ' << number;
    }
    text << ' ' << step.luck;
    return text.str();
}

std::optional<Step> StepFromText(const std::string& line) {
    std::istringstream text(line);
    std::string name;
    Step step;
    text >> name;
    for (int& number : step.numbers) {
        text >> number;
    }
    text >> step.luck;
    step.operation = FindOperation(name);
    return text && step.operation >= 0 ? std::optional(step) : std::nullopt;
}

Step RandomStep(Luck& luck) {
    static const int total =
        std::accumulate(Operations().begin(), Operations().end(), 0,
                        [](int sum, const Operation& operation) { return sum + operation.weight; });
    int drawn = luck.Below(total);
    for (const Operation& operation : Operations()) {
        drawn -= operation.weight;
        if (drawn < 0) {
            return StepOf(operation.name, luck);
        }
    }
    return {};
}

std::vector<Step> RandomSteps(std::uint64_t seed, int count) {
    Luck luck(seed);
    std::vector<Step> steps;
    while (static_cast<int>(steps.size()) < count) {
        steps.push_back(RandomStep(luck));
        if (IsPress(steps.back())) {
            AppendGesture(luck, steps);
        } else if (steps.back().operation == FindOperation("attributes-row")) {
            AppendEdit(luck, steps);
        }
    }
    steps.resize(static_cast<std::size_t>(count));
    return steps;
}

std::vector<Step> ReadScript(const std::string& path) {
    std::ifstream file(path);
    if (!file) {
        throw std::runtime_error("can't read " + path);
    }
    std::vector<Step> steps;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line.front() == '#') {
            continue;
        }
        const std::optional<Step> step = StepFromText(line);
        if (!step) {
            throw std::runtime_error("no step: " + line);
        }
        steps.push_back(*step);
    }
    return steps;
}

void WriteScript(const std::string& path, const std::vector<Step>& steps) {
    std::ofstream file(path);
    for (const Step& step : steps) {
        file << ToText(step) << '\n';
    }
}

} // namespace editing
