#include "host/engine/FilmManager.h"
#include "host/engine/LevelFile.h"
#include "host/engine/mesh/GltfMeshLibrary.h"
#include "tools/LightChunks.h"
#include "tools/SampleLevel.h"

#include <cstdio>
#include <filesystem>

namespace {

int Make(const std::string& path) {
    const std::string folder = std::filesystem::path(path).parent_path().string();
    mesh::GltfMeshLibrary meshes;
    meshes.SetFolder(folder);
    LightChunks lights;
    engine::Level level;
    level.SetMeshLibrary(&meshes);
    level.SetChunkClient(&lights);
    level.New(folder);
    lights.SetLevel(level.Data());
    BuildHarbour(level);
    for (const auto& object : level.Data()->Objects()) {
        if (!object->meshName.empty() && object->Mesh() == nullptr) {
            std::fprintf(stderr, "make_sample_level: %s\n", meshes.ErrorOf(object->meshName).c_str());
            return 1;
        }
    }
    for (const std::string& message : engine::SaveLevel(level, path)) {
        std::fprintf(stderr, "make_sample_level: %s\n", message.c_str());
    }
    return 0;
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2 || arguments[1][0] == '-') {
        std::fprintf(stderr, "usage: make_sample_level FOLDER/NAME.level\n"
                             "The folder holds what make_sample.py made.\n");
        return 2;
    }
    try {
        return Make(arguments[1]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "make_sample_level: %s\n", error.what());
        return 1;
    }
}
