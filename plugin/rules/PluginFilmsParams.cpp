#include "plugin/rules/PluginFilmsParams.h"

#include <algorithm>

namespace {

constexpr std::uint32_t kOldFilterBytes = 9;
constexpr std::uint32_t kStoredBytes = KeyKind::FilterCount;

MovieParamsRecord* FindRecord(std::list<MovieParamsRecord>& records, const std::string& filmName,
                              const std::string& objectName) {
    const auto found = std::ranges::find_if(records, [&](const MovieParamsRecord& record) {
        return record.filmName == filmName && record.objectName == objectName;
    });
    return found == records.end() ? nullptr : &*found;
}

void CopyFilter(const std::uint8_t* filter, KeyFilter& to) {
    if (filter == nullptr) {
        to.fill(1);
    } else {
        std::copy_n(filter, to.size(), to.begin());
    }
}

bool ReadFilter(ChunkReader& reader, bool newForm, KeyFilter& filter) {
    if (!newForm) {
        return reader.Read(filter.data(), kOldFilterBytes);
    }
    std::int32_t size = 0;
    if (!reader.Read(&size, sizeof(size))) {
        return false;
    }
    if (size <= 0) {
        return true;
    }
    const auto kept = std::min(static_cast<std::uint32_t>(size), kStoredBytes);
    if (!reader.Read(filter.data(), kept)) {
        return false;
    }
    reader.Skip(static_cast<std::uint32_t>(size) - kept);
    return true;
}

} // namespace

std::uint8_t* CPluginFilmsParams::Find(const std::string& filmName, const std::string& objectName,
                                       std::uint8_t* expanded) {
    MovieParamsRecord* record = FindRecord(records, filmName, objectName);
    if (record == nullptr) {
        return nullptr;
    }
    if (expanded != nullptr) {
        *expanded = record->expanded;
    }
    return record->keyFilter.data();
}

std::uint8_t* CPluginFilmsParams::Set(const std::string& filmName, const std::uint8_t* filter,
                                      std::uint8_t expanded, int what, const std::string& objectName) {
    MovieParamsRecord* record = FindRecord(records, filmName, objectName);
    if (record == nullptr) {
        record = &records.emplace_back();
        record->filmName = filmName;
        record->objectName = objectName;
        what = kFilter | kExpanded;
    }
    if ((what & kFilter) != 0) {
        CopyFilter(filter, record->keyFilter);
    }
    if ((what & kExpanded) != 0) {
        record->expanded = expanded;
    }
    return record->keyFilter.data();
}

void CPluginFilmsParams::RemoveFilm(const std::string& filmName) {
    const auto found = std::ranges::find(records, filmName, &MovieParamsRecord::filmName);
    if (found != records.end()) {
        records.erase(found);
    }
}

void CPluginFilmsParams::WriteRecords(fs::file& file, bool withObjectNames) const {
    const auto count = static_cast<std::int32_t>(records.size());
    file.Write(&count, sizeof(count));
    for (const MovieParamsRecord& record : records) {
        file.WriteString(record.filmName.c_str());
        if (withObjectNames) {
            file.WriteString(record.objectName.c_str());
        }
        const std::uint8_t expanded = record.expanded != 0 ? 1 : 0;
        file.Write(&expanded, sizeof(expanded));
        const auto size = static_cast<std::int32_t>(kStoredBytes);
        file.Write(&size, sizeof(size));
        file.Write(record.keyFilter.data(), size);
    }
}

void CPluginFilmsParams::Read(ChunkReader& reader, bool newForm, const std::string& objectName) {
    ReadRecords(reader, newForm, &objectName);
}

void CPluginFilmsParams::ReadWithObjectNames(ChunkReader& reader, bool newForm) {
    ReadRecords(reader, newForm, nullptr);
}

void CPluginFilmsParams::ReadRecords(ChunkReader& reader, bool newForm, const std::string* objectName) {
    Clear();
    std::int32_t count = 0;
    if (!reader.Read(&count, sizeof(count))) {
        return;
    }
    for (; count > 0 && reader.Left() > 0; --count) {
        MovieParamsRecord record;
        if (!reader.ReadString(record.filmName)) {
            return;
        }
        if (objectName != nullptr) {
            record.objectName = *objectName;
        } else if (!reader.ReadString(record.objectName)) {
            return;
        }
        if (!reader.Read(&record.expanded, sizeof(record.expanded)) ||
            !ReadFilter(reader, newForm, record.keyFilter)) {
            return;
        }
        records.push_back(std::move(record));
    }
}
