#pragma once

#include "host/engine/ChunkClient.h"
#include "tests/timeline/ScenarioDlgFixture.h"

#include <functional>
#include <set>
#include <string>
#include <vector>

class CMenu;

/// The scenario window at a film with a track of each class, and a key of each kind that they take. Menus and
/// buttons are chosen one after the other, each at the film as it was first, and what the user then sees is
/// compared with what he saw before. Questions are answered with yes, dialogs with Cancel. The clock goes on
/// by a second each time it is read, so that a film plays ten frames.
class NoDeadItemTest : public ScenarioDlgTest {
protected:
    NoDeadItemTest();
    ~NoDeadItemTest() override;

    /// The level as it was first, with its film open at one second, or none. No key or object is selected.
    void Begin(bool withFilm = true);
    /// What the user can see or is told, as far as this window and its host know.
    std::string Look();

    /// Row by its place in the control; null for -1, which stands for the space beside the rows.
    CTrackCtrl* RowAt(int place);
    int RowCount() { return static_cast<int>(Control().tracks.size()); }
    CTrackKey* FirstKeyOf(int place);
    /// Opens the menu of a row, or of its first key, and chooses an item, 0 for none.
    void ChooseIn(int place, bool ofKey, UINT id);

    /// The same, and true if nothing is seen of it.
    bool IsDead(int place, bool ofKey, UINT id);

    using Prepare = std::function<void()>;
    /// Enabled items of a menu in a state that have no effect.
    std::set<UINT> DeadIn(int place, bool ofKey, const Prepare& prepare);
    /// Likewise of the toolbar's buttons.
    std::set<UINT> DeadButtons(const Prepare& prepare);
    /// Likewise of a menu while the film plays.
    std::set<UINT> DeadWhilePlaying(int place, bool ofKey);

    /// The first row of a kind that has keys.
    CTrackCtrl* RowOfKind(int kind);

    engine::PluginChunkClient chunks;
    std::string saved;
    /// Of the menu that was opened last: enabled, and not checked as what is chosen already.
    std::set<UINT> items;
    UINT choice = 0;
    int asked = 0;  ///< dialogs of any kind
    int notes = 0;  ///< lines for the status bar
    int walked = 0; ///< items chosen

private:
    void FillTrack(CFilmTrack* track);
    std::string Bytes();
    void Collect(const CMenu& menu);
    /// What is seen when the item was chosen; empty if that is what was seen before.
    std::string LookWhilePlaying(int place, bool ofKey, UINT id);
};
