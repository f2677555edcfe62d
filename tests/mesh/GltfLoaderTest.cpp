#include "host/engine/mesh/GltfLoader.h"
#include "tests/support/GlbFile.h"

#include <algorithm>
#include <gtest/gtest.h>

using mesh::LoadGltf;
using mesh::MeshError;

namespace {

/// A triangle (0,0,0) (1,0,0) (0,2,0), in metres, on a node that a clip may move.
struct TriangleFile {
    std::string nodes = R"([{"name":"root","children":[1]},{"name":"leaf","mesh":0,"translation":[0,0,3]}])";
    std::string animations;
    std::string positionAccessor = R"({"bufferView":0,"componentType":5126,"count":3,"type":"VEC3"})";
    std::string indexAccessor = R"({"bufferView":1,"componentType":5123,"count":3,"type":"SCALAR"})";
    std::string materials =
        R"([{"pbrMetallicRoughness":{"baseColorFactor":[1,0.5,0,1],"metallicFactor":0,"roughnessFactor":1}}])";
    std::vector<float> positions = {0, 0, 0, 1, 0, 0, 0, 2, 0};
    std::vector<std::uint16_t> indices = {0, 1, 2, 0};
    std::vector<float> times = {0, 1, 2};
    std::vector<float> moves = {0, 0, 3, 4, 0, 3, 4, 0, 3};
    std::string skins;
    /// One, of the skin: a shift by (1, -2, 0.5).
    std::vector<float> bind = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, -2, 0.5f, 1};

    std::vector<unsigned char> Bytes() const {
        std::vector<unsigned char> buffer;
        AppendRaw(buffer, positions);
        AppendRaw(buffer, indices);
        AppendRaw(buffer, times);
        AppendRaw(buffer, moves);
        AppendRaw(buffer, bind);
        std::string json =
            R"({"asset":{"version":"2.0"},"nodes":)" + nodes +
            R"(,"meshes":[{"primitives":[{"attributes":{"POSITION":0},"indices":1,"material":0}]}])" +
            R"(,"materials":)" + materials + R"(,"accessors":[)" + positionAccessor + "," + indexAccessor +
            R"(,{"bufferView":2,"componentType":5126,"count":3,"type":"SCALAR"})" +
            R"(,{"bufferView":3,"componentType":5126,"count":3,"type":"VEC3"})" +
            R"(,{"bufferView":4,"componentType":5126,"count":1,"type":"MAT4"}])" +
            R"(,"bufferViews":[{"buffer":0,"byteOffset":0,"byteLength":36})" +
            R"(,{"buffer":0,"byteOffset":36,"byteLength":8})" +
            R"(,{"buffer":0,"byteOffset":44,"byteLength":12})" +
            R"(,{"buffer":0,"byteOffset":56,"byteLength":36})" +
            R"(,{"buffer":0,"byteOffset":92,"byteLength":64}])" + R"(,"buffers":[{"byteLength":156}])" +
            skins + animations + "}";
        return MakeGlb(json, buffer);
    }
};

const char* const kMoveLeaf =
    R"(,"animations":[{"name":"Go","channels":[{"sampler":0,"target":{"node":1,"path":"translation"}}],)"
    R"("samplers":[{"input":2,"output":3}]}])";

std::string ErrorOf(const std::vector<unsigned char>& bytes) {
    try {
        LoadGltf("bad.glb", bytes);
    } catch (const MeshError& error) {
        return error.what();
    }
    return "";
}

TEST(GltfLoaderTest, StillPartsAreBakedIntoModelSpace) {
    const auto mesh = LoadGltf("a.glb", TriangleFile().Bytes());
    ASSERT_EQ(mesh->parts.size(), 1u);
    EXPECT_EQ(mesh->parts[0].node, -1);
    ASSERT_EQ(mesh->vertices.size(), 3u);
    EXPECT_EQ(mesh->vertices[1].position, glm::vec3(100, 0, 300));
    EXPECT_EQ(mesh->box.min, glm::vec3(0, 0, 300));
    EXPECT_EQ(mesh->box.max, glm::vec3(100, 200, 300));
    EXPECT_FALSE(mesh->IsPosable());
}

