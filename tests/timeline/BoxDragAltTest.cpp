#include "tests/timeline/KeyDragFixture.h"

namespace {

/// The Alt key is held, so that keys follow the mouse and not the tics.
class BoxDragAltTest : public KeyDragTest {
protected:
    BoxDragAltTest() { alt = true; }
};

} // namespace

TEST_F(BoxDragAltTest, FollowsTheMouseByItsWay) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey& key = *AddBox(row, 4.0f, 2.0f);
    Take(key, kMove, 4.25f);
    Follow(key, row, {{4.75f, 4.5f, 2}, {5.5f, 5.25f, 2}, {6, 5.75f, 2}});
    Take(key, kMove, 7.25f);
    Follow(key, row, {{6.75f, 5.25f, 2}, {6.5f, 5, 2}});
}

TEST_F(BoxDragAltTest, RightAltKeyCountsToo) {
    alt = false;
    rightAlt = true;
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey& key = *AddBox(row, 4.0f, 2.0f);
    Take(key, kMove, 4.25f);
    Follow(key, row, {{4.75f, 4.5f, 2}});
}

TEST_F(BoxDragAltTest, KeyIsReadAtEveryStep) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey& key = *AddBox(row, 4.0f, 2.0f);
    Take(key, kMove, 4.25f);
    Follow(key, row, {{4.75f, 4.5f, 2}});
    alt = false;
    // The end at 6.5 is off the grid by 0.5 and would go to 8.5: half of 3.75 against 8.5 - T.
    Follow(key, row, {{6.5f, 4.5f, 2}, {6.75f, 6.5f, 2}});
    alt = true;
    Follow(key, row, {{7, 6.75f, 2}});
}

TEST_F(BoxDragAltTest, EndJumpsToAMouseAsNearAsItsWay) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey& key = *AddBox(row, 4.0f, 2.0f);
    Take(key, kMove, 5.0f);
    // The mouse came 0.5 and stands 0.5 before the end: nothing holds the end from coming to it.
    Follow(key, row, {{5.5f, 3.5f, 2}});
}

TEST_F(BoxDragAltTest, StopsAtTheNextKeyAndHopsNowhere) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey& key = *AddBox(row, 4.0f, 2.0f);
    AddBox(row, 8.0f, 2.0f);
    Take(key, kMove, 5.0f);
    Follow(key, row, {{5.25f, 4.25f, 2}, {7.25f, 5.25f, 2}, {8, 6, 2}, {8.25f, 6, 2}, {12, 6, 2}});
    Follow(key, row, {{11, 5, 2}});
}

TEST_F(BoxDragAltTest, StopsAtTheEndsOfTheAxis) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey& key = *AddBox(row, 1.0f, 2.0f);
    Take(key, kMove, 2.5f);
    Follow(key, row, {{2.25f, 0.75f, 2}, {1.75f, 0.25f, 2}, {1.25f, 0, 2}, {1, 0, 2}, {-2, 0, 2}});
    CTimedTrackKey& late = *AddBox(row, 97.0f, 2.0f);
    Take(late, kMove, 97.5f);
    Follow(late, row, {{98, 97.5f, 2}, {98.75f, 98, 2}, {99, 98, 2}, {120, 98, 2}});
}

TEST_F(BoxDragAltTest, RightGripFollowsTheMouse) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey& key = *AddBox(row, 4.0f, 2.0f);
    Take(key, kRight, 6.0f);
    Follow(key, row, {{6.5f, 4, 2.5f}, {6.25f, 4, 2.25f}, {4.5f, 4, 0.5f}, {3, 4, 0.5f}});
}

TEST_F(BoxDragAltTest, RightGripStopsAtTheNextKey) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey& key = *AddBox(row, 4.0f, 2.0f);
    AddBox(row, 8.0f, 2.0f);
    Take(key, kRight, 6.0f);
    Follow(key, row, {{6.5f, 4, 2.5f}, {9, 4, 4}, {9.5f, 4, 4}});
}

TEST_F(BoxDragAltTest, RightGripAtATouchingKeyComesBackOnlyNearTheStart) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey& key = *AddBox(row, 0.0f, 8.0f);
    AddBox(row, 8.0f, 2.0f);
    Take(key, kRight, 8.0f);
    // On the way back the limit is the neighbour's end, 2 seconds from the edge.
    Follow(key, row, {{7, 0, 8}, {3, 0, 8}, {2, 0, 2}});
}

TEST_F(BoxDragAltTest, RightGripWaitsForAMouseThatIsAhead) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey& key = *AddBox(row, 4.0f, 2.0f);
    Take(key, kRight, 9.0f);
    Follow(key, row, {{8, 4, 2}, {6.5f, 4, 2}, {5.5f, 4, 1.5f}});
}

TEST_F(BoxDragAltTest, LeftGripFollowsTheMouse) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey& key = *AddBox(row, 4.0f, 2.0f);
    Take(key, kLeft, 4.0f);
    Follow(key, row, {{3.5f, 3.5f, 2.5f}, {5, 5, 1}});
    Follow(key, row, {{7, 6, 1}}); // pulled to the end it takes the whole key along
}

TEST_F(BoxDragAltTest, LeftGripStopsAtTheKeyBefore) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey& key = *AddBox(row, 4.0f, 2.0f);
    AddBox(row, 0.0f, 3.0f);
    Take(key, kLeft, 4.0f);
    Follow(key, row, {{2, 3, 3}, {1, 3, 3}});
}

TEST_F(BoxDragAltTest, LeftGripAtTheVeryTimeOfANeighbourStaysWithTheMouse) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey& key = *AddBox(row, 4.0f, 2.0f);
    AddBox(row, 0.0f, 3.0f);
    Take(key, kLeft, 4.0f);
    Follow(key, row, {{3, 3, 3}}); // the hop would be farther than the mouse came
}

TEST_F(BoxDragAltTest, LeftGripOfAnEmptyKeyOnlyGoesBack) {
    CTrackCtrl& row = BoxRow(2.0f);
    CTimedTrackKey& key = *AddBox(row, 4.0f, 0.0f);
    Take(key, kLeft, 4.0f);
    Follow(key, row, {{5, 4, 0}, {3.5f, 3.5f, 0.5f}});
}
