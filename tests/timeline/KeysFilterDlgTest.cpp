#include "files/KeysFilterDlg.h"

#include "framework/ColorDialog.h"
#include "framework/FileDialog.h"
#include "framework/QtBridge.h"
#include "framework/Resource.h"
#include "keys/rules/KeyKinds.h"
#include "keys/rules/KeyParamsFile.h"
#include "plugin/base/PluginResources.h"
#include "tests/support/DrawRecorder.h"
#include "tests/support/MouseScript.h"
#include "tests/support/Paths.h"
#include "tests/support/TempFolder.h"
#include "tests/timeline/ControlFixture.h"
#include "tests/timeline/DialogUser.h"

#include <filesystem>
#include <QWidget>

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

namespace {

const std::string kShipped = SourceFolder() + "/host/stage/data/DefaultKeysParams.fkd";
constexpr const char* kDefaults = "DefaultKeysParams.fkd";
constexpr int kLineHeight = 18;

std::string DefaultsOf(int blocks, int height) {
    std::string text = "any first line\nand a second\n";
    for (int i = 0; i < blocks; ++i) {
        text += "name\nVisible : 0\nRect height : " + std::to_string(height) +
                "\nNormal color (r,g,b) : 1,2,3\nHighlight color (r,g,b) : 4,5,6\n***\n";
    }
    return text;
}

/// The dialog for the actor "Crate", at a control whose parameters are those of the data folder. The test
/// editor looks for data files in the working directory.
class KeysFilterDlgTest : public ControlTest {
protected:
    KeysFilterDlgTest() : home(std::filesystem::current_path()) {
        std::filesystem::current_path(folder.Path());
        std::filesystem::copy_file(kShipped, kDefaults);
        control->Reset();
        film = OpenFilmWith({editor.Create("Crate")});
        dialog.SetTrack(RowOf("Crate")->track);
        dialog.SetParams(control->keyParams);
    }
    ~KeysFilterDlgTest() override { std::filesystem::current_path(home); }

    CRect LineRect(int line) {
        CRect rect;
        EXPECT_EQ(dialog.list.GetItemRect(line, &rect), 0);
        return rect;
    }
    /// A place in a line, so many pixels from the right edge.
    CPoint FromRight(int line, int pixels) {
        const CRect rect = LineRect(line);
        return {rect.right - pixels, rect.top + 16};
    }
    int LineOf(int kind) {
        for (int line = 0; line < dialog.list.GetCount(); ++line) {
            if (dialog.list.GetItemData(line) == static_cast<UINT_PTR>(kind)) {
                return line;
            }
        }
        ADD_FAILURE() << "no line for kind " << kind;
        return 0;
    }
    CFilterDlgCheckbox& Box(int kind) { return dialog.list.boxes[static_cast<std::size_t>(kind)]; }
    KeyKindParams& Params(int kind) { return dialog.params[static_cast<std::size_t>(kind)]; }
    KeyKindParams& Own(int kind) { return control->keyParams[static_cast<std::size_t>(kind)]; }
    /// Where a box stands, in the list's client coordinates.
    CRect BoxRect(int kind) {
        CRect rect;
        Box(kind).GetWindowRect(&rect);
        dialog.list.ScreenToClient(&rect);
        return rect;
    }
    /// Every box stands beside its line, and those of lines out of sight don't show.
    void ExpectBoxesBesideLines() {
        CRect client;
        dialog.list.GetClientRect(&client);
        for (int line = 0; line < dialog.list.GetCount(); ++line) {
            const CRect rect = LineRect(line);
            const int kind = static_cast<int>(dialog.list.GetItemData(line));
            const bool inSight = rect.bottom > 0 && rect.top < client.bottom;
            EXPECT_EQ(Box(kind).IsWindowVisible() != FALSE, inSight) << "line " << line;
            if (inSight) {
                EXPECT_EQ(BoxRect(kind), CRect(rect.right - 15, rect.top, rect.right, rect.top + 15));
            }
        }
    }
    int Run(const std::function<void()>& work) { return user.Run(work); }
    /// The height edit of a line is opened and its text replaced.
    void TypeHeight(int kind, const char* text) {
        user.DoubleClickAt(dialog.list, FromRight(LineOf(kind), 110));
        EXPECT_EQ(dialog.list.editItem, LineOf(kind));
        user.Type(text);
    }
    void PressList() { user.ClickAt(dialog.list, CPoint(20, LineRect(0).top + 8)); }
    /// The user chooses a file, or cancels for an empty path.
    void ChooseFile(const std::string& path) {
        Hooks().fileDialog = [this, path](CFileDialog& shown) {
            asked.push_back(std::string(shown.IsOpenDialog() ? "open " : "save ") + shown.ofn.lpstrDefExt +
                            " " + shown.ofn.lpstrFilter);
            overwriteIsAsked = (shown.ofn.Flags & OFN_OVERWRITEPROMPT) != 0;
            shown.SetPathName(path);
            return path.empty() ? IDCANCEL : IDOK;
        };
    }

