#pragma once

#include "keys/attributes/AttrRows.h"
#include "keys/attributes/KeyAttributes.h"
#include "tests/keys/KeyFixture.h"

#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

/// Rows of records as the attributes window fills and applies them, without the window.
class AttributesTest : public KeyTest {
protected:
    /// Fresh rows of the record, shown or hidden by their conditions.
    void Fill(IFilmKey& record);
    void Apply(IFilmKey& record, const RecordAlive& alive = {});
    /// "CATEGORY/Name/type/text" of each row, with " hidden" and " ...camera" behind it where that holds.
    std::vector<std::string> Lines() const;
    /// What the user sees of a row; "none" without such a row.
    std::string TextOf(const char* name, const char* category) const;
    bool IsHidden(const char* name, const char* category) const;
    /// The user's edits, as the window writes them into a row.
    void Type(const char* name, const char* category, const char* text);
    void Choose(const char* name, const char* category, int index);
    void Tick(const char* name, const char* category, bool flag);
    /// A track of the opened film: the film's own, an object's, a light's or a camera's.
    CFilmTrack* LevelTrack();
    CFilmTrack* ObjectTrack();
    CFilmTrack* CameraTrack();

    AttrRows rows;

private:
    void ShowRows();
    IFilm* Film();
};

/// A record that writes down which setters are called, each with what `state` says at that moment. `Show`
/// makes a text of what SetValue and SetInHandle point at, `ShowOut` of SetOutHandle.
template <class Base, std::string (*Show)(const void*), std::string (*ShowOut)(const void*) = Show>
class RecordedKey : public Base {
public:
    void SetTime(float) override {}
    void SetEndTime(float) override {}
    void Describe(char*, int) const override {}
    float GetTime() const override { return 0.0f; }
    float GetNaturalDuration() const override { return -1.0f; }
    void CopyFrom(const IFilmKey&, int) override {}
    bool Equals(const IFilmKey&, bool) const override { return false; }
    void SetValue(const void* given) override { Note("SetValue " + Show(given)); }
    void SetInHandle(const void* handle) override { Note("SetInHandle " + Show(handle)); }
    void SetOutHandle(const void* handle) override { Note("SetOutHandle " + ShowOut(handle)); }
    void SetInMethod(int method) override { Note("SetInMethod " + std::to_string(method)); }
    void SetOutMethod(int method) override { Note("SetOutMethod " + std::to_string(method)); }
    void SetLinkElement(const std::string& element) override { Note("SetLinkElement " + element); }
    void SetLinkObject(EditorObject* object) override {
        Note("SetLinkObject " + (object != nullptr ? object->name : std::string("null")));
    }

    void Note(const std::string& call) { log.push_back(state ? call + " | " + state() : call); }

    std::vector<std::string> log;
    std::function<std::string()> state;
};

std::string ShowString(const void* text);    ///< of a std::string
std::string ShowFloat(const void* number);   ///< "1.5"
std::string ShowFloats(const void* numbers); ///< "1 2.5 3"
std::string ShowInt(const void* number);
std::string ShowVector(const Vector3& vector);
