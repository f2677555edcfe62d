#pragma once

namespace films_bench {

/// Each registers its benchmarks under their names.
void RegisterPoseBenches();
void RegisterEditBenches();
void RegisterFileBenches();

} // namespace films_bench