    const std::filesystem::path home;
    TempFolder folder;
    ResourceScope resources{PluginResources()};
    IFilm* film = nullptr;
    CKeysFilterDlg dialog{plugin};
    DialogUser user{dialog};
    std::vector<std::string> asked;
    bool overwriteIsAsked = false;
};

} // namespace

TEST_F(KeysFilterDlgTest, ListsTheKindsThatTheTrackCanHold) {
    CFilmTrack* glLight = film->CreateGLLightTrack();
    CFilmTrack* dynLight = film->CreateDynLightTrack();
    film->AddTrack(glLight); // which owns them from here on
    film->AddTrack(dynLight);
    const std::pair<CFilmTrack*, std::vector<int>> cases[] = {
        {film->mainTrack, {0, 2, 3, 4, 5, 6, 7, 9, 13, 15}},
        {RowOf("Crate")->track, {1, 2, 3, 4, 7, 8, 9, 10, 11, 12, 13, 15}},
        {glLight, {10, 14, 15}},
        {dynLight, {10, 11, 12, 14, 15}},
        {AddCamera(film, "Cam"), {16, 17, 18, 19}},
        {nullptr, {}}};
    for (const auto& [track, kinds] : cases) {
        dialog.SetTrack(track);
        Run([&, &wanted = kinds] {
            std::vector<int> shown;
            for (int line = 0; line < dialog.list.GetCount(); ++line) {
                shown.push_back(static_cast<int>(dialog.list.GetItemData(line)));
                EXPECT_EQ(dialog.list.GetText(line), GetKeyKindName(shown.back()));
            }
            EXPECT_THAT(shown, ElementsAreArray(wanted));
            for (int kind = 0; kind < KeyKind::FilterCount; ++kind) {
                EXPECT_EQ(Box(kind).IsWindowVisible() != FALSE,
                          dialog.available[static_cast<std::size_t>(kind)] != 0);
            }
            user.Key(Qt::Key_Escape);
        });
    }
}

