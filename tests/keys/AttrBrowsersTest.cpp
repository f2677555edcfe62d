#include "keys/attributes/AttrBrowsers.h"

#include "files/ChooseMovieCameraDlg.h"
#include "files/QuorlEdFileDialog.h"
#include "framework/ColorDialog.h"
#include "framework/FileDialog.h"
#include "framework/Resource.h"
#include "host/engine/MeshLibrary.h"
#include "keys/attributes/KeyAttributesDlg.h"
#include "keys/views/TrackKey.h"
#include "plugin/base/PluginResources.h"
#include "tests/support/ElementMesh.h"
#include "tests/support/TempFolder.h"
#include "tests/timeline/ControlFixture.h"

#include <filesystem>
#include <functional>

using ::testing::ElementsAre;
using ::testing::EndsWith;

namespace {

/// An editor whose user answers as the test says; it lives beside the one with the level.
class BrowsingEditor final : public TestEditor {
public:
    std::string BrowseMeshElement(EditorObject* object, const std::string& present) override {
        return Answer("element", object, present);
    }
    std::string BrowseMeshAnimation(EditorObject* object, const std::string& present) override {
        return Answer("animation", object, present);
    }
    std::optional<std::string> BrowseObjectName(int fxKind, const std::string& text) override {
        asked.push_back("effect " + std::to_string(fxKind) + " " + text);
        return effect;
    }

    std::vector<std::string> asked;
    std::string answer;
    std::optional<std::string> effect;
    std::function<void()> onBrowse;

private:
    std::string Answer(const std::string& what, const EditorObject* object, const std::string& present) {
        asked.push_back(what + " " + (object != nullptr ? object->name : "null") + " " + present);
        if (onBrowse) {
            onBrowse();
        }
        return answer;
    }
};

/// A film with the robot, which has one animation key on its spine, in a real main control.
class AttrBrowsersTest : public ControlTest {
protected:
    AttrBrowsersTest() : folderBefore(std::filesystem::current_path()) {
        editor.level.SetMeshLibrary(&biped);
        robot = editor.Create("Robot");
        film = OpenFilmWith({robot});
        record =
            static_cast<CFilmAnimationKey*>(AddKey(film->FindObjectTrack(robot), KeyKind::Animation, 1.0f));
        record->meshElement = "Bip01 Spine";
        control->ShowFilm(film, true);
        CurrentKey() = ViewOf(record);
        plugin.editor = &browser;
    }
    ~AttrBrowsersTest() override {
        plugin.editor = &editor;
        editor.level.SetMeshLibrary(nullptr);
        std::filesystem::current_path(folderBefore);
    }
    CTrackKey* ViewOf(const IFilmKey* key) const {
        for (const CTrackCtrl* row : control->tracks) {
            for (CTrackKey* view : row->keys) {
                if (view->record == key) {
                    return view;
                }
            }
        }
        return nullptr;
    }
    AttrBrowseRequest Request(const char* value, int fxKind = 0) { return {value, robot, fxKind, &plugin}; }

    ResourceScope resources{PluginResources()};
    std::filesystem::path folderBefore;
    /// Bones as modelling tools name those of bipeds.
    ElementMesh biped{{{"Bip01", -1, 1}, {"Bip01 Spine", 0, 1}, {"Bip01 Head", 1, 1}}};
    BrowsingEditor browser;
    engine::SceneObject* robot = nullptr;
    IFilm* film = nullptr;
    CFilmAnimationKey* record = nullptr;
};

} // namespace

