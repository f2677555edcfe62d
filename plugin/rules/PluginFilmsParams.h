#pragma once

#include "plugin/contract/File.h"
#include "plugin/contract/KeyKindTable.h"
#include "plugin/rules/ChunkReader.h"

#include <array>
#include <cstdint>
#include <list>
#include <string>

/// One byte per key kind, non-zero to show that kind. Levels hold the first `KeyKind::FilterCount`; later
/// kinds are shown again at the next loading.
using KeyFilter = std::array<std::uint8_t, kKeyKindCount>;

/// What the timeline remembers of one track in one film.
struct MovieParamsRecord {
    MovieParamsRecord() { keyFilter.fill(1); }
    bool operator==(const MovieParamsRecord&) const = default;

    std::string objectName; ///< "Level" in the level's store, the camera's name in a camera's
    std::string filmName;
    KeyFilter keyFilter;
    std::uint8_t expanded = 0;
};

/// Key filter and fold state of tracks, by film and object. Owned by the plug-in object (level, cameras) or
/// attached to a level object as its plug-in data.
class CPluginFilmsParams {
public:
    /// Bits of `what` in `Set`.
    static constexpr int kFilter = 1;
    static constexpr int kExpanded = 2;

    /// The filter bytes of the first record of both names, or null. `expanded` may be null.
    std::uint8_t* Find(const std::string& filmName, const std::string& objectName, std::uint8_t* expanded);
    /// Updates what is named in `what`; a null filter means all 1. Without a record one is appended with
    /// the filter and the byte given, whatever `what` says.
    std::uint8_t* Set(const std::string& filmName, const std::uint8_t* filter, std::uint8_t expanded,
                      int what, const std::string& objectName);
    void Clear() { records.clear(); }
    /// Takes out the first record of that film.
    void RemoveFilm(const std::string& filmName);

    void Write(fs::file& file) const { WriteRecords(file, /*withObjectNames*/ false); }
    void WriteWithObjectNames(fs::file& file) const { WriteRecords(file, /*withObjectNames*/ true); }
    /// Replaces the records by those of a chunk. Reads no further than the reader's chunk; a record
    /// that is cut short is dropped. The older form has 9 filter bytes; what isn't read stays 1.
    void Read(ChunkReader& reader, bool newForm, const std::string& objectName);
    void ReadWithObjectNames(ChunkReader& reader, bool newForm);

    std::list<MovieParamsRecord> records;

private:
    void WriteRecords(fs::file& file, bool withObjectNames) const;
    void ReadRecords(ChunkReader& reader, bool newForm, const std::string* objectName);
};