TEST_F(KeysFilterDlgTest, LinesAreDrawnAsTheirRecordsSay) {
    dialog.SetTrack(AddCamera(film, "Cam"));
    Params(16).rectHeight = 7;
    Params(16).normalColor = 0x112233;
    Params(17).highlightColor = 0x445566;
    Run([this] {
        user.ClickAt(dialog.list, CPoint(20, kLineHeight + 8)); // selects the second line
        DrawRecorder recorder;
        const std::vector<std::string> lines = recorder.Paint(dialog.list);
        const CRect r = LineRect(1);
        const std::string right = std::to_string(r.right);
        const auto at = [&r](int left) { return std::to_string(r.right - left); };
        ASSERT_GE(lines.size(), 10U);
        EXPECT_EQ(lines[0], "rect 0,0," + right + ",18 pen 0/0/FFFFFF brush none");
        EXPECT_EQ(lines[1], "text 1,1 'Camera position keys'");
        EXPECT_EQ(lines[2], "text " + at(120) + ",1 '7'");
        EXPECT_EQ(lines[3], "text " + at(100) + ",1 'Normal'");
        EXPECT_EQ(lines[4], "text " + at(60) + ",1 'Highlight'");
        EXPECT_EQ(lines[5], "rect 0,18," + right + ",36 pen 0/0/000000 brush none");
        EXPECT_EQ(lines[6], "text 1,19 'Target position keys'");
        EXPECT_EQ(lines[7], "text " + at(120) + ",19 '15'");
        EXPECT_EQ(recorder.calls[1].textColor, 0u);
        EXPECT_EQ(recorder.calls[2].textColor, 0u);
        EXPECT_EQ(recorder.calls[3].textColor, 0x112233u); // "Normal" in the normal colour
        EXPECT_EQ(lines[9], "text " + at(60) + ",19 'Highlight'");
        EXPECT_EQ(recorder.calls[9].textColor, 0x445566u);
        user.Key(Qt::Key_Escape);
    });
}

TEST_F(KeysFilterDlgTest, BoxesShowTheFlagsAndStandBesideTheirLines) {
    Params(KeyKind::Speech).visible = false;
    Run([this] {
        ExpectBoxesBesideLines();
        EXPECT_EQ(Box(KeyKind::Speech).GetCheck(), BST_UNCHECKED);
        EXPECT_EQ(Box(KeyKind::Position).GetCheck(), BST_CHECKED);
        user.Key(Qt::Key_Escape);
    });
}

TEST_F(KeysFilterDlgTest, BoxesAndHeightEditFollowTheirLinesWhenTheListScrolls) {
    Run([this] {
        dialog.list.SetItemHeight(0, 60); // twelve lines no longer fit
        DialogUser::Settle();
        ExpectBoxesBesideLines();
        user.DoubleClickAt(dialog.list, FromRight(2, 110));
        user.Wheel(dialog.list, CPoint(20, 20), -120);
        const int top = dialog.list.GetTopIndex();
        EXPECT_GT(top, 0);
        ExpectBoxesBesideLines();
        CRect edit;
        dialog.list.edit.GetWindowRect(&edit);
        dialog.list.ScreenToClient(&edit);
        const CRect line = LineRect(2);
        EXPECT_EQ(edit, CRect(line.right - 120, line.top, line.right - 100, line.bottom));
        dialog.list.SetFocus();
        user.Key(Qt::Key_End);
        ExpectBoxesBesideLines();
        // The box that is seen changes its own line.
        const int kind = static_cast<int>(dialog.list.GetItemData(dialog.list.GetTopIndex() + 1));
        user.ClickAt(Box(kind), CPoint(7, 7));
        EXPECT_FALSE(Params(kind).visible);
        user.Key(Qt::Key_Escape);
    });
}

TEST_F(KeysFilterDlgTest, BoxChangesAtThePressAndBackWhereItIsLetGoOutside) {
    Run([this] {
        CFilterDlgCheckbox& box = Box(KeyKind::Position);
        const auto expect = [&](bool visible) {
            EXPECT_EQ(Params(KeyKind::Position).visible, visible);
            EXPECT_EQ(box.GetCheck(), visible ? BST_CHECKED : BST_UNCHECKED);
        };
        MouseScript mouse(box);
        mouse.Press(7, 7);
        expect(false);
        EXPECT_TRUE(box.pressed);
        mouse.Release(14, 14);
        expect(false);
        EXPECT_FALSE(box.pressed);
        mouse.Press(7, 7);
        expect(true);
        mouse.Release(15, 7); // the right edge is outside
        expect(false);
        mouse.Press(7, 7).Move(7, 200).Move(3, 3).Release(0, 0);
        expect(true);
        mouse.Press(0, 0).Release(7, -1);
        expect(true);
        box.SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(7, 200)); // outside, of no press
        expect(true);
        user.Key(Qt::Key_Escape);
    });
}