TEST_F(AttrBrowsersTest, BonesLoseTheirPrefixInTheRow) {
    const std::pair<const char*, const char*> cases[] = {
        {"Bip01 Head", "Head"},
        {"Bip01", "Bip01"},
        {"Bip01X", ""},
        {"Bip01Head", "ead"}, // six characters, whatever they are
        {"bip01 Head", "bip01 Head"},
        {"My Bip01 Head", "My Bip01 Head"},
        {"Bip0", "Bip0"},
        {"", ""}};
    for (const auto& [answer, shown] : cases) {
        browser.answer = answer;
        AttrBrowseRequest request{"present", nullptr, 0, &plugin};
        BrowseMeshElementName(&request);
        EXPECT_EQ(request.value, shown) << answer;
    }
    EXPECT_EQ(browser.asked[0], "element null present");
    EXPECT_EQ(record->meshElement, "Bip01 Spine") << "without an object no key is written";
}

TEST_F(AttrBrowsersTest, ElementGoesWholeToTheCurrentKeyAndTheFilmIsShownAnew) {
    browser.answer = "Bip01 Head";
    AttrBrowseRequest request = Request("Spine");
    BrowseMeshElementName(&request);
    EXPECT_THAT(browser.asked, ElementsAre("element Robot Spine"));
    EXPECT_EQ(request.value, "Head");
    EXPECT_EQ(record->meshElement, "Bip01 Head");
    EXPECT_NE(RowOf("Robot")->FindChild(KeyKind::Animation, -2), nullptr);
    EXPECT_NE(ViewOf(record), nullptr);
    ExpectNothingDangles();
}

// The key on show is the current one for the browser, whichever was pressed in a row since, and once more
// after the rows were made anew.
TEST_F(AttrBrowsersTest, KeyOnShowTakesTheElementInEveryVisit) {
    auto* other =
        static_cast<CFilmAnimationKey*>(AddKey(film->FindObjectTrack(robot), KeyKind::Animation, 4.0f));
    control->ShowFilm(film, true);
    plugin.keyAttributesDlg = std::make_unique<CFilmKeyAttributesDlg>(plugin);
    auto& dialog = static_cast<CFilmKeyAttributesDlg&>(*plugin.keyAttributesDlg);
    dialog.SetKey(ViewOf(record), /*refresh*/ false);
    for (const char* element : {"Bip01 Head", "Bip01 Spine"}) {
        CurrentKey() = ViewOf(other);
        dialog.list.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 10)); // "Mesh element"
        browser.answer = element;
        dialog.list.Browse(dialog.list.inPlaceButton);
        EXPECT_EQ(record->meshElement, element);
        EXPECT_EQ(other->meshElement, "");
        EXPECT_EQ(dialog.GetRecord(), record);
        EXPECT_EQ(CurrentKey(), ViewOf(record));
    }
    plugin.keyAttributesDlg.reset();
}

TEST_F(AttrBrowsersTest, OnlyAnAnimationKeyTakesTheElement) {
    auto* fx = static_cast<CFilmFxKey*>(AddKey(film->FindObjectTrack(robot), KeyKind::FxTrace, 2.0f));
    control->ShowFilm(film, true);
    CurrentKey() = ViewOf(fx);
    browser.answer = "Bip01 Head";
    AttrBrowseRequest request = Request("");
    BrowseMeshElementName(&request);
    EXPECT_EQ(request.value, "Head");
    EXPECT_EQ(fx->linkElement, "");
    CurrentKey() = nullptr;
    BrowseMeshElementName(&request);
    EXPECT_EQ(record->meshElement, "Bip01 Spine");
}

TEST_F(AttrBrowsersTest, FilmWithoutTheObjectIsLeftAlone) {
    browser.answer = "Bip01 Head";
    browser.onBrowse = [this] { plugin.SetCurrentFilm(NewFilm()); };
    AttrBrowseRequest request = Request("Spine");
    BrowseMeshElementName(&request);
    EXPECT_EQ(request.value, "Head");
    EXPECT_EQ(record->meshElement, "Bip01 Spine");
}

