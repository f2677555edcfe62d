#include "tests/editing/Runner.h"

#include "tests/editing/Invariants.h"
#include "tests/editing/Operations.h"
#include "tests/editing/Shrinker.h"
#include "tests/editing/World.h"

#include <chrono>
#include <cstdio>
#include <fstream>
#include <functional>
#include <map>
#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QStringList>
#include <utility>

namespace editing {

namespace {

constexpr int kStepsPerRun = 1500;
constexpr int kStepsPerLine = 15000; ///< of progress in a long run
constexpr int kChildFailed = 3;
constexpr int kNoLimit = -1;

/// A file of two lines: the step begun last, and what was wrong.
class Report {
public:
    explicit Report(const std::string& path) : file(path.empty() ? nullptr : std::fopen(path.c_str(), "w")) {}
    ~Report() {
        if (file != nullptr) {
            std::fclose(file);
        }
    }
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;

    void Begin(int step) {
        if (file != nullptr) {
            std::rewind(file);
            std::fprintf(file, "%10d\n", step);
            std::fflush(file);
        }
    }
    void Failed(const Outcome& outcome) {
        if (file != nullptr) {
            std::fprintf(file, "%s\n%s\n", outcome.kind.c_str(), outcome.text.c_str());
        }
    }

private:
    std::FILE* file;
};

Outcome ReadReport(const std::string& path) {
    std::ifstream file(path);
    Outcome outcome;
    std::string line;
    if (std::getline(file, line)) {
        outcome.step = std::atoi(line.c_str());
    }
    std::getline(file, outcome.kind);
    std::getline(file, outcome.text);
    return outcome;
}

bool IsNamed(const Step& step, const char* name) {
    return step.operation == FindOperation(name);
}

/// The planted fault: "stop" and, at some time later, "undo".
Outcome RunPlanted(const std::vector<Step>& steps, Report& report) {
    bool stopped = false;
    Outcome outcome;
    for (const Step& step : steps) {
        report.Begin(++outcome.step);
        stopped = stopped || IsNamed(step, "stop");
        if (stopped && IsNamed(step, "undo")) {
            outcome.kind = "planted";
            break;
        }
    }
    return outcome;
}

Outcome RunReal(const std::vector<Step>& steps, Report& report) {
    World world;
    Outcome outcome;
    Ledger before(world);
    for (const Step& step : steps) {
        report.Begin(++outcome.step);
        world.BeginTally();
        world.Execute(step);
        Ledger now(world);
        if (const std::optional<Failure> failure = CheckInvariants(world, before, now)) {
            outcome.kind = failure->kind;
            outcome.text = failure->text;
            break;
        }
        before = std::move(now);
    }
    return outcome;
}

/// The line in which a sanitizer sums up what it found, which names the place; empty without one.
std::string SanitizerSummary(const QByteArray& output) {
    const auto begin = output.indexOf("SUMMARY: ");
    const std::string line =
        begin >= 0 ? output.mid(begin, output.indexOf('\n', begin) - begin).toStdString() : std::string();
    return line.find("leaked in") != std::string::npos ? "leak" : line;
}

std::string CrashText(const QByteArray& output) {
    constexpr int kShown = 4000;
    const auto error = output.indexOf("ERROR: ");
    const auto undefined = output.indexOf("runtime error: ");
    const auto begin = error >= 0 ? error : undefined;
    return begin >= 0 ? output.mid(begin, kShown).toStdString() : "no word";
}

std::string SavedScript(std::uint64_t seed, const std::vector<Step>& script) {
    std::string path = QDir::current().filePath(QStringLiteral("editing_%1.script").arg(seed)).toStdString();
    WriteScript(path, script);
    return path;
}

void PrintFailure(const Outcome& outcome, const std::vector<Step>& script, std::uint64_t seed) {
    std::printf("FAILED: %s: %s\n%zu steps remain:\n", outcome.kind.c_str(), outcome.text.c_str(),
                script.size());
    for (const Step& step : script) {
        std::printf("  %s\n", ToText(step).c_str());
    }
    std::printf("Replay: %s --script %s\n", QCoreApplication::applicationFilePath().toStdString().c_str(),
                SavedScript(seed, script).c_str());
    std::fflush(stdout);
}

} // namespace

Outcome Children::Run(const std::vector<Step>& steps) const {
    const TempFolder folder;
    const std::string script = folder.File("steps.script");
    const std::string report = folder.File("report.txt");
    WriteScript(script, steps);
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    QStringList arguments{"--child", QString::fromStdString(report), "--script",
                          QString::fromStdString(script)};
    if (isPlanted) {
        arguments << "--planted";
    }
    process.start(QCoreApplication::applicationFilePath(), arguments);
    process.waitForFinished(kNoLimit);
    const QByteArray output = process.readAll();
    Outcome outcome = ReadReport(report);
    if (process.exitStatus() == QProcess::CrashExit || (process.exitCode() != 0 && outcome.kind.empty())) {
        outcome.text = CrashText(output);
        const std::string summary = SanitizerSummary(output);
        outcome.kind = summary.empty() ? "crash" : summary;
    }
    return outcome;
}

std::vector<Step> Children::ShrinkFailing(const std::vector<Step>& steps, const Outcome& outcome) const {
    std::vector<Step> needed = steps;
    needed.resize(std::min(needed.size(), static_cast<std::size_t>(outcome.step + 1)));
    const StillFails sameKind = [&](const std::vector<Step>& part) { return Run(part).kind == outcome.kind; };
    return Simplify(Shrink(sameKind(needed) ? needed : steps, sameKind), sameKind);
}

bool RunManySteps(std::uint64_t seed, int steps) {
    std::printf("seed %llu\n", static_cast<unsigned long long>(seed));
    std::fflush(stdout);
    const Children children;
    const auto begin = std::chrono::steady_clock::now();
    for (int done = 0; done < steps; done += kStepsPerRun, ++seed) {
        if (done > 0 && done % kStepsPerLine == 0) {
            std::printf("%d steps held so far\n", done);
            std::fflush(stdout);
        }
        const std::vector<Step> run = RandomSteps(seed, std::min(kStepsPerRun, steps - done));
        const Outcome outcome = children.Run(run);
        if (outcome.Failed()) {
            std::printf("run of seed %llu failed at step %d (%s: %s); looking for a short script\n",
                        static_cast<unsigned long long>(seed), outcome.step, outcome.kind.c_str(),
                        outcome.text.c_str());
            std::fflush(stdout);
            PrintFailure(outcome, children.ShrinkFailing(run, outcome), seed);
            return false;
        }
    }
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
    std::printf("%d steps held, %.0f a second\n", steps, steps / seconds.count());
    return true;
}

int RunFromCommandLine(int argc, char** argv) {
    std::map<std::string, std::string> options;
    for (int i = 1; i < argc; ++i) {
        const std::string name = argv[i];
        if (name == "--planted") {
            options[name] = "yes";
        } else if ((name == "--seed" || name == "--steps" || name == "--script" || name == "--child") &&
                   i + 1 < argc) {
            options[name] = argv[++i];
        }
    }
    if (options.contains("--script")) {
        const std::vector<Step> steps = ReadScript(options["--script"]);
        Report report(options["--child"]);
        Outcome outcome = options.contains("--planted") ? RunPlanted(steps, report) : RunReal(steps, report);
        if (outcome.Failed()) {
            report.Failed(outcome);
            std::printf("step %d, %s: %s\n", outcome.step, outcome.kind.c_str(), outcome.text.c_str());
        }
        return outcome.Failed() ? kChildFailed : 0;
    }
    if (options.contains("--seed") || options.contains("--steps")) {
        const std::uint64_t seed =
            options.contains("--seed")
                ? std::stoull(options["--seed"])
                : static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count());
        return RunManySteps(seed, options.contains("--steps") ? std::stoi(options["--steps"]) : kStepsPerRun)
                   ? 0
                   : 1;
    }
    return -1;
}

} // namespace editing
