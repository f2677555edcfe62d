#include "tests/timeline/ScenarioDlgFixture.h"

#include "framework/QtBridge.h"

#include <QCoreApplication>
#include <QTimer>
#include <QWidget>

BEGIN_MESSAGE_MAP(ObservedScenarioDlg, CScenarioDlg)
ON_COMMAND_RANGE(36797, 36877, &ObservedScenarioDlg::OnBaseCommand)
END_MESSAGE_MAP()

ScenarioDlgTest::ScenarioDlgTest() : window(new ObservedScenarioDlg(plugin)) {
    boxes.clear(); // this editor has no data folder
    editor.onBroadcast = [this](int code, void*) {
        if (code == EventCode::ObjectsMoved) {
            frames.push_back(plugin.currentTime);
        }
    };
}

ScenarioDlgTest::~ScenarioDlgTest() {
    plugin.StopPlaying();
    delete plugin.scenarioDlg;
    Settle();
}

CTrackCtrl* ScenarioDlgTest::RowOf(const std::string& rootName, int kind) {
    for (CTrackCtrl* row : Control().tracks) {
        if (row->IsRoot() && row->name == rootName) {
            return row->FindChild(kind, -2);
        }
    }
    return nullptr;
}

void ScenarioDlgTest::ShowRows() {
    window->ShowCurrentFilm();
    for (CTrackCtrl* row : Control().tracks) {
        if (row->IsRoot()) {
            row->SetExpanded(true, /*redraw*/ false);
        }
    }
    Control().RebuildVisibleRows(/*redraw*/ true, nullptr);
    frames.clear();
}

void ScenarioDlgTest::RunClock(std::uint32_t step) {
    Hooks().clock = [this, step] { return clock += step; };
}

void ScenarioDlgTest::InsidePump(std::function<void()> action) {
    QTimer::singleShot(0, QCoreApplication::instance(), std::move(action));
}

QWindow* ScenarioDlgTest::Native() {
    return NativeWidget(*window)->windowHandle();
}

void ScenarioDlgTest::Settle() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}
