// Every window that the timeline opens and waits for, whatever goes beneath it and however it is ended.
#include "files/AttachMovieObjectDlg.h"
#include "framework/QtBridge.h"
#include "keys/attributes/KeyAttributesDlg.h"
#include "resources/resource.h"
#include "tests/timeline/OpenDialogFixture.h"

#include <QCoreApplication>
#include <QEvent>

namespace {

class OpenDialogTest;

/// A window: how the user comes to it.
struct Opener {
    const char* name;
    void (OpenDialogTest::*open)();
    /// Commands of the buttons that lead on, one a window on the way; the file dialog on the way has `path`.
    std::vector<UINT> buttons;
    /// What is typed first into the first field of the windows on the way.
    const char* typed = nullptr;
    /// Its fields are the film's: OK changes the film.
    bool edits = false;
    bool isOfKey = false; ///< what is written is a key's, which may be in a film that isn't shown
};

struct Case {
    const Opener* opener;
    Away away;
    DialogHand::Ending ending;
    bool playing;
};

void PrintTo(const Case& param, std::ostream* out) {
    *out << param.opener->name;
}

class OpenDialogTest : public OpenDialogFixture, public ::testing::WithParamInterface<Case> {
public:
    void Settings() { Choose(IDC_SETTINGS); }
    void FilterActors() { Choose(IDC_FILTER_ACTORS); }
    void FilterKeys() { Choose(IDC_FILTER_KEYS, RootRow("Crate")); }
    void FilterLightKeys() { Choose(IDC_FILTER_KEYS, LightRow()); }
    void FilterCameraKeys() { Choose(IDC_FILTER_KEYS, RootRow("Main")); }
    void MovieFrame() { Choose(IDC_SET_MOVIE_FRAME); }
    void AdjustTime() { Choose(IDC_ADJUST_TIME); }
    void AdjustTimeOfRow() { Choose(IDC_ADJUST_TIME, RowOf("Crate", KeyKind::Position)); }
    void AdjustTimeOfLight() { Choose(IDC_ADJUST_TIME, LightRow()->FindChild(KeyKind::Color, -2)); }
    void AdjustTimeOfCamera() { Choose(IDC_ADJUST_TIME, RowOf("Main", KeyKind::CameraPosition)); }
    void AddCameraDialog() { Choose(IDC_ADD_CAMERA); }
    void CameraParameters() { Choose(IDC_CAMERA_PARAMETERS, RootRow("Main")); }
    void TrackParameters() { Choose(IDC_TRACK_PARAMETERS, RowOf("Main", KeyKind::CameraPosition)); }
    void ExportTrack() {
        path = folder.File("new.track");
        Choose(IDC_EXPORT_TRACK, RowOf("Crate", KeyKind::Position));
    }
    void ImportTrack() {
        path = folder.File("damaged.track");
        WriteWholeFile(path, "no track");
        Choose(IDC_IMPORT_TRACK, RowOf("Crate", KeyKind::Position));
    }
    void ExportKeysParams() {
        path = folder.File("new.fkd");
        FilterKeys();
    }
    void ImportKeysParams() {
        path = folder.File("damaged.fkd");
        WriteWholeFile(path, "no parameters");
        FilterKeys();
    }
    void SetPosition() { ChooseForKey(IDC_SET_POSITION, KeyKind::Position); }
    void SetDuration() { ChooseForKey(IDC_SET_DURATION, KeyKind::Sound); }
    void ChangeActor() { Choose(IDC_CHANGE_ACTOR, RootRow("Level")); }
    void AddActors() {
        auto* barrel = Data().FindByName("Barrel");
        Data().MakeGroup("Both", {crate, barrel});
        editor.Select({crate, barrel});
        Choose(IDC_ADD_ACTORS);
    }
    void MakeVirtual() {
        editor.Select({crate});
        plugin.ConvertToVirtualObjects(plugin.view->GetSelectedObjects());
    }
    void MissingElement() {
        auto* key =
            static_cast<CFilmAnimationKey*>(AddKey(film->FindObjectTrack(crate), KeyKind::Animation, 1));
        key->meshElement = "Arm";
        window->ShowCurrentFilm();
    }
    void Attach() {
        Choose(IDC_ATTACH_ROW_TO_OBJECT, RootRow("Crate"));
        UseModeless(AttachDialog());
    }
    void AttachElement() {
        AttachTo("Barrel");
        DialogHand(AttachDialog()).Press(IDC_BROWSE_ELEMENT);
    }
    void AttachToItself() {
        AttachTo("Crate");
        DialogHand(AttachDialog()).End(DialogHand::Ending::Default);
    }
    /// The window has no buttons to end it.
    void KeyAttributes() {
        ending = ending == DialogHand::Ending::Default  ? DialogHand::Ending::Enter
                 : ending == DialogHand::Ending::Cancel ? DialogHand::Ending::CloseBox
                                                        : ending;
        OpenAttributes(KeysOf(*film->mainTrack, KeyKind::Camera).front());
        PressAttribute("Delay time", /*browse*/ false);
        UseModeless(Attributes());
    }
    void UnknownCamera() {
        OpenAttributes(KeysOf(*film->mainTrack, KeyKind::Camera).front());
        PressAttribute("Camera", /*browse*/ false);
        DialogHand hand(Attributes());
        hand.Type(Attributes().list.inPlaceEdit, "Nobody");
        hand.End(DialogHand::Ending::Enter); // the window has no button for it
    }
    void ChooseCamera() { Browse(film->mainTrack, KeyKind::Camera, "Camera"); }
    void BrowseSequence() { Browse(film->FindObjectTrack(crate), KeyKind::Animation, "Animation sequence"); }
    void BrowseElement() { Browse(film->FindObjectTrack(crate), KeyKind::Animation, "Mesh element"); }
    void BrowseEffect() { Browse(film->FindObjectTrack(crate), KeyKind::FxParticle, "FX name"); }
    void BrowseSound() {
        path = folder.File("bell.wav");
        WriteWholeFile(path, "RIFF");
        Browse(film->FindObjectTrack(crate), KeyKind::Sound, "Wav file path");
    }
    void BrowseColor() { Browse(Light(), KeyKind::Color, "Color"); }
    void BrowseLinkElement() {
        Browse(film->FindCamera("Main"), KeyKind::CameraPosition, "Mesh element name");
    }

protected:
    OpenDialogTest() {
        away = GetParam().away;
        ending = GetParam().ending;
    }

