#include "host/stage/windows/films/ScenarioKeys.h"

#include "framework/Dialog.h"
#include "framework/QtBridge.h"
#include "host/engine/Film.h"
#include "host/engine/FilmManager.h"
#include "host/engine/Level.h"
#include "host/stage/windows/films/CameraCuts.h"
#include "host/stage/windows/films/FilmsIds.h"

#include <algorithm>
#include <cmath>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QCursor>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSettings>
#include <QTimer>
#include <QWheelEvent>
#include <utility>

namespace stage {

namespace {

constexpr const char* kSetting = "films/extraKeys";
constexpr double kZoomStep = 0.8; ///< of what is shown, a notch
constexpr double kPanStep = 0.1;  ///< of what is shown, a notch
constexpr double kNotch = 120.0;  ///< of a wheel, in its own unit
constexpr Qt::KeyboardModifiers kModifiers =
    Qt::ControlModifier | Qt::ShiftModifier | Qt::AltModifier | Qt::MetaModifier;

constexpr ScenarioKey kTable[] = {
    {ScenarioAction::RemoveKeys, Qt::Key_Delete, Qt::NoModifier, "Delete",
     "Remove the keys pressed last (with Ctrl several)"},
    {ScenarioAction::CopyKey, Qt::Key_C, Qt::ControlModifier, "Ctrl+C", "Copy the key pressed last"},
    {ScenarioAction::PasteKey, Qt::Key_V, Qt::ControlModifier, "Ctrl+V",
     "Paste the copied key at the mouse, in a row of its kind"},
    {ScenarioAction::FrameBack, Qt::Key_Left, Qt::NoModifier, "Left", "One frame back"},
    {ScenarioAction::FrameForward, Qt::Key_Right, Qt::NoModifier, "Right", "One frame forward"},
    {ScenarioAction::KeyBack, Qt::Key_Left, Qt::ControlModifier, "Ctrl+Left", "To the key before"},
    {ScenarioAction::KeyForward, Qt::Key_Right, Qt::ControlModifier, "Ctrl+Right", "To the next key"},
    {ScenarioAction::CutBack, Qt::Key_Comma, Qt::NoModifier, "Comma", "To the camera cut before"},
    {ScenarioAction::CutForward, Qt::Key_Period, Qt::NoModifier, "Period", "To the next camera cut"},
    {ScenarioAction::ShowAll, Qt::Key_F, Qt::NoModifier, "F", "Show the whole film"},
    {ScenarioAction::Loop, Qt::Key_L, Qt::NoModifier, "L", "Play round and round, or once"},
};

const ScenarioKey* FindKey(const QKeyEvent& event) {
    const Qt::KeyboardModifiers pressed = event.modifiers() & kModifiers;
    const auto* found = std::ranges::find_if(kTable, [&](const ScenarioKey& entry) {
        return entry.key == event.key() && entry.modifiers == pressed;
    });
    return found != std::end(kTable) ? found : nullptr;
}

bool IsTextField(const QWidget* widget) {
    return qobject_cast<const QLineEdit*>(widget) != nullptr ||
           qobject_cast<const QAbstractSpinBox*>(widget) != nullptr ||
           qobject_cast<const QComboBox*>(widget) != nullptr;
}

CPoint PlaceIn(const CWnd& window, const QPoint& screen) {
    CPoint place(screen.x(), screen.y());
    window.ScreenToClient(&place);
    return place;
}

} // namespace

std::span<const ScenarioKey> ScenarioKeyTable() {
    return kTable;
}

ScenarioKeys::ScenarioKeys(engine::Level& openLevel, const ToolWindows& toolWindows, Reporter reporter,
                           QObject* parent)
    : QObject(parent), level(openLevel), hand(toolWindows), picked(hand), report(std::move(reporter)) {
    qApp->installEventFilter(this);
}

ScenarioKeys::~ScenarioKeys() {
    qApp->removeEventFilter(this);
}

bool ScenarioKeys::IsOn() {
    return QSettings().value(kSetting, true).toBool();
}

void ScenarioKeys::SetOn(bool on) {
    QSettings().setValue(kSetting, on);
}

void ScenarioKeys::SetLooping(bool on) {
    if (std::exchange(isLooping, on) != on) {
        report(on ? "Films play round and round" : "Films play once");
        emit LoopingChanged(on);
    }
}

bool ScenarioKeys::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
        return Takes(watched) && TakeKey(*static_cast<QKeyEvent*>(event), event->type() == QEvent::KeyPress);
    case QEvent::Wheel:
        return Takes(watched) && TakeWheel(*static_cast<QWheelEvent*>(event));
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
        if (Takes(watched)) {
            NoteMouse(watched, *static_cast<QMouseEvent*>(event));
        }
        return false;
    default:
        return false;
    }
}

