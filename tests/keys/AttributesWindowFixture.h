#pragma once

#include "keys/attributes/KeyAttributesDlg.h"
#include "tests/timeline/ControlFixture.h"

#include <string>
#include <vector>

/// The real attributes window beside a main control, at an opened film of 10 seconds with the actor "Crate".
class AttributesWindowTest : public ControlTest {
protected:
    AttributesWindowTest();
    ~AttributesWindowTest() override;

    CFilmKeyAttributesDlg& Dialog() { return static_cast<CFilmKeyAttributesDlg&>(*plugin.keyAttributesDlg); }
    /// A key of the actor's track, or of another one, with its view.
    template <class Record> Record* Put(int kind, float time, CFilmTrack* on = nullptr) {
        return static_cast<Record*>(PutKey(kind, time, on));
    }
    CFilmVectorKey* PutPosition(float time, float x) {
        auto* key = Put<CFilmVectorKey>(KeyKind::Position, time);
        key->SetValue(Vector3{x, 0.0f, 0.0f}.Data());
        return key;
    }
    /// The view of a record, or null.
    CTrackKey* ViewOf(const IFilmKey* record);
    /// The user double-clicks the key: the window opens with it.
    void Open(const IFilmKey* record);
    /// The lines of the list, as "Pos X=1.50000".
    std::vector<std::string> Lines();
    int LineOf(const std::string& name);
    /// The user presses a row and types a text, which stays in the editor.
    void Edit(const std::string& name, const std::string& text);
    /// A click on the "..." of the row under edit.
    void PressBrowse();
    void Press(int key);
    void Wheel(int delta);
    /// The keyboard goes to the main control, as after a click there.
    void LeaveEditor();
    /// No key, no rows, no editor.
    void ExpectEmpty();

    EditorObject* crate;
    IFilm* film;
    CFilmTrack* track;

private:
    IFilmKey* PutKey(int kind, float time, CFilmTrack* on);
};
