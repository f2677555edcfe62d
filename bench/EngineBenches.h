#pragma once

namespace films_bench {

/// Each registers its benchmarks under their names.
void RegisterPoseBenches();
void RegisterEditBenches();
void RegisterFileBenches();
void RegisterPluginBenches();
void RegisterTimelineBenches();
void RegisterTimelineDrawBenches();
void RegisterTimelineWindowBenches();
void RegisterKeyDragBenches();
void RegisterKeyDragFrameBenches();
void RegisterCameraPathBenches();
void RegisterStageObjectsBenches();
void RegisterAttributesBenches();
void RegisterFilterBenches();
void RegisterTrackFileBenches();
void RegisterUndoBenches();

} // namespace films_bench
