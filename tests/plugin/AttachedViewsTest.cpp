#include "plugin/parts/AttachedViews.h"

#include "tests/plugin/PartFixture.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class AttachedViewsTest : public PartTest {
protected:
    std::list<int> numbers;
    AttachedViews views{session, numbers};
};

TEST_F(AttachedViewsTest, AViewIsAttachedRedrawnAndDetached) {
    views.Attach(1);
    EXPECT_TRUE(views.Has(1));
    EXPECT_FALSE(views.Has(0));
    EXPECT_THAT(numbers, ElementsAre(1));
    EXPECT_THAT(editor.calls, ElementsAre("Attach 1", "RedrawView 1"));
    editor.calls.clear();
    views.Detach(1);
    EXPECT_THAT(numbers, IsEmpty());
    EXPECT_THAT(editor.calls, ElementsAre("Detach 1", "RedrawView 1"));
}

TEST_F(AttachedViewsTest, AttachingAgainAttachesAnewAndListsItOnce) {
    views.Attach(1);
    editor.calls.clear();
    views.Attach(1);
    EXPECT_THAT(numbers, ElementsAre(1));
    EXPECT_THAT(editor.calls, ElementsAre("Detach 1", "Attach 1", "RedrawView 1"));
}

TEST_F(AttachedViewsTest, AListedViewThatTheHostTookAwayStaysAsItIs) {
    views.Attach(1);
    editor.viewOwners.clear();
    editor.calls.clear();
    views.Attach(1);
    EXPECT_THAT(editor.calls, IsEmpty());
}

TEST_F(AttachedViewsTest, ARefusedViewIsNotListed) {
    editor.refuseAttach = true;
    views.Attach(1);
    EXPECT_THAT(numbers, IsEmpty());
    EXPECT_THAT(editor.calls, ElementsAre("Attach 1"));
}

TEST_F(AttachedViewsTest, AViewThatTheHostDoesNotLetGoIsNotAttachedAnew) {
    class HoldingEditor : public TestEditor {
    public:
        void DetachViewFromPlugin(int number, PluginCommandId) override {
            calls.push_back("Detach " + std::to_string(number));
        }
    } holding;
    session.editor = &holding;
    views.Attach(1);
    holding.calls.clear();
    views.Attach(1);
    EXPECT_THAT(numbers, ElementsAre(1));
    EXPECT_THAT(holding.calls, ElementsAre("Detach 1"));
}

TEST_F(AttachedViewsTest, WithoutAHostViewsAreOnlyForgotten) {
    numbers = {1};
    session.editor = nullptr;
    views.Attach(0);
    views.Detach(1);
    EXPECT_THAT(numbers, IsEmpty());
}

TEST_F(AttachedViewsTest, TheWindowsButtonFollows) {
    LoggingWindow window(calls);
    session.scenarioDlg = &window;
    views.Attach(0);
    views.Detach(0);
    EXPECT_THAT(calls, ElementsAre("UpdateAttachButton", "UpdateAttachButton"));
}

} // namespace
