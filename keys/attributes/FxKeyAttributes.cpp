#include "keys/attributes/AttrBrowsers.h"
#include "keys/attributes/FillAndApply.h"
#include "keys/attributes/RowAccess.h"
#include "plugin/contract/Condition.h"
#include "plugin/contract/FilmTrack.h"

#include <cmath>

namespace {

constexpr const char* kBaseCategory = "BASE DATA";
constexpr const char* kName = "FX name";
constexpr const char* kLinkCategory = "LINK";
constexpr const char* kElement = "Mesh element name";
constexpr const char* kFlagsCategory = "FLAGS";
constexpr const char* kDelete = "Delete";
constexpr VectorRowNames kPosition{{"Position X", "Position Y", "Position Z"}, "POSITION"};
constexpr VectorRowNames kNormal{{"Normal X", "Normal Y", "Normal Z"}, "NORMAL"};
constexpr VectorRowNames kForward{{"Forward X", "Forward Y", "Forward Z"}, "FORWARD"};

// Operands of "Mesh element name is shown while Object ID is not ...". Both are texts; an id's operand is
// read as the four bytes of an int32.
constexpr char kNoObject[4] = "";
// Required: sequences say "-1", which is 12589 as an int32, so their element shows without an object too.
constexpr char kMinusOne[4] = "-1";

void ShowWithObject(CMember& element, CMember& objectId, int kind) {
    const char* operand = kind == KeyKind::FxSequence ? kMinusOne : kNoObject;
    element.AddCondition(&objectId, CCondition::kNotEqual, operand, /*upper*/ nullptr);
}

void AddName(AttrRows& rows, const CFilmFxKey& record) {
    AddText(rows, kName, kBaseCategory, record.fxName, &BrowseEffect);
}

void AddDelete(AttrRows& rows, const CFilmFxKey& record) {
    AddBool(rows, kDelete, kFlagsCategory, record.deleteFlag != 0);
}

void ApplyLink(const AttrRows& rows, CFilmFxKey& record) {
    std::int32_t objectId = 0;
    if (AsLevelTrack(record.track) != nullptr && ReadObjectId(rows, kLinkCategory, objectId)) {
        record.SetOutHandle(&objectId);
    }
    std::string element;
    if (ReadText(rows, kElement, kLinkCategory, element)) {
        record.SetValue(&element);
    }
}

/// Required: a normal of no length is divided by it all the same.
void Normalise(Vector3& v) {
    const float scale = 1.0f / std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
    v = {v.x * scale, v.y * scale, v.z * scale};
}

} // namespace

void FillPlacedFx(AttrRows& rows, CFilmFxKey& record) {
    AddName(rows, record);
    CMember& element = AddText(rows, kElement, kLinkCategory, record.linkElement, &BrowseMeshElementName);
    if (AsLevelTrack(record.track) != nullptr) {
        ShowWithObject(element, AddObjectId(rows, kLinkCategory, record.objectId), record.kind);
    }
    AddVector(rows, kPosition, record.position);
    AddVector(rows, kNormal, record.normal);
    if (record.kind == KeyKind::FxParticle) {
        AddVector(rows, kForward, record.forward);
    }
    if (record.kind != KeyKind::FxFlare) {
        AddDelete(rows, record);
    }
}

void ApplyPlacedFx(const AttrRows& rows, CFilmFxKey& record) {
    ReadText(rows, kName, kBaseCategory, record.fxName);
    ApplyLink(rows, record);
    ReadVector(rows, kPosition, record.position);
    const bool hasNormal = ReadVector(rows, kNormal, record.normal);
    if (hasNormal) {
        Normalise(record.normal);
    }
    if (record.kind == KeyKind::FxParticle) {
        ReadVector(rows, kForward, record.forward);
        if (hasNormal) {
            Normalise(record.normal); // Required: once more, and the forward vector never.
        }
    }
    if (record.kind != KeyKind::FxFlare) {
        ReadBool(rows, kDelete, kFlagsCategory, record.deleteFlag);
    }
}

void FillScreenFx(AttrRows& rows, CFilmFxKey& record) {
    AddName(rows, record);
    if (record.kind == KeyKind::FxBlind) {
        AddDelete(rows, record);
    }
}

void ApplyScreenFx(const AttrRows& rows, CFilmFxKey& record) {
    ReadText(rows, kName, kBaseCategory, record.fxName);
    if (record.kind == KeyKind::FxBlind) {
        ReadBool(rows, kDelete, kFlagsCategory, record.deleteFlag);
    }
}
