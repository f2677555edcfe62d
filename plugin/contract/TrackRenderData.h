#pragma once

#include "plugin/contract/Types.h"

#include <cstdint>
#include <memory>

/// One block of a point strip.
struct PointBlock {
    std::unique_ptr<Vector3[]> points;
    PointBlock* next = nullptr; ///< owned by the strip
    PointBlock* previous = nullptr;
};

/// A growing array of points in linked blocks that never move, so that addresses stay good.
class PointStrip {
public:
    static constexpr std::int32_t kBlockSize = 100;

    PointStrip() : current(&first) { first.points = std::make_unique<Vector3[]>(kBlockSize); }
    ~PointStrip() {
        for (PointBlock* block = first.next; block != nullptr;) {
            PointBlock* next = block->next;
            delete block;
            block = next;
        }
    }
    PointStrip(const PointStrip&) = delete;
    PointStrip& operator=(const PointStrip&) = delete;

    /// The address of a point; the strip grows to hold it. A negative index gives the first point.
    Vector3* At(std::int32_t index) {
        if (index < 0) {
            return &first.points[0];
        }
        if (index >= count) {
            count = index + 1;
        }
        while (index < currentBase) {
            current = current->previous;
            currentBase -= blockSize;
        }
        while (index >= currentBase + blockSize) {
            if (current->next == nullptr) {
                Append();
            }
            current = current->next;
            currentBase += blockSize;
        }
        currentOffset = index - currentBase;
        return &current->points[currentOffset];
    }

    PointBlock first;
    std::int32_t blockSize = kBlockSize;
    std::int32_t count = 0; ///< one more than the highest index ever asked for; never falls
    PointBlock* current;    ///< where the last look-up ended
    std::int32_t currentBase = 0;
    std::int32_t currentOffset = 0;

private:
    void Append() {
        auto* block = new PointBlock;
        block->points = std::make_unique<Vector3[]>(static_cast<std::size_t>(blockSize));
        block->previous = current;
        current->next = block;
    }
};

/// The path of one camera track in world points, filled by IFilm::SampleCameraPath.
struct TrackRenderData {
    CFilmTrack* track = nullptr;
    std::int32_t detail = 0; ///< segments between neighbouring keys
    PointStrip strips[2];    ///< eye path, target path
};
