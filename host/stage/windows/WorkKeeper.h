#pragma once

#include "host/stage/host/WorkFolder.h"

#include <cstdint>
#include <optional>
#include <QObject>
#include <QTimer>

namespace stage {

class EditorHost;
class LevelSession;
class QuietMoments;

/// Keeps unsaved work outside the level's file every few minutes, in a quiet moment, so that a crash loses no
/// more than that. It never touches the level, nor whether it counts as changed.
class WorkKeeper : public QObject {
    Q_OBJECT
public:
    static constexpr const char* kMinutesKey = "autosave/minutes"; ///< in the settings; 0 is never
    static constexpr int kDefaultMinutes = 2;
    static constexpr int kMostMinutes = 60;

    WorkKeeper(EditorHost& editorHost, LevelSession& levelSession, QuietMoments& quietMoments,
               QObject* parent);

    static int Minutes();
    void SetMinutes(int minutes);

    /// The time is up: the next quiet moment keeps what is not saved.
    void MakeDue();
    /// Keeps what is not saved, now. True if everything is safe: kept, or nothing to keep.
    bool Keep();
    /// Keeps what the user does not want to save, so that he may change his mind. False, with the reason, if
    /// that fails.
    bool KeepDiscarded(std::string& error);
    /// The level is another one, or is saved: what was kept of it is of no use.
    void Drop();

    WorkFolder folder;

signals:
    void Failed(const QString& reason);

private:
    void OnQuiet();
    void StartTimer();

    EditorHost& host;
    LevelSession& session;
    QuietMoments& quiet;
    QTimer timer;
    bool due = false;
    std::optional<std::uint64_t> keptContent; ///< of what is in the folder
};

} // namespace stage
