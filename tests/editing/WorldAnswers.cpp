// What the user answers to boxes, menus and dialogs, and what goes on behind them.
#include "framework/ColorDialog.h"
#include "framework/Constants.h"
#include "tests/editing/World.h"

#include <algorithm>
#include <limits>
#include <QCoreApplication>
#include <span>

namespace editing {

namespace {

constexpr int kQuietReadings = 60; ///< of the clock; then it runs fast, so that every film ends soon
constexpr std::uint32_t kFastClock = 20000;
constexpr int kMostReadings = 400; ///< in one step

/// Also inside sub-menus.
bool Offers(const CMenu& menu, UINT command) {
    constexpr UINT kNoItem = 0xFFFFFFFF;
    const UINT state = menu.GetMenuState(command, MF_BYCOMMAND);
    return state != kNoItem && (state & (MF_GRAYED | MF_DISABLED)) == 0;
}

} // namespace

void World::InstallHooks() {
    QCoreApplication::instance()->installEventFilter(&noTimers);
    Hooks().messageBox = [this](const std::string&, UINT) { return AnswerBox(); };
    Hooks().modalDialog = [this](CDialog& dialog) { return AnswerDialog(dialog); };
    Hooks().popupMenu = [this](const CMenu& menu, CPoint) { return AnswerMenu(menu); };
    Hooks().fileDialog = [this](CFileDialog& dialog) { return AnswerFile(dialog); };
    Hooks().colorDialog = [this](CColorDialog& dialog) { return AnswerColor(dialog); };
    Hooks().cursorPos = [this] { return mouse; };
    Hooks().clock = [this] { return Clock(); };
    Hooks().keyState = [this](int key) -> std::optional<bool> {
        const int bit = key == VK_SHIFT                     ? Held::kShift
                        : key == VK_CONTROL                 ? Held::kCtrl
                        : key == VK_LMENU || key == VK_MENU ? Held::kAlt
                                                            : 0;
        return (heldKeys & bit) != 0;
    };
    editor.onInputNumber = [this](float& value, const std::string&, const std::string&) {
        return AnswerNumber(value);
    };
    editor.losesFiles = [this] { return depth > 0 && !opening && luck.OneIn(10); };
    editor.browse = [this](const std::string& present) { return AnswerName(present); };
    editor.browseName = [this](const std::string& present) {
        const std::string name = AnswerName(present);
        return luck.OneIn(5) ? std::nullopt : std::optional(name);
    };
    editor.onBroadcast = [this](int code, void*) {
        if (code == EventCode::ObjectsMoved && plugin.isPlaying != 0) {
            ++framesPlayed;
            DuringPlay();
            if (clockReadings > kMostReadings) { // a film of years
                plugin.StopPlaying();
            }
        }
    };
}

void World::Interrupt() {
    if (opening || depth == 0 || depth >= kDeepest || !luck.OneIn(6)) {
        return;
    }
    for (int count = 1 + luck.Below(2); count > 0; --count) {
        const Step step = RandomStep(luck);
        Execute(step);
    }
}

int World::AnswerBox() {
    if (CWnd* holder = CWnd::GetCapture()) {
        holder->SendMessage(WM_CANCELMODE); // as a box does that opens
    }
    ++boxes;
    Interrupt();
    --boxes;
    static constexpr int answers[] = {IDYES, IDNO, IDOK, IDCANCEL};
    return answers[luck.Below(4)];
}

int World::AnswerColor(CColorDialog& dialog) {
    Disturb();
    dialog.SetCurrentColor(luck.Next());
    return luck.OneIn(3) ? IDCANCEL : IDOK;
}

bool World::AnswerNumber(float& value) {
    const auto tenths = static_cast<float>(luck.Below(10)) / 10.0f;
    const float answers[] = {value,
                             value + tenths,
                             value - tenths,
                             value * tenths,
                             value + 2.0f * tenths,
                             value + 0.05f,
                             value - 0.05f,
                             static_cast<float>(luck.Below(1200)) / 100.0f - 1.0f,
                             0.0f,
                             0.0005f,
                             0.001f,
                             1e9f,
                             -5.0f,
                             std::numeric_limits<float>::quiet_NaN(),
                             std::numeric_limits<float>::infinity(),
                             static_cast<float>(luck.Below(300)) / 30.0f};
    value = answers[luck.Below(static_cast<int>(std::size(answers)))];
    const bool taken = !luck.OneIn(5);
    Interrupt();
    return taken;
}

UINT World::AnswerMenu(const CMenu& menu) {
    const bool offered = Offers(menu, menuChoice);
    const UINT choice = menuChoice;
    Interrupt();
    if (offered) {
        chosenCommand = choice;
        ++tried[choice];
    }
    return offered ? choice : 0;
}

std::uint32_t World::Clock() {
    ++clockReadings;
    clock += clockReadings > kQuietReadings ? kFastClock : clockStep;
    return clock;
}

void World::DuringPlay() {
    if (depth >= kDeepest || insidePlay.empty() || !luck.OneIn(3)) {
        return;
    }
    const Step step = insidePlay.front();
    insidePlay.pop_front();
    ++stepsInPlay;
    Execute(step);
}

} // namespace editing
