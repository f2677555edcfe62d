#include "host/engine/mesh/MeshStore.h"
#include "tests/support/Paths.h"
#include "tests/support/TempFolder.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace {

class MeshStoreTest : public testing::Test {
protected:
    MeshStoreTest() { store.SetFolder(SampleFolder()); }
    mesh::MeshStore store;
};

TEST_F(MeshStoreTest, AMeshIsLoadedOnce) {
    const auto first = store.Find("models/crate.glb");
    ASSERT_NE(first, nullptr) << store.ErrorOf("models/crate.glb");
    EXPECT_EQ(store.Find("models/crate.glb"), first);
}

TEST_F(MeshStoreTest, TheExtensionMayBeLeftOut) {
    EXPECT_NE(store.Find("models/crate"), nullptr);
}

TEST_F(MeshStoreTest, AMissingFileGivesNullAndAReason) {
    EXPECT_EQ(store.Find("models/none.glb"), nullptr);
    EXPECT_NE(store.ErrorOf("models/none.glb").find("models/none.glb: no such file"), std::string::npos);
}

TEST_F(MeshStoreTest, EmptyNamesHaveNoMeshAndNoError) {
    EXPECT_EQ(store.Find(""), nullptr);
    EXPECT_EQ(store.ErrorOf(""), "");
}

TEST_F(MeshStoreTest, AnotherFolderEmptiesTheStore) {
    ASSERT_NE(store.Find("models/crate.glb"), nullptr);
    store.SetFolder("/nowhere");
    EXPECT_EQ(store.Find("models/crate.glb"), nullptr);
}

/// A folder of its own with a copy of the crate.
class MeshReloadTest : public testing::Test {
protected:
    MeshReloadTest() {
        Copy("crate.glb");
        store.SetFolder(folder.Path());
    }
    /// Puts a sample model in the place of box.glb, as a new file that is renamed.
    void Copy(const std::string& model) const {
        const std::filesystem::path source = SampleFolder() + "/models/" + model;
        std::filesystem::copy_file(source, folder.File("box.new"),
                                   std::filesystem::copy_options::overwrite_existing);
        std::filesystem::rename(folder.File("box.new"), folder.File("box.glb"));
    }

    TempFolder folder;
    mesh::MeshStore store;
    std::string error;
};

TEST_F(MeshReloadTest, AReplacedFileIsReadAnew) {
    const auto crate = store.Find("box.glb");
    ASSERT_NE(crate, nullptr) << store.ErrorOf("box.glb");
    EXPECT_TRUE(store.Changed().empty());
    Copy("barrel.glb");
    EXPECT_EQ(store.Changed(), std::vector<std::string>{"box.glb"});
    EXPECT_TRUE(store.Reload("box.glb", error)) << error;
    EXPECT_TRUE(store.Changed().empty());
    EXPECT_NE(store.Find("box.glb")->vertices.size(), crate->vertices.size());
}

TEST_F(MeshReloadTest, ABrokenFileLeavesTheMeshAndIsToldOnce) {
    const auto crate = store.Find("box.glb");
    std::filesystem::resize_file(folder.File("box.glb"), 100);
    EXPECT_EQ(store.Changed(), std::vector<std::string>{"box.glb"});
    EXPECT_FALSE(store.Reload("box.glb", error));
    EXPECT_NE(error.find("box.glb"), std::string::npos);
    EXPECT_EQ(store.Find("box.glb"), crate);
    EXPECT_EQ(store.ErrorOf("box.glb"), "");
    EXPECT_TRUE(store.Changed().empty());
}

TEST_F(MeshReloadTest, ADeletedFileLeavesTheMeshUntilItIsBack) {
    const auto crate = store.Find("box.glb");
    std::filesystem::remove(folder.File("box.glb"));
    EXPECT_FALSE(store.Reload("box.glb", error));
    EXPECT_EQ(store.Find("box.glb"), crate);
    Copy("barrel.glb");
    EXPECT_EQ(store.Changed(), std::vector<std::string>{"box.glb"});
    EXPECT_TRUE(store.Reload("box.glb", error));
    EXPECT_NE(store.Find("box.glb"), crate);
}

TEST_F(MeshReloadTest, AFileThatComesLaterIsAChange) {
    EXPECT_EQ(store.Find("later.glb"), nullptr);
    std::filesystem::copy_file(folder.File("box.glb"), folder.File("later.glb"));
    EXPECT_EQ(store.Changed(), std::vector<std::string>{"later.glb"});
    EXPECT_TRUE(store.Reload("later.glb", error));
    EXPECT_NE(store.Find("later.glb"), nullptr);
    EXPECT_EQ(store.ErrorOf("later.glb"), "");
}

TEST_F(MeshReloadTest, ShapesAreNoFiles) {
    ASSERT_NE(store.Find("shape:box 100 100 100 #b4b4b4"), nullptr);
    EXPECT_TRUE(store.Files().empty());
    EXPECT_FALSE(store.Reload("shape:box 100 100 100 #b4b4b4", error));
}

} // namespace
