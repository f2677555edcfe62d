#include "plugin/rules/ObjectMatrixRecords.h"

#include <algorithm>

ObjectMatrixRecord& ObjectMatrixRecords::Add(EditorObject* object) {
    records.push_back({object, {}});
    const auto [place, isFirst] = places.try_emplace(object, Place{std::prev(records.end())});
    if (!isFirst) {
        ++place->second.count;
    }
    return records.back();
}

ObjectMatrixRecord* ObjectMatrixRecords::Find(const EditorObject* object) {
    const auto place = places.find(object);
    return place != places.end() ? &*place->second.first : nullptr;
}

const ObjectMatrixRecord* ObjectMatrixRecords::Find(const EditorObject* object) const {
    const auto place = places.find(object);
    return place != places.end() ? &*place->second.first : nullptr;
}

void ObjectMatrixRecords::RemoveFirst(const EditorObject* object) {
    const auto place = places.find(object);
    if (place == places.end()) {
        return;
    }
    const auto behind = records.erase(place->second.first);
    if (--place->second.count == 0) {
        places.erase(place);
    } else {
        place->second.first = std::ranges::find(behind, records.end(), object, &ObjectMatrixRecord::object);
    }
}

void ObjectMatrixRecords::RemoveAll(const EditorObject* object) {
    while (Find(object) != nullptr) {
        RemoveFirst(object);
    }
}

void ObjectMatrixRecords::clear() {
    places.clear();
    records.clear();
}