TEST_F(KeysFilterDlgTest, DoubleClickOnABoxChangesItTwice) {
    Run([this] {
        user.DoubleClickAt(Box(KeyKind::Sound), CPoint(7, 7));
        EXPECT_TRUE(Params(KeyKind::Sound).visible);
        user.ClickAt(Box(KeyKind::Sound), CPoint(7, 7));
        EXPECT_FALSE(Params(KeyKind::Sound).visible);
        user.Key(Qt::Key_Escape);
    });
}

TEST_F(KeysFilterDlgTest, BoxWithoutAKindChangesNothing) {
    Run([this] {
        Box(KeyKind::Sound).kind = -1;
        user.ClickAt(Box(KeyKind::Sound), CPoint(7, 7));
        EXPECT_TRUE(Params(KeyKind::Sound).visible);
        EXPECT_EQ(Box(KeyKind::Sound).GetCheck(), BST_CHECKED);
        user.Key(Qt::Key_Escape);
    });
}

TEST_F(KeysFilterDlgTest, HeightIsTakenByAPressInTheList) {
    Params(KeyKind::Position).rectHeight = 9;
    Run([this] {
        user.DoubleClickAt(dialog.list, FromRight(LineOf(KeyKind::Position), 110));
        CEdit& edit = dialog.list.edit;
        EXPECT_TRUE(edit.IsWindowVisible());
        EXPECT_EQ(edit.GetWindowText(), "9");
        int first = -1;
        int last = -1;
        edit.GetSel(first, last);
        EXPECT_EQ(first, 0);
        EXPECT_EQ(last, 1);
        EXPECT_EQ(CWnd::GetFocus(), &edit);
        user.Type("23");
        EXPECT_EQ(Params(KeyKind::Position).rectHeight, 9);
        PressList();
        EXPECT_EQ(Params(KeyKind::Position).rectHeight, 23);
        EXPECT_EQ(dialog.list.editItem, -1);
        EXPECT_FALSE(edit.IsWindowVisible());
        EXPECT_EQ(dialog.list.GetCurSel(), 0); // the press went on
        user.Key(Qt::Key_Escape);
    });
}

TEST_F(KeysFilterDlgTest, HeightThatIsNoneIsDropped) {
    Params(KeyKind::Position).rectHeight = 9;
    const std::pair<const char*, int> cases[] = {{"0", 9},    {"abc", 9}, {"-5", 9},
                                                 {"12x", 12}, {" 7", 7},  {"99999999999", 2147483647}};
    Run([&] {
        for (const auto& [text, height] : cases) {
            TypeHeight(KeyKind::Position, text);
            PressList();
            EXPECT_EQ(Params(KeyKind::Position).rectHeight, height) << text;
        }
        user.Key(Qt::Key_Escape);
    });
}

TEST_F(KeysFilterDlgTest, OnlyAPressInTheListTakesTheHeight) {
    const int before = Params(KeyKind::Position).rectHeight;
    EXPECT_EQ(Run([this] {
                  TypeHeight(KeyKind::Position, "23");
                  user.ClickAt(Box(KeyKind::Sound), CPoint(7, 7));
                  EXPECT_NE(dialog.list.editItem, -1);
                  user.Click(IDOK); // Required: drops what is being typed.
              }),
              IDOK);
    EXPECT_EQ(Params(KeyKind::Position).rectHeight, before);
    EXPECT_FALSE(Params(KeyKind::Sound).visible);
    EXPECT_EQ(Run([this] {
                  EXPECT_EQ(dialog.list.editItem, -1);
                  TypeHeight(KeyKind::Position, "24");
                  user.Key(Qt::Key_Return);
              }),
              IDOK);
    EXPECT_EQ(Params(KeyKind::Position).rectHeight, before);
    EXPECT_EQ(Run([this] {
                  TypeHeight(KeyKind::Position, "25");
                  user.Key(Qt::Key_Escape);
              }),
              IDCANCEL);
    EXPECT_EQ(Params(KeyKind::Position).rectHeight, before);
}

