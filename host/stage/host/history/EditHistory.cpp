#include "host/stage/host/history/EditHistory.h"

#include <algorithm>
#include <functional>

namespace stage {

std::size_t HistoryStep::Size() const {
    std::size_t size = sizeof *this + name.capacity() + parts.capacity() * sizeof(PartDelta) +
                       (selectedBefore.capacity() + selectedAfter.capacity()) * sizeof(int);
    for (const PartDelta& part : parts) {
        size += part.bytes.Size();
    }
    return size;
}

void EditHistory::Clear() {
    steps.clear();
    done = dropped = forgotten = 0;
}

void EditHistory::SetLimit(std::size_t bytes) {
    limit = bytes;
    Trim();
}

/// What is undone goes last, and then from its end.
void EditHistory::Trim() {
    std::size_t size = Size();
    std::size_t front = 0;
    while (size > limit && front < done && steps.size() - front > 1) {
        size -= steps[front++].Size();
    }
    const auto behind = steps.begin() + static_cast<std::ptrdiff_t>(front);
    forgotten += static_cast<std::size_t>(
        std::count_if(steps.begin(), behind, [](const HistoryStep& step) { return !step.isLook; }));
    steps.erase(steps.begin(), behind);
    done -= front;
    dropped += front;
    while (size > limit && steps.size() > std::max<std::size_t>(done, 1)) {
        size -= steps.back().Size();
        steps.pop_back();
    }
}

std::uint64_t EditHistory::NumberOf(const std::optional<std::string_view>& bytes) {
    return bytes ? std::hash<std::string_view>{}(*bytes) | 1u : 0;
}

std::vector<PartDelta> EditHistory::DeltasOf(const PartChanges& changes) {
    std::vector<PartDelta> parts;
    parts.reserve(changes.size());
    for (const PartChange& change : changes) {
        parts.push_back({change.key, change.before.has_value(), change.after.has_value(),
                         ByteDelta::Between(change.before.value_or(""), change.after.value_or("")),
                         NumberOf(change.before), NumberOf(change.after)});
    }
    return parts;
}

void EditHistory::Join(HistoryStep& step, const PartChanges& changes) const {
    for (const PartChange& change : changes) {
        const auto known = std::ranges::find(step.parts, change.key, &PartDelta::key);
        if (known == step.parts.end()) {
            const auto added = DeltasOf({change});
            step.parts.push_back(added.front());
            continue;
        }
        const std::string before = known->bytes.Before(change.before.value_or(""));
        if (known->after != NumberOf(change.before)) {
            continue; // looks change between steps too
        }
        known->after = NumberOf(change.after);
        known->isThere = change.after.has_value();
        known->bytes = ByteDelta::Between(before, change.after.value_or(""));
    }
}

void EditHistory::Add(HistoryStep step, const PartChanges& changes) {
    steps.resize(done);
    const bool joins = step.series != 0 && !steps.empty() && steps.back().series == step.series;
    if (joins) {
        Join(steps.back(), changes);
        steps.back().hashAfter = step.hashAfter;
        steps.back().selectedAfter = std::move(step.selectedAfter);
        Trim();
        return;
    }
    step.parts = DeltasOf(changes);
    steps.push_back(std::move(step));
    done = steps.size();
    Trim();
}

void EditHistory::AddLook(HistoryStep step) {
    steps.resize(done);
    steps.push_back(std::move(step));
    done = steps.size();
    Trim();
}

void EditHistory::Amend(const PartChanges& changes, std::uint64_t hash) {
    if (done == 0) {
        return;
    }
    steps.resize(done);
    Join(steps.back(), changes);
    steps.back().hashAfter = hash;
    Trim();
}

std::size_t EditHistory::BeforeUndo() const {
    for (std::size_t i = done; i > 0; --i) {
        if (!steps[i - 1].isLook) {
            return i - 1;
        }
    }
    return done;
}

std::size_t EditHistory::AfterRedo() const {
    for (std::size_t i = done; i < steps.size(); ++i) {
        if (!steps[i].isLook) {
            return i + 1;
        }
    }
    return done;
}

std::vector<int> EditHistory::SelectedAt(std::size_t count) const {
    const bool isBack = count < done;
    const auto first = steps.begin() + static_cast<std::ptrdiff_t>(std::min(count, done));
    const auto last = steps.begin() + static_cast<std::ptrdiff_t>(std::max(count, done));
    const auto isUsers = [](const HistoryStep& step) { return !step.isLook; };
    if (isBack) {
        const auto step = std::find_if(first, last, isUsers);
        return step != last ? step->selectedBefore : std::vector<int>();
    }
    const auto step =
        std::find_if(std::make_reverse_iterator(last), std::make_reverse_iterator(first), isUsers);
    return step.base() != first ? step->selectedAfter : std::vector<int>();
}

std::size_t EditHistory::Size() const {
    std::size_t size = 0;
    for (const HistoryStep& step : steps) {
        size += step.Size();
    }
    return size;
}

} // namespace stage
