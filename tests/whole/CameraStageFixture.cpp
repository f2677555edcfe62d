#include "tests/whole/CameraStageFixture.h"

#include "framework/Wnd.h"
#include "host/engine/ClassDatabase.h"
#include "plugin/contract/ClassIds.h"

#include <algorithm>
#include <QTest>

namespace {

constexpr std::size_t kCameraPlace = 3; ///< below level, sun and the camera "Along the dock", all folded

} // namespace

void CameraInStageTest::SetUp() {
    ASSERT_NO_FATAL_FAILURE(OpenScenario("Intro"));
    camera = AsCameraTrack(Film("Intro")->FindCamera("Establishing"));
    ASSERT_NE(camera, nullptr);
    PressName();
    eye = Find(ClassName::CameraPosition);
    target = Find(ClassName::CameraTarget);
    ASSERT_NE(eye, nullptr);
    ASSERT_NE(target, nullptr);
}

void CameraInStageTest::PressName() {
    CWnd* row = CameraRow();
    ASSERT_NE(row, nullptr);
    row->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(60, 8));
    Settle();
    row->SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(60, 8));
    Settle();
}

CWnd* CameraInStageTest::CameraRow() const {
    const std::vector<CWnd*> rows = ScenarioRows();
    return rows.size() > kCameraPlace ? rows[kCameraPlace] : nullptr;
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
            return engine::IsCameraPointClass(object->Info().className);
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
