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

} // namespace films_bench
