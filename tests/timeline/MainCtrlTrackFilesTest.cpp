#include "files/base/Log.h"
#include "files/QuorlEdFileDialog.h"
#include "framework/UserNote.h"
#include "host/engine/LowLevelFiles.h"
#include "plugin/contract/File.h"
#include "resources/resource.h"
#include "tests/support/TempFolder.h"
#include "tests/timeline/CommandFixture.h"

#include <array>
#include <cstring>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <limits>
#include <QCoreApplication>

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

std::vector<std::string> debugLines;
int openDescriptors = 0;
int (*systemOpen)(const char*, int, mode_t) = nullptr;
int (*systemClose)(int) = nullptr;

/// "Export" and "Import" of the actor "Crate", whose rows have no keys at first. The program lies in a folder
/// of its own; the working directory and what was replaced are put back.
class TrackFilesTest : public CommandTest {
protected:
    TrackFilesTest() : before(std::filesystem::current_path()), system(engine::LowLevel()) {
        for (const int kind : {KeyKind::Position, KeyKind::Rotation, KeyKind::Scale}) {
            track->ClearKind(kind); // those that a new actor gets
        }
        Reshow();
        debugLines.clear();
        SetLogListener([](const char* text) { debugLines.emplace_back(text); });
        Hooks().fileDialog = [this](CFileDialog& shown) { return Answer(shown); };
    }
    ~TrackFilesTest() override {
        SetLogListener(nullptr);
        engine::LowLevel() = system;
        std::filesystem::current_path(before);
    }

    void Reshow() {
        control->ShowFilm(film, true);
        RowOf("Crate")->SetExpanded(true, true);
        Settle();
    }
    int Answer(CFileDialog& shown) {
        auto& dialog = dynamic_cast<CQuorlEdFileDialog&>(shown);
        dialog.programDir = folder.Path();
        ++asked;
        saves = dialog.IsOpenDialog() == FALSE;
        filter = dialog.ofn.lpstrFilter;
        dialogFlags = dialog.ofn.Flags;
        if (meanwhile) {
            meanwhile();
        }
        shown.SetPathName(cancels ? "" : chosen);
        return cancels ? IDCANCEL : IDOK;
    }
    void Export(CTrackCtrl* row) { RunOn(IDC_EXPORT_TRACK, row, nullptr); }
    void Import(CTrackCtrl* row) { RunOn(IDC_IMPORT_TRACK, row, nullptr); }
    void ImportBytes(CTrackCtrl* row, const std::string& bytes) {
        WriteWholeFile(chosen, bytes);
        Import(row);
    }
    CFilmVectorKey& PutVector(CTrackCtrl* row, float time, const Vector3& value) {
        auto& record = static_cast<CFilmVectorKey&>(*Put(row, time)->record);
        record.value = value;
        record.inHandle = record.outHandle = {};
        record.inMethod = record.outMethod = BezierMethod::Linear;
        record.endTime = 0.0f; // as in a key that the engine makes
        row->track->NotifyKeysChanged(row->kind);
        return record;
    }
    /// A key as the engine writes it: marks, time, value, two handles, two methods.
    static Bytes Key(float time, const Vector3& value) {
        Bytes bytes;
        bytes.U8(0).U32(BitsOf(time)).U32(BitsOf(value.x)).U32(BitsOf(value.y)).U32(BitsOf(value.z));
        bytes.Fill(24, 0).U8(BezierMethod::Linear).U8(BezierMethod::Linear);
        return bytes;
    }
    /// A whole file: kind, size of the body, count, keys.
    static std::string FileOf(unsigned kind, const std::vector<Bytes>& keys) {
        Bytes bytes;
        bytes.U32(kind).U32(4U + 43U * static_cast<unsigned>(keys.size()));
        bytes.U32(static_cast<unsigned>(keys.size()));
        for (const Bytes& key : keys) {
            bytes.Append(key);
        }
        return bytes.Str();
    }
    static std::uint32_t BitsOf(float number) {
        std::uint32_t bits = 0;
        std::memcpy(&bits, &number, sizeof bits);
        return bits;
    }
    /// Whatever happened, rows and records agree.
    void ExpectWhole() {
        ExpectNothingDangles();
        for (const CTrackCtrl* row : control->tracks) {
            for (const CTrackKey* view : row->keys) {
                EXPECT_EQ(view->record->track, row->track);
                EXPECT_EQ(view->record->kind, row->kind);
            }
        }
        for (const int kind : {KeyKind::Position, KeyKind::Rotation, KeyKind::Scale}) {
            const CTrackCtrl* row = Row(kind);
            const std::size_t views = row != nullptr ? row->keys.size() : 0;
            EXPECT_EQ(views, KeysOf(*track, kind).size()) << kind;
        }
        Settle(); // paints
    }