TEST_F(AttrBrowsersTest, ObjectThatIsDeletedWhileTheUserChoosesIsNotTouched) {
    for (const AttrBrowse browse : {&BrowseMeshElementName, &BrowseAnimation}) {
        engine::SceneObject* crate = editor.Create("Crate");
        plugin.AddActors({crate});
        browser.answer = "Bip01 Head";
        browser.onBrowse = [this, crate] { editor.level.DeleteObject(crate); };
        AttrBrowseRequest request{"", crate, 0, &plugin};
        browse(&request);
        EXPECT_EQ(request.object, crate) << "what the caller handed over stays as it was";
    }
    EXPECT_EQ(record->meshElement, "Bip01 Spine");
}

TEST_F(AttrBrowsersTest, ObjectThatWentBeforeIsNone) {
    engine::SceneObject* crate = editor.Create("Crate");
    editor.level.DeleteObject(crate);
    AttrBrowseRequest request{"old", crate, 0, &plugin};
    BrowseMeshElementName(&request);
    BrowseAnimation(&request);
    EXPECT_THAT(browser.asked, ElementsAre("element null old", "animation null "));
}

TEST_F(AttrBrowsersTest, ControlThatIsClosedWhileTheUserChoosesIsNotTouched) {
    browser.answer = "Bip01 Head";
    browser.onBrowse = [this] {
        holder.control = nullptr;
        control.reset();
    };
    AttrBrowseRequest request = Request("");
    BrowseMeshElementName(&request);
    EXPECT_EQ(request.value, "Head");
    EXPECT_EQ(record->meshElement, "Bip01 Spine");
}

TEST_F(AttrBrowsersTest, AnimationIsWhatTheEditorAnswers) {
    for (const std::string& answer : {std::string("Walk"), std::string(), std::string(300, 'x')}) {
        browser.answer = answer;
        AttrBrowseRequest request = Request("Run");
        BrowseAnimation(&request);
        EXPECT_EQ(request.value, answer);
    }
    EXPECT_EQ(browser.asked[0], "animation Robot Run");
}

TEST_F(AttrBrowsersTest, EffectIsAskedForByItsKind) {
    AttrBrowseRequest request = Request("Smoke", 4);
    BrowseEffect(&request); // no answer
    EXPECT_EQ(request.value, "Smoke");
    EXPECT_THAT(browser.asked, ElementsAre("effect 4 Smoke"));
    for (const std::string& answer : {std::string("Fire"), std::string(), std::string(300, 'x')}) {
        browser.effect = answer;
        BrowseEffect(&request);
        EXPECT_EQ(request.value, answer);
    }
}

TEST_F(AttrBrowsersTest, WithoutAnEditorNothingHappens) {
    plugin.editor = nullptr;
    for (const AttrBrowse browse : {&BrowseMeshElementName, &BrowseAnimation, &BrowseEffect}) {
        AttrBrowseRequest request = Request("kept");
        browse(&request);
        EXPECT_EQ(request.value, "kept");
    }
}

TEST_F(AttrBrowsersTest, SoundFileIsChosenFromWavAndOgg) {
    TempFolder program;
    std::filesystem::create_directories(program.File("snd"));
    std::string chosen;
    Hooks().fileDialog = [&](CFileDialog& dialog) {
        auto& shown = dynamic_cast<CQuorlEdFileDialog&>(dialog);
        EXPECT_TRUE(shown.IsOpenDialog());
        EXPECT_EQ(shown.ofn.lpstrDefExt, ".wav");
        EXPECT_EQ(shown.ofn.lpstrFilter, "Wav files (*.wav)|*.wav|OGG files (*.ogg)|*.ogg||");
        EXPECT_THAT(shown.ofn.lpstrFile, EndsWith("snd/old.wav"));
        shown.programDir = program.Path();
        if (chosen.empty()) {
            return IDCANCEL;
        }
        shown.SetPathName(program.File(chosen));
        return IDOK;
    };
    AttrBrowseRequest request = Request("snd/old.wav");
    BrowseSoundFile(&request);
    EXPECT_EQ(request.value, "snd/old.wav") << "cancelled";
    chosen = "snd/new.ogg";
    BrowseSoundFile(&request);
    EXPECT_EQ(request.value, "./snd/new.ogg");
}