TEST(GltfLoaderTest, BakedPartsAreKnownByTheNodesTheyHangOn) {
    TriangleFile file;
    file.nodes = R"([{"name":"left","mesh":0},{"name":"right","mesh":0}])";
    const auto mesh = LoadGltf("a.glb", file.Bytes());
    ASSERT_EQ(mesh->parts.size(), 1u) << "one draw";
    ASSERT_EQ(mesh->sources.size(), 2u);
    EXPECT_EQ(mesh->sources[0].node, 0);
    EXPECT_EQ(mesh->sources[0].vertexCount, 3u);
    EXPECT_EQ(mesh->sources[1].node, 1);
    EXPECT_EQ(mesh->sources[1].firstVertex, 3u);
    EXPECT_EQ(mesh->sources[1].vertexCount, 3u);
}

TEST(GltfLoaderTest, NodesKeepNamesAndStandBehindTheirParents) {
    TriangleFile file;
    file.nodes = R"([{"name":"leaf","mesh":0},{"name":"root","children":[0]},{}])";
    const auto mesh = LoadGltf("a.glb", file.Bytes());
    ASSERT_EQ(mesh->nodes.size(), 3u);
    EXPECT_EQ(mesh->nodes[0].name, "root");
    EXPECT_EQ(mesh->nodes[1].name, "leaf");
    EXPECT_EQ(mesh->nodes[1].parent, 0);
    EXPECT_EQ(mesh->nodes[2].name, "node 2");
}

TEST(GltfLoaderTest, MovedPartsStayOnTheirNode) {
    TriangleFile file;
    file.animations = kMoveLeaf;
    const auto mesh = LoadGltf("a.glb", file.Bytes());
    ASSERT_EQ(mesh->parts.size(), 1u);
    EXPECT_EQ(mesh->parts[0].node, 1);
    EXPECT_EQ(mesh->vertices[1].position, glm::vec3(100, 0, 0));
    EXPECT_EQ(mesh->box.max, glm::vec3(100, 200, 300)) << "the box is that of the rest pose";
    ASSERT_EQ(mesh->clips.size(), 1u);
    EXPECT_EQ(mesh->clips[0].duration, 2.0f);
    EXPECT_EQ(mesh->FindClip("Go"), 0);
}

TEST(GltfLoaderTest, NodesStandInCentimetresHoweverTheyArePlaced) {
    TriangleFile file;
    file.nodes = R"([{"name":"root","children":[1],"scale":[2,2,2],"translation":[1,2,3]},)"
                 R"({"name":"leaf","mesh":0,"matrix":[1,0,0,0,0,1,0,0,0,0,1,0,4,5,6,1]}])";
    const auto mesh = LoadGltf("a.glb", file.Bytes());
    EXPECT_EQ(mesh->nodes[0].translation, glm::vec3(100, 200, 300));
    EXPECT_EQ(mesh->nodes[0].scale, glm::vec3(2)) << "factors stay";
    EXPECT_EQ(mesh->nodes[1].translation, glm::vec3(400, 500, 600));
    // Twice (1 + 4, 0 + 5, 0 + 6), and (1, 2, 3) further.
    EXPECT_EQ(mesh->vertices[1].position, glm::vec3(1100, 1200, 1500));
}

TEST(GltfLoaderTest, ClipsMoveByCentimetres) {
    TriangleFile file;
    file.animations = kMoveLeaf;
    const auto mesh = LoadGltf("a.glb", file.Bytes());
    const mesh::MeshChannel& channel = mesh->clips[0].channels[0];
    ASSERT_EQ(channel.values.size(), 3u);
    EXPECT_EQ(channel.values[1], glm::vec4(400, 0, 300, 0));
    file.animations.replace(file.animations.find("translation"), 11, "scale");
    EXPECT_EQ(LoadGltf("a.glb", file.Bytes())->clips[0].channels[0].values[1], glm::vec4(4, 0, 3, 0));
}

