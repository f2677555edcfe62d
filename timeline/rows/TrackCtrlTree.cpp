#include "framework/MessageBox.h"
#include "keys/rules/KeyKinds.h"
#include "keys/views/TrackKey.h"
#include "timeline/rows/RowTree.h"
#include "timeline/rows/TimelineContext.h"
#include "timeline/rows/TrackCtrl.h"

#include <algorithm>

namespace {

/// Mesh elements of this type are bones and nodes.
constexpr int kNodeElement = 1;

} // namespace

CTrackCtrl* CTrackCtrl::FindChild(int childKind, int childSubIndex) const {
    return FindChildRow(children, childKind, childSubIndex, kAnySubIndex);
}

bool CTrackCtrl::HasChildNamed(const std::string& childName) const {
    return std::ranges::any_of(children, [&](const CTrackCtrl* child) { return child->name == childName; });
}

CTrackCtrl* CTrackCtrl::FindLastAnimationRow() {
    return lastAnimationRow = FindLastRowOfKind(children, KeyKind::Animation);
}

bool CTrackCtrl::AddChildRow(CTrackCtrl* row, bool first) {
    if (row == nullptr) {
        return false;
    }
    if (row->IsCameraRow()) {
        if (!IsRoot() || (track != nullptr && !track->IsA(ClassId::LevelTrack))) {
            return false;
        }
        row->SetCameraIndex(first ? 0 : ++subIndex);
    } else if (FindChild(row->kind, kAnySubIndex) != nullptr) {
        return false;
    }
    row->track = track;
    row->parent = this;
    row->NameAfterKind();
    if (row->IsCameraRow()) {
        PlaceCameraRow(row);
    } else {
        children.push_back(row);
    }
    FindLastAnimationRow();
    return true;
}

void CTrackCtrl::NameAfterKind() {
    name = GetKeyKindName(kind);
    if (subIndex != -1) {
        name += '(';
        name += std::to_string(subIndex);
        name += ')';
    }
}

void CTrackCtrl::PlaceCameraRow(CTrackCtrl* row) {
    children.insert(CameraRowPlace(children, row->subIndex), row);
}

bool CTrackCtrl::AddChildOfKind(int childKind) {
    TimelineContext* timeline = TimelineOf(this);
    CTrackCtrl* row = timeline != nullptr ? timeline->AddTrackCtrl(/*redraw*/ false) : nullptr;
    if (row == nullptr) {
        return false;
    }
    row->kind = childKind;
    return AddChildRow(row, /*first*/ false);
}

void CTrackCtrl::CreateChildRows(int cameraCount) {
    const ChildRowKinds rows = ChildRowKindsOf(track);
    if (rows.kinds.empty()) {
        return;
    }
    const auto add = [this](int childKind) { return AddChildOfKind(childKind); };
    for (int camera = 0; camera < std::min(cameraCount, kMaxCameraRows); ++camera) {
        if (!add(KeyKind::Camera)) {
            return;
        }
    }
    if (!std::ranges::all_of(rows.kinds, add)) {
        return;
    }
    if (rows.hasElements) {
        const Watch watched(this);
        CreateAnimationRows(); // Required: its failure doesn't end this.
        if (!watched.IsAlive()) {
            return;
        }
    }
    for (const int childKind : rows.behindElements) {
        add(childKind);
    }
}

void CTrackCtrl::RemoveChildRow(CTrackCtrl* row) {
    if (row == nullptr || std::erase(children, row) == 0) {
        return;
    }
    if (lastAnimationRow == row) {
        lastAnimationRow = nullptr;
    }
    if (!row->IsCameraRow()) {
        return;
    }
    for (CTrackCtrl* child : children) {
        if (child->IsCameraRow() && child->subIndex > row->subIndex) {
            child->SetCameraIndex(child->subIndex - 1);
            child->NameAfterKind();
        }
    }
    --subIndex;
}

