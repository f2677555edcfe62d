#include "framework/Resource.h"
#include "plugin/base/PluginResources.h"
#include "resources/resource.h"
#include "tests/timeline/TrackCtrlFixture.h"

#include <set>

namespace {

using Ids = std::set<UINT>;

class TrackCtrlMenuTest : public TrackCtrlTest {
protected:
    TrackCtrlMenuTest() { source.LoadMenu(IDR_ROW_MENU); }

    Ids Offered(CTrackCtrl& row) {
        menu.DestroyMenu();
        menu.CreatePopupMenu();
        row.FillRowMenu(&menu, &source);
        Ids ids;
        for (const MenuItem& item : menu.Items()) {
            ids.insert(item.id);
        }
        return ids;
    }
    bool IsGrayed(UINT id) const {
        const UINT state = menu.GetMenuState(id, MF_BYCOMMAND);
        return (state & MF_GRAYED) != 0 && (state & MF_DISABLED) != 0;
    }
    CFilmTrack* AddTrack(CFilmTrack* track) {
        film->AddTrack(track);
        return track;
    }

    const ResourceScope resources{PluginResources()};
    CMenu source;
    CMenu menu;
};

} // namespace

TEST_F(TrackCtrlMenuTest, RowWithoutATrackHasNone) {
    EXPECT_EQ(Offered(MakeRow(KeyKind::None)), Ids{});
    CTrackCtrl& row = MakeRow(KeyKind::None, boxTrack);
    row.FillRowMenu(nullptr, &source);
    row.FillRowMenu(&menu, nullptr);
    EXPECT_EQ(menu.GetMenuItemCount(), 0U);
}

TEST_F(TrackCtrlMenuTest, LevelRoot) {
    EXPECT_EQ(Offered(MakeRow(KeyKind::None, film->mainTrack)), (Ids{36803, 36819, 36826, 36828, 36877}));
    EXPECT_TRUE(IsGrayed(36803)); // the level is never removed
}

TEST_F(TrackCtrlMenuTest, ObjectRoot) {
    EXPECT_EQ(Offered(MakeRow(KeyKind::None, boxTrack)), (Ids{36803, 36819, 36826, 36870, 36873, 36877}));
    EXPECT_FALSE(IsGrayed(36803));
}

TEST_F(TrackCtrlMenuTest, CameraRoot) {
    EXPECT_EQ(Offered(MakeRow(KeyKind::None, AddCamera(film, "Camera"))),
              (Ids{36803, 36819, 36826, 36843, 36877}));
    EXPECT_FALSE(IsGrayed(36803));
}

TEST_F(TrackCtrlMenuTest, LightRoots) {
    CFilmTrack* glLight = AddTrack(film->CreateGLLightTrack());
    const Ids offered{36803, 36819, 36826, 36877};
    EXPECT_EQ(Offered(MakeRow(KeyKind::None, glLight)), offered);
    EXPECT_FALSE(IsGrayed(36803));
    EXPECT_EQ(Offered(MakeRow(KeyKind::None, AddTrack(film->CreateDynLightTrack()))), offered);
    EXPECT_FALSE(IsGrayed(36803));
    AsGLLightTrack(glLight)->isSun = 1;
    EXPECT_EQ(Offered(MakeRow(KeyKind::None, glLight)), offered);
    EXPECT_TRUE(IsGrayed(36803)); // nor is the sun
}

TEST_F(TrackCtrlMenuTest, KindRows) {
    // Required: "Change actor" stays, also where there is no actor.
    const Ids offered{36819, 36827, 36844, 36870, 36877};
    for (const int kind : {1, 2, 8, 9, 12, 13, 15}) {
        EXPECT_EQ(Offered(MakeRow(kind, boxTrack)), offered) << kind;
    }
    EXPECT_EQ(Offered(MakeRow(KeyKind::Sound, film->mainTrack)), offered);
    EXPECT_EQ(Offered(MakeRow(KeyKind::Roll, AddCamera(film, "Camera"))), offered);
}

TEST_F(TrackCtrlMenuTest, PositionAndRotationRowsExportAndImport) {
    for (const int kind : {10, 11}) {
        EXPECT_EQ(Offered(MakeRow(kind, boxTrack)), (Ids{36819, 36827, 36844, 36870, 36871, 36872, 36877}));
    }
}

TEST_F(TrackCtrlMenuTest, CameraRowCanBeRemoved) {
    EXPECT_EQ(Offered(MakeRow(KeyKind::Camera, film->mainTrack)),
              (Ids{36819, 36827, 36829, 36844, 36870, 36877}));
}
