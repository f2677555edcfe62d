#include "keys/views/TrackKey.h"

#include "keys/rules/Pixels.h"
#include "keys/views/KeyViewContext.h"
#include "keys/views/KeyViewList.h"

#include <algorithm>
#include <cmath>

CTrackKey::~CTrackKey() {
    EndWatches();
    LeaveRow();
}

void CTrackKey::LeaveRow() {
    if (list != nullptr) {
        list->Remove(this);
    }
}

void CTrackKey::SetSelected(bool flag) {
    selected = flag;
    if (state == kHidden) {
        return;
    }
    state = flag ? kHighlighted : kNormal;
    IKeyAttributesDlg* dialog = GetAttributesDlg();
    if (dialog != nullptr && dialog->IsVisible() && !context->IsRebuilding()) {
        dialog->SetKey(this, /*refresh*/ false);
    }
}

void CTrackKey::SaveTime() {
    savedTime = time;
}

void CTrackKey::RestoreTime(bool keep) {
    if (!keep) {
        SetPosition(savedTime, /*viewOnly*/ false);
    }
    savedTime = -1.0f;
}

void CTrackKey::OnDoubleClick() {
    if (context != nullptr) {
        context->activeKey = this;
    }
    ShowAttributes();
}

IKeyAttributesDlg* CTrackKey::GetAttributesDlg() const {
    return context != nullptr ? context->session.keyAttributesDlg.get() : nullptr;
}

void CTrackKey::ShowAttributes() {
    constexpr int kShow = 5;
    IKeyAttributesDlg* dialog = GetAttributesDlg();
    if (dialog != nullptr && !dialog->locked) {
        dialog->SetKey(this, /*refresh*/ false);
        dialog->Show(kShow);
    }
}

void CTrackKey::OnLButtonDown(int /*x*/, int /*y*/, float /*pixelsPerSecond*/, CPoint /*point*/,
                              float /*pressTime*/) {
    if (context != nullptr) {
        context->activeKey = this;
    }
}

bool CTrackKey::CopyFrom(const CTrackKey* other, bool copyTime) {
    if (other == nullptr) {
        return false;
    }
    name = other->name;
    normalColor = other->normalColor;
    highlightColor = other->highlightColor;
    if (other->rectHeight >= 0) {
        rectHeight = other->rectHeight;
    }
    if (copyTime) {
        SetPosition(other->time, /*viewOnly*/ false);
    }
    if (record != nullptr && other->record != nullptr) {
        record->CopyFrom(*other->record, 0);
    }
    return true;
}

bool CTrackKey::Equals(const CTrackKey* other, bool compareTime) const {
    if (other == nullptr) {
        return false;
    }
    if (compareTime && std::fabs(time - other->time) >= kSameTimeSeconds) {
        return false;
    }
    if (record != nullptr && other->record != nullptr && !record->Equals(*other->record, compareTime)) {
        return false;
    }
    return name == other->name && normalColor == other->normalColor &&
           highlightColor == other->highlightColor && rectHeight == other->rectHeight;
}

void CTrackKey::SetPosition(float newTime, bool viewOnly) {
    time = newTime;
    TimesChanged();
    if (!viewOnly && record != nullptr) {
        record->SetTime(time);
        record->SetEndTime(time + GetDuration());
    }
}

void CTrackKey::ApplyKeyParams(const KeyKindParams* params) {
    if (params == nullptr) {
        return;
    }
    TakeLook(*params);
    // Required: a selected view loses its highlight, not its selection.
    state = params->visible ? kNormal : kHidden;
}

void CTrackKey::TakeLook(const KeyKindParams& params) {
    normalColor = params.normalColor;
    highlightColor = params.highlightColor;
    if (params.rectHeight >= 0) {
        rectHeight = params.rectHeight;
    }
}

bool CTrackKey::IsDrawnBefore(const CTrackKey* other) const {
    if (other == nullptr) {
        return false;
    }
    if (rectHeight != other->rectHeight) {
        return rectHeight < other->rectHeight;
    }
    return GetDuration() < other->GetDuration();
}

float CTrackKey::GetNaturalDuration() const {
    return record != nullptr ? record->GetNaturalDuration() : -1.0f;
}

int CTrackKey::GetDrawnHeight() const {
    return std::clamp(rectHeight, -kFarPixel, kFarPixel);
}

void CTrackKey::TimesChanged() {
    if (list != nullptr) {
        list->TimesChanged();
    }
}
