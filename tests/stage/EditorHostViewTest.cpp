#include "host/stage/host/LevelSession.h"
#include "tests/stage/HostFixture.h"

using ::testing::_;

class EditorHostViewTest : public HostFixture {
protected:
    EditorHostViewTest() { host.SetViewCount(2); }
};

TEST_F(EditorHostViewTest, AViewHasOneOwner) {
    EXPECT_TRUE(host.AttachViewToPlugin(0, first.id));
    EXPECT_TRUE(host.IsViewAttachedToPlugin(0, first.id));
    EXPECT_FALSE(host.IsViewAttachedToPlugin(0, second.id));
    EXPECT_FALSE(host.IsViewAttachedToPlugin(1, first.id));
    host.DetachViewFromPlugin(0, second.id);
    EXPECT_TRUE(host.IsViewAttachedToPlugin(0, first.id));
    host.DetachViewFromPlugin(0, first.id);
    EXPECT_FALSE(host.IsViewAttachedToPlugin(0, first.id));
}

TEST_F(EditorHostViewTest, UnknownViewsAndPluginsAreRefused) {
    EXPECT_FALSE(host.AttachViewToPlugin(-1, first.id));
    EXPECT_FALSE(host.AttachViewToPlugin(2, first.id));
    EXPECT_FALSE(host.AttachViewToPlugin(0, PluginCommandId::FromPluginNumber(9)));
    EXPECT_FALSE(host.IsViewAttachedToPlugin(7, first.id));
    EXPECT_EQ(host.GetViewMatrix(7), nullptr);
    host.DetachViewFromPlugin(-1, first.id);
}

TEST_F(EditorHostViewTest, AnotherPluginTakesAViewWithARequestToItsOwner) {
    host.AttachViewToPlugin(1, first.id);
    EXPECT_CALL(first, OnViewRequest(ViewRequest::Detach, _, _, _))
        .WillOnce([&](int, auto, void* data, bool*) {
            EXPECT_EQ(*static_cast<std::int32_t*>(data), 1);
            host.DetachViewFromPlugin(1, first.id); // as an owner does; harmless from here
        });
    EXPECT_TRUE(host.AttachViewToPlugin(1, second.id));
    EXPECT_TRUE(host.IsViewAttachedToPlugin(1, second.id));
}

TEST_F(EditorHostViewTest, TheUserTakesAViewBackToTheOwnCamera) {
    stage::StageView& view = *host.views.At(0);
    view.navigation.LookAt({0.0f, 0.0f, 10.0f}, {0.0f, 0.0f, 0.0f});
    host.AttachViewToPlugin(0, first.id);
    view.Engine().camera->data.matrices[0][14] = 99.0f;
    EXPECT_CALL(first, OnViewRequest(ViewRequest::Detach, _, _, _)).Times(1);
    host.TakeView(0);
    host.TakeView(0);
    EXPECT_FALSE(host.IsViewAttachedToPlugin(0, first.id));
    EXPECT_FLOAT_EQ(host.GetViewMatrix(0)[14], 10.0f);
}

TEST_F(EditorHostViewTest, ViewsThatGoAreGivenBackFirst) {
    host.AttachViewToPlugin(1, first.id);
    EXPECT_CALL(first, OnViewRequest(ViewRequest::Detach, _, _, _)).Times(1);
    host.SetViewCount(1);
    EXPECT_FALSE(host.IsViewAttachedToPlugin(1, first.id));
}

TEST_F(EditorHostViewTest, AtANewLevelViewsAreTakenBackWhileThePluginStillKnowsThem) {
    stage::LevelSession session(host);
    host.views.At(0)->navigation.LookAt({0.0f, 0.0f, 10.0f}, {0.0f, 0.0f, 0.0f});
    host.AttachViewToPlugin(0, first.id);
    host.views.At(0)->Engine().camera->data.matrices[0][14] = 99.0f;
    ::testing::InSequence order;
    EXPECT_CALL(first, OnViewRequest(ViewRequest::Detach, _, _, _)).Times(1);
    EXPECT_CALL(first, OnNew());
    session.New();
    EXPECT_FALSE(host.IsViewAttachedToPlugin(0, first.id));
    EXPECT_FLOAT_EQ(host.GetViewMatrix(0)[14], 10.0f);
}

TEST_F(EditorHostViewTest, ThePluginIsAskedWhetherAViewFollowsIt) {
    EXPECT_FALSE(host.FollowsPlugin(0));
    host.AttachViewToPlugin(0, first.id);
    EXPECT_CALL(first, OnViewRequest(ViewRequest::IsAttached, _, _, _))
        .WillOnce([](int, auto, void* data, bool* out) { *out = *static_cast<std::int32_t*>(data) == 0; });
    EXPECT_TRUE(host.FollowsPlugin(0));
}

TEST_F(EditorHostViewTest, LinesAreTakenOnlyWhileAViewIsDrawn) {
    const float from[3] = {1, 2, 3};
    const float to[3] = {4, 5, 6};
    const float color[4] = {0, 1, 0, 1};
    host.DrawLine(from, to, color);
    EXPECT_CALL(first, OnRender()).Times(2).WillRepeatedly([&] {
        EXPECT_EQ(host.GetActiveView(), 1);
        host.DrawLine(from, to, color);
        host.DrawLine(nullptr, to, color);
    });
    host.RenderPlugins(1);
    const auto& lines = host.RenderPlugins(1);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_FLOAT_EQ(lines[0].to[2], 6.0f);
    EXPECT_FLOAT_EQ(lines[0].color[1], 1.0f);
    windows.activeView = -1;
    EXPECT_EQ(host.GetActiveView(), -1);
}

TEST_F(EditorHostViewTest, RenderCallsQueueNoRedraw) {
    windows.redrawn.clear();
    EXPECT_CALL(first, OnRender()).WillOnce([&] {
        host.RedrawViews();
        host.RedrawView(0);
    });
    host.RenderPlugins(0);
    EXPECT_TRUE(windows.redrawn.empty());
    host.RedrawView(1);
    EXPECT_EQ(windows.redrawn, (std::vector<int>{1}));
}

TEST_F(EditorHostViewTest, ViewManagerGivesTheViewsThatExist) {
    IViewManager* manager = host.GetLevel()->GetViewManager();
    EXPECT_NE(manager->GetView(1), nullptr);
    EXPECT_EQ(manager->GetView(2), nullptr);
}