TEST_F(KeysFilterDlgTest, DoubleClickWorksByColumn) {
    std::vector<COLORREF> offered;
    Hooks().colorDialog = [&offered](CColorDialog& shown) {
        offered.push_back(shown.GetColor());
        return IDCANCEL;
    };
    Params(KeyKind::Speech).normalColor = 0x010203;
    Params(KeyKind::Speech).highlightColor = 0x040506;
    Run([&] {
        const int line = LineOf(KeyKind::Speech);
        const auto edits = [&](int fromRight) {
            user.DoubleClickAt(dialog.list, FromRight(line, fromRight));
            const bool opened = dialog.list.editItem == line;
            PressList();
            return opened;
        };
        EXPECT_FALSE(edits(121));
        EXPECT_TRUE(edits(120));
        EXPECT_TRUE(edits(101));
        EXPECT_THAT(offered, IsEmpty());
        EXPECT_FALSE(edits(100));
        EXPECT_FALSE(edits(61));
        EXPECT_THAT(offered, ElementsAre(0x010203u, 0x010203u));
        offered.clear();
        EXPECT_FALSE(edits(60));
        EXPECT_FALSE(edits(16));
        EXPECT_THAT(offered, ElementsAre(0x040506u, 0x040506u));
        EXPECT_FALSE(edits(15));
        const CRect last = LineRect(dialog.list.GetCount() - 1);
        user.DoubleClickAt(dialog.list, CPoint(last.right - 110, last.bottom + 20)); // below the lines
        EXPECT_EQ(dialog.list.editItem, -1);
        EXPECT_EQ(offered.size(), 2U);
        EXPECT_TRUE(Params(KeyKind::Speech).visible);
        user.Key(Qt::Key_Escape);
    });
}

TEST_F(KeysFilterDlgTest, ChosenColoursAreKeptOnOkAlone) {
    int answer = IDOK;
    Hooks().colorDialog = [&answer](CColorDialog& shown) {
        shown.SetCurrentColor(0xABCDEF);
        return answer;
    };
    Run([&] {
        const int line = LineOf(KeyKind::Speech);
        user.DoubleClickAt(dialog.list, FromRight(line, 80));
        EXPECT_EQ(Params(KeyKind::Speech).normalColor, 0xABCDEFu);
        user.DoubleClickAt(dialog.list, FromRight(line, 30));
        EXPECT_EQ(Params(KeyKind::Speech).highlightColor, 0xABCDEFu);
        answer = IDCANCEL;
        const COLORREF before = Params(KeyKind::Sound).normalColor;
        user.DoubleClickAt(dialog.list, FromRight(LineOf(KeyKind::Sound), 80));
        EXPECT_EQ(Params(KeyKind::Sound).normalColor, before);
        user.Key(Qt::Key_Escape);
    });
}

TEST_F(KeysFilterDlgTest, WindowThatGoesUnderTheColourDialogDoesntMatter) {
    Hooks().colorDialog = [this](CColorDialog& shown) {
        dialog.DestroyWindow();
        shown.SetCurrentColor(0xABCDEF);
        return IDOK;
    };
    Run([this] { user.DoubleClickAt(dialog.list, FromRight(LineOf(KeyKind::Speech), 80)); });
    EXPECT_EQ(dialog.GetSafeHwnd(), nullptr);
    EXPECT_EQ(Params(KeyKind::Speech).normalColor, 0xABCDEFu);
}

