#pragma once

#include <functional>
#include <QObject>

namespace stage {

/// Notices whether a command had an effect that the user can see. The main window tells what changes in it;
/// boxes and dialogs are seen by themselves.
class EffectWatch : public QObject {
    Q_OBJECT
public:
    /// Something changed in Stage's windows.
    void Note() { ++effects; }
    /// The views are to be drawn anew, as for each frame of a film.
    void NoteRedraw();
    /// A film has ended, which shows only if it has shown something before.
    void NoteFilmStopped();
    /// Runs the command, which may run an event loop of its own. True if anything came of it.
    bool HasEffect(const std::function<void()>& command);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int effects = 0;
    bool drawnSinceStop = false;
};

} // namespace stage
