#include "keys/attributes/AttrBrowsers.h"
#include "keys/attributes/FillAndApply.h"
#include "keys/attributes/RowAccess.h"
#include "keys/rules/Pixels.h"
#include "plugin/contract/FilmTrack.h"

namespace {

constexpr const char* kCategory = "ANIMATION DATA";
constexpr const char* kElement = "Mesh element";
constexpr const char* kSequence = "Animation sequence";
constexpr const char* kFrequency = "Frequency";
constexpr const char* kRepeats = "Repeats";
constexpr const char* kStartFrame = "Start frame";

bool ObjectKnows(const IFilmKey& record, const std::string& sequence) {
    const CFilmObjectTrack* track = AsObjectTrack(record.track);
    return track != nullptr && track->actor != nullptr && track->actor->FindAnimation(sequence) != -1;
}

} // namespace

void FillAnimation(AttrRows& rows, CFilmAnimationKey& record) {
    AddText(rows, kElement, kCategory, record.meshElement, &BrowseMeshElementName);
    AddText(rows, kSequence, kCategory, record.animationName, &BrowseAnimation);
    AddFloat(rows, kFrequency, kCategory, record.frequency);
    AddInt(rows, kRepeats, kCategory, record.repeats);
    AddInt(rows, kStartFrame, kCategory, CutToInt(record.startFrame));
}

void ApplyAnimation(const AttrRows& rows, CFilmAnimationKey& record) {
    std::string sequence;
    if (!ReadText(rows, kSequence, kCategory, sequence) || !ObjectKnows(record, sequence)) {
        return;
    }
    record.SetInHandle(&sequence);
    std::string element;
    if (ReadText(rows, kElement, kCategory, element)) {
        record.SetValue(&element);
    }
    record.SetInHandle(&sequence); // Required: once more, behind the element.
    ReadFloat(rows, kFrequency, kCategory, record.frequency);
    ReadInt(rows, kRepeats, kCategory, record.repeats);
    std::int32_t startFrame = 0;
    if (ReadInt(rows, kStartFrame, kCategory, startFrame)) {
        record.startFrame = static_cast<float>(startFrame);
    }
}
