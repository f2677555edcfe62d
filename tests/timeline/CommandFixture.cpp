#include "tests/timeline/CommandFixture.h"

#include "keys/views/NullTimeTrackKey.h"

#include <algorithm>

CommandTest::CommandTest()
    : crate(editor.Create("Crate", 1, 2, 3)), film(OpenFilmWith({crate})),
      track(film->FindObjectTrack(crate)) {
    RowOf("Crate")->SetExpanded(true, true);
    Settle();
}

void CommandTest::RunAt(UINT id, CTrackCtrl* row, float mouse) {
    control->menuKey = nullptr;
    control->menuRow = row;
    control->mouseTime = mouse;
    Run(id);
}

void CommandTest::RunOn(UINT id, CTrackCtrl* row, CTrackKey* key) {
    control->menuKey = key;
    control->menuRow = row;
    Run(id);
}

CTrackKey* CommandTest::Put(CTrackCtrl* row, float time, float duration) {
    CTrackKey* view = control->CreateKeyView(row->kind);
    if (row->kind == KeyKind::Camera) {
        static_cast<CFilmCameraKey*>(view->record)->priority = row->subIndex;
    }
    view->SetPosition(time, /*viewOnly*/ false);
    if (auto* timed = dynamic_cast<CTimedTrackKey*>(view)) {
        timed->SetDuration(duration, /*viewOnly*/ false);
    }
    EXPECT_TRUE(row->AddKeyView(view, /*redraw*/ false, /*existing*/ false, /*noUndo*/ true));
    control->ClearSelection();
    return view;
}

void CommandTest::UserTypes(float number) {
    editor.onInputNumber = [this, number](float& value, const std::string& title, const std::string& prompt) {
        questions.push_back(title + "|" + prompt);
        offered = value;
        value = number;
        return true;
    };
}
std::vector<float> CommandTest::TimesOf(const CTrackCtrl& row) {
    std::vector<float> times;
    for (const CTrackKey* key : row.keys) {
        times.push_back(key->time);
    }
    std::ranges::sort(times);
    return times;
}

bool CommandTest::WantsPaint(const CTrackCtrl& row) {
    CRect rect;
    return row.GetUpdateRect(&rect) != FALSE;
}
