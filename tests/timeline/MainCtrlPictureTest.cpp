#include "tests/timeline/ControlFixture.h"

#include "keys/rules/KeyKinds.h"
#include "keys/views/NullTimeTrackKey.h"
#include "keys/views/TimedTrackKey.h"
#include "tests/support/DrawRecorder.h"
#include "tests/support/Golden.h"
#include "tests/support/Paths.h"

#include <gmock/gmock.h>
#include <QImage>

using ::testing::Gt;
using ::testing::SizeIs;

namespace {

/// Names, labels and the fold buttons differ with the fonts and the style of a machine.
const std::vector<CRect> kTextAreas = {CRect(1, 1, 149, 29), CRect(151, 3, 779, 18), CRect(0, 32, 149, 400)};

class MainCtrlPictureTest : public ControlTest {
protected:
    /// A film with keys of every look, its actor and its level unfolded.
    void ShowSample() {
        IFilm* film = OpenFilmWithActors(2);
        AddCut(film, "", 0.5f, 4.0f, 0);
        AddCut(film, "", 4.5f, 9.0f, 0);
        AddKey(film->mainTrack, KeyKind::FxRain, 3.0f)->SetEndTime(6.0f);
        CFilmTrack* track = RowOf("Actor100")->track;
        for (const float time : {1.0f, 2.0f, 2.1f, 7.5f}) {
            AddKey(track, KeyKind::Position, time);
        }
        AddKey(track, KeyKind::Flags, 5.0f);
        control->ShowFilm(film, true);
        RowOf("Level")->SetExpanded(true, false);
        RowOf("Actor100")->SetExpanded(true, true);
        control->grid->AddMark(2.5f);
        control->SetCurrentTime(6.5f, true);
        Settle();
    }
};

} // namespace

TEST_F(MainCtrlPictureTest, EmptyControl) {
    ExpectGolden(PictureOf(*control), "tests/timeline", "control_empty", kTextAreas);
}

TEST_F(MainCtrlPictureTest, FilmWithKeysMarkAndCursor) {
    ShowSample();
    ExpectGolden(PictureOf(*control), "tests/timeline", "control_film", kTextAreas);
}

TEST_F(MainCtrlPictureTest, SelectedAndMarkedKeys) {
    ShowSample();
    control->SelectOnly(RowOf("Level", KeyKind::Camera, 0)->keys.back());
    RowOf("Actor100", KeyKind::Position)->keys.front()->marked = true;
    control->ArrangeRows(true, false);
    Settle();
    ExpectGolden(PictureOf(*control), "tests/timeline", "control_selected", kTextAreas);
}

TEST_F(MainCtrlPictureTest, NarrowColumnWithoutNames) {
    ShowSample();
    FilmViewSettings settings;
    settings.mask = FilmViewSettings::kLeftWidth;
    settings.leftWidth = 60;
    control->ApplySettings(settings);
    Settle();
    ExpectGolden(PictureOf(*control), "tests/timeline", "control_narrow",
                 {CRect(1, 1, 59, 29), CRect(61, 3, 779, 18), CRect(0, 32, 59, 400)});
}