TEST_F(KeysFilterDlgTest, DefaultsShowsTheFileOfTheDataFolder) {
    for (KeyKindParams& record : dialog.params) {
        record = {"", 0, 0, 1, false};
    }
    Own(KeyKind::Speech).rectHeight = 3;
    Run([this] {
        TypeHeight(KeyKind::Sound, "44");
        user.Click(1762);
        EXPECT_EQ(dialog.list.GetCurSel(), LineOf(KeyKind::Sound));
        EXPECT_EQ(dialog.list.editItem, -1);
        EXPECT_FALSE(dialog.list.edit.IsWindowVisible());
        ExpectBoxesBesideLines();
        EXPECT_EQ(Box(KeyKind::Speech).GetCheck(), BST_CHECKED);
        user.ClickAt(Box(KeyKind::Speech), CPoint(7, 7)); // the new boxes work
        EXPECT_FALSE(Params(KeyKind::Speech).visible);
        user.Click(1762); // and once more
        EXPECT_TRUE(Params(KeyKind::Speech).visible);
        user.Key(Qt::Key_Escape);
    });
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_EQ(Params(KeyKind::Camera).normalColor, RGB(106, 168, 222));
    EXPECT_EQ(Params(KeyKind::Sound).rectHeight, 15);
    EXPECT_EQ(Params(KeyKind::Sound).name, "Sound keys");
    EXPECT_EQ(Own(KeyKind::Speech).rectHeight, 3); // the file was read: the control's own stay
}

TEST_F(KeysFilterDlgTest, DefaultsWithoutTheFileResetTheControlAndKeepTheDialog) {
    std::filesystem::remove(kDefaults);
    Params(KeyKind::Speech).rectHeight = 9;
    Own(KeyKind::Speech).visible = false;
    Run([this] {
        user.Click(1762);
        user.Key(Qt::Key_Escape);
    });
    EXPECT_THAT(boxes, ElementsAre("File DefaultKeysParams.fkd is corrupt or was deleted"));
    EXPECT_EQ(Params(KeyKind::Speech).rectHeight, 9);
    EXPECT_EQ(Params(KeyKind::Camera).normalColor, RGB(106, 168, 222));
    EXPECT_EQ(Own(KeyKind::Camera).normalColor, 0x808080u);
    EXPECT_EQ(Own(KeyKind::Camera).highlightColor, 0xC0C0C0u);
    EXPECT_EQ(Own(KeyKind::Speech).rectHeight, 15);
    EXPECT_FALSE(Own(KeyKind::Speech).visible); // flags are the dialog's own business
}

TEST_F(KeysFilterDlgTest, DefaultsKeepWhatStandsBeforeAFaultInTheFile) {
    WriteWholeFile(kDefaults, DefaultsOf(19, 6));
    Run([this] {
        user.Click(1762);
        user.Key(Qt::Key_Escape);
    });
    EXPECT_EQ(boxes.size(), 1U);
    EXPECT_EQ(Params(18).rectHeight, 6);
    EXPECT_FALSE(Params(18).visible);
    EXPECT_EQ(Params(19).rectHeight, 15);
    EXPECT_EQ(Own(18).rectHeight, 15);
    EXPECT_EQ(Own(18).normalColor, 0x808080u);
}

TEST_F(KeysFilterDlgTest, DefaultsWithoutAMainControlDoNothing) {
    Params(KeyKind::Sound).rectHeight = 9;
    Run([this] {
        plugin.scenarioDlg = nullptr;
        user.Click(1762);
        EXPECT_EQ(Params(KeyKind::Sound).rectHeight, 9);
        plugin.scenarioDlg = &holder;
        user.Key(Qt::Key_Escape);
    });
}

TEST_F(KeysFilterDlgTest, ControlThatGoesUnderTheMessageDoesntMatter) {
    std::filesystem::remove(kDefaults);
    Hooks().messageBox = [this](const std::string&, UINT) {
        plugin.scenarioDlg = nullptr;
        control.reset();
        return IDOK;
    };
    Run([this] {
        user.Click(1762);
        EXPECT_EQ(dialog.list.GetCount(), 12);
        user.Key(Qt::Key_Escape);
    });
    EXPECT_EQ(control, nullptr);
}

