#include "keys/attributes/AttrBrowsers.h"

#include "files/ChooseMovieCameraDlg.h"
#include "files/QuorlEdFileDialog.h"
#include "framework/ColorDialog.h"
#include "keys/properties/NumberText.h"
#include "keys/rules/Pixels.h"
#include "plugin/session/FilmSession.h"
#include "timeline/rows/TimelineContext.h"
#include "timeline/rows/TrackCtrl.h"

namespace {

constexpr const char* kSoundExtension = ".wav";
constexpr const char* kSoundFilter = "Wav files (*.wav)|*.wav|OGG files (*.ogg)|*.ogg||";

/// What modelling tools put before the names of a biped's bones, with a blank behind it.
constexpr const char* kBonePrefix = "Bip01";
constexpr std::size_t kBonePrefixLength = 5;

constexpr float kChannelStep = 0.003921569f; // 1 / 255

/// The name as the row shows it: without the prefix of bones and the character behind it.
std::string Shortened(const std::string& element) {
    const bool isBone = element.starts_with(kBonePrefix) && element.size() > kBonePrefixLength;
    return isBone ? element.substr(kBonePrefixLength + 1) : element;
}

/// The object of the request if the level has it, else null: anything may have been deleted since it was
/// noted.
EditorObject* LivingObject(const AttrBrowseRequest& request) {
    return request.session->IsInLevel(request.object) ? request.object : nullptr;
}

/// From 0 to 1 to eight bits.
int ToByte(float channel) {
    return CutToInt(channel * 255.0f) & 0xFF;
}

std::string ChannelText(int byte) {
    return FixedText(static_cast<float>(byte) * kChannelStep, /*width*/ 5, /*decimals*/ 3);
}

} // namespace

void BrowseCamera(AttrBrowseRequest* request) {
    CChooseMovieCameraDlg dialog(CWnd::GetActiveWindow()); // which gets the keyboard back
    dialog.film = request->session->GetCurrentFilm();
    dialog.name = request->value;
    if (dialog.DoModal() == IDOK) {
        request->value = dialog.name;
    }
}

void BrowseMeshElementName(AttrBrowseRequest* request) {
    IEditor* editor = request->session->editor;
    if (editor == nullptr) {
        return;
    }
    const std::string element = editor->BrowseMeshElement(LivingObject(*request), request->value);
    request->value = Shortened(element);
    EditorObject* object = LivingObject(*request);
    TimelineContext* timeline = TimelineOf(*request->session);
    CTrackCtrl* row = timeline != nullptr ? timeline->FindRowOfObject(object) : nullptr;
    if (row != nullptr) {
        row->SetCurrentKeyElement(element, object); // Required: the whole name, whatever the row shows.
    }
}

void BrowseAnimation(AttrBrowseRequest* request) {
    if (IEditor* editor = request->session->editor) {
        request->value = editor->BrowseMeshAnimation(LivingObject(*request), request->value);
    }
}

void BrowseSoundFile(AttrBrowseRequest* request) {
    CQuorlEdFileDialog dialog(TRUE, kSoundExtension, request->value.c_str(),
                              OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, kSoundFilter);
    if (dialog.DoModal() == IDOK) {
        request->value = dialog.GetRelativePathName();
    }
}

void BrowseEffect(AttrBrowseRequest* request) {
    IEditor* editor = request->session->editor;
    if (editor == nullptr) {
        return;
    }
    if (const auto name = editor->BrowseObjectName(request->fxKind, request->value)) {
        request->value = *name;
    }
}

void BrowseColor(AttrBrowseRequest* request) {
    CMember scratch("tmp", MemberType::Vector, /*initial*/ nullptr, /*description*/ nullptr, /*flags*/ 0);
    scratch.value[0].Parse(request->value.c_str());
    const Vector3 present = scratch.value[0].AsVector();
    CColorDialog dialog(RGB(ToByte(present.x), ToByte(present.y), ToByte(present.z)),
                        CC_RGBINIT | CC_FULLOPEN | CC_ANYCOLOR);
    if (dialog.DoModal() == IDOK) {
        const COLORREF color = dialog.GetColor();
        // Required: with a leading blank, and with three decimals, by which many bytes come back one lower.
        request->value = std::string(" ") + ChannelText(GetRValue(color)) + " , " +
                         ChannelText(GetGValue(color)) + " , " + ChannelText(GetBValue(color));
    }
}
