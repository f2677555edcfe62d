#pragma once

#include "host/stage/windows/films/PickedKeys.h"
#include "host/stage/windows/films/TimelineAxis.h"
#include "host/stage/windows/films/TimelineHand.h"

#include <functional>
#include <QObject>
#include <span>
#include <string>

class IFilm;
class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

namespace engine {
class Level;
}

namespace stage {

/// A key of the window "Scenario" that Stage adds to those of the plug-in.
enum class ScenarioAction {
    RemoveKeys,
    CopyKey,
    PasteKey,
    FrameBack,
    FrameForward,
    KeyBack,
    KeyForward,
    CutBack,
    CutForward,
    ShowAll,
    Loop
};

struct ScenarioKey {
    ScenarioAction action;
    int key; ///< Qt::Key
    Qt::KeyboardModifiers modifiers;
    const char* keys; ///< as they are told to the user
    const char* meaning;
};

/// All of them, for lists of shortcuts.
std::span<const ScenarioKey> ScenarioKeyTable();

/// Keys and wheel that designers expect in a timeline, in the window "Scenario": only those to which the
/// plug-in gives no meaning, and only by what a user could do there with the mouse. Off by one setting of the
/// user.
class ScenarioKeys : public QObject {
    Q_OBJECT
public:
    using Reporter = std::function<void(const std::string&)>;
    /// Level and windows must outlive this object. The reporter shows a line to the user.
    ScenarioKeys(engine::Level& openLevel, const ToolWindows& toolWindows, Reporter reporter,
                 QObject* parent);
    ~ScenarioKeys() override;

    static bool IsOn();
    static void SetOn(bool on);
    bool IsLooping() const { return isLooping; }
    void SetLooping(bool on);
    void Run(ScenarioAction action);
    /// To be told when a film has stopped: one that came to its end begins anew while looping is on.
    void FilmStopped();

signals:
    void LoopingChanged(bool on);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool Takes(QObject* watched) const;
    bool TakeKey(QKeyEvent& event, bool isPress);
    bool TakeWheel(QWheelEvent& event);
    void NoteMouse(QObject* watched, const QMouseEvent& event);
    IFilm* ShownFilm() const;
    TimelineAxis Axis() const;
    void RemoveKeys();
    void PasteKey();
    void JumpToCut(bool forward);
    void GoToFrame(int frame);
    void PlayAgain();

    engine::Level& level;
    TimelineHand hand;
    PickedKeys picked;
    Reporter report;
    bool isLooping = false;
    bool isRestarting = false;
};

} // namespace stage