    TempFolder folder;
    std::string chosen = folder.File("walk.track");
    bool cancels = false;
    std::function<void()> meanwhile; ///< while the file dialog is open
    int asked = 0;
    bool saves = false;
    std::string filter;
    DWORD dialogFlags = 0;

private:
    std::filesystem::path before;
    engine::LowLevelFiles system;
};

} // namespace

TEST_F(TrackFilesTest, ExportAsksForAFileToSaveTo) {
    Export(Row(KeyKind::Position));
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(saves);
    EXPECT_EQ(filter, "Movie tracks (*.track)|*.track||");
    EXPECT_NE(dialogFlags & OFN_OVERWRITEPROMPT, 0u);
}

TEST_F(TrackFilesTest, ImportAsksForAFileToOpen) {
    WriteWholeFile(chosen, FileOf(10, {}));
    Import(Row(KeyKind::Position));
    EXPECT_EQ(asked, 1);
    EXPECT_FALSE(saves);
    EXPECT_EQ(filter, "Movie tracks (*.track)|*.track||");
}

TEST_F(TrackFilesTest, ExportWritesTheKindAndTheKeys) {
    PutVector(Row(KeyKind::Position), 1.0f, {1.0f, 2.0f, 3.0f});
    PutVector(Row(KeyKind::Position), 2.5f, {-4.0f, 0.5f, 0.0f});
    Export(Row(KeyKind::Position));
    EXPECT_EQ(ReadWholeFile(chosen),
              FileOf(10, {Key(1.0f, {1.0f, 2.0f, 3.0f}), Key(2.5f, {-4.0f, 0.5f, 0.0f})}));
    EXPECT_EQ(ReadWholeFile(chosen).size(), 4u + 4u + 4u + 2u * 43u);
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_THAT(debugLines, IsEmpty());
}

TEST_F(TrackFilesTest, AWrittenFileIsToldInTheStatusBar) {
    std::vector<std::string> notes;
    SetUserNoteSink([&notes](const std::string& text) { notes.push_back(text); });
    Export(Row(KeyKind::Position));
    cancels = true;
    Export(Row(KeyKind::Position));
    SetUserNoteSink(nullptr);
    ASSERT_EQ(notes.size(), 1u);
    EXPECT_THAT(notes[0], ::testing::MatchesRegex("The keys of the row are written to .*\\.track\\."));
}

TEST_F(TrackFilesTest, RotationsAreExportedToo) {
    PutVector(Row(KeyKind::Rotation), 0.0f, {0.0f, 90.0f, 0.0f});
    Export(Row(KeyKind::Rotation));
    EXPECT_EQ(ReadWholeFile(chosen), FileOf(11, {Key(0.0f, {0.0f, 90.0f, 0.0f})}));
}

TEST_F(TrackFilesTest, NameWithoutAnExtensionGetsIt) {
    chosen = folder.File("walk");
    Export(Row(KeyKind::Position));
    EXPECT_EQ(ReadWholeFile(folder.File("walk.track")), FileOf(10, {}));
}

TEST_F(TrackFilesTest, ExportReplacesALongerFileWhole) {
    WriteWholeFile(chosen, std::string(1000, 'x'));
    Export(Row(KeyKind::Rotation));
    EXPECT_EQ(ReadWholeFile(chosen), FileOf(11, {}));
}

