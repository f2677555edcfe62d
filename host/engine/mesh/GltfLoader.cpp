#include "host/engine/mesh/GltfLoader.h"

#include "host/engine/mesh/GltfGeometry.h"

#include <filesystem>
#include <fstream>
#include <tiny_gltf.h>

namespace {

constexpr std::uintmax_t kMaxFileBytes = 256u << 20;
/// glTF itself nests about ten deep; the bound keeps the recursive parser off the stack's end.
constexpr int kMaxJsonDepth = 64;

std::vector<unsigned char> ReadFile(const std::string& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        throw MeshError("no such file");
    }
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error || size > kMaxFileBytes) {
        throw MeshError(error ? error.message() : "larger than 256 MiB");
    }
    std::vector<unsigned char> bytes(static_cast<std::size_t>(size));
    std::ifstream file(path, std::ios::binary);
    if (!file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size))) {
        throw MeshError("can't be read");
    }
    return bytes;
}

bool IsBinary(const std::vector<unsigned char>& bytes) {
    return bytes.size() >= 4 && std::equal(bytes.begin(), bytes.begin() + 4, "glTF");
}

void CheckJsonDepth(const unsigned char* text, std::size_t size) {
    int depth = 0;
    bool quoted = false;
    for (std::size_t i = 0; i < size; ++i) {
        const unsigned char c = text[i];
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

void CheckJson(const std::vector<unsigned char>& bytes) {
    constexpr std::size_t kBinaryHeaderBytes = 20;
    if (!IsBinary(bytes)) {
        CheckJsonDepth(bytes.data(), bytes.size());
        return;
    }
    if (bytes.size() < kBinaryHeaderBytes) {
        throw MeshError("cut short");
    }
    const std::size_t stated = bytes[12] | bytes[13] << 8 | bytes[14] << 16 | std::size_t{bytes[15]} << 24;
    CheckJsonDepth(bytes.data() + kBinaryHeaderBytes, std::min(stated, bytes.size() - kBinaryHeaderBytes));
}

/// Pictures are not used, so they are not decoded either.
bool SkipImage(tinygltf::Image*, const int, std::string*, std::string*, int, int, const unsigned char*, int,
               void*) {
    return true;
}

tinygltf::Model Parse(const std::string& path, const std::vector<unsigned char>& bytes) {
    CheckJson(bytes);
    tinygltf::TinyGLTF parser;
    parser.SetImageLoader(&SkipImage, nullptr);
    tinygltf::Model model;
    std::string error;
    std::string warning;
    const std::string folder = std::filesystem::path(path).parent_path().string();
    const auto length = static_cast<unsigned>(bytes.size());
    const bool good =
        IsBinary(bytes)
            ? parser.LoadBinaryFromMemory(&model, &error, &warning, bytes.data(), length, folder)
            : parser.LoadASCIIFromString(&model, &error, &warning,
                                         reinterpret_cast<const char*>(bytes.data()), length, folder);
    if (!good) {
        throw MeshError(error.empty() ? "not a glTF file" : error.substr(0, error.find('\n')));
    }
    return model;
}

} // namespace

std::shared_ptr<const Mesh> LoadGltf(const std::string& path, const std::vector<unsigned char>& bytes) {
    try {
        auto mesh = std::make_shared<Mesh>();
        BuildMesh(Parse(path, bytes), *mesh);
        return mesh;
    } catch (const std::exception& error) {
        throw MeshError(path + ": " + error.what());
    }
}

std::shared_ptr<const Mesh> LoadGltf(const std::string& path) {
    std::vector<unsigned char> bytes;
    try {
        bytes = ReadFile(path);
    } catch (const std::exception& error) {
        throw MeshError(path + ": " + error.what());
    }
    return LoadGltf(path, bytes);
}
