#include "plugin/contract/ClassIds.h"
#include "plugin/contract/Editor.h"
#include "tests/stage/WindowFixture.h"

#include <QFile>
#include <QMessageBox>

namespace {

using ::testing::_;

/// A level with a lamp that the plug-in keeps with its films, in no film any more.
class LightsLeftOutTest : public WindowFixture {
protected:
    LightsLeftOutTest() {
        engine::ObjectSpec spec;
        spec.className = ClassName::GLLight;
        spec.name = "Lamp";
        engine::SceneObject* lamp = window.host.level.CreateObject(spec);
        ON_CALL(plugin, OnEvent(EventCode::CollectHiddenObjects, _)).WillByDefault([=](int, void* data) {
            static_cast<HiddenObjectsRequest*>(data)->collection->Add(lamp);
        });
    }

    QString Target() const { return QString::fromStdString(PathOf("a.level")); }
};

TEST_F(LightsLeftOutTest, TheyAreListedBeforeASaveAndCancelWritesNothing) {
    const auto cancel = [](QWidget& box) {
        EXPECT_EQ(box.objectName(), "LightsLeftOut");
        EXPECT_EQ(static_cast<QMessageBox&>(box).informativeText(), "Lamp");
        PressButton(box, QMessageBox::Cancel);
    };
    Answering(cancel, [&] { EXPECT_FALSE(window.SaveLevelAs(Target())); });
    EXPECT_FALSE(QFile::exists(Target()));
}

TEST_F(LightsLeftOutTest, TheLevelIsSavedWithoutThemWhenTheUserWantsIt) {
    Answering([](QWidget& box) { PressButton(box, QMessageBox::Save); },
              [&] { EXPECT_TRUE(window.SaveLevelAs(Target())); });
    EXPECT_NE(window.host.level.FindObject("Lamp"), nullptr) << "the open level keeps it";
    ASSERT_TRUE(window.OpenLevel(Target()));
    EXPECT_EQ(window.host.level.FindObject("Lamp"), nullptr);
}

} // namespace
