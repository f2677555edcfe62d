#pragma once

#include "plugin/contract/EditorObject.h"
#include "plugin/contract/Types.h"
#include "plugin/rules/ObjectMatrixRecords.h"

#include <unordered_set>

class FilmSession;

/// Keeps where the level's objects stand outside of films, and puts them back there: a film that is open
/// poses them, and what the user sets while none is open is their own place.
class ObjectMatrices {
public:
    using ObjectSet = std::unordered_set<const EditorObject*>;

    /// The records are the plug-in object's `objectMatrices`.
    ObjectMatrices(FilmSession& openSession, ObjectMatrixRecords& kept)
        : session(openSession), records(kept) {}
    ObjectMatrices(const ObjectMatrices&) = delete;
    ObjectMatrices& operator=(const ObjectMatrices&) = delete;

    void Add(EditorObject* object);
    bool Has(const EditorObject* object) const { return records.Find(object) != nullptr; }
    /// These were changed outside of films; null means the selection. A film that is open is posed anew.
    void Refresh(const ObjectList* objects);
    void Restore() const;
    void RestoreOne(const EditorObject* object) const;
    /// Records of all objects of the level, anew.
    void Rebuild();
    /// World matrix of the object. With no record the user is warned and the identity is given.
    const float* Get(const EditorObject* object) const;
    /// The object stands outside of films where it stands now. Nothing without a record.
    void TakePresent(const EditorObject& object);
    /// The object is deleted: its children stay where they are, but for those that are deleted with it.
    void RecordChildren(const EditorObject& object, const ObjectSet& deleted);

private:
    FilmSession& session;
    ObjectMatrixRecords& records;
};