bool ScenarioKeys::Takes(QObject* watched) const {
    return watched->isWidgetType() && hand.Holds(watched) && IsOn();
}

/// A drag has the keyboard to itself. What a key does may let the window go, so it comes after its event.
bool ScenarioKeys::TakeKey(QKeyEvent& event, bool isPress) {
    const ScenarioKey* key = FindKey(event);
    if (key == nullptr || CWnd::GetCapture() != nullptr || IsTextField(QApplication::focusWidget())) {
        return false;
    }
    event.accept();
    if (isPress) {
        QMetaObject::invokeMethod(
            this, [this, action = key->action] { Run(action); }, Qt::QueuedConnection);
    }
    return true;
}

bool ScenarioKeys::TakeWheel(QWheelEvent& event) {
    const Qt::KeyboardModifiers pressed = event.modifiers() & kModifiers;
    if ((pressed != Qt::ControlModifier && pressed != Qt::ShiftModifier) || CWnd::GetCapture() != nullptr) {
        return false;
    }
    event.accept();
    const double notches = event.angleDelta().y() / kNotch;
    const CWnd* ruler = hand.Ruler();
    if (notches == 0.0 || ShownFilm() == nullptr || ruler == nullptr) {
        return true;
    }
    if (pressed == Qt::ShiftModifier) {
        Axis().Pan(-notches * kPanStep);
        return true;
    }
    CRect area;
    ruler->GetWindowRect(&area);
    const double fraction =
        (event.globalPosition().x() - area.left) / std::max(1, static_cast<int>(area.Width()));
    Axis().Zoom(std::pow(kZoomStep, notches), fraction);
    return true;
}

void ScenarioKeys::NoteMouse(QObject* watched, const QMouseEvent& event) {
    if (event.button() != Qt::LeftButton) {
        return;
    }
    const QPoint screen = event.globalPosition().toPoint();
    CWnd* row = nullptr;
    for (CWnd* shown : hand.Rows()) {
        row = NativeWidget(*shown) == watched ? shown : row;
    }
    const bool isPress = event.type() == QEvent::MouseButtonPress;
    if (row == nullptr) {
        return; // the ruler, a bar or a button
    }
    const CPoint place = PlaceIn(*row, screen);
    if (!isPress) {
        picked.NoteRelease(place);
    } else if (CWnd::GetCapture() == nullptr) {
        picked.NotePress(*row, place, (event.modifiers() & Qt::ControlModifier) != 0);
    }
}

IFilm* ScenarioKeys::ShownFilm() const {
    const engine::LevelData* data = level.Data();
    return data != nullptr && data->filmManager != nullptr ? data->filmManager->currentFilm : nullptr;
}

TimelineAxis ScenarioKeys::Axis() const {
    const IFilm* film = ShownFilm();
    const engine::LevelData* data = level.Data();
    const int rate =
        film != nullptr ? static_cast<engine::FilmManager*>(data->filmManager)->FramesPerSecond() : 0;
    return {hand, film != nullptr ? film->length : 0.0f, rate};
}

