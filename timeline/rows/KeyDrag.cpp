#include "timeline/rows/KeyDrag.h"

#include "keys/views/TimedTrackKey.h"

#include <cmath>
#include <utility>

void KeyPlace::GiveTo(CTrackKey& key) const {
    if (auto* timed = dynamic_cast<CTimedTrackKey*>(&key)) {
        timed->SetDuration(duration, /*viewOnly*/ false);
    }
    key.SetPosition(time, /*viewOnly*/ false);
}

void KeyDrag::Begin() {
    dragKey->state = CTrackKey::kHighlighted;
    dragDuration = dragKey->GetDuration();
    dragTime = dragKey->time;
}

void KeyDrag::Update(UINT flags, float mouseTime, KeyRow& row) const {
    dragKey->OnMouseMove(flags, mouseTime, &row);
}

CTrackKey* KeyDrag::LetGo() {
    return std::exchange(dragKey, nullptr);
}

bool KeyDrag::HasMoved(const CTrackKey& key) const {
    constexpr double kSameSeconds = 0.000001;
    const auto differ = [](double a, double b) { return std::fabs(a - b) > kSameSeconds; };
    return differ(key.time, dragTime) || differ(key.GetDuration(), dragDuration);
}

/// A drag keeps every duration above nothing; this stands for a key whose record had none.
bool KeyDrag::IsShut(const CTrackKey& key) const {
    const float duration = key.GetDuration();
    return duration != dragDuration && !(duration > 0.0f);
}