TEST_F(KeysFilterDlgTest, ExportWritesTheDialogsParametersAndTheControlKeepsThem) {
    const std::string path = folder.File("mine.fkd");
    ChooseFile(path);
    Own(KeyKind::Sound).visible = false;
    EXPECT_EQ(Run([this] {
                  TypeHeight(KeyKind::Position, "23");
                  PressList();
                  user.ClickAt(Box(KeyKind::Speech), CPoint(7, 7));
                  user.Click(1770);
                  user.Key(Qt::Key_Escape);
              }),
              IDCANCEL);
    EXPECT_THAT(asked, ElementsAre("save .fkd Film keys params files (*.fkd)|*.fkd||"));
    EXPECT_TRUE(overwriteIsAsked);
    EXPECT_THAT(boxes, IsEmpty());
    KeyKindParamsTable written;
    ASSERT_TRUE(LoadKeyParamsFile(path.c_str(), &written));
    EXPECT_EQ(written[KeyKind::Position].rectHeight, 23);
    EXPECT_FALSE(written[KeyKind::Speech].visible);
    EXPECT_TRUE(written[KeyKind::Sound].visible);
    // Required: also after Cancel.
    EXPECT_EQ(Own(KeyKind::Position).rectHeight, 23);
    EXPECT_TRUE(Own(KeyKind::Speech).visible);
    EXPECT_FALSE(Own(KeyKind::Sound).visible);
}

TEST_F(KeysFilterDlgTest, ExportThatFailsSaysSo) {
    ChooseFile(folder.File("missing/mine.fkd"));
    Run([this] {
        Params(KeyKind::Position).rectHeight = 8;
        user.Click(1770);
        user.Key(Qt::Key_Escape);
    });
    EXPECT_THAT(boxes, ElementsAre("Export failed"));
    EXPECT_EQ(Own(KeyKind::Position).rectHeight, 8);
}

