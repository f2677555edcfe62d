#include "framework/PickMode.h"

#include "framework/private/Capture.h"
#include "framework/private/PickEscape.h"
#include "framework/private/PumpQueue.h"

#include <QApplication>
#include <QKeyEvent>

#include <algorithm>
#include <utility>
#include <vector>

namespace {

IPickModeHost* pickHost = nullptr;

/// In the order in which they began.
std::vector<PickMode*>& Waiting() {
    static std::vector<PickMode*> waiting;
    return waiting;
}

void TellHost() {
    if (pickHost != nullptr) {
        pickHost->ShowPickMode(PickMode::Present());
    }
}

} // namespace

PickMode::~PickMode() {
    End();
}

void PickMode::Begin(std::string newText, By newBy, std::function<void()> giveUp) {
    text = std::move(newText);
    by = newBy;
    onGiveUp = std::move(giveUp);
    PumpQueue::Get(); // sees the Escape
    std::erase(Waiting(), this);
    Waiting().push_back(this);
    TellHost();
}

void PickMode::End() {
    if (std::erase(Waiting(), this) != 0) {
        onGiveUp = nullptr;
        TellHost();
    }
}

bool PickMode::IsOn() const {
    return std::ranges::find(Waiting(), this) != Waiting().end();
}

const PickMode* PickMode::Present() {
    return Waiting().empty() ? nullptr : Waiting().back();
}

bool PickMode::GiveUp() {
    if (Waiting().empty()) {
        return false;
    }
    PickMode* present = Waiting().back();
    const std::function<void()> giveUp = std::move(present->onGiveUp);
    present->End();
    if (giveUp) {
        giveUp();
    }
    return true;
}

void SetPickModeHost(IPickModeHost* host) {
    pickHost = host;
    TellHost();
}

/// A list, a box or a drag that is open ends first.
bool pick_mode::TakesEscape(const QEvent& event) {
    if (event.type() != QEvent::KeyPress || static_cast<const QKeyEvent&>(event).key() != Qt::Key_Escape ||
        PickMode::Present() == nullptr) {
        return false;
    }
    if (QApplication::activePopupWidget() != nullptr || QApplication::activeModalWidget() != nullptr ||
        capture::Get() != nullptr || (pickHost != nullptr && pickHost->NeedsEscape())) {
        return false;
    }
    return PickMode::GiveUp();
}
