#include "tests/timeline/CommandFixture.h"

#include "files/KeysFilterDlg.h"
#include "resources/resource.h"
#include "timeline/rows/TrackCtrlStore.h"

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

/// The command "Filter keys" of the menu of a row.
class MainCtrlFilterKeysTest : public CommandTest {
protected:
    /// Runs the command; the user works on the dialog and answers it.
    void Filter(CTrackCtrl* row, const std::function<void(CKeysFilterDlg&)>& user, int answer = IDOK) {
        Hooks().modalDialog = [this, &user, answer](CDialog& shown) {
            ++dialogs;
            auto& dialog = dynamic_cast<CKeysFilterDlg&>(shown);
            user(dialog);
            if (answer == IDOK && dialog.GetSafeHwnd() != nullptr) {
                dialog.SendMessage(WM_COMMAND, IDOK);
            }
            return answer;
        };
        RunAt(IDC_FILTER_KEYS, row, 0.0f);
    }
    static void Tick(CKeysFilterDlg& dialog, int kind, bool visible) {
        dialog.params[static_cast<std::size_t>(kind)].visible = visible;
    }
    /// The stored record of a row's track in the film, or null.
    MovieParamsRecord* Stored(CTrackCtrl* row, const std::string& entry) {
        TrackStore store = FindTrackStore(plugin, row->track, film->name);
        for (MovieParamsRecord& record : store.params->records) {
            if (record.filmName == film->name && record.objectName == entry) {
                return &record;
            }
        }
        return nullptr;
    }
    static std::vector<int> KindsOf(const KeyFilter& filter) {
        std::vector<int> kinds;
        for (int kind = 0; kind < KeyKind::FilterCount; ++kind) {
            if (filter[static_cast<std::size_t>(kind)] != 0) {
                kinds.push_back(kind);
            }
        }
        return kinds;
    }

    int dialogs = 0;
};

} // namespace

TEST_F(MainCtrlFilterKeysTest, NewFilmIsFilledFromNothing) {
    film = OpenNewFilm();
    RowOf("Level")->SetExpanded(true, true);
    ASSERT_THAT(VisibleNames(), Not(Contains("Camera keys(0)")));
    Filter(RowOf("Level"), [](CKeysFilterDlg& dialog) {
        EXPECT_FALSE(dialog.params[KeyKind::Camera].visible);
        Tick(dialog, KeyKind::Camera, true);
        Tick(dialog, KeyKind::Sound, true);
    });
    EXPECT_THAT(VisibleNames(), Contains("Camera keys(0)"));
    EXPECT_THAT(VisibleNames(), Contains("Sound keys"));
    EXPECT_THAT(VisibleNames(), Not(Contains("Flags keys")));
    RunAt(IDC_ADD_KEY, LevelRow(KeyKind::Camera), 1.0f);
    EXPECT_EQ(KeysOf(*film->mainTrack, KeyKind::Camera).size(), 1U);
    control->ShowFilm(film, true);
    EXPECT_THAT(VisibleNames(), Contains("Camera keys(0)")); // it has a key now
    EXPECT_THAT(VisibleNames(), Not(Contains("Sound keys")));
}

TEST_F(MainCtrlFilterKeysTest, EveryKindOfATrackGetsItsRow) {
    Filter(RowOf("Crate"), [](CKeysFilterDlg& dialog) {
        for (KeyKindParams& record : dialog.params) {
            record.visible = true;
        }
    });
    for (const CTrackCtrl* child : RowOf("Crate")->children) {
        EXPECT_TRUE(child->visible) << child->name;
        EXPECT_THAT(VisibleNames(), Contains(child->name));
    }
}