void CTrackCtrl::SetCameraIndex(int index) {
    subIndex = index;
    if (!IsCameraRow()) {
        return;
    }
    for (const CTrackKey* key : keys) {
        if (key->record != nullptr) {
            static_cast<CFilmCameraKey*>(key->record)->priority = index;
        }
    }
}

bool CTrackCtrl::CreateAnimationRows() {
    TimelineContext* timeline = TimelineOf(this);
    EditorObject* object = FindObject();
    if (timeline == nullptr || object == nullptr) {
        return false;
    }
    for (const IFilmKey* record : track->keys) {
        if (record->kind != KeyKind::Animation) {
            continue;
        }
        // A copy: the key may be renamed on the way.
        const std::string element = static_cast<const CFilmAnimationKey*>(record)->meshElement;
        if (!element.empty() && !EnsureAnimationRow(*timeline, *object, element)) {
            return false;
        }
    }
    timeline->ArrangeRows(/*invalidate*/ true, /*move*/ false);
    return true;
}

bool CTrackCtrl::EnsureAnimationRow(TimelineContext& timeline, EditorObject& object,
                                    const std::string& element) {
    if (object.FindMeshElement(element) < 0 && !AskForMeshElement(object, element)) {
        return false;
    }
    // Required: an element that was just renamed away is still looked for.
    if (HasChildNamed(element)) {
        return true;
    }
    CTrackCtrl* row = timeline.AddAnimationRow(this, element);
    if (row == nullptr) {
        return false;
    }
    row->kind = KeyKind::Animation;
    return InsertBeforeLastAnimationRow(row);
}

/// False when the rows were rebuilt while the user was asked.
bool CTrackCtrl::AskForMeshElement(EditorObject& object, const std::string& element) {
    const FilmSession* session = GetSession();
    const Watch watched(this);
    AfxMessageBox("Warning, cannot find mesh element \"" + element + "\" in \"" + object.meshName +
                  "\" mesh");
    if (!watched.IsAlive() || session == nullptr || session->editor == nullptr) {
        return false;
    }
    const std::string chosen = session->editor->BrowseMeshElement(&object, "");
    if (!watched.IsAlive()) {
        return false;
    }
    RenameAnimationKeys(element, chosen);
    return true;
}

bool CTrackCtrl::InsertBeforeLastAnimationRow(CTrackCtrl* row) {
    if (row == nullptr) {
        return false;
    }
    const auto place = std::ranges::find(children, FindLastAnimationRow());
    if (place != children.end()) {
        children.insert(place, row);
    }
    return true;
}

CTrackCtrl* CTrackCtrl::FindAnimationRowFor(CTrackCtrl* row) {
    if (row == nullptr) {
        return nullptr;
    }
    row->track = track;
    row->parent = this;
    const EditorObject* object = FindObject();
    const MeshElement* element =
        object != nullptr ? object->GetMeshElement(object->FindMeshElement(row->name)) : nullptr;
    if (element == nullptr) {
        return nullptr;
    }
    CTrackCtrl* before = FindLastAnimationRow();
    // No mesh has so many elements one above the other: a damaged one may go round in circles.
    constexpr int kMostAncestors = 10000;
    for (int i = 0; i < kMostAncestors && element->parent >= 0; ++i) {
        element = object->GetMeshElement(element->parent);
        if (element == nullptr || element->type != kNodeElement) {
            break;
        }
        const auto found = std::ranges::find_if(children, [element](const CTrackCtrl* child) {
            return child->kind == KeyKind::Animation && child->name == element->name;
        });
        before = found != children.end() ? *found : before;
    }
    return before;
}

void CTrackCtrl::RenameAnimationKeys(const std::string& from, const std::string& to) {
    if (track == nullptr) {
        return;
    }
    for (IFilmKey* record : track->keys) {
        if (record->kind == KeyKind::Animation &&
            static_cast<const CFilmAnimationKey*>(record)->meshElement == from) {
            record->SetValue(&to);
            TellWritten(record);
        }
    }
}
