#pragma once

/// Kinds of key records. 0 to 9 have a duration, 10 to 19 do not; 20 is free.
namespace KeyKind {
constexpr int Camera = 0;
constexpr int Animation = 1;
constexpr int FxSequence = 2;
constexpr int FxParticle = 3;
constexpr int FxTrace = 4;
constexpr int FxRain = 5;
constexpr int FxBlind = 6;
constexpr int FxFlare = 7;
constexpr int Speech = 8;
constexpr int Sound = 9;
constexpr int Position = 10;
constexpr int Rotation = 11;
constexpr int Scale = 12;
constexpr int JavaMethod = 13;
constexpr int Color = 14;
constexpr int Flags = 15;
constexpr int CameraPosition = 16;
constexpr int CameraTarget = 17;
constexpr int Roll = 18;
constexpr int FieldOfView = 19;
/// The kind of a root row, which holds no keys.
constexpr int None = 21;
/// Number of kinds that have a sub-track slot.
constexpr int Count = 22;
/// Kinds that stored filters and files of key parameters know, whatever kinds come later.
constexpr int FilterCount = 20;
} // namespace KeyKind

/// Interpolation on one side of a Bezier key. The host evaluates them.
namespace BezierMethod {
constexpr int Smooth = 0;
constexpr int Linear = 1;
constexpr int Slowdown = 2;
constexpr int Speedup = 3;
constexpr int User = 4;
constexpr int Inverse = 5;
} // namespace BezierMethod

/// Bits of `IFilmKey::flags`.
namespace KeyFlag {
constexpr unsigned NoDuration = 1;
constexpr unsigned MayOverlap = 2;
} // namespace KeyFlag

/// Loop modes of a camera sub-track.
namespace LoopMode {
constexpr int None = 0;
constexpr int Loop = 1;
constexpr int SmoothLoop = 2;
constexpr int PingPong = 3;
} // namespace LoopMode
