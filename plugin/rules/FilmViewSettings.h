#pragma once

#include <cstdint>

/// What the timeline of one film shows. Stored in the level as 11 words, so the layout is a file format.
struct FilmViewSettings {
    /// Bits of `mask`: which members an update sets. Any bit from 128 up sets cursorTime.
    static constexpr std::uint32_t kMovie = 1;
    static constexpr std::uint32_t kView = 2;
    static constexpr std::uint32_t kLeftWidth = 4;
    static constexpr std::uint32_t kRowHeight = 8;
    static constexpr std::uint32_t kTicsDistance = 16;
    static constexpr std::uint32_t kBigTics = 32;
    static constexpr std::uint32_t kLabelDistance = 64;
    static constexpr std::uint32_t kCursorTime = 128;

    /// Everything but cursorTime.
    void Reset();
    /// Copies what the update's mask names; the stored mask stays.
    void Apply(const FilmViewSettings& update);

    std::uint32_t mask = 0xFFFFFFFF;
    float movieStart = 0.0f; ///< seconds
    float movieEnd = 10.0f;
    float viewStart = 0.0f;
    float viewEnd = 10.0f;
    std::int32_t leftWidth = 150; ///< pixels
    std::int32_t rowHeight = 20;  ///< pixels
    float ticsDistance = 1.0f;    ///< seconds
    std::int32_t bigTics = 5;
    std::int32_t labelDistance = 4;
    float cursorTime = 0.0f;
};
static_assert(sizeof(FilmViewSettings) == 44);
