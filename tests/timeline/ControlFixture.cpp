#include "tests/timeline/ControlFixture.h"

#include <QCoreApplication>
#include <QTest>

#include <algorithm>

namespace {

constexpr UINT kControlId = 1234;

} // namespace

void ControlHolder::ShowCurrentFilm() {
    if (control != nullptr) {
        control->ShowFilm(GetPlugin().GetCurrentFilm(), true);
    }
}

void ControlHolder::SetTime(float time) {
    if (control != nullptr) {
        control->SetCurrentTime(time, true);
    }
}

void ControlHolder::PressButton(unsigned id, bool down) {
    pressed.push_back(std::to_string(id) + (down ? " true" : " false"));
}

ControlTest::ControlTest() {
    control = std::make_unique<CFilmsMainCtrl>(plugin);
    boxes.clear(); // this editor has no data folder
    frame.Create(nullptr, "frame", WS_POPUP | WS_VISIBLE, CRect(0, 0, kWidth, kHeight), nullptr, 0);
    control->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(0, 0, kWidth, kHeight), &frame,
                    kControlId);
    control->RecalcLayout();
    holder.control = control.get();
    plugin.scenarioDlg = &holder;
    Settle();
}

ControlTest::~ControlTest() {
    plugin.StopPlaying();
    plugin.scenarioDlg = nullptr;
    control.reset();
    frame.DestroyWindow();
    Settle();
}

void ControlTest::Resize(int width, int height) {
    control->MoveWindow(0, 0, width, height);
    control->RecalcLayout();
}

CTrackCtrl* ControlTest::RowOf(const std::string& rootName, int kind, int subIndex) {
    for (CTrackCtrl* row : control->tracks) {
        if (row->IsRoot() && row->name == rootName) {
            return kind == KeyKind::None ? row : row->FindChild(kind, subIndex);
        }
    }
    return nullptr;
}

std::vector<std::string> ControlTest::RowNames() const {
    std::vector<std::string> names;
    for (const CTrackCtrl* row : control->tracks) {
        names.push_back((row->IsRoot() ? "" : "  ") + row->name);
    }
    return names;
}

std::vector<std::string> ControlTest::VisibleNames() const {
    std::vector<std::string> names;
    for (const CTrackCtrl* row : control->visibleTracks) {
        names.push_back(row->name);
    }
    return names;
}

IFilm* ControlTest::OpenFilmWithActors(int count) {
    std::vector<EditorObject*> actors;
    actors.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        actors.push_back(editor.Create("Actor" + std::to_string(100 + i)));
    }
    return OpenFilmWith(actors);
}

CRect ControlTest::PlaceOf(const CWnd* child) const {
    CRect rect;
    child->GetWindowRect(&rect);
    control->ScreenToClient(&rect);
    return rect;
}

void ControlTest::ExpectNothingDangles() const {
    std::vector<const CTrackKey*> views{nullptr};
    std::vector<const CTrackCtrl*> rows{nullptr};
    for (const CTrackCtrl* shown : control->tracks) {
        rows.push_back(shown);
        views.insert(views.end(), shown->keys.begin(), shown->keys.end());
    }
    const auto lives = [](const auto& all, const auto* one) {
        return std::ranges::find(all, one) != all.end();
    };
    for (const CTrackKey* selected : control->selectedKeys) {
        EXPECT_TRUE(lives(views, selected));
    }
    EXPECT_TRUE(lives(views, control->hoverKey));
    EXPECT_TRUE(lives(views, control->menuKey));
    EXPECT_TRUE(lives(views, control->activeKey));
    EXPECT_TRUE(lives(views, CurrentKey()));
    EXPECT_TRUE(lives(rows, control->menuRow));
    EXPECT_TRUE(lives(rows, control->topRow));
    for (const CTrackCtrl* shown : control->visibleTracks) {
        EXPECT_TRUE(lives(rows, shown));
    }
    for (const CTrackCtrl* shown : control->tracks) {
        EXPECT_TRUE(lives(views, shown->dragKey));
        EXPECT_TRUE(lives(rows, shown->parent));
        for (const CTrackCtrl* child : shown->children) {
            EXPECT_TRUE(lives(rows, child));
        }
    }
}

void ControlTest::Settle(int milliseconds) {
    if (milliseconds > 0) {
        QTest::qWait(milliseconds);
    }
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}
