#include "host/engine/mesh/MeshStore.h"
#include "tests/support/Paths.h"

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

} // namespace