    std::vector<Step> Way(const Opener& opener) {
        std::vector<Step> steps;
        for (const UINT button : opener.buttons) {
            steps.emplace_back([this, button, typed = opener.typed](DialogHand& hand) {
                if (hand.Window() == nullptr) { // a file is chosen
                    ChooseFile(hand);
                    return;
                }
                if (typed != nullptr) {
                    TypeFirst(hand, typed);
                }
                hand.Press(button);
            });
        }
        return steps;
    }

private:
    CDialog& AttachDialog() { return dynamic_cast<CDialog&>(*Control().GetAttachDialog()); }
    void AttachTo(const char* name) {
        Choose(IDC_ATTACH_ROW_TO_OBJECT, RootRow("Crate"));
        Control().GetAttachDialog()->SetObject(Data().FindByName(name));
    }
    CFilmTrack* Light() { return plugin.lightHelpers.FindByObject(lamp)->track; }
    IFilmKey* PutKey(int kind) {
        IFilmKey* key = AddKey(film->FindObjectTrack(crate), kind, 4.0f);
        ShowRows();
        return key;
    }
    void ChooseForKey(UINT command, int kind) {
        IFilmKey* key = PutKey(kind);
        Choose(command, RowOf("Crate", kind), ViewOf(key));
    }
    void Browse(CFilmTrack* track, int kind, const char* attribute) {
        IFilmKey* key = AddKey(track, kind, 5.0f);
        ShowRows();
        OpenAttributes(key);
        PressAttribute(attribute, /*browse*/ true);
    }
    void ChooseFile(DialogHand& hand);
    static void TypeFirst(DialogHand& hand, const char* text);
};

void OpenDialogTest::ChooseFile(DialogHand& hand) {
    NameFile(hand);
    hand.End(DialogHand::Ending::Default);
}

void OpenDialogTest::TypeFirst(DialogHand& hand, const char* text) {
    for (const CWnd* control : hand.Controls()) {
        if (dynamic_cast<const CEdit*>(control) != nullptr) {
            hand.Type(*control, text);
            return;
        }
    }
    ADD_FAILURE() << "no field";
}

using T = OpenDialogTest;

const Opener kOpeners[] = {
    {"Settings", &T::Settings, {}, nullptr, /*edits*/ true},
    {"SettingsMessage", &T::Settings, {IDOK}, "x"},
    {"FilterActors", &T::FilterActors, {}, nullptr, /*edits*/ true},
    {"FilterKeys", &T::FilterKeys, {}},
    {"FilterLightKeys", &T::FilterLightKeys, {}},
    {"FilterCameraKeys", &T::FilterCameraKeys, {}},
    {"FilterKeysDefaults", &T::FilterKeys, {IDC_KEYS_DEFAULTS}},
    {"FilterKeysExport", &T::ExportKeysParams, {IDC_KEYS_EXPORT}},
    {"FilterKeysImport", &T::ImportKeysParams, {IDC_KEYS_IMPORT}},
    {"FilterKeysImportFailed", &T::ImportKeysParams, {IDC_KEYS_IMPORT, IDOK}},
    {"MovieFrame", &T::MovieFrame, {}},
    {"MovieFrameMessage", &T::MovieFrame, {IDOK}, "9999"},
    {"AdjustTime", &T::AdjustTime, {}, nullptr, /*edits*/ true},
    {"AdjustTimeOfRow", &T::AdjustTimeOfRow, {}, nullptr, /*edits*/ true},
    {"AdjustTimeOfLight", &T::AdjustTimeOfLight, {}, nullptr, /*edits*/ true},
    {"AdjustTimeOfCamera", &T::AdjustTimeOfCamera, {}, nullptr, /*edits*/ true},
    {"AddCamera", &T::AddCameraDialog, {}, nullptr, /*edits*/ true},
    {"AddCameraMessage", &T::AddCameraDialog, {IDOK}, "Main"},
    {"CameraParameters", &T::CameraParameters, {}, nullptr, /*edits*/ true},
    {"CameraParametersMessage", &T::CameraParameters, {IDOK}, "Side"},
    {"TrackParameters", &T::TrackParameters, {}, nullptr, /*edits*/ true},
    {"TrackParametersMessage", &T::TrackParameters, {IDOK}, "x"},
    {"ExportTrack", &T::ExportTrack, {}},
    {"ImportTrack", &T::ImportTrack, {}},
    {"ImportTrackMessage", &T::ImportTrack, {IDOK}},
    {"SetPosition", &T::SetPosition, {}, nullptr, /*edits*/ true},
    {"SetDuration", &T::SetDuration, {}, nullptr, /*edits*/ true},
    {"ChangeActorMessage", &T::ChangeActor, {}},
    {"AddActorsMessage", &T::AddActors, {}},
    {"MakeVirtualQuestion", &T::MakeVirtual, {}},
    {"MissingElementMessage", &T::MissingElement, {}},
    {"MissingElementBrowser", &T::MissingElement, {IDOK}, nullptr, /*edits*/ true},
    {"Attach", &T::Attach, {}},
    {"AttachElement", &T::AttachElement, {}},
    {"AttachMessage", &T::AttachToItself, {}},
    {"KeyAttributes", &T::KeyAttributes, {}},
    {"UnknownCameraQuestion", &T::UnknownCamera, {}, nullptr, /*edits*/ true, /*isOfKey*/ true},
    {"ChooseCamera", &T::ChooseCamera, {}},
    {"BrowseSequence", &T::BrowseSequence, {}},
    {"BrowseElement", &T::BrowseElement, {}, nullptr, /*edits*/ true},
    {"BrowseEffect", &T::BrowseEffect, {}},
    {"BrowseSound", &T::BrowseSound, {}},
    {"BrowseColor", &T::BrowseColor, {}},
    {"BrowseLinkElement", &T::BrowseLinkElement, {}},
};

/// Each window with all that goes and with each way to end it. Every second time OK is pressed, which writes;
/// the other ways take turns, and so do films that rest and that play.
std::vector<Case> AllCases() {
    using Ending = DialogHand::Ending;
    std::vector<Case> cases;
    int turn = 0;
    for (const Opener& opener : kOpeners) {
        for (int way = 0; way < DialogHand::kEndings; ++way) {
            cases.push_back({&opener, Away::Nothing, static_cast<Ending>(way), way == 2});
        }
        for (int away = 1; away < kAways; ++away, ++turn) {
            const bool takes = turn % 2 == 0;
            const auto ending = takes ? Ending::Default : static_cast<Ending>(1 + turn / 2 % 4);
            cases.push_back({&opener, static_cast<Away>(away), ending, turn / 2 % 3 == 0});
        }
        ++turn; // so that the next window is ended otherwise
    }
    return cases;
}

std::string NameOf(const ::testing::TestParamInfo<Case>& info) {
    static const char* const aways[] = {"Nothing",     "FilmDeleted",    "FilmSwitched",  "FilmShownAgain",
                                        "FilmRenamed", "FilmSaved",      "FilmPlays",     "FilmStopped",
                                        "LevelLeft",   "OtherLevel",     "TracksRemoved", "CameraRemoved",
                                        "KeysRemoved", "ObjectDeleted",  "LightDeleted",  "ControlGone",
                                        "WindowGone",  "WindowReopened", "HostEnds"};
    static const char* const endings[] = {"Default", "Cancel", "Enter", "Escape", "CloseBox"};
    const Case& param = info.param;
    return std::string(param.opener->name) + "_" + aways[static_cast<int>(param.away)] + "_" +
           endings[static_cast<int>(param.ending)] + (param.playing ? "_Playing" : "");
}

} // namespace

TEST_P(OpenDialogTest, WritesToNothingElseWhateverGoes) {
    const auto& [opener, gone, how, playing] = GetParam();
    Work([this, open = opener->open] { (this->*open)(); }, Way(*opener), playing);
    EXPECT_EQ(used, 1);
    // A question about a key is answered for that key, whichever film is shown then.
    if (TakesFilm(gone) && !(opener->isOfKey && gone == Away::FilmSwitched)) {
        EXPECT_EQ(Films(), filmsBelow);
    }
    if (opener->edits && gone == Away::Nothing && how == DialogHand::Ending::Default) {
        EXPECT_NE(Films(), filmsBelow);
    }
    if (IsAlive()) { // and the timeline goes on
        window->ShowCurrentFilm();
    }
    if (IsAlive()) {
        NativeWidget(*window)->grab();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

INSTANTIATE_TEST_SUITE_P(All, OpenDialogTest, ::testing::ValuesIn(AllCases()), NameOf);