TEST(GltfLoaderTest, TangentsOfMovesAreLengthsToo) {
    TriangleFile file;
    file.animations = kMoveLeaf;
    const std::string linear = R"("output":3})";
    file.animations.replace(file.animations.find(linear), linear.size(),
                            R"("output":3,"interpolation":"CUBICSPLINE"})");
    // One time, so one key: tangent in, value, tangent out.
    const std::string times = R"({"bufferView":2,"componentType":5126,"count":3,"type":"SCALAR"})";
    std::vector<unsigned char> bytes = file.Bytes();
    const auto found = std::search(bytes.begin(), bytes.end(), times.begin(), times.end());
    ASSERT_NE(found, bytes.end());
    found[static_cast<std::ptrdiff_t>(times.find("\"count\":3")) + 8] = '1';
    const auto mesh = LoadGltf("a.glb", bytes);
    ASSERT_EQ(mesh->clips[0].channels[0].values.size(), 3u);
    EXPECT_EQ(mesh->clips[0].channels[0].values[0], glm::vec4(0, 0, 300, 0));
    EXPECT_EQ(mesh->clips[0].channels[0].values[2], glm::vec4(400, 0, 300, 0));
}

TEST(GltfLoaderTest, SkinsBindInCentimetres) {
    TriangleFile file;
    file.skins = R"(,"skins":[{"joints":[0],"inverseBindMatrices":4}])";
    const auto mesh = LoadGltf("a.glb", file.Bytes());
    ASSERT_EQ(mesh->skins.size(), 1u);
    EXPECT_EQ(mesh->skins[0].inverseBind[0][3], glm::vec4(100, -200, 50, 1));
    EXPECT_EQ(mesh->skins[0].inverseBind[0][0], glm::vec4(1, 0, 0, 0));
}

TEST(GltfLoaderTest, BaseColourBecomesVertexColour) {
    const auto mesh = LoadGltf("a.glb", TriangleFile().Bytes());
    EXPECT_EQ(mesh->vertices[0].color[0], 255);
    EXPECT_EQ(mesh->vertices[0].color[1], 128); // 0.5 of 255 is 127.5
    EXPECT_EQ(mesh->vertices[0].color[2], 0);
    EXPECT_FALSE(mesh->parts[0].glossy);
}

TEST(GltfLoaderTest, SmoothMaterialsMakeGlossyParts) {
    TriangleFile file;
    file.materials =
        R"([{"pbrMetallicRoughness":{"metallicFactor":0,"roughnessFactor":0.1},"extras":{"ripple":1}}])";
    const auto mesh = LoadGltf("a.glb", file.Bytes());
    EXPECT_TRUE(mesh->parts[0].glossy);
    EXPECT_EQ(mesh->vertices[0].surface[3], 255);
}

TEST(GltfLoaderTest, MissingNormalsAreMadeFromTheTriangles) {
    const auto mesh = LoadGltf("a.glb", TriangleFile().Bytes());
    EXPECT_EQ(mesh->vertices[0].normal, glm::vec3(0, 0, 1));
}

TEST(GltfLoaderTest, ErrorsNameTheFile) {
    EXPECT_EQ(ErrorOf({1, 2, 3}).find("bad.glb: "), 0u);
    try {
        LoadGltf("/nowhere/at all.glb");
        FAIL();
    } catch (const MeshError& error) {
        EXPECT_STREQ(error.what(), "/nowhere/at all.glb: no such file");
    }
}

TEST(GltfLoaderTest, AFolderIsNoFile) {
    EXPECT_THROW(LoadGltf("/"), MeshError);
}

struct BrokenCase {
    const char* name;
    void (*damage)(TriangleFile&);
    const char* reason;
};

class BrokenFileTest : public testing::TestWithParam<BrokenCase> {};

TEST_P(BrokenFileTest, IsRefusedWithItsReason) {
    TriangleFile file;
    GetParam().damage(file);
    EXPECT_NE(ErrorOf(file.Bytes()).find(GetParam().reason), std::string::npos) << ErrorOf(file.Bytes());
}

