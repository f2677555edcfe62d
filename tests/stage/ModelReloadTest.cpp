#include "tests/stage/WindowFixture.h"

#include "host/stage/windows/QuietMoments.h"
#include "host/stage/windows/UndoCommands.h"
#include "tests/support/Paths.h"

#include <filesystem>
#include <QDir>
#include <QFile>
#include <QStatusBar>
#include <QTest>

namespace {

namespace stdfs = std::filesystem;

/// Two crates and their file, which tests write anew.
class ModelReloadTest : public WindowFixture {
protected:
    ModelReloadTest() {
        first = AddCrate("First", 0, 0, 0);
        second = AddCrate("Second", 300, 0, 0);
        crate = first->Mesh();
        window.session.History().NoteAll();
        EXPECT_TRUE(Pause());
    }
    /// The user pauses: what has changed is loaded.
    bool Pause() {
        bool isQuiet = false;
        const auto done = QObject::connect(window.quiet, &stage::QuietMoments::Quiet, window.quiet,
                                           [&isQuiet] { isQuiet = true; });
        window.quiet->Request();
        const bool came = QTest::qWaitFor([&isQuiet] { return isQuiet; });
        QObject::disconnect(done);
        return came;
    }
    std::string File() const { return PathOf("meshes/crate.glb"); }
    /// Another model under the name, by a rename as careful programs save.
    void Replace(const char* model) const {
        stdfs::copy_file(SampleFolder() + "/models/" + model, File() + ".new",
                         stdfs::copy_options::overwrite_existing);
        stdfs::rename(File() + ".new", File());
    }
    float Height(const engine::SceneObject& object) const {
        Vector3 low;
        Vector3 high;
        object.Mesh()->Bounds(low, high);
        return high.y;
    }
    bool Told(const QString& text) {
        return QTest::qWaitFor([&] { return window.statusBar()->currentMessage().contains(text); });
    }

    engine::SceneObject* first = nullptr;
    engine::SceneObject* second = nullptr;
    const engine::IMesh* crate = nullptr;
};

} // namespace

TEST_F(ModelReloadTest, AFileThatIsReplacedIsLoadedForAllItsObjects) {
    const std::size_t steps = window.session.History().Edits().Done();
    const float before = Height(*first);
    Replace("lighthouse.glb");
    ASSERT_TRUE(Told("Loaded anew: meshes/crate.glb"));
    EXPECT_GT(Height(*first), before);
    EXPECT_EQ(Height(*first), Height(*second));
    EXPECT_EQ(second->World().Translation().x, 300.0f);
    // It is no edit of the level's.
    window.session.History().NoteAll();
    EXPECT_EQ(window.session.History().Edits().Done(), steps);
    window.undo->Undo();
    EXPECT_LT(window.session.History().Edits().Done(), steps);
}

TEST_F(ModelReloadTest, AFileThatIsWrittenInPlaceIsLoadedToo) {
    const float before = Height(*first);
    stdfs::copy_file(SampleFolder() + "/models/lighthouse.glb", File(),
                     stdfs::copy_options::overwrite_existing);
    ASSERT_TRUE(Told("Loaded anew: meshes/crate.glb"));
    EXPECT_GT(Height(*first), before);
}

TEST_F(ModelReloadTest, ABrokenFileLeavesWhatIsShownAndIsTold) {
    stdfs::resize_file(File(), 100);
    ASSERT_TRUE(Told("what is shown stays"));
    EXPECT_EQ(first->Mesh(), crate);
    Replace("barrel.glb");
    ASSERT_TRUE(Told("Loaded anew"));
    EXPECT_NE(Height(*first), 0.0f);
}

TEST_F(ModelReloadTest, ADeletedFileLeavesWhatIsShownUntilItIsBack) {
    stdfs::remove(File());
    ASSERT_TRUE(Told("no such file"));
    EXPECT_EQ(first->Mesh(), crate);
    const float before = Height(*first);
    Replace("lighthouse.glb");
    ASSERT_TRUE(Told("Loaded anew"));
    EXPECT_GT(Height(*first), before);
}

TEST_F(ModelReloadTest, AFileThatWasMissingAppears) {
    engine::SceneObject* object = AddEmpty("Later", 0, 0, 0);
    object->SetMeshName("meshes/later.glb");
    ASSERT_EQ(object->Mesh(), nullptr);
    ASSERT_TRUE(Pause());
    stdfs::copy_file(SampleFolder() + "/models/barrel.glb", PathOf("meshes/later.glb"));
    ASSERT_TRUE(Told("Loaded anew: meshes/later.glb"));
    EXPECT_NE(object->Mesh(), nullptr);
}

TEST_F(ModelReloadTest, ALevelThatIsLeftMeanwhileIsNoHarm) {
    Replace("lighthouse.glb");
    window.session.New();
    EXPECT_TRUE(Pause());
    EXPECT_TRUE(window.host.level.Data()->Objects().empty());
}
