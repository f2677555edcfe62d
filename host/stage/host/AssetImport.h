#pragma once

#include <string>

namespace stage {

enum class AssetKind { None, Model, Sound, Effect };

/// By the ending: .glb and .gltf; .wav, .ogg and .flac. Effects are no files of a level's alone: never
/// Effect.
AssetKind AssetKindOf(const std::string& path);

/// What an import has made.
struct ImportedAsset {
    AssetKind kind = AssetKind::None;
    std::string name;  ///< from the level's folder, with '/'; empty if nothing was imported
    std::string error; ///< why
};

/// Copies a model or a sound into the level's folder, below `models` or `sounds`, under a name that is free
/// there; a .gltf into a folder of its own, with the buffers and pictures that it names. A file that lies in
/// the level's folder already is only named. A model that can't be read, or names what lies outside its
/// folder, is refused, and then nothing is left behind.
ImportedAsset ImportAsset(const std::string& path, const std::string& levelFolder);

} // namespace stage