INSTANTIATE_TEST_SUITE_P(
    GltfLoader, BrokenFileTest,
    testing::Values(
        BrokenCase{"Cycle", [](TriangleFile& f) { f.nodes = R"([{"children":[1]},{"children":[0]}])"; },
                   "form a cycle"},
        BrokenCase{"TwoParents",
                   [](TriangleFile& f) { f.nodes = R"([{"children":[2]},{"children":[2]},{"mesh":0}])"; },
                   "two parents"},
        BrokenCase{"UnknownChild", [](TriangleFile& f) { f.nodes = R"([{"children":[7]}])"; },
                   "child that does not exist"},
        BrokenCase{"UnknownMesh", [](TriangleFile& f) { f.nodes = R"([{"name":"n","mesh":5}])"; },
                   "names a mesh that does not exist"},
        BrokenCase{"UnknownSkin", [](TriangleFile& f) { f.nodes = R"([{"name":"n","mesh":0,"skin":4}])"; },
                   "names a skin that does not exist"},
        BrokenCase{"IndexBeyondVertices", [](TriangleFile& f) { f.indices[1] = 3; },
                   "names a vertex that does not exist"},
        BrokenCase{"PositionNotANumber",
                   [](TriangleFile& f) { f.positions[4] = std::numeric_limits<float>::quiet_NaN(); },
                   "a position is not a number"},
        BrokenCase{"AccessorBeyondItsView",
                   [](TriangleFile& f) {
                       f.positionAccessor =
                           R"({"bufferView":0,"componentType":5126,"count":4,"type":"VEC3"})";
                   },
                   "reaches beyond its buffer"},
        BrokenCase{
            "AccessorOffsetBeyondItsView",
            [](TriangleFile& f) {
                f.positionAccessor =
                    R"({"bufferView":0,"byteOffset":400,"componentType":5126,"count":1,"type":"VEC3"})";
            },
            "reaches beyond its buffer"},
        BrokenCase{"AccessorWithoutAView",
                   [](TriangleFile& f) {
                       f.positionAccessor =
                           R"({"bufferView":9,"componentType":5126,"count":3,"type":"VEC3"})";
                   },
                   "buffer view does not exist"},
        BrokenCase{"PositionsOfOtherType",
                   [](TriangleFile& f) {
                       f.positionAccessor =
                           R"({"bufferView":0,"componentType":5126,"count":3,"type":"VEC2"})";
                   },
                   "another type"},
        BrokenCase{"FloatIndices",
                   [](TriangleFile& f) {
                       f.indexAccessor = R"({"bufferView":1,"componentType":5126,"count":2,"type":"SCALAR"})";
                   },
                   "can't hold indices"},
        BrokenCase{"FallingTimes",
                   [](TriangleFile& f) {
                       f.animations = kMoveLeaf;
                       f.times = {0, 2, 1};
                   },
                   "do not rise"},
        BrokenCase{"UnknownSampler",
                   [](TriangleFile& f) {
                       f.animations =
                           R"(,"animations":[{"channels":[{"sampler":3,"target":{"node":1,"path":"scale"}}],)"
                           R"("samplers":[{"input":2,"output":3}]}])";
                   },
                   "names a sampler that does not exist"},
        BrokenCase{"UnknownAnimatedNode",
                   [](TriangleFile& f) {
                       f.animations =
                           R"(,"animations":[{"channels":[{"sampler":0,"target":{"node":8,"path":"scale"}}],)"
                           R"("samplers":[{"input":2,"output":3}]}])";
                   },
                   "names a node that does not exist"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(GltfLoaderTest, DeeplyNestedJsonIsRefused) {
    TriangleFile file;
    file.nodes = R"([{"extras":)" + std::string(100000, '[') + std::string(100000, ']') + "}]";
    EXPECT_NE(ErrorOf(file.Bytes()).find("nested too deeply"), std::string::npos);
}

TEST(GltfLoaderTest, NoPrefixOfAFileCrashes) {
    TriangleFile file;
    file.animations = kMoveLeaf;
    const std::vector<unsigned char> whole = file.Bytes();
    for (std::size_t size = 0; size < whole.size(); size += 7) {
        const std::vector<unsigned char> part(whole.begin(),
                                              whole.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_NE(ErrorOf(part), "") << size;
    }
}

TEST(GltfLoaderTest, NoDamagedByteCrashes) {
    TriangleFile file;
    file.animations = kMoveLeaf;
    const std::vector<unsigned char> whole = file.Bytes();
    int loaded = 0;
    for (std::size_t at = 0; at < whole.size(); ++at) {
        std::vector<unsigned char> damaged = whole;
        damaged[at] ^= 0x15;
        loaded += ErrorOf(damaged).empty() ? 1 : 0;
    }
    EXPECT_GT(loaded, 0) << "a changed colour or position is still a good file";
}

} // namespace
