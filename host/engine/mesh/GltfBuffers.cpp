#include "host/engine/mesh/GltfBuffers.h"

#include "host/outside/OutsideFile.h"

#include <charconv>
#include <nlohmann/json.hpp>

namespace mesh {

namespace {

constexpr std::uint64_t kMaxBufferBytes = 256 * OutsideFile::kMiB;

/// The text of a URI with its "%41" resolved, as the parser does it.
std::string Decoded(const std::string& uri) {
    std::string decoded;
    for (std::size_t i = 0; i < uri.size(); ++i) {
        unsigned code = 0;
        const char* end = uri.data() + i + 3;
        if (uri[i] == '%' && i + 2 < uri.size() && std::from_chars(end - 2, end, code, 16).ptr == end) {
            decoded += static_cast<char>(code);
            i += 2;
        } else {
            decoded += uri[i];
        }
    }
    return decoded;
}

} // namespace

GltfBuffers::GltfBuffers(std::string_view json, std::string model, std::string level)
    : text(json), modelFolder(std::move(model)), levelFolder(std::move(level)), bytesLeft(kMaxBufferBytes) {
}

tinygltf::FsCallbacks GltfBuffers::Callbacks() {
    tinygltf::FsCallbacks callbacks{};
    callbacks.FileExists = &Exists;
    callbacks.ExpandFilePath = [](const std::string& path, void*) { return path; };
    callbacks.ReadWholeFile = &Read;
    callbacks.WriteWholeFile = [](std::string*, const std::string&, const std::vector<unsigned char>&,
                                  void*) { return false; };
    callbacks.user_data = this;
    return callbacks;
}

/// Most models name no file, so that the text is gone through only when one is asked for.
void GltfBuffers::FindNames() {
    namesKnown = true;
    const nlohmann::json json = nlohmann::json::parse(text, nullptr, /*allow_exceptions*/ false);
    if (!json.is_object() || !json.contains("buffers") || !json["buffers"].is_array()) {
        return;
    }
    for (const nlohmann::json& buffer : json["buffers"]) {
        if (buffer.is_object() && buffer.contains("uri") && buffer["uri"].is_string()) {
            names.insert(Decoded(buffer["uri"].get<std::string>()));
        }
    }
}

/// The parser asks for the model's folder and the name joined, then for the working directory and the name.
bool GltfBuffers::IsBuffer(const std::string& path) {
    if (!namesKnown) {
        FindNames();
    }
    const std::string start =
        modelFolder.empty() || modelFolder.back() == '/' ? modelFolder : modelFolder + "/";
    return path.starts_with(start) && names.count(path.substr(start.size())) != 0;
}

bool GltfBuffers::Exists(const std::string& path, void* self) {
    return static_cast<GltfBuffers*>(self)->IsBuffer(path);
}

bool GltfBuffers::Refuse(const std::string& path, const std::string& why, std::string* told) {
    error = "its buffer " + path + ": " + why;
    if (told != nullptr) {
        *told = why;
    }
    return false;
}

bool GltfBuffers::Read(std::vector<unsigned char>* bytes, std::string* why, const std::string& path,
                       void* self) {
    auto& buffers = *static_cast<GltfBuffers*>(self);
    const bool isInside = IsInside(path, buffers.modelFolder.empty() ? "." : buffers.modelFolder) ||
                          (!buffers.levelFolder.empty() && IsInside(path, buffers.levelFolder));
    if (!isInside) {
        return buffers.Refuse(path, "outside the folders of model and level", why);
    }
    buffers.paths.push_back(path);
    OutsideFile file(path, buffers.bytesLeft);
    if (!file.IsOpen() || !file.ReadAll(*bytes)) {
        return buffers.Refuse(path, file.Error(), why);
    }
    buffers.bytesLeft -= bytes->size();
    return true;
}

} // namespace mesh