TEST_F(AttrBrowsersTest, CameraOfTheCurrentFilmIsChosen) {
    AddCamera(film, "Bridge");
    AddCamera(film, "Tower");
    const auto run = [this](const char* value, UINT end, int line) {
        Hooks().modalDialog = [=](CDialog& dialog) {
            auto& cameras = dynamic_cast<CChooseMovieCameraDlg&>(dialog);
            EXPECT_EQ(cameras.list.GetCount(), 2);
            EXPECT_EQ(cameras.list.GetCurSel(), 1);
            cameras.list.SetCurSel(line);
            cameras.SendMessage(WM_COMMAND, end);
            return IDCANCEL;
        };
        AttrBrowseRequest request = Request(value);
        BrowseCamera(&request);
        return request.value;
    };
    EXPECT_EQ(run("Tower", IDOK, 0), "Bridge");
    EXPECT_EQ(run("Tower", IDCANCEL, 0), "Tower");
    EXPECT_EQ(run("Tower", IDOK, -1), "");
}

namespace {

/// Opens the colour dialog and answers with a colour, or cancels.
struct ColorUser {
    COLORREF Run(AttrBrowseRequest& request, std::optional<COLORREF> choice) {
        COLORREF first = 0;
        Hooks().colorDialog = [&](CColorDialog& dialog) {
            first = dialog.GetColor();
            dialog.SetCurrentColor(choice.value_or(0));
            return choice ? IDOK : IDCANCEL;
        };
        BrowseColor(&request);
        return first;
    }
};

} // namespace

TEST_F(AttrBrowsersTest, ColorBeginsWithThePresentOneAndIsWrittenWithALeadingBlank) {
    AttrBrowseRequest request = Request("0.1000 , 0.5000 , 1.0000");
    // 25.5, 127.5 and 255, cut
    EXPECT_EQ(ColorUser().Run(request, std::nullopt), RGB(25, 127, 255));
    EXPECT_EQ(request.value, "0.1000 , 0.5000 , 1.0000") << "cancelled";
    ColorUser().Run(request, RGB(0, 51, 255));
    EXPECT_EQ(request.value, " 0.000 , 0.200 , 1.000"); // 51 / 255 is 0.2
}

TEST_F(AttrBrowsersTest, ColorOutsideItsRangeIsCutToEightBits) {
    AttrBrowseRequest request = Request("2.0000 , -1.0000 , 1.0040");
    // 510 is 0x1FE, -255 ends in 0x01, 256.02 is 0x100
    EXPECT_EQ(ColorUser().Run(request, std::nullopt), RGB(254, 1, 0));
    for (const char* text : {"nan , inf , 1e39", "", "blue"}) {
        AttrBrowseRequest odd = Request(text);
        ColorUser().Run(odd, RGB(255, 255, 255));
        EXPECT_EQ(odd.value, " 1.000 , 1.000 , 1.000");
    }
}

TEST_F(AttrBrowsersTest, ColorsComeBackOneLowerInNearlyHalfOfAllChannels) {
    // Required: three decimals. 10 * 0.003921569 is 0.0392, written 0.039, and 0.039 * 255 is 9.945;
    // 254 gives 0.996, and 253.98. 51 gives 0.2 and stays.
    int lower = 0;
    for (int byte = 0; byte < 256; ++byte) {
        AttrBrowseRequest request = Request("0");
        ColorUser().Run(request, RGB(byte, byte, byte));
        const int back = GetRValue(ColorUser().Run(request, std::nullopt));
        lower += back == byte - 1 ? 1 : 0;
        EXPECT_TRUE(back == byte || back == byte - 1) << byte;
        EXPECT_TRUE((byte != 10 && byte != 254) || back == byte - 1);
        EXPECT_TRUE((byte != 0 && byte != 51 && byte != 255) || back == byte);
    }
    EXPECT_EQ(lower, 125);
}