TEST_F(KeysFilterDlgTest, ImportShowsTheFileAndTheControlKeepsIt) {
    const std::string path = folder.File("mine.fkd");
    WriteWholeFile(path, DefaultsOf(20, 6));
    ChooseFile(path);
    EXPECT_EQ(Run([this] {
                  user.Click(1771);
                  EXPECT_EQ(Params(KeyKind::Speech).rectHeight, 6);
                  EXPECT_EQ(Params(KeyKind::Speech).normalColor, 0x030201u);
                  EXPECT_FALSE(Params(KeyKind::Speech).visible);
                  EXPECT_EQ(Params(KeyKind::Speech).name, "Speech keys");
                  EXPECT_EQ(Box(KeyKind::Speech).GetCheck(), BST_UNCHECKED);
                  user.Click(IDCANCEL);
              }),
              IDCANCEL);
    EXPECT_THAT(asked, ElementsAre("open .fkd Film keys params files (*.fkd)|*.fkd||"));
    EXPECT_EQ(Own(KeyKind::Speech).rectHeight, 6);
    EXPECT_TRUE(Own(KeyKind::Speech).visible);
    EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(KeysFilterDlgTest, ImportOfABrokenFileSaysSoAndTheControlKeepsWhatStandsBeforeTheFault) {
    const std::string path = folder.File("mine.fkd");
    WriteWholeFile(path, DefaultsOf(5, 6));
    ChooseFile(path);
    Params(5).rectHeight = 9; // what the user has changed so far is the dialog's alone
    Run([this] {
        user.Click(1771);
        user.Key(Qt::Key_Escape);
    });
    EXPECT_THAT(boxes, ElementsAre("Import failed"));
    EXPECT_EQ(Params(4).rectHeight, 15);
    EXPECT_EQ(Params(5).rectHeight, 9);
    EXPECT_TRUE(Params(4).visible);
    EXPECT_EQ(Own(4).rectHeight, 6);
    EXPECT_EQ(Own(5).rectHeight, 15);
    EXPECT_TRUE(Own(4).visible);
}

TEST_F(KeysFilterDlgTest, ImportOfAMissingFileChangesNothing) {
    ChooseFile(folder.File("none.fkd"));
    Run([this] {
        user.Click(1771);
        user.Key(Qt::Key_Escape);
    });
    EXPECT_THAT(boxes, ElementsAre("Import failed"));
    EXPECT_EQ(Own(4).rectHeight, 15);
}

TEST_F(KeysFilterDlgTest, NoFileChosenChangesNothing) {
    ChooseFile("");
    Params(KeyKind::Speech).rectHeight = 9;
    Run([this] {
        user.Click(1770);
        user.Click(1771);
        user.Key(Qt::Key_Escape);
    });
    EXPECT_EQ(asked.size(), 2U);
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_EQ(Own(KeyKind::Speech).rectHeight, 15);
}

TEST_F(KeysFilterDlgTest, WindowsThatGoUnderTheFileDialogsDontMatter) {
    const std::string path = folder.File("mine.fkd");
    Hooks().fileDialog = [&](CFileDialog& shown) {
        shown.SetPathName(path);
        plugin.scenarioDlg = nullptr;
        control.reset();
        return IDOK;
    };
    Run([this] {
        user.Click(1770); // what the dialog holds is written all the same
        Params(KeyKind::Speech).rectHeight = 9;
        user.Click(1771);
        EXPECT_EQ(Params(KeyKind::Speech).rectHeight, 15);
        Hooks().fileDialog = [this](CFileDialog&) {
            dialog.DestroyWindow();
            return IDOK;
        };
        user.Click(1771);
    });
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_EQ(dialog.GetSafeHwnd(), nullptr);
}

TEST_F(KeysFilterDlgTest, ApplyToAllIsTakenByOk) {
    EXPECT_EQ(Run([this] {
                  user.Click(1776);
                  user.Click(IDCANCEL);
              }),
              IDCANCEL);
    EXPECT_EQ(dialog.applyToAll, 0);
    EXPECT_EQ(Run([this] {
                  user.Click(1776);
                  user.Click(IDOK);
              }),
              IDOK);
    EXPECT_EQ(dialog.applyToAll, 1);
}

TEST_F(KeysFilterDlgTest, KeysMoveTheSelectionAndEnterIsOk) {
    EXPECT_EQ(Run([this] {
                  EXPECT_EQ(CWnd::GetFocus(), &dialog.list);
                  PressList();
                  user.Key(Qt::Key_Down);
                  EXPECT_EQ(dialog.list.GetCurSel(), 1);
                  user.Key(Qt::Key_Return);
              }),
              IDOK);
}

TEST_F(KeysFilterDlgTest, EverythingStandsInsideAndApart) {
    Run([this] {
        EXPECT_EQ(dialog.GetWindowText(), "Keys filter & settings");
        user.ExpectTidy(8);
        user.Key(Qt::Key_Escape);
    });
}

TEST_F(KeysFilterDlgTest, ParametersGoInAndComeOutWhole) {
    KeyKindParamsTable read;
    read[KeyKind::Position] = {"Position keys", 0x111111, 0x222222, 5, false};
    dialog.SetParams(read);
    KeyKindParamsTable given;
    dialog.GetParams(given);
    EXPECT_EQ(given[KeyKind::Position].name, "Position keys");
    EXPECT_EQ(given[KeyKind::Position].normalColor, 0x111111u);
    EXPECT_EQ(given[KeyKind::Position].highlightColor, 0x222222u);
    EXPECT_EQ(given[KeyKind::Position].rectHeight, 5);
    EXPECT_FALSE(given[KeyKind::Position].visible);
}
