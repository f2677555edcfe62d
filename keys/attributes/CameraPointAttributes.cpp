#include "keys/attributes/AttrBrowsers.h"
#include "keys/attributes/FillAndApply.h"
#include "keys/attributes/HandleRows.h"
#include "plugin/contract/ClassIds.h"
#include "plugin/contract/FilmTrack.h"
#include "plugin/session/FilmSession.h"

namespace {

constexpr VectorRowNames kPoint{{"X", "Y", "Z"}, "POSITION"}; // in the space of the link
constexpr const char* kLinkCategory = "LINK";
constexpr const char* kElement = "Mesh element name";

void TellTrack(const CFilmLinkedKey& record) {
    if (record.track != nullptr) {
        record.track->NotifyKeysChanged(record.kind);
    }
}

/// Required: the fields are written, not the setters called, which take world points.
void Store(CFilmLinkedKey& record, Vector3& target, const Vector3& point) {
    target = point;
    TellTrack(record);
}

/// The level's object with a matrix of this id, or null.
EditorObject* FindTarget(const FilmSession& session, int id) {
    const ILevelData* level = session.GetLevelData();
    EditorObject* object = level != nullptr ? level->FindObject(id) : nullptr;
    return object != nullptr && object->IsA(ClassId::LevelObject) ? object : nullptr;
}

void ApplyLink(const AttrRows& rows, CFilmLinkedKey& record, const FilmSession& session) {
    std::int32_t id = 0;
    if (ReadObjectId(rows, kLinkCategory, id)) {
        record.SetLinkObject(FindTarget(session, id));
    }
    std::string element;
    if (ReadText(rows, kElement, kLinkCategory, element)) {
        record.SetLinkElement(element);
    }
}

} // namespace

void FillCameraPoint(AttrRows& rows, CFilmLinkedKey& record) {
    AddVector(rows, kPoint, record.value);
    AddHandle(rows, kInGroup, record.inMethod, record.inHandle);
    AddHandle(rows, kOutGroup, record.outMethod, record.outHandle);
    AddObjectId(rows, kLinkCategory, record.linkObjectId);
    AddText(rows, kElement, kLinkCategory, record.linkElement, &BrowseMeshElementName);
}

void ApplyCameraPoint(const AttrRows& rows, CFilmLinkedKey& record, const AttrScope& scope) {
    Vector3 value = record.value;
    if (ReadVector(rows, kPoint, value)) {
        Store(record, record.value, value);
    }
    ApplyHandle(
        rows, kInGroup, record.inHandle, [&record](int method) { record.SetInMethod(method); },
        [&record](const Vector3& handle) { Store(record, record.inHandle, handle); });
    ApplyHandle(
        rows, kOutGroup, record.outHandle, [&record](int method) { record.SetOutMethod(method); },
        [&record](const Vector3& handle) { Store(record, record.outHandle, handle); });
    ApplyLink(rows, record, scope.session);
}