TEST_F(TrackFilesTest, ImportTakesTheKeysOfTheFileInPlaceOfTheRows) {
    PutVector(Row(KeyKind::Position), 7.0f, {});
    PutVector(Row(KeyKind::Rotation), 8.0f, {});
    ImportBytes(Row(KeyKind::Position),
                FileOf(10, {Key(3.0f, {1.0f, 2.0f, 3.0f}), Key(1.0f, {4.0f, 5.0f, 6.0f})}));
    const std::vector<IFilmKey*> keys = KeysOf(*track, KeyKind::Position);
    ASSERT_EQ(keys.size(), 2u);
    EXPECT_EQ(keys[0]->time, 1.0f); // in the order of time
    EXPECT_EQ(VectorKey(keys[0]).value, (Vector3{4.0f, 5.0f, 6.0f}));
    EXPECT_EQ(VectorKey(keys[1]).value, (Vector3{1.0f, 2.0f, 3.0f}));
    EXPECT_THAT(TimesOf(*Row(KeyKind::Position)), ElementsAre(1.0f, 3.0f));
    EXPECT_THAT(TimesOf(*Row(KeyKind::Rotation)), ElementsAre(8.0f));
    EXPECT_EQ(control->menuRow, nullptr) << "the film is shown anew";
    EXPECT_TRUE(control->undoMgr.actions.empty());
    ExpectWhole();
}

TEST_F(TrackFilesTest, ImportPosesTheActorAtOnce) {
    plugin.SetTime(2.0f, /*fromWindow*/ false);
    ImportBytes(Row(KeyKind::Position),
                FileOf(10, {Key(1.0f, {0.0f, 0.0f, 0.0f}), Key(3.0f, {8.0f, 0.0f, 4.0f})}));
    EXPECT_EQ(plugin.currentTime, 2.0f);
    EXPECT_NEAR(PositionOf(*crate).x, 4.0f, 1e-5f); // halfway
    EXPECT_NEAR(PositionOf(*crate).z, 2.0f, 1e-5f);
}

TEST_F(TrackFilesTest, RotationsGoToAnotherObject) {
    editor.Create("Barrel");
    plugin.AddActors({editor.level.Data()->Objects().back().get()});
    RowOf("Barrel")->SetExpanded(true, true);
    PutVector(Row(KeyKind::Rotation), 2.0f, {0.0f, 45.0f, 0.0f});
    Export(Row(KeyKind::Rotation));
    Import(RowOf("Barrel", KeyKind::Rotation));
    EXPECT_THAT(TimesOf(*RowOf("Barrel", KeyKind::Rotation)), ElementsAre(2.0f));
    EXPECT_THAT(TimesOf(*Row(KeyKind::Rotation)), ElementsAre(2.0f));
    EXPECT_THAT(boxes, IsEmpty());
    ExpectWhole();
}

TEST_F(TrackFilesTest, PositionsOnARotationRowAreRefused) {
    const IFilmKey* kept = &PutVector(Row(KeyKind::Rotation), 2.0f, {0.0f, 45.0f, 0.0f});
    CTrackCtrl* row = Row(KeyKind::Rotation);
    ImportBytes(row, FileOf(10, {Key(1.0f, {})}));
    EXPECT_THAT(boxes, ElementsAre("Track class doesn't match file"));
    EXPECT_THAT(KeysOf(*track, KeyKind::Rotation), ElementsAre(kept));
    EXPECT_EQ(Row(KeyKind::Rotation), row) << "the film is not shown anew";
    EXPECT_THAT(KeysOf(*track, KeyKind::Position), IsEmpty());
}

TEST_F(TrackFilesTest, FilesShorterThanTheirKindAreRefused) {
    PutVector(Row(KeyKind::Position), 2.0f, {});
    for (std::size_t size = 0; size < 4; ++size) {
        boxes.clear();
        ImportBytes(Row(KeyKind::Position), FileOf(10, {}).substr(0, size));
        EXPECT_THAT(boxes, ElementsAre("Track class doesn't match file")) << size;
        EXPECT_THAT(TimesOf(*Row(KeyKind::Position)), ElementsAre(2.0f));
    }
}

TEST_F(TrackFilesTest, KindsThatNoRowHasAreRefused) {
    PutVector(Row(KeyKind::Position), 2.0f, {});
    for (const unsigned kind : {0xFFFFFFFFU, 0x0A000000U, 0x0000010AU, 21U, 22U, 12U}) {
        boxes.clear();
        ImportBytes(Row(KeyKind::Position), FileOf(kind, {}));
        EXPECT_THAT(boxes, ElementsAre("Track class doesn't match file")) << kind;
    }
    EXPECT_THAT(TimesOf(*Row(KeyKind::Position)), ElementsAre(2.0f));
}

