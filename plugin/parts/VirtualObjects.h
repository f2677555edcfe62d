#pragma once

#include "plugin/contract/EditorObject.h"
#include "plugin/contract/Types.h"

#include <list>
#include <string>

class FilmSession;
class IObjectCollection;

/// A level object that is kept for films only.
struct VirtualObjectRecord {
    std::string objectName;
    std::string meshName;
    std::string className; ///< the real class, to turn the object back
    EditorObject* object = nullptr;
};

using VirtualObjectRecords = std::list<VirtualObjectRecord>;

/// Makes level objects virtual, which the level's own list leaves out, and turns them back.
class VirtualObjects {
public:
    /// The records are the plug-in object's `virtualObjects`.
    VirtualObjects(const FilmSession& openSession, VirtualObjectRecords& kept)
        : session(openSession), records(kept) {}
    VirtualObjects(const VirtualObjects&) = delete;
    VirtualObjects& operator=(const VirtualObjects&) = delete;

    /// Asks the user first; null does nothing.
    void ConvertToVirtual(const ObjectList* objects);
    void ConvertToNormal(const ObjectList* objects);
    void RemoveRecord(const EditorObject* object);
    /// The object is destroyed.
    void ForgetObject(const EditorObject* object);
    /// Objects were renamed or changed.
    void RefreshNames();
    /// Leaves the objects out of the level's list, and puts them into the collection.
    void Hide(IObjectCollection& collection) const;

private:
    void ConvertOne(EditorObject* object, const ObjectList& others);
    void TellClassesChanged() const;

    const FilmSession& session;
    VirtualObjectRecords& records;
};
