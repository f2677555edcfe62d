#include "tests/support/FakeTimeline.h"

#include "keys/views/NullTimeTrackKey.h"
#include "keys/views/TimedTrackKey.h"
#include "plugin/contract/FilmManager.h"

#include <algorithm>
#include <memory>

namespace {

const char* Text(bool flag) {
    return flag ? "true" : "false";
}

} // namespace

void FakeTimeline::ClearSelection() {
    log.push_back("ClearSelection");
    for (CTrackKey* key : selectedKeys) {
        key->SetSelected(false);
    }
    selectedKeys.clear();
}

void FakeTimeline::SelectOnly(CTrackKey* key) {
    ClearSelection();
    log.back() = "SelectOnly";
    key->SetSelected(true);
    selectedKeys.push_back(key);
}

void FakeTimeline::Deselect(CTrackKey* key) {
    log.push_back("Deselect");
    if (std::erase(selectedKeys, key) != 0) {
        key->SetSelected(false);
    }
}

void FakeTimeline::SetCurrentFrame(float time, bool redraw) {
    currentTime = time;
    log.push_back(std::string("SetCurrentFrame ") + Text(redraw));
}

void FakeTimeline::ShiftKeysAtMark(float from, float to) {
    log.push_back("ShiftKeysAtMark " + std::to_string(from) + " " + std::to_string(to));
}

void FakeTimeline::RestoreKeyTimes(bool keep) {
    log.push_back(std::string("RestoreKeyTimes ") + Text(keep));
}

void FakeTimeline::ArrangeRows(bool invalidate, bool move) {
    log.push_back(std::string("ArrangeRows ") + Text(invalidate) + " " + Text(move));
}

void FakeTimeline::RebuildVisibleRows(bool redraw, const RowHandle* handle) {
    log.push_back(std::string("RebuildVisibleRows ") + Text(redraw) +
                  (handle != nullptr ? " handle" : " null"));
}

CTrackCtrl* FakeTimeline::AddTrackCtrl(bool redraw) {
    log.push_back(std::string("AddTrackCtrl ") + Text(redraw));
    return nextRow;
}

CTrackCtrl* FakeTimeline::AddAnimationRow(CTrackCtrl* /*parentRow*/, const std::string& name) {
    log.push_back("AddAnimationRow " + name);
    return nextRow;
}

void FakeTimeline::ShowFilm(IFilm* /*film*/, bool flag) {
    log.push_back(std::string("ShowFilm ") + Text(flag));
}

void FakeTimeline::ShowContextMenu(int x, int y, CTrackCtrl* row, CTrackKey* key) {
    menuRow = row;
    menuKey = key;
    log.push_back("ShowContextMenu " + std::to_string(x) + " " + std::to_string(y));
}

void FakeTimeline::ShowKeyDescription(CTrackKey* key) {
    described = key;
    log.push_back("ShowKeyDescription");
}

CTrackKey* FakeTimeline::CreateKeyView(int kind) {
    IFilmManager* manager = session.GetFilmManager();
    IFilmKey* record = manager != nullptr && !refuseViews ? manager->keyFactory->CreateKey(kind) : nullptr;
    if (record == nullptr) {
        return nullptr;
    }
    std::unique_ptr<CTrackKey> view;
    if (kind < KeyKind::Position) {
        auto timed = std::make_unique<CTimedTrackKey>();
        timed->SetDuration(5.0f, /*viewOnly*/ false);
        view = std::move(timed);
    } else {
        view = std::make_unique<CNullTimeTrackKey>();
    }
    view->context = this;
    view->SetRecord(record, /*takeTimes*/ false);
    return view.release();
}

void FakeTimeline::ForgetView(CTrackKey* view) {
    forgottenViews.push_back(view);
    undoMgr.retired.Forget(view);
    std::erase(selectedKeys, view);
}

void FakeTimeline::ForgetRow(CTrackCtrl* /*row*/) {
    log.push_back("ForgetRow");
}

void FakeTimeline::InvalidateControl(bool erase) {
    log.push_back(std::string("InvalidateControl ") + Text(erase));
}

void FakeTimeline::OnThumbTrack(CTimeScrollbar* /*bar*/, float position) {
    thumbPosition = position;
    log.push_back("OnThumbTrack");
}
