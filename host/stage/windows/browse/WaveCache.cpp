#include "host/stage/windows/browse/WaveCache.h"

#include <algorithm>
#include <sys/stat.h>

namespace stage {

std::shared_ptr<sound::SoundWave> WaveCache::Get(const std::string& path) {
    struct stat status = {};
    const bool exists = stat(path.c_str(), &status) == 0;
    const auto size = exists ? static_cast<std::int64_t>(status.st_size) : -1;
    const std::int64_t changed =
        std::int64_t{status.st_mtim.tv_sec} * 1'000'000'000 + std::int64_t{status.st_mtim.tv_nsec};
    const auto found = std::ranges::find(entries, path, &Entry::path);
    if (found != entries.end() && found->size == size && found->changed == changed) {
        entries.splice(entries.begin(), entries, found);
        return found->wave;
    }
    if (found != entries.end()) {
        entries.erase(found);
    }
    auto wave = std::make_shared<sound::SoundWave>(path);
    entries.push_front({path, size, changed, wave});
    if (entries.size() > kMost) {
        entries.pop_back();
    }
    return wave;
}

} // namespace stage
