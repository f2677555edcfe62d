#include "keys/attributes/AttrBrowsers.h"
#include "keys/attributes/FillAndApply.h"
#include "keys/attributes/RowAccess.h"
#include "plugin/contract/FilmTrack.h"

namespace {

constexpr const char* kSpeechCategory = "SPEECH";
constexpr const char* kSpeech = "Speech";
constexpr const char* kText = "Text";
constexpr const char* kNoText = "&&"; ///< of a record that has neither text nor sound yet

constexpr const char* kSoundCategory = "SOUND DATA";
constexpr const char* kWav = "Wav file path";
constexpr const char* kLooped = "Looped";
constexpr const char* kFollow = "Follow object";
constexpr VectorRowNames kPosition{{"Position X", "Position Y", "Position Z"}, "ADDITIONAL DATA"};

/// The sound moves with the track's object.
bool HasObject(const IFilmKey& record) {
    return AsObjectTrack(record.track) != nullptr;
}

/// The sound has a place of its own.
bool HasPlace(const IFilmKey& record) {
    return !HasObject(record) && AsLevelTrack(record.track) != nullptr;
}

} // namespace

void FillSpeech(AttrRows& rows, CFilmSpeechKey& record) {
    const bool empty = record.speechPath.empty() && record.speechText == kNoText;
    AddText(rows, kSpeech, kSpeechCategory, record.speechPath, &BrowseSoundFile);
    AddText(rows, kText, kSpeechCategory, empty ? std::string() : record.speechText);
}

void ApplySpeech(const AttrRows& rows, CFilmSpeechKey& record) {
    ReadText(rows, kText, kSpeechCategory, record.speechText);
    std::string path;
    if (ReadText(rows, kSpeech, kSpeechCategory, path)) {
        record.SetValue(&path);
    }
}

void FillSound(AttrRows& rows, CFilmSoundKey& record) {
    AddText(rows, kWav, kSoundCategory, record.wavPath, &BrowseSoundFile);
    AddBool(rows, kLooped, kSoundCategory, record.looped != 0);
    if (HasObject(record)) {
        AddBool(rows, kFollow, kPosition.category, record.followObject != 0);
    } else if (HasPlace(record)) {
        AddVector(rows, kPosition, record.soundPosition);
    }
}

void ApplySound(const AttrRows& rows, CFilmSoundKey& record) {
    ReadText(rows, kWav, kSoundCategory, record.wavPath);
    ReadBool(rows, kLooped, kSoundCategory, record.looped);
    if (HasObject(record)) {
        ReadBool(rows, kFollow, kPosition.category, record.followObject);
    } else if (HasPlace(record)) {
        ReadVector(rows, kPosition, record.soundPosition);
    }
}
