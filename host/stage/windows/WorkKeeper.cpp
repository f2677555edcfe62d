#include "host/stage/windows/WorkKeeper.h"

#include "host/engine/LevelContent.h"
#include "host/stage/host/EditorHost.h"
#include "host/stage/host/LevelSession.h"
#include "host/stage/windows/QuietMoments.h"

#include <algorithm>
#include <QSettings>

namespace stage {

namespace {
constexpr int kMsPerMinute = 60'000;
}

WorkKeeper::WorkKeeper(EditorHost& editorHost, LevelSession& levelSession, QuietMoments& quietMoments,
                       QObject* parent)
    : QObject(parent), folder(editorHost.folders.state), host(editorHost), session(levelSession),
      quiet(quietMoments) {
    timer.setSingleShot(true);
    connect(&timer, &QTimer::timeout, this, &WorkKeeper::MakeDue);
    connect(&quiet, &QuietMoments::Quiet, this, &WorkKeeper::OnQuiet);
    StartTimer();
}

int WorkKeeper::Minutes() {
    bool isNumber = false;
    const int minutes = QSettings().value(kMinutesKey, kDefaultMinutes).toInt(&isNumber);
    return isNumber ? std::clamp(minutes, 0, kMostMinutes) : kDefaultMinutes;
}

void WorkKeeper::SetMinutes(int minutes) {
    QSettings().setValue(kMinutesKey, std::clamp(minutes, 0, kMostMinutes));
    due = false;
    StartTimer();
}

void WorkKeeper::StartTimer() {
    timer.stop();
    if (folder.IsUsable() && Minutes() > 0) {
        timer.start(Minutes() * kMsPerMinute);
    }
}

void WorkKeeper::MakeDue() {
    due = true;
    quiet.Request();
}

void WorkKeeper::OnQuiet() {
    if (due) {
        due = false;
        Keep();
        StartTimer();
    }
}

bool WorkKeeper::Keep() {
    if (!folder.IsUsable() || !session.IsChanged()) {
        Drop();
        return true;
    }
    std::string error;
    try {
        KeptWork work = session.TakeWork();
        const std::uint64_t content = engine::LevelContent(work.bytes);
        if (folder.HasKept() && keptContent == content) {
            return true;
        }
        if (folder.Keep(std::move(work), error)) {
            keptContent = content;
            return true;
        }
    } catch (const std::exception& failure) {
        error = failure.what();
    }
    emit Failed(QString::fromStdString(error));
    return false;
}

bool WorkKeeper::KeepDiscarded(std::string& error) {
    try {
        return folder.KeepDiscarded(session.TakeWork(), error);
    } catch (const std::exception& failure) {
        error = failure.what();
        return false;
    }
}

void WorkKeeper::Drop() {
    folder.Drop();
    keptContent.reset();
}

} // namespace stage
