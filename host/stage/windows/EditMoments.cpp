#include "host/stage/windows/EditMoments.h"

#include "host/stage/host/history/LevelHistory.h"
#include "host/stage/windows/QuietMoments.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

namespace stage {

namespace {

/// Turns of the wheel and keys that follow each other faster than this are one step.
constexpr int kSeriesMs = 1000;
/// Between looks whether what is under way has ended.
constexpr int kWaitMs = 50;

/// Digits of a number make one step.
bool IsTypedIn(const QWidget* widget) {
    return qobject_cast<const QLineEdit*>(widget) != nullptr ||
           qobject_cast<const QAbstractSpinBox*>(widget) != nullptr;
}

} // namespace

EditMoments::EditMoments(LevelHistory& levelHistory, const QuietMoments& quietMoments, QObject* parent)
    : QObject(parent), history(levelHistory), quiet(quietMoments) {
    due.setSingleShot(true);
    connect(&due, &QTimer::timeout, this, &EditMoments::OnDue);
    QCoreApplication::instance()->installEventFilter(this);
}

bool EditMoments::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::Drop:
        BeginInput(/*belongsToSeries*/ false);
        break;
    case QEvent::Wheel:
        BeginInput(/*belongsToSeries*/ true);
        break;
    case QEvent::KeyPress: {
        const bool repeats = static_cast<QKeyEvent*>(event)->isAutoRepeat();
        BeginInput(repeats || IsTypedIn(QApplication::focusWidget()));
        break;
    }
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
        due.start(0);
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void EditMoments::BeginInput(bool belongsToSeries) {
    if (!belongsToSeries || !isSeries || !sinceInput.isValid() || sinceInput.elapsed() > kSeriesMs) {
        history.EndSeries();
    }
    isSeries = belongsToSeries;
    sinceInput.start();
    due.start(0);
}

void EditMoments::OnDue() {
    if (quiet.IsQuiet()) {
        Flush();
    } else {
        due.start(kWaitMs);
    }
}

void EditMoments::Flush() {
    due.stop();
    history.Note(isSeries ? LevelHistory::Pace::Series : LevelHistory::Pace::Single);
}

} // namespace stage
