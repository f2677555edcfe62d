#include "host/engine/mesh/MeshStore.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <sys/stat.h>

namespace {

namespace stdfs = std::filesystem;

/// A level's folder with a model of one triangle in "models", whose buffer is a file of its own.
class GltfBuffersTest : public ::testing::Test {
protected:
    GltfBuffersTest() {
        stdfs::create_directories(folder.File("level/models"));
        stdfs::create_directories(folder.File("level/shared"));
        store.SetFolder(folder.File("level/"));
    }
    ~GltfBuffersTest() override { stdfs::current_path(before); }

    static std::string Triangle() {
        const float places[9] = {0, 0, 0, 1, 0, 0, 0, 2, 0};
        std::string bytes(sizeof places, '\0');
        std::memcpy(bytes.data(), places, sizeof places);
        return bytes;
    }
    /// Loads the model with its buffer at this URI; `more` are further members of the file.
    bool Loads(const std::string& uri, const std::string& more = "") {
        WriteWholeFile(
            folder.File("level/models/m.gltf"),
            R"({"asset":{"version":"2.0"},"nodes":[{"mesh":0}],"meshes":[{"primitives":[{"attributes":{"POSITION":0}}]}],)"
            R"("accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3"}],)"
            R"("bufferViews":[{"buffer":0,"byteLength":36}],"buffers":[{"byteLength":36,"uri":")" +
                uri + "\"}]" + more + "}");
        store.Clear();
        return store.Find("models/m.gltf") != nullptr;
    }
    std::string Error() const { return store.ErrorOf("models/m.gltf"); }

    const stdfs::path before = stdfs::current_path();
    TempFolder folder;
    mesh::MeshStore store;
};

TEST_F(GltfBuffersTest, BuffersBesideTheModelAndElsewhereInTheLevelsFolderAreRead) {
    WriteWholeFile(folder.File("level/models/m.bin"), Triangle());
    WriteWholeFile(folder.File("level/shared/two words.bin"), Triangle());
    EXPECT_TRUE(Loads("m.bin")) << Error();
    EXPECT_TRUE(Loads("../shared/two%20words.bin")) << Error();
}

TEST_F(GltfBuffersTest, ABufferThatIsWrittenAnewChangesItsModel) {
    EXPECT_FALSE(Loads("m.bin"));
    WriteWholeFile(folder.File("level/models/m.bin"), Triangle());
    ASSERT_EQ(store.Changed(), std::vector<std::string>{"models/m.gltf"});
    std::string error;
    EXPECT_TRUE(store.Reload("models/m.gltf", error)) << error;
    WriteWholeFile(folder.File("level/models/m.bin"), Triangle() + "longer");
    EXPECT_EQ(store.Changed(), std::vector<std::string>{"models/m.gltf"});
}

TEST_F(GltfBuffersTest, ABufferOutsideTheLevelsFolderIsRefused) {
    WriteWholeFile(folder.File("secret.bin"), Triangle());
    EXPECT_FALSE(Loads("../../secret.bin"));
    EXPECT_NE(Error().find("outside the folders of model and level"), std::string::npos) << Error();
    EXPECT_FALSE(Loads(folder.File("secret.bin")));
    stdfs::create_symlink(folder.File("secret.bin"), folder.File("level/models/link.bin"));
    EXPECT_FALSE(Loads("link.bin"));
}

TEST_F(GltfBuffersTest, ABufferInTheWorkingDirectoryIsNotTheModels) {
    stdfs::create_directories(folder.File("work"));
    WriteWholeFile(folder.File("work/m.bin"), Triangle());
    stdfs::current_path(folder.File("work"));
    EXPECT_FALSE(Loads("m.bin"));
}

TEST_F(GltfBuffersTest, AFifoInPlaceOfABufferOrAModelIsRefusedAtOnce) {
    ASSERT_EQ(mkfifo(folder.File("level/models/m.bin").c_str(), 0600), 0);
    EXPECT_FALSE(Loads("m.bin"));
    EXPECT_NE(Error().find("not a file"), std::string::npos) << Error();
    ASSERT_EQ(mkfifo(folder.File("level/models/pipe.glb").c_str(), 0600), 0);
    EXPECT_EQ(store.Find("models/pipe.glb"), nullptr);
}

TEST_F(GltfBuffersTest, PicturesAreNotOpened) {
    WriteWholeFile(folder.File("level/models/m.bin"), Triangle());
    // Whoever opened it would wait for ever.
    ASSERT_EQ(mkfifo(folder.File("level/models/skin.png").c_str(), 0600), 0);
    EXPECT_TRUE(Loads("m.bin", R"(,"images":[{"uri":"skin.png"}])")) << Error();
}

TEST_F(GltfBuffersTest, ABufferBeyondTheLimitIsRefusedUnread) {
    WriteWholeFile(folder.File("level/models/m.bin"), Triangle());
    stdfs::resize_file(folder.File("level/models/m.bin"), (256ull << 20) + 1); // a hole, not on the disk
    EXPECT_FALSE(Loads("m.bin"));
    EXPECT_NE(Error().find("larger than 256 MiB"), std::string::npos) << Error();
}

} // namespace