/// Twenty rows, one for each kind in the colours that the host ships: a normal, a selected, a hidden and,
/// where it shows, a marked key.
TEST_F(MainCtrlPictureTest, RowsOfEveryKindAndState) {
    ASSERT_TRUE(
        control->ImportKeysParams((SourceFolder() + "/host/stage/data/DefaultKeysParams.fkd").c_str()));
    Resize(kWidth, 31 + 20 * KeyKind::FilterCount + 60);
    control->SetMovieRange(0.0f, 10.0f);
    control->SetViewRange(0.0f, 10.0f, false);
    std::vector<IFilmKey*> records;
    std::vector<CTrackKey*> views; // four a row
    for (int kind = 0; kind < KeyKind::FilterCount; ++kind) {
        CTrackCtrl* row = control->AddTrackCtrl(false);
        row->kind = kind;
        row->subIndex = kind == KeyKind::Camera ? 0 : -1;
        row->name = kind == KeyKind::Animation ? "Animation keys" : "row";
        for (int i = 0; i < 4; ++i) {
            IFilmKey* record = Films().keyFactory->CreateKey(kind);
            record->SetTime(0.5f + 2.0f * static_cast<float>(i));
            record->SetEndTime(record->GetTime() + (IsTimedKind(kind) ? 1.25f : 0.0f));
            if (kind == KeyKind::Color) {
                const float color[3] = {0.25f * static_cast<float>(i), 0.5f, 0.75f};
                record->SetValue(color);
            }
            records.push_back(record);
            CTrackKey* view = nullptr;
            if (IsTimedKind(kind)) {
                view = new CTimedTrackKey;
            } else {
                view = new CNullTimeTrackKey;
            }
            view->record = record;
            view->time = record->GetTime();
            if (auto* timed = dynamic_cast<CTimedTrackKey*>(view)) {
                timed->duration = 1.25f;
            }
            ASSERT_TRUE(row->AddKeyView(view, false, /*existing*/ true, /*noUndo*/ true)) << kind;
            views.push_back(view);
        }
    }
    control->ClearSelection();
    for (std::size_t i = 0; i < views.size(); i += 4) {
        views[i + 1]->SetSelected(true);
        views[i + 2]->marked = true;
        views[i + 3]->state = CTrackKey::kHidden;
    }
    control->RebuildVisibleRows(true, nullptr);
    Settle();
    ExpectGolden(PictureOf(*control), "tests/timeline", "rows_of_every_kind",
                 {CRect(1, 1, 149, 29), CRect(151, 3, 779, 18), CRect(0, 32, 149, 500)});
    control->DeleteAllRows();
    for (IFilmKey* record : records) {
        Films().keyFactory->DestroyKey(record);
    }
}

TEST_F(MainCtrlPictureTest, TheBackgroundIsOneWhiteRectangle) {
    DrawRecorder recorder;
    const std::vector<std::string> lines = recorder.Paint(*control);
    EXPECT_THAT(lines, SizeIs(Gt(1u)));
    EXPECT_EQ(lines.front(), "rect 0,0,800,400 pen 0/0/000000 brush FFFFFF");
}

TEST_F(MainCtrlPictureTest, OnlyKeysInViewAreDrawn) {
    IFilm* film = OpenFilmWithActors(1);
    CFilmTrack* track = RowOf("Actor100")->track;
    for (int i = 1; i < 100; ++i) {
        AddKey(track, KeyKind::Position, static_cast<float>(i) * 0.1f);
    }
    control->ShowFilm(film, true);
    RowOf("Actor100")->SetExpanded(true, true);
    control->SetViewRange(2.0f, 3.0f, true);
    CTrackCtrl* row = RowOf("Actor100", KeyKind::Position);
    DrawRecorder recorder;
    recorder.Paint(*row);
    const auto bars = std::ranges::count_if(recorder.calls, [](const DrawCall& call) {
        return DescribeCall(call).find("pen 5/") != std::string::npos; // bars have no outline
    });
    EXPECT_EQ(bars, 11); // 2.0, 2.1, ... 3.0
}

TEST_F(MainCtrlPictureTest, AMillionKeysInOneRowPaintAndHit) {
    IFilm* film = OpenFilmWithActors(1);
    CFilmTrack* track = RowOf("Actor100")->track;
    IKeyFactory& factory = *Films().keyFactory;
    constexpr int kKeys = 1000000;
    for (int i = 1; i <= kKeys; ++i) {
        IFilmKey* key = factory.CreateKey(KeyKind::Position);
        key->SetTime(static_cast<float>(i) * 1e-5f);
        track->AddKey(key);
    }
    control->ShowFilm(film, true);
    RowOf("Actor100")->SetExpanded(true, true);
    CTrackCtrl* row = RowOf("Actor100", KeyKind::Position);
    ASSERT_THAT(row->keys, SizeIs(kKeys + 1));
    DrawRecorder recorder;
    recorder.Paint(*row);
    // The row has 630 pixels for keys: what lies under others isn't drawn.
    EXPECT_LT(recorder.calls.size(), 5000u);
    EXPECT_NE(row->GetKeyAt({400, 10}), nullptr);
    control->SetViewRange(1.0f, 1.001f, true);
    EXPECT_NE(row->GetKeyAt({400, 10}), nullptr);
    Settle();
}
