#pragma once

/// Run-time class numbers that every host object answers in `IsA`.
namespace ClassId {
constexpr int LevelRoot = 4096;
/// Any object with a matrix.
constexpr int LevelObject = 16384;
/// An object that can become an actor; answers true for LevelObject too.
constexpr int EditorObject = 16385;
constexpr int FilmManager = 53248;
constexpr int LevelTrack = 53250;
constexpr int ObjectTrack = 53251;
constexpr int GLLightTrack = 53252;
constexpr int DynLightTrack = 53253;
constexpr int CameraTrack = 53254;
} // namespace ClassId

/// Values of `EditorObject::objectKind` that the plug-in tells apart.
namespace ObjectKind {
/// Tracked for its matrix only, never an actor.
constexpr int MatrixOnly = 16387;
} // namespace ObjectKind

/// Object class names that are compared by name.
namespace ClassName {
constexpr const char* GLLight = "GLLightEditorObject";
constexpr const char* DynLight = "FilmsDynLightEditorObject";
constexpr const char* Helper = "HelperEditorObject";
constexpr const char* HelperCwO = "HelperCwOEditorObject";
constexpr const char* VirtualObject = "VirtualObjEditorObject";
constexpr const char* Gizmo = "GizmoEditorObject";
constexpr const char* CameraControlPoint = "CameraControlPointEditorObject";
constexpr const char* CameraTarget = "CameraTargetEditorObject";
constexpr const char* CameraPosition = "CameraPositionEditorObject";
constexpr const char* Mesh = "MeshObject";
} // namespace ClassName
