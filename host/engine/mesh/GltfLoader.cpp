#include "host/engine/mesh/GltfLoader.h"

#include "host/engine/mesh/GltfBuffers.h"
#include "host/engine/mesh/GltfGeometry.h"
#include "host/outside/OutsideFile.h"

#include <filesystem>
#include <string_view>
#include <tiny_gltf.h>

namespace mesh {

namespace {

constexpr std::uint64_t kMaxFileBytes = 256 * OutsideFile::kMiB;
/// glTF itself nests about ten deep; the bound keeps the recursive parser off the stack's end.
constexpr int kMaxJsonDepth = 64;

std::vector<unsigned char> ReadFile(const std::string& path) {
    OutsideFile file(path, kMaxFileBytes);
    std::vector<unsigned char> bytes;
    if (!file.IsOpen() || !file.ReadAll(bytes)) {
        throw MeshError(file.Error());
    }
    return bytes;
}

bool IsBinary(const std::vector<unsigned char>& bytes) {
    return bytes.size() >= 4 && std::equal(bytes.begin(), bytes.begin() + 4, "glTF");
}

void CheckJsonDepth(std::string_view text) {
    int depth = 0;
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quoted) {
            i += c == '\\' ? 1 : 0;
            quoted = c != '"';
        } else if (c == '"') {
            quoted = true;
        } else if (c == '{' || c == '[') {
            if (++depth > kMaxJsonDepth) {
                throw MeshError("its JSON is nested too deeply");
            }
        } else if (c == '}' || c == ']') {
            --depth;
        }
    }
}

/// The JSON of either form of file.
std::string_view JsonOf(const std::vector<unsigned char>& bytes) {
    constexpr std::size_t kBinaryHeaderBytes = 20;
    const std::string_view whole(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (!IsBinary(bytes)) {
        return whole;
    }
    if (bytes.size() < kBinaryHeaderBytes) {
        throw MeshError("cut short");
    }
    const std::size_t stated = bytes[12] | bytes[13] << 8 | bytes[14] << 16 | std::size_t{bytes[15]} << 24;
    return whole.substr(kBinaryHeaderBytes, stated);
}

/// Pictures are not used, so they are not decoded either.
bool SkipImage(tinygltf::Image*, const int, std::string*, std::string*, int, int, const unsigned char*, int,
               void*) {
    return true;
}

tinygltf::Model Parse(const std::string& path, const std::vector<unsigned char>& bytes,
                      const std::string& levelFolder, std::vector<std::string>* named) {
    const std::string_view json = JsonOf(bytes);
    CheckJsonDepth(json);
    const std::string folder = std::filesystem::path(path).parent_path().string();
    GltfBuffers buffers(json, folder, levelFolder);
    tinygltf::TinyGLTF parser;
    parser.SetImageLoader(&SkipImage, nullptr);
    parser.SetFsCallbacks(buffers.Callbacks());
    tinygltf::Model model;
    std::string error;
    std::string warning;
    const auto length = static_cast<unsigned>(bytes.size());
    const bool good =
        IsBinary(bytes)
            ? parser.LoadBinaryFromMemory(&model, &error, &warning, bytes.data(), length, folder)
            : parser.LoadASCIIFromString(&model, &error, &warning,
                                         reinterpret_cast<const char*>(bytes.data()), length, folder);
    if (named != nullptr) {
        named->insert(named->end(), buffers.Paths().begin(), buffers.Paths().end());
    }
    if (!good) {
        error = buffers.Error().empty() ? error : buffers.Error();
        throw MeshError(error.empty() ? "not a glTF file" : error.substr(0, error.find('\n')));
    }
    return model;
}

} // namespace

std::shared_ptr<const Mesh> LoadGltf(const std::string& path, const std::vector<unsigned char>& bytes,
                                     const std::string& levelFolder, std::vector<std::string>* buffers) {
    try {
        auto mesh = std::make_shared<Mesh>();
        BuildMesh(Parse(path, bytes, levelFolder, buffers), *mesh);
        return mesh;
    } catch (const std::exception& error) {
        throw MeshError(path + ": " + error.what());
    }
}

std::shared_ptr<const Mesh> LoadGltf(const std::string& path, const std::string& levelFolder,
                                     std::vector<std::string>* buffers) {
    std::vector<unsigned char> bytes;
    try {
        bytes = ReadFile(path);
    } catch (const std::exception& error) {
        throw MeshError(path + ": " + error.what());
    }
    return LoadGltf(path, bytes, levelFolder, buffers);
}

} // namespace mesh
