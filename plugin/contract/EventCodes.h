#pragma once

/// Codes of `IPlugin::OnEvent` and `IEditor::BroadcastEvent`; one shared list.
namespace EventCode {
constexpr int PanelTaken = 1;
constexpr int SelectionChanged = 2;
constexpr int ObjectsCreated = 3;
constexpr int ObjectsDeleting = 4;
constexpr int LevelLoaded = 6;
constexpr int ObjectsRenamed = 7;
constexpr int ObjectSetChanged = 8;
constexpr int ClassesChanged = 9;
constexpr int ObjectsChangedOutside = 10;
constexpr int HostGoesAway = 11;
constexpr int Resume = 13;
constexpr int ObjectsMoved = 14;
constexpr int ReleaseRenderResources = 15;
constexpr int Suspend = 19;
constexpr int CollectHiddenObjects = 20;
} // namespace EventCode

/// Codes of `IPlugin::OnViewRequest`.
namespace ViewRequest {
/// Data: pointer to a 32-bit view number. The view leaves the plug-in.
constexpr int Detach = 8;
/// Data: pointer to a 32-bit view number; the bool receives whether it follows the film.
constexpr int IsAttached = 9;
/// Data: pointer to an ObjectList that the user moved.
constexpr int ObjectsMoved = 10;
} // namespace ViewRequest
