#pragma once

#include "tests/undo/UndoFixture.h"

/// The key duplicator of the stand-in main control, with rows for bars, boxes and cameras.
class DuplicatorTest : public UndoTest {
protected:
    DuplicatorTest();

    /// The only action that was handed to the manager, as its class.
    template <class Action> Action* TheAction() {
        const std::vector<CFilmsUndoAction*>& actions = Retired().Actions();
        EXPECT_EQ(actions.size(), 1U);
        return actions.size() == 1 ? dynamic_cast<Action*>(actions.front()) : nullptr;
    }

    CTrackCtrl& bars;    ///< positions of the box
    CTrackCtrl& boxes;   ///< sounds of the box
    CTrackCtrl& cameras; ///< the film's cameras, row 2
    CFilmKeyDuplicator& duplicator;
};
