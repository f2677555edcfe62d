#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

namespace stage {

class LevelHistory;
class QuietMoments;

/// Has what the user does noted as steps: where a press, a key, a turn of the wheel or a dialog has ended and
/// the event loop is back, never while a button is held, a menu or a dialog is open or a film plays.
class EditMoments : public QObject {
    Q_OBJECT
public:
    EditMoments(LevelHistory& levelHistory, const QuietMoments& quietMoments, QObject* parent);

    /// Notes what is there to note, now.
    void Flush();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void OnDue();
    void BeginInput(bool belongsToSeries);

    LevelHistory& history;
    const QuietMoments& quiet;
    QTimer due;
    QElapsedTimer sinceInput;
    bool isSeries = false;
};

} // namespace stage
