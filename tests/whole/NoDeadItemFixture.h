#pragma once

#include "tests/whole/StageFixture.h"

#include <functional>
#include <QStringList>
#include <QTimer>
#include <set>
#include <string>
#include <vector>

class QAction;
class QMenu;

/// Stage with a small level: a crate, a barrel, a lamp, the virtual object "Chest" and a film with the crate
/// as actor and a light of its own. Each enabled item of a menu or bar is chosen at the level as it was
/// first, in a state of the selection, and what the user then sees is compared with what he saw before. Boxes
/// and dialogs are counted and given up.
class NoDeadItemInStageTest : public StageTest {
protected:
    using Prepare = std::function<void()>;

    void SetUp() override;

    /// The level as it was first, nothing selected, no film open.
    void Begin();
    void Select(const std::vector<std::string>& names);
    void OpenFilm();
    /// What the user can see or is told. The place of a film's cursor is told by the pose of its actor.
    std::string Look();

    /// Items that can be chosen: "menu/entry" of the menu bar, "bar/button".
    std::vector<std::string> Items();
    /// What the selection may make a difference to.
    static bool DependsOnSelection(const std::string& item) {
        return item.starts_with("Edit/") || item.starts_with("Plug-ins/") || item == "View/Focus";
    }
    static bool Any(const std::string&) { return true; }
    /// Items without an effect in a state, of those that are wanted.
    std::set<std::string> Dead(const Prepare& prepare, bool (*isWanted)(const std::string&));
    /// Likewise while the film plays.
    std::set<std::string> DeadWhilePlaying();
    /// Likewise of the menu that a right click opens.
    std::set<std::string> DeadInMenu(const Prepare& prepare, const std::function<void()>& rightClick);
    void Choose(const std::string& item);

    std::string torch; ///< name of the film's light
    int walked = 0;

private:
    QAction* Find(const std::string& item, QWidget** button = nullptr);
    void GiveUpDialogs();
    std::string LookBefore();

    std::string path;
    QTimer dialogs;
    std::uint32_t clockStep = 1000; ///< milliseconds at each reading: a film that plays ends
    int asked = 0;                  ///< boxes and dialogs
    int messages = 0;               ///< lines in the status bar
};
