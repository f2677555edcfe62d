#include "host/stage/host/AssetImport.h"

#include "tests/support/Paths.h"
#include "tests/support/TempFolder.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace {

namespace stdfs = std::filesystem;
using stage::AssetKind;
using stage::ImportAsset;

class AssetImportTest : public ::testing::Test {
protected:
    AssetImportTest() {
        stdfs::create_directories(level);
        stdfs::create_directories(folder.File("from"));
        stdfs::copy_file(SampleFolder() + "/models/crate.glb", folder.File("from/crate.glb"));
    }
    /// A triangle whose numbers stand in a file beside it.
    std::string MakeGltf(const std::string& buffer) {
        const float points[9] = {0, 0, 0, 1, 0, 0, 0, 1, 0};
        WriteWholeFile(folder.File("from/tri data.bin"),
                       std::string(reinterpret_cast<const char*>(points), sizeof points));
        WriteWholeFile(folder.File("from/wood.png"), "picture");
        WriteWholeFile(
            folder.File("from/tri.gltf"),
            R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],"nodes":[{"mesh":0}],)"
            R"("meshes":[{"primitives":[{"attributes":{"POSITION":0}}]}],"images":[{"uri":"wood.png"}],)"
            R"("accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3","min":[0,0,0],)"
            R"("max":[1,1,0]}],"bufferViews":[{"buffer":0,"byteLength":36}],"buffers":[{"byteLength":36,)"
            R"("uri":")" +
                buffer + R"("}]})");
        return folder.File("from/tri.gltf");
    }

    TempFolder folder;
    const std::string level = folder.File("level/");
};

TEST_F(AssetImportTest, AModelIsCopiedUnderAFreeName) {
    const auto first = ImportAsset(folder.File("from/crate.glb"), level);
    EXPECT_EQ(first.error, "");
    EXPECT_EQ(first.name, "models/crate.glb");
    EXPECT_EQ(first.kind, AssetKind::Model);
    EXPECT_EQ(ImportAsset(folder.File("from/crate.glb"), level).name, "models/crate_2.glb");
    EXPECT_TRUE(stdfs::exists(level + "models/crate_2.glb"));
}

TEST_F(AssetImportTest, AGltfBringsItsBuffersAndPictures) {
    const auto asset = ImportAsset(MakeGltf("tri%20data.bin"), level);
    EXPECT_EQ(asset.error, "");
    EXPECT_EQ(asset.name, "models/tri/tri.gltf");
    EXPECT_TRUE(stdfs::exists(level + "models/tri/tri data.bin"));
    EXPECT_TRUE(stdfs::exists(level + "models/tri/wood.png"));
    EXPECT_EQ(ImportAsset(folder.File("from/tri.gltf"), level).name, "models/tri_2/tri.gltf");
}

TEST_F(AssetImportTest, WhatIsMissingOrBrokenLeavesNothingBehind) {
    const std::string gltf = MakeGltf("tri%20data.bin");
    stdfs::remove(folder.File("from/wood.png"));
    EXPECT_NE(ImportAsset(gltf, level).error.find("wood.png"), std::string::npos);
    EXPECT_FALSE(stdfs::exists(level + "models/tri"));
    WriteWholeFile(folder.File("from/broken.glb"), "no model");
    EXPECT_NE(ImportAsset(folder.File("from/broken.glb"), level).error, "");
    EXPECT_FALSE(stdfs::exists(level + "models/broken.glb"));
    EXPECT_NE(ImportAsset(folder.File("from/none.wav"), level).error, "");
}

TEST_F(AssetImportTest, AModelThatReachesOutOfItsFolderIsRefused) {
    stdfs::create_directories(folder.File("secret"));
    WriteWholeFile(folder.File("secret/tri.bin"), std::string(36, '\0'));
    const auto asset = ImportAsset(MakeGltf("../secret/tri.bin"), level);
    EXPECT_NE(asset.error, "");
    EXPECT_EQ(asset.name, "");
}

TEST_F(AssetImportTest, SoundsGoToTheirOwnFolderAndOtherFilesAreRefused) {
    WriteWholeFile(folder.File("from/bell.WAV"), "sound");
    EXPECT_EQ(ImportAsset(folder.File("from/bell.WAV"), level).name, "sounds/bell.WAV");
    EXPECT_NE(ImportAsset(folder.File("from/notes.txt"), level).error.find("notes.txt"), std::string::npos);
    EXPECT_NE(ImportAsset(folder.File("from/crate.glb"), "").error.find("save the level"), std::string::npos);
}

TEST_F(AssetImportTest, WhatLiesInTheLevelsFolderIsOnlyNamed) {
    stdfs::create_directories(level + "props");
    stdfs::copy_file(folder.File("from/crate.glb"), level + "props/crate.glb");
    EXPECT_EQ(ImportAsset(level + "props/crate.glb", level).name, "props/crate.glb");
    EXPECT_FALSE(stdfs::exists(level + "models"));
}

} // namespace
