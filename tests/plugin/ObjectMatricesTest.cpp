#include "plugin/parts/ObjectMatrices.h"

#include "tests/plugin/PartFixture.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

namespace {

class ObjectMatricesTest : public PartTest {
protected:
    ObjectMatrixRecords records;
    ObjectMatrices matrices{session, records};
    engine::SceneObject* cart = editor.Create("Cart", 3.0f);
    engine::SceneObject* crane = editor.Create("Crane", 7.0f);
};

TEST_F(ObjectMatricesTest, ObjectsGoBackToWhereTheyStood) {
    matrices.Rebuild();
    Place(*cart, 50.0f);
    Place(*crane, 60.0f);
    matrices.RestoreOne(crane);
    EXPECT_EQ(XOf(*crane), 7.0f);
    EXPECT_EQ(XOf(*cart), 50.0f);
    matrices.Restore();
    EXPECT_EQ(XOf(*cart), 3.0f);
}

TEST_F(ObjectMatricesTest, OutsideChangesAreTakenAndTheFilmPosedAnew) {
    matrices.Rebuild();
    session.currentTime = 2.0f;
    Place(*cart, 50.0f);
    const ObjectList changed{cart};
    matrices.Refresh(&changed);
    EXPECT_EQ(matrices.Get(cart)[12], 50.0f);
    EXPECT_THAT(session.frames, ElementsAre(Pair(2.0f, -1.0f)));
}

TEST_F(ObjectMatricesTest, WithAFilmOpenAnOutsideChangeIsThrownAway) {
    matrices.Rebuild();
    session.currentFilm = &film;
    Place(*cart, 50.0f);
    editor.Select({cart});
    matrices.Refresh(nullptr);
    EXPECT_EQ(matrices.Get(cart)[12], 3.0f);
    EXPECT_EQ(XOf(*cart), 3.0f);
}

TEST_F(ObjectMatricesTest, NothingSelectedRefreshesNothing) {
    matrices.Refresh(nullptr);
    EXPECT_THAT(session.frames, IsEmpty());
}

TEST_F(ObjectMatricesTest, AnObjectWithoutARecordIsToldAndStandsAtTheOrigin) {
    std::vector<std::string> boxes;
    Hooks().messageBox = [&](const std::string& text, UINT) {
        boxes.push_back(text);
        return IDOK;
    };
    const float* matrix = matrices.Get(cart);
    EXPECT_EQ(matrix[0], 1.0f);
    EXPECT_EQ(matrix[12], 0.0f);
    EXPECT_THAT(boxes,
                ElementsAre("Plugin Films critical internal error - no matrix stored for object: Cart\n "
                            "Don't save this level with previous name!!!!"));
}

TEST_F(ObjectMatricesTest, ChildrenOfADeletedObjectStayWhereTheyAre) {
    engine::SceneObject* kept = editor.Create("Kept", 1.0f);
    engine::SceneObject* doomed = editor.Create("Doomed", 2.0f);
    for (engine::SceneObject* child : {crane, kept, doomed}) {
        ASSERT_TRUE(editor.level.SetParent(child, cart));
    }
    matrices.Add(crane);
    Place(*crane, 70.0f);
    matrices.RecordChildren(*cart, {cart, doomed});
    EXPECT_EQ(matrices.Get(crane)[12], 70.0f);
    EXPECT_EQ(matrices.Get(kept)[12], 1.0f);
    EXPECT_FALSE(matrices.Has(doomed));
}

} // namespace
