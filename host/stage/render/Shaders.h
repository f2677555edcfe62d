#pragma once

/// Sources of the renderer's shaders. `kFramePrelude` declares the block of FrameBlock.h and the sky and
/// tone functions; it stands in front of every shader.
namespace render::Shaders {
extern const char* const kFramePrelude;
extern const char* const kMeshVertex;
extern const char* const kMeshFragment;
extern const char* const kDepthVertex;
extern const char* const kDepthFragment;
extern const char* const kMaskFragment;
extern const char* const kWireFragment;
extern const char* const kScreenVertex;
extern const char* const kSkyFragment;
extern const char* const kBackdropFragment;
extern const char* const kOutlineFragment;
extern const char* const kLineVertex;
extern const char* const kLineFragment;
} // namespace render::Shaders