TEST_F(MainCtrlFilterKeysTest, EveryKindOfEveryTrackIsFilledFromNothing) {
    AddCamera(film, "Cam");
    editor.CreateOfClass("GLLightEditorObject", "Lamp");
    editor.CreateOfClass("FilmsDynLightEditorObject", "Torch");
    for (CFilmTrack* each : film->tracks) {
        for (int kind = 0; kind < KeyKind::FilterCount; ++kind) {
            each->ClearKind(kind);
        }
    }
    control->ShowFilm(film, true);
    std::size_t filled = 0;
    for (CFilmTrack* each : std::vector<CFilmTrack*>(film->tracks.begin(), film->tracks.end())) {
        CTrackCtrl* root = control->FindRowOfKey(nullptr);
        for (CTrackCtrl* row : control->tracks) {
            root = row->IsRoot() && row->track == each ? row : root;
        }
        root->SetExpanded(true, true);
        decltype(CKeysFilterDlg::available) available{};
        Filter(root, [&available](CKeysFilterDlg& dialog) {
            available = dialog.available;
            for (int kind = 0; kind < KeyKind::FilterCount; ++kind) {
                Tick(dialog, kind, available[static_cast<std::size_t>(kind)] != 0);
            }
        });
        for (int kind = 0; kind < KeyKind::FilterCount; ++kind) {
            CTrackCtrl* row = root->FindChild(kind, CTrackCtrl::kAnySubIndex);
            ASSERT_EQ(row != nullptr, available[static_cast<std::size_t>(kind)] != 0)
                << root->name << " " << kind;
            if (row != nullptr) {
                EXPECT_TRUE(row->visible) << root->name << " " << kind;
                RunAt(IDC_ADD_KEY, row, 5.0f);
                EXPECT_EQ(KeysOf(*each, kind).size(), 1U) << root->name << " " << kind;
                ++filled;
            }
        }
    }
    EXPECT_EQ(filled, 10U + 12U + 4U + 3U + 5U); // level, actor, camera and the two lights
}

TEST_F(MainCtrlFilterKeysTest, OnlyRootRowsHaveADialog) {
    Filter(Row(KeyKind::Position), [](CKeysFilterDlg&) {});
    Filter(nullptr, [](CKeysFilterDlg&) {});
    EXPECT_EQ(dialogs, 0);
}

TEST_F(MainCtrlFilterKeysTest, DialogShowsTheRowsFlagsAndTheControlsLooks) {
    control->keyParams[KeyKind::Speech].rectHeight = 9;
    control->keyParams[KeyKind::Position].visible = false;
    control->keyParams[KeyKind::Speech].visible = true;
    Filter(
        RowOf("Crate"),
        [this](CKeysFilterDlg& dialog) {
            EXPECT_TRUE(dialog.params[KeyKind::Position].visible); // the actor has a key there
            EXPECT_FALSE(dialog.params[KeyKind::Speech].visible);
            EXPECT_EQ(dialog.params[KeyKind::Speech].rectHeight, 9);
            EXPECT_EQ(dialog.available[KeyKind::Speech], 1);
            EXPECT_EQ(dialog.available[KeyKind::Camera], 0);
            EXPECT_EQ(dialog.applyToAll, 0);
            EXPECT_FALSE(control->keyParams[KeyKind::Position].visible);
        },
        IDCANCEL);
    EXPECT_EQ(dialogs, 1);
    EXPECT_FALSE(control->keyParams[KeyKind::Position].visible);
    EXPECT_TRUE(control->keyParams[KeyKind::Speech].visible);
}

