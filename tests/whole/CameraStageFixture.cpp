#include "tests/whole/CameraStageFixture.h"

#include "framework/Wnd.h"
#include "host/stage/windows/ObjectLook.h"
#include "host/stage/windows/ToolWindows.h"
#include "plugin/contract/ClassIds.h"

#include <algorithm>
#include <QTest>

namespace {

CTrackCtrl* RowBelow(CWnd* parent, const CFilmTrack* track) {
    constexpr int kRowId = 55;
    for (int i = 0; CWnd* child = parent->GetWindowChild(i); ++i) {
        if (child->GetDlgCtrlID() == kRowId) {
            auto* row = static_cast<CTrackCtrl*>(child);
            if (row->track == track && row->parent == nullptr) {
                return row;
            }
        }
        if (CTrackCtrl* row = RowBelow(child, track)) {
            return row;
        }
    }
    return nullptr;
}

} // namespace

void CameraInStageTest::SetUp() {
    ChooseFilm("Intro");
    QListWidget* list = FilmList();
    ASSERT_NE(list, nullptr);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(1)).center());
    Settle();
    camera = AsCameraTrack(Film("Intro")->FindCamera("Establishing"));
    ASSERT_NE(camera, nullptr);
    PressName();
    eye = Find(ClassName::CameraPosition);
    target = Find(ClassName::CameraTarget);
    ASSERT_NE(eye, nullptr);
    ASSERT_NE(target, nullptr);
}

void CameraInStageTest::PressName() {
    CTrackCtrl* row = RowOf(camera);
    ASSERT_NE(row, nullptr);
    row->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(60, 8));
    Settle();
    row->SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(60, 8));
    Settle();
}

CTrackCtrl* CameraInStageTest::RowOf(const CFilmTrack* track) const {
    const QList<stage::ToolWindowDock*> docks = window->toolWindows->Docks();
    return docks.isEmpty() ? nullptr : RowBelow(docks.front()->Window(), track);
}

engine::SceneObject* CameraInStageTest::Find(const char* className) const {
    for (const auto& object : window->host.level.Data()->Objects()) {
        if (object->Info().className == className) {
            return object.get();
        }
    }
    return nullptr;
}

int CameraInStageTest::Points() const {
    return static_cast<int>(
        std::ranges::count_if(window->host.level.Data()->Objects(), [](const auto& object) {
            return object->transient && !stage::IsListed(*object);
        }));
}

CFilmVectorKey& CameraInStageTest::FirstKey(int kind) const {
    IFilmKey* first = nullptr;
    for (IFilmKey* key : camera->keys) {
        first = key->kind == kind && (first == nullptr || key->time < first->time) ? key : first;
    }
    return static_cast<CFilmVectorKey&>(*first);
}

std::size_t CameraInStageTest::Keys(int kind) const {
    return static_cast<std::size_t>(
        std::ranges::count_if(camera->keys, [kind](const IFilmKey* key) { return key->kind == kind; }));
}
