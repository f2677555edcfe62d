#pragma once

#include <array>
#include <list>
#include <unordered_map>

class EditorObject;

/// The matrix that an object has outside of films.
struct ObjectMatrixRecord {
    EditorObject* object = nullptr;
    std::array<float, 16> matrix{};
};

/// The records of a level's objects in the order in which they were added, found by object at once: leaving a
/// level asks for each of them. An object may have several.
class ObjectMatrixRecords {
public:
    ObjectMatrixRecord& Add(EditorObject* object);
    /// The first of an object, null if it has none.
    ObjectMatrixRecord* Find(const EditorObject* object);
    const ObjectMatrixRecord* Find(const EditorObject* object) const;
    void RemoveFirst(const EditorObject* object);
    void RemoveAll(const EditorObject* object);
    void clear();

    std::size_t size() const { return records.size(); }
    bool empty() const { return records.empty(); }
    const ObjectMatrixRecord& front() const { return records.front(); }
    auto begin() const { return records.begin(); }
    auto end() const { return records.end(); }

private:
    using Records = std::list<ObjectMatrixRecord>;
    struct Place {
        Records::iterator first;
        int count = 1; ///< records of the object
    };

    Records records;
    std::unordered_map<const EditorObject*, Place> places;
};