TEST_F(MainCtrlFilterKeysTest, OkShowsAndStoresTheKinds) {
    Filter(RowOf("Crate"), [](CKeysFilterDlg& dialog) {
        Tick(dialog, KeyKind::Rotation, false);
        Tick(dialog, KeyKind::Scale, false);
        Tick(dialog, KeyKind::Speech, true);
    });
    EXPECT_THAT(VisibleNames(), Contains("Speech keys"));
    EXPECT_THAT(VisibleNames(), Contains("Position keys"));
    EXPECT_THAT(VisibleNames(), Not(Contains("Rotation keys")));
    const MovieParamsRecord* stored = Stored(RowOf("Crate"), "Crate");
    ASSERT_NE(stored, nullptr);
    EXPECT_THAT(KindsOf(stored->keyFilter), ElementsAre(KeyKind::Speech, KeyKind::Position));
    EXPECT_EQ(stored->expanded, 1);
    EXPECT_EQ(Stored(RowOf("Crate"), ""), nullptr);
    EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(MainCtrlFilterKeysTest, CancelChangesNothing) {
    const std::vector<std::string> before = VisibleNames();
    Filter(
        RowOf("Crate"),
        [](CKeysFilterDlg& dialog) {
            Tick(dialog, KeyKind::Speech, true);
            dialog.params[KeyKind::Position].rectHeight = 3;
        },
        IDCANCEL);
    EXPECT_EQ(VisibleNames(), before);
    EXPECT_EQ(control->keyParams[KeyKind::Position].rectHeight, 15);
    EXPECT_EQ(Row(KeyKind::Position)->keys.front()->rectHeight, 15);
}

TEST_F(MainCtrlFilterKeysTest, FoldedRowShowsTheKindsOnceItIsUnfolded) {
    RowOf("Crate")->SetExpanded(false, true);
    Filter(RowOf("Crate"), [](CKeysFilterDlg& dialog) {
        Tick(dialog, KeyKind::Position, false);
        Tick(dialog, KeyKind::Speech, true);
    });
    EXPECT_THAT(VisibleNames(), Not(Contains("Speech keys")));
    EXPECT_EQ(Stored(RowOf("Crate"), "Crate")->expanded, 0);
    RowOf("Crate")->ToggleExpanded();
    EXPECT_THAT(VisibleNames(), Contains("Speech keys"));
    EXPECT_THAT(VisibleNames(), Not(Contains("Position keys")));
}

TEST_F(MainCtrlFilterKeysTest, LevelAndCameraKeepTheirFilterInTheirOwnStores) {
    AddCamera(film, "Cam");
    control->ShowFilm(film, true);
    Filter(RowOf("Level"), [](CKeysFilterDlg& dialog) { Tick(dialog, KeyKind::FxRain, true); });
    Filter(RowOf("Cam"), [](CKeysFilterDlg& dialog) { Tick(dialog, KeyKind::Roll, true); });
    const auto filterIn = [this](CPluginFilmsParams& params, const char* entry) {
        const std::uint8_t* filter = params.Find(film->name, entry, nullptr);
        return filter != nullptr ? std::vector<std::uint8_t>(filter, filter + KeyKind::FilterCount)
                                 : std::vector<std::uint8_t>(KeyKind::FilterCount);
    };
    EXPECT_EQ(filterIn(plugin.levelParams, "Level")[KeyKind::FxRain], 1);
    ASSERT_EQ(plugin.cameraParams.size(), 1U);
    EXPECT_EQ(filterIn(plugin.cameraParams.front(), "Cam")[KeyKind::Roll], 1);
    EXPECT_EQ(filterIn(plugin.cameraParams.front(), "Cam")[KeyKind::FieldOfView], 0);
}

TEST_F(MainCtrlFilterKeysTest, ApplyToAllFiltersEveryTrackAndStoresItWithoutAName) {
    EditorObject* boat = editor.Create("Boat");
    plugin.AddActors({boat});
    RowOf("Crate")->SetExpanded(true, true);
    RowOf("Boat")->SetExpanded(true, true);
    Filter(RowOf("Crate"), [](CKeysFilterDlg& dialog) {
        Tick(dialog, KeyKind::Scale, false);
        Tick(dialog, KeyKind::Speech, true);
        dialog.CheckDlgButton(IDC_APPLY_TO_ALL, BST_CHECKED);
    });
    for (const char* actor : {"Crate", "Boat"}) {
        EXPECT_TRUE(RowOf(actor, KeyKind::Speech)->visible) << actor;
        EXPECT_FALSE(RowOf(actor, KeyKind::Scale)->visible) << actor;
        const MovieParamsRecord* stored = Stored(RowOf(actor), ""); // Required: without the entry's name.
        ASSERT_NE(stored, nullptr) << actor;
        EXPECT_THAT(KindsOf(stored->keyFilter),
                    ElementsAre(KeyKind::Speech, KeyKind::Position, KeyKind::Rotation));
        EXPECT_EQ(stored->expanded, 1);
        EXPECT_EQ(Stored(RowOf(actor), actor)->keyFilter[KeyKind::Speech], 1); // as it was when it was made
        EXPECT_EQ(Stored(RowOf(actor), actor)->keyFilter[KeyKind::Scale], 1);
    }
    ASSERT_NE(Stored(RowOf("Level"), ""), nullptr);
    EXPECT_EQ(Stored(RowOf("Level"), "")->expanded, RowOf("Level")->expanded ? 1 : 0);
}

TEST_F(MainCtrlFilterKeysTest, ApplyToAllHidesElsewhereWhatItsOwnTrackCantHold) {
    RowOf("Level")->SetExpanded(true, true);
    Filter(RowOf("Level"), [](CKeysFilterDlg& dialog) {
        EXPECT_EQ(dialog.available[KeyKind::Position], 0);
        dialog.CheckDlgButton(IDC_APPLY_TO_ALL, BST_CHECKED);
    });
    // Required: the level's own flags of those kinds are clear, and they are all applied.
    EXPECT_FALSE(Row(KeyKind::Position)->visible);
    EXPECT_THAT(VisibleNames(), Not(Contains("Position keys")));
}

TEST_F(MainCtrlFilterKeysTest, ApplyToAllShowsTheKindsOfAHiddenTrackWithoutItsOwnRow) {
    plugin.AddActors({editor.Create("Boat")});
    RowOf("Boat")->SetExpanded(true, true);
    RowOf("Boat")->SetVisibleFlag(false);
    ASSERT_FALSE(RowOf("Boat", KeyKind::Position)->visible);
    Filter(RowOf("Crate"),
           [](CKeysFilterDlg& dialog) { dialog.CheckDlgButton(IDC_APPLY_TO_ALL, BST_CHECKED); });
    EXPECT_FALSE(RowOf("Boat")->visible);
    EXPECT_TRUE(RowOf("Boat", KeyKind::Position)->visible); // Required: its fold state alone counts.
}

TEST_F(MainCtrlFilterKeysTest, NamelessRecordIsNotDoubledByReadingItAgain) {
    Filter(RowOf("Crate"),
           [](CKeysFilterDlg& dialog) { dialog.CheckDlgButton(IDC_APPLY_TO_ALL, BST_CHECKED); });
    CPluginFilmsParams& params = *ParamsOf(crate);
    EXPECT_EQ(params.records.size(), 2U); // "Crate" and the nameless one
    for (int round = 0; round < 2; ++round) {
        for (MovieParamsRecord& record : params.records) {
            record.objectName = "Crate"; // as a level gives it back, whose chunk holds no names
        }
        control->ShowFilm(film, true);
        EXPECT_EQ(params.records.size(), 2U);
    }
}

TEST_F(MainCtrlFilterKeysTest, ColoursAndHeightsReachEveryViewAtOnce) {
    CTrackKey* first = Row(KeyKind::Position)->keys.front();
    CTrackKey* second = Put(Row(KeyKind::Position), 3.0f);
    CTrackKey* cut = Put(LevelRow(KeyKind::Camera), 1.0f, 2.0f);
    CTrackKey* turned = Row(KeyKind::Rotation)->keys.front();
    control->SelectOnly(second);
    Settle();
    Filter(RowOf("Crate"), [](CKeysFilterDlg& dialog) {
        dialog.params[KeyKind::Position] = {"Position keys", 0x111111, 0x222222, 9, true};
        dialog.params[KeyKind::Camera].rectHeight = 7;
        dialog.params[KeyKind::Rotation].rectHeight = -3; // of a file
    });
    for (const CTrackKey* view : {first, second}) {
        EXPECT_EQ(view->normalColor, 0x111111u);
        EXPECT_EQ(view->highlightColor, 0x222222u);
        EXPECT_EQ(view->rectHeight, 9);
    }
    EXPECT_EQ(cut->rectHeight, 7);
    EXPECT_EQ(turned->rectHeight, 15); // a negative height is none
    EXPECT_TRUE(second->selected);
    EXPECT_EQ(second->state, CTrackKey::kHighlighted);
    EXPECT_EQ(first->state, CTrackKey::kNormal);
    EXPECT_THAT(control->selectedKeys, ElementsAre(second));
    EXPECT_EQ(control->keyParams[KeyKind::Position].rectHeight, 9);
    EXPECT_TRUE(WantsPaint(*Row(KeyKind::Position)));
    EXPECT_EQ(Put(Row(KeyKind::Position), 6.0f)->rectHeight, 9); // later keys too
}

TEST_F(MainCtrlFilterKeysTest, ColoursThatAreTakenInTheOpenDialogArePaintedAtOnce) {
    Settle();
    ASSERT_FALSE(WantsPaint(*Row(KeyKind::Position)));
    control->TakeKeyLooks(control->keyParams); // as Export, Import and Defaults do
    EXPECT_TRUE(WantsPaint(*Row(KeyKind::Position)));
}

TEST_F(MainCtrlFilterKeysTest, FlagsOfAFilterHideNoKeys) {
    Filter(RowOf("Crate"), [](CKeysFilterDlg& dialog) { Tick(dialog, KeyKind::Position, false); });
    EXPECT_TRUE(control->keyParams[KeyKind::Position].visible);
    EXPECT_NE(Row(KeyKind::Position)->keys.front()->state, CTrackKey::kHidden);
    EXPECT_NE(Put(Row(KeyKind::Position), 3.0f)->state, CTrackKey::kHidden);
}

TEST_F(MainCtrlFilterKeysTest, ViewsMadeWhileTheDialogIsOpenTakeTheControlsFlags) {
    control->keyParams[KeyKind::Scale].visible = false;
    const auto expectFlags = [this] {
        EXPECT_NE(Row(KeyKind::Position)->keys.front()->state, CTrackKey::kHidden);
        EXPECT_EQ(Row(KeyKind::Scale)->keys.front()->state, CTrackKey::kHidden);
    };
    RowOf("Crate")->ApplyKindFlags(KeyFilter{}.data(), true); // the row shows no kind at all
    Filter(RowOf("Crate"), [&](CKeysFilterDlg& dialog) {
        control->ShowFilm(film, true);
        RowOf("Crate")->SetExpanded(true, true);
        expectFlags();
        Tick(dialog, KeyKind::Speech, true);
    });
    expectFlags();
    EXPECT_TRUE(Row(KeyKind::Speech)->visible); // the row was found again
    EXPECT_FALSE(Row(KeyKind::Position)->visible);
    ExpectNothingDangles();
}

TEST_F(MainCtrlFilterKeysTest, FilterEndsWhereTheFilmIsShownAnew) {
    Filter(RowOf("Crate"), [](CKeysFilterDlg& dialog) {
        Tick(dialog, KeyKind::Speech, true);
        Tick(dialog, KeyKind::Position, false);
    });
    control->ShowFilm(film, true);
    EXPECT_FALSE(Row(KeyKind::Speech)->visible); // Required: kinds show by their keys again.
    EXPECT_TRUE(Row(KeyKind::Position)->visible);
}

TEST_F(MainCtrlFilterKeysTest, HiddenTrackComesBack) {
    RunAt(IDC_HIDE_TRACK, Row(KeyKind::Position), 0.0f);
    ASSERT_THAT(VisibleNames(), Not(Contains("Position keys")));
    Filter(RowOf("Crate"), [](CKeysFilterDlg& dialog) {
        EXPECT_FALSE(dialog.params[KeyKind::Position].visible);
        Tick(dialog, KeyKind::Position, true);
    });
    EXPECT_THAT(VisibleNames(), Contains("Position keys"));
}

TEST_F(MainCtrlFilterKeysTest, RowThatGoesUnderTheDialogIsLeftAlone) {
    Filter(RowOf("Crate"), [this](CKeysFilterDlg& dialog) {
        control->RemoveTrackCtrl(RowOf("Crate"), true);
        Tick(dialog, KeyKind::FxRain, true);
        dialog.params[KeyKind::Camera].rectHeight = 7;
        dialog.CheckDlgButton(IDC_APPLY_TO_ALL, BST_CHECKED);
    });
    EXPECT_FALSE(LevelRow(KeyKind::FxRain)->visible);
    EXPECT_EQ(control->keyParams[KeyKind::Camera].rectHeight, 7); // the looks are of no row
    ExpectNothingDangles();
}

TEST_F(MainCtrlFilterKeysTest, FilmsThatComeAndGoUnderTheDialogDontMatter) {
    const std::function<void()> events[] = {[this] { plugin.SetCurrentFilm(NewFilm()); },
                                            [this] { plugin.SetCurrentFilm(nullptr); },
                                            [this] { plugin.DeleteFilm(film); }};
    for (const std::function<void()>& event : events) {
        film = OpenFilmWith({editor.Create("Lamp")});
        Filter(RowOf("Lamp"), [&](CKeysFilterDlg& dialog) {
            event();
            Tick(dialog, KeyKind::FxRain, true);
            dialog.CheckDlgButton(IDC_APPLY_TO_ALL, BST_CHECKED);
        });
        if (CTrackCtrl* level = LevelRow(KeyKind::FxRain)) {
            EXPECT_FALSE(level->visible);
        }
        ExpectNothingDangles();
    }
}

TEST_F(MainCtrlFilterKeysTest, LevelThatGoesUnderTheDialogDoesntMatter) {
    Filter(RowOf("Crate"), [this](CKeysFilterDlg& dialog) {
        plugin.OnNew();
        Tick(dialog, KeyKind::FxRain, true);
    });
    EXPECT_THAT(RowNames(), IsEmpty());
}

TEST_F(MainCtrlFilterKeysTest, ControlThatGoesUnderTheDialogDoesntMatter) {
    Filter(RowOf("Crate"), [this](CKeysFilterDlg& dialog) {
        Tick(dialog, KeyKind::FxRain, true);
        plugin.scenarioDlg = nullptr;
        control.reset();
    });
    EXPECT_EQ(control, nullptr);
}

TEST_F(MainCtrlFilterKeysTest, WorksWhileTheFilmPlays) {
    std::uint32_t milliseconds = 0;
    Hooks().clock = [&milliseconds] { return milliseconds += 10; };
    editor.onBroadcast = [this](int code, void*) {
        if (code != EventCode::ObjectsMoved || plugin.isPlaying == 0 || dialogs > 0) {
            return;
        }
        Filter(RowOf("Crate"), [this](CKeysFilterDlg& dialog) {
            EXPECT_NE(plugin.isPlaying, 0);
            Tick(dialog, KeyKind::Speech, true);
            plugin.SetTime(4.0f, /*fromWindow*/ false);
        });
        plugin.StopPlaying();
    };
    plugin.Play(0.0f);
    editor.onBroadcast = nullptr;
    EXPECT_EQ(dialogs, 1);
    EXPECT_TRUE(Row(KeyKind::Speech)->visible);
}