void ScenarioKeys::Run(ScenarioAction action) {
    if (hand.Timeline() == nullptr || ShownFilm() == nullptr) {
        report("No film is open.");
        return;
    }
    switch (action) {
    case ScenarioAction::RemoveKeys:
        RemoveKeys();
        break;
    case ScenarioAction::CopyKey:
        report(picked.Copy() ? "The key is copied; point at a row of its kind and press Ctrl+V"
                             : "Press a key in the timeline first");
        break;
    case ScenarioAction::PasteKey:
        PasteKey();
        break;
    case ScenarioAction::FrameBack:
        hand.PressButton(films_id::kFrameBack);
        break;
    case ScenarioAction::FrameForward:
        hand.PressButton(films_id::kFrameForward);
        break;
    case ScenarioAction::KeyBack:
    case ScenarioAction::KeyForward:
        picked.Clear(); // the timeline selects another key and doesn't say which
        hand.PressButton(action == ScenarioAction::KeyBack ? films_id::kKeyBack : films_id::kKeyForward);
        break;
    case ScenarioAction::CutBack:
    case ScenarioAction::CutForward:
        JumpToCut(action == ScenarioAction::CutForward);
        break;
    case ScenarioAction::ShowAll:
        Axis().ShowAll();
        break;
    case ScenarioAction::Loop:
        SetLooping(!isLooping);
        break;
    }
}

void ScenarioKeys::RemoveKeys() {
    const std::size_t wanted = picked.Size();
    const int removed = picked.Remove();
    if (wanted == 0) {
        report("Press a key in the timeline first");
    } else if (removed == 0) {
        report("The key pressed last can't be seen in the timeline any more");
    } else {
        report(removed == 1 ? "1 key removed" : std::to_string(removed) + " keys removed");
    }
}

void ScenarioKeys::PasteKey() {
    const QPoint mouse = QCursor::pos();
    CWnd* row = hand.RowAt(mouse);
    if (row == nullptr) {
        report("Point at a row of the timeline to paste there");
        return;
    }
    const CPoint place = PlaceIn(*row, mouse);
    row->SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(place.x, place.y)); // the time of the new key
    if (!hand.ChooseAt(*row, place, films_id::kPasteKey)) {
        report("Copy a key with Ctrl+C first, then point at a free place in a row of its kind");
    }
}

void ScenarioKeys::JumpToCut(bool forward) {
    auto* film = static_cast<engine::Film*>(ShownFilm());
    const int rate = film->Manager().FramesPerSecond();
    std::vector<int> frames;
    for (const float cut : CameraCuts(*film)) {
        frames.push_back(FrameOfCut(cut, rate));
    }
    const int now = static_cast<int>(std::lround(static_cast<double>(film->PosedTime()) * rate));
    if (forward) {
        const auto next = std::ranges::upper_bound(frames, now);
        if (next != frames.end()) {
            GoToFrame(*next);
            return;
        }
    } else {
        const auto first = std::ranges::lower_bound(frames, now);
        if (first != frames.begin()) {
            GoToFrame(*(first - 1));
            return;
        }
    }
    report(forward ? "No camera cut comes any more" : "No camera cut stands before");
}

/// A film that plays would go on inside the command, so it stops first.
void ScenarioKeys::GoToFrame(int frame) {
    const auto go = [this, frame] {
        hand.AnswerDialog(films_id::kSetMovieFrame, [frame](CDialog& dialog) {
            dialog.SetDlgItemText(films_id::kFrameNumber, std::to_string(frame));
            return true;
        });
    };
    if (static_cast<engine::Film*>(ShownFilm())->IsPlaying()) {
        hand.PressButton(films_id::kStop);
    }
    QTimer::singleShot(0, this, [this, go] {
        if (ShownFilm() != nullptr) {
            go();
        }
    });
}

void ScenarioKeys::FilmStopped() {
    const auto* film = static_cast<engine::Film*>(ShownFilm());
    if (!isLooping || film == nullptr || isRestarting || !film->EndedPlaying() || !IsOn()) {
        return;
    }
    // A film that ends by itself stands on the last frame that was shown, which a slow computer shows early.
    constexpr float kLate = 0.25f; // seconds
    if (film->PosedTime() > film->length - kLate) {
        isRestarting = true;
        QTimer::singleShot(0, this, &ScenarioKeys::PlayAgain);
    }
}

void ScenarioKeys::PlayAgain() {
    isRestarting = false;
    if (isLooping && ShownFilm() != nullptr) {
        hand.PressButton(films_id::kToBegin);
        hand.PressButton(films_id::kPlay);
    }
}

} // namespace stage