TEST_F(TrackFilesTest, WithoutATrackOfTheKindTheFileHoldsTheKindAlone) {
    MKTrack* keys = std::exchange(track->subTracks[KeyKind::Position], nullptr);
    Export(Row(KeyKind::Position));
    EXPECT_EQ(ReadWholeFile(chosen), Bytes().U32(10).Str()); // Required: the kind is written all the same.
    EXPECT_THAT(debugLines, ElementsAre("[CFilmsMainCtrl::OnMenuExportTrack] no proper MKTrack\n"));
    CTrackCtrl* row = Row(KeyKind::Position);
    Import(row);
    EXPECT_THAT(debugLines.back(), "[CFilmsMainCtrl::OnMenuImportTrack] no proper MKTrack\n");
    EXPECT_EQ(Row(KeyKind::Position), row);
    track->subTracks[KeyKind::Position] = keys;
    EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(TrackFilesTest, FileOfFourBytesIsATrackWithoutKeys) {
    PutVector(Row(KeyKind::Position), 2.0f, {});
    ImportBytes(Row(KeyKind::Position), Bytes().U32(10).Str());
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_THAT(KeysOf(*track, KeyKind::Position), IsEmpty());
    ExpectWhole();
}

TEST_F(TrackFilesTest, OtherKindsAreNotExported) {
    PutVector(Row(KeyKind::Scale), 2.0f, {1.0f, 1.0f, 1.0f});
    Export(Row(KeyKind::Scale));
    EXPECT_EQ(ReadWholeFile(chosen), Bytes().U32(12).Str());
    EXPECT_THAT(debugLines,
                ElementsAre("[CFilmsMainCtrl::OnMenuExportTrack] only position and rotation tracks can be "
                            "exported\n"));
}

TEST_F(TrackFilesTest, CancelChangesNothing) {
    cancels = true;
    PutVector(Row(KeyKind::Position), 2.0f, {});
    CTrackCtrl* row = Row(KeyKind::Position);
    Export(row);
    EXPECT_FALSE(std::filesystem::exists(chosen));
    WriteWholeFile(chosen, FileOf(10, {}));
    Import(row);
    EXPECT_EQ(asked, 2);
    EXPECT_THAT(TimesOf(*row), ElementsAre(2.0f));
    EXPECT_EQ(control->menuRow, row);
}

TEST_F(TrackFilesTest, EmptyPathChangesNothing) {
    chosen.clear();
    PutVector(Row(KeyKind::Position), 2.0f, {});
    Export(Row(KeyKind::Position));
    Import(Row(KeyKind::Position));
    EXPECT_EQ(asked, 2);
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
    EXPECT_THAT(TimesOf(*Row(KeyKind::Position)), ElementsAre(2.0f));
}

TEST_F(TrackFilesTest, WithoutARowNobodyIsAsked) {
    Export(nullptr);
    Import(nullptr);
    CTrackCtrl* row = Row(KeyKind::Position);
    row->DropTrack();
    Export(row);
    Import(row);
    EXPECT_EQ(asked, 0);
}

TEST_F(TrackFilesTest, FileThatCantBeWrittenIsNamedWithItsReason) {
    chosen = folder.File("no/walk.track");
    Export(Row(KeyKind::Position));
    EXPECT_THAT(boxes, ElementsAre("Failed to open file ./no/walk.track for writing : Error opening file"));
}

TEST_F(TrackFilesTest, FileThatCantBeReadIsNamedWithItsReason) {
    PutVector(Row(KeyKind::Position), 2.0f, {});
    Import(Row(KeyKind::Position));
    EXPECT_THAT(boxes, ElementsAre("Failed to open file ./walk.track for reading:\nError opening file"));
    EXPECT_THAT(TimesOf(*Row(KeyKind::Position)), ElementsAre(2.0f));
}

TEST_F(TrackFilesTest, FolderInPlaceOfAFileIsNamedWithTheReason) {
    chosen = folder.File("walk.track");
    std::filesystem::create_directory(chosen);
    Import(Row(KeyKind::Position));
    Export(Row(KeyKind::Position));
    ASSERT_EQ(boxes.size(), 2u);
    EXPECT_THAT(boxes[0], HasSubstr("for reading:\nError opening file"));
    EXPECT_THAT(boxes[1], HasSubstr("for writing : Error opening file"));
}

TEST_F(TrackFilesTest, AfterAFaultTheKindHasNoKeysAndTheFilmIsShownSo) {
    PutVector(Row(KeyKind::Position), 2.0f, {});
    PutVector(Row(KeyKind::Rotation), 3.0f, {});
    const std::string whole = FileOf(10, {Key(1.0f, {}), Key(2.0f, {})});
    EXPECT_THROW(ImportBytes(Row(KeyKind::Position), whole.substr(0, whole.size() - 1)), fs::file_exception);
    EXPECT_THAT(KeysOf(*track, KeyKind::Position), IsEmpty());
    EXPECT_THAT(TimesOf(*Row(KeyKind::Rotation)), ElementsAre(3.0f));
    ExpectWhole();
}

TEST_F(TrackFilesTest, EveryFaultOfABodyIsTold) {
    constexpr float kNotANumber = std::numeric_limits<float>::quiet_NaN();
    const std::string whole = FileOf(10, {Key(1.0f, {}), Key(2.0f, {})});
    std::string hugeSize = whole;
    hugeSize.replace(4, 4, "\xFF\xFF\xFF\xFF");
    std::string hugeCount = whole;
    hugeCount.replace(8, 4, "\xFF\xFF\xFF\xFF");
    for (const std::string& bytes : {whole.substr(0, 5), whole.substr(0, 11), whole + "x", hugeSize,
                                     hugeCount, FileOf(10, {Key(kNotANumber, {})})}) {
        PutVector(Row(KeyKind::Position), 2.0f, {});
        try {
            ImportBytes(Row(KeyKind::Position), bytes);
            ADD_FAILURE() << "nothing was thrown";
        } catch (const fs::file_exception& error) {
            EXPECT_STREQ(error.what(), "Error reading file");
        }
        EXPECT_THAT(KeysOf(*track, KeyKind::Position), IsEmpty());
        ExpectWhole();
        RowOf("Crate")->SetExpanded(true, true);
    }
}

TEST_F(TrackFilesTest, FilesAreClosedOnEveryWay) {
    openDescriptors = 0;
    systemOpen = engine::LowLevel().open;
    systemClose = engine::LowLevel().close;
    engine::LowLevel().open = [](const char* path, int flags, mode_t mode) {
        const int descriptor = systemOpen(path, flags, mode);
        openDescriptors += descriptor >= 0 ? 1 : 0;
        return descriptor;
    };
    int closed = 0;
    static int* closedHere = nullptr;
    closedHere = &closed;
    engine::LowLevel().close = [](int descriptor) {
        ++*closedHere;
        return systemClose(descriptor);
    };
    Export(Row(KeyKind::Position));
    EXPECT_EQ(openDescriptors, 1);
    EXPECT_EQ(closed, 1);
    Import(Row(KeyKind::Position)); // as it should be
    EXPECT_EQ(closed, 2);
    RowOf("Crate")->SetExpanded(true, true);
    Import(Row(KeyKind::Rotation)); // refused
    EXPECT_EQ(closed, 3);
    EXPECT_THROW(ImportBytes(Row(KeyKind::Position), FileOf(10, {}) + "x"), fs::file_exception);
    EXPECT_EQ(closed, 4);
    RowOf("Crate")->SetExpanded(true, true);
    MKTrack* keys = std::exchange(track->subTracks[KeyKind::Position], nullptr);
    Import(Row(KeyKind::Position)); // nothing to take it
    track->subTracks[KeyKind::Position] = keys;
    EXPECT_EQ(closed, 5);
    closedHere = nullptr;
}

TEST_F(TrackFilesTest, FullDiskIsTold) {
    engine::LowLevel().write = [](int, const void*, std::size_t) -> ssize_t { return -1; };
    PutVector(Row(KeyKind::Position), 2.0f, {});
    try {
        Export(Row(KeyKind::Position));
        ADD_FAILURE() << "nothing was thrown";
    } catch (const fs::file_exception& error) {
        EXPECT_STREQ(error.what(), "Error writing file");
    }
    EXPECT_THAT(TimesOf(*Row(KeyKind::Position)), ElementsAre(2.0f));
    ExpectWhole();
}

TEST_F(TrackFilesTest, NothingPointsAtTheKeysThatGo) {
    CTrackKey* key = Put(Row(KeyKind::Position), 2.0f);
    Put(Row(KeyKind::Position), 4.0f);
    FakeAttributes& attributes = OpenFakeAttributes(plugin);
    attributes.visible = true;
    control->SelectOnly(key);
    key->OnDoubleClick();
    CurrentKey() = key;
    control->hoverKey = key;
    RunOn(IDC_COPY_ATTRIBUTES, Row(KeyKind::Position), key);
    WriteWholeFile(chosen, FileOf(10, {Key(1.0f, {})}) + "a fault");
    for (const bool faulty : {true, false}) {
        if (!faulty) {
            WriteWholeFile(chosen, FileOf(10, {Key(1.0f, {})}));
            RowOf("Crate")->SetExpanded(true, true);
            key = Put(Row(KeyKind::Position), 2.0f);
            attributes.SetKey(key, false);
        }
        control->menuKey = key;
        control->menuRow = Row(KeyKind::Position);
        if (faulty) {
            EXPECT_THROW(Run(IDC_IMPORT_TRACK), fs::file_exception);
        } else {
            Run(IDC_IMPORT_TRACK);
        }
        EXPECT_EQ(attributes.record, nullptr);
        EXPECT_EQ(attributes.key, nullptr);
        EXPECT_FALSE(control->keyDuplicator.HasSource());
        ExpectWhole();
    }
    EXPECT_THAT(TimesOf(*Row(KeyKind::Position)), ElementsAre(1.0f));
}

TEST_F(TrackFilesTest, AnotherKeyOnShowStaysOnShow) {
    CTrackKey* key = Put(Row(KeyKind::Rotation), 2.0f);
    const IFilmKey* record = key->record;
    FakeAttributes& attributes = OpenFakeAttributes(plugin);
    attributes.visible = true;
    attributes.SetKey(key, false);
    ImportBytes(Row(KeyKind::Position), FileOf(10, {Key(1.0f, {})}));
    EXPECT_EQ(attributes.record, record);
    ASSERT_NE(attributes.key, nullptr);
    EXPECT_EQ(attributes.key, *Row(KeyKind::Rotation)->keys.begin());
}

TEST_F(TrackFilesTest, KeyThatWasRemovedBeforeStaysOutOfTheWay) {
    CTrackCtrl* row = Row(KeyKind::Position);
    CTrackKey* key = Put(row, 2.0f);
    Put(row, 3.0f);
    RunOn(IDC_REMOVE_KEY, row, key);
    ImportBytes(Row(KeyKind::Position), FileOf(10, {Key(1.0f, {})}));
    EXPECT_THAT(TimesOf(*Row(KeyKind::Position)), ElementsAre(1.0f));
    ExpectWhole();
}

TEST_F(TrackFilesTest, RowStaysTheTopOne) {
    CTrackCtrl* row = Row(KeyKind::Position);
    Put(row, 2.0f);
    Reshow();
    RowOf("Crate")->SetExpanded(false, true);
    RowOf("Crate")->ToggleExpanded(); // by the user, who finds it so again
    Resize(kWidth, 110);              // two rows
    control->topRow = Row(KeyKind::Position);
    control->RebuildVisibleRows(true, nullptr);
    ASSERT_EQ(control->topRow, Row(KeyKind::Position));
    ImportBytes(Row(KeyKind::Position), FileOf(10, {Key(1.0f, {})}));
    EXPECT_EQ(control->topRow, Row(KeyKind::Position));
}

TEST_F(TrackFilesTest, WhatGoesWhileTheFileIsChosenEndsTheCommand) {
    PutVector(Row(KeyKind::Position), 2.0f, {});
    WriteWholeFile(chosen, FileOf(10, {Key(1.0f, {})}));
    const std::string full = ReadWholeFile(chosen);
    for (const UINT command : {IDC_IMPORT_TRACK, IDC_EXPORT_TRACK}) {
        meanwhile = [this] { control->ShowFilm(film, true); };
        RunOn(command, Row(KeyKind::Position), nullptr);
        EXPECT_EQ(ReadWholeFile(chosen), full);
        EXPECT_THAT(TimesOf(*Row(KeyKind::Position)), ElementsAre(2.0f));
        meanwhile = [this] { Row(KeyKind::Position)->DropTrack(); };
        RunOn(command, Row(KeyKind::Position), nullptr);
        EXPECT_EQ(ReadWholeFile(chosen), full);
        Reshow();
    }
    EXPECT_THAT(TimesOf(*Row(KeyKind::Position)), ElementsAre(2.0f));
    meanwhile = [this] { plugin.DeleteFilm(film); };
    Import(Row(KeyKind::Position));
    EXPECT_TRUE(control->tracks.empty());
}

TEST_F(TrackFilesTest, ControlThatGoesWhileTheFileIsChosenEndsTheCommand) {
    WriteWholeFile(chosen, FileOf(10, {Key(1.0f, {})}));
    meanwhile = [this] {
        holder.control = nullptr;
        plugin.scenarioDlg = nullptr;
        control.reset();
    };
    PutVector(Row(KeyKind::Position), 2.0f, {});
    Import(Row(KeyKind::Position));
    EXPECT_EQ(control, nullptr);
    EXPECT_EQ(KeysOf(*track, KeyKind::Position).size(), 1u);
}

TEST_F(TrackFilesTest, LevelThatGoesWhileTheFileIsChosenEndsTheCommand) {
    WriteWholeFile(chosen, FileOf(10, {Key(1.0f, {})}));
    const std::string full = ReadWholeFile(chosen);
    meanwhile = [this] {
        plugin.SetCurrentFilm(nullptr);
        editor.level.New("");
        plugin.OnNew();
        plugin.OnEvent(EventCode::LevelLoaded, nullptr);
    };
    Import(Row(KeyKind::Position));
    Export(nullptr);
    EXPECT_EQ(ReadWholeFile(chosen), full);
    EXPECT_TRUE(control->tracks.empty());
}

TEST_F(TrackFilesTest, TwiceInARowGivesTheSame) {
    WriteWholeFile(chosen, FileOf(10, {Key(1.0f, {1.0f, 0.0f, 0.0f}), Key(2.0f, {})}));
    for (int round = 0; round < 3; ++round) {
        Import(Row(KeyKind::Position));
        RowOf("Crate")->SetExpanded(true, true);
        EXPECT_THAT(TimesOf(*Row(KeyKind::Position)), ElementsAre(1.0f, 2.0f));
        const std::string written = ReadWholeFile(chosen);
        Export(Row(KeyKind::Position));
        EXPECT_EQ(ReadWholeFile(chosen), written);
    }
}

TEST_F(TrackFilesTest, WhileTheFilmPlaysItGoesOnWithTheNewKeys) {
    WriteWholeFile(chosen, FileOf(10, {Key(0.0f, {}), Key(8.0f, {16.0f, 0.0f, 0.0f})}));
    std::uint32_t now = 0;
    Hooks().clock = [&now] { return now += 100; };
    bool imported = false;
    std::vector<float> places;
    editor.onBroadcast = [&](int code, void*) {
        if (code != EventCode::ObjectsMoved || plugin.isPlaying == 0) {
            return;
        }
        if (!imported && plugin.currentTime > 1.0f) {
            imported = true;
            Import(Row(KeyKind::Position));
        } else if (imported) {
            EXPECT_NEAR(PositionOf(*crate).x, 2.0f * plugin.currentTime, 1e-4f);
            places.push_back(PositionOf(*crate).x);
        }
        if (plugin.currentTime > 3.0f) {
            plugin.StopPlaying();
        }
    };
    plugin.Play(0.0f);
    editor.onBroadcast = nullptr;
    Hooks().clock = nullptr;
    EXPECT_TRUE(imported);
    EXPECT_GT(places.size(), 2u);
    ExpectWhole();
}
