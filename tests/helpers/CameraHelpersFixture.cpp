#include "tests/helpers/CameraHelpersFixture.h"

namespace {

std::vector<std::string> prints;

} // namespace

CameraHelpersTest::CameraHelpersTest() : film(nullptr), camera(nullptr) {
    editor.AddClassDescriptor(ClassName::CameraPosition, "eye.helper");
    editor.AddClassDescriptor(ClassName::CameraTarget, "target.helper");
    editor.AddClassDescriptor(ClassName::CameraControlPoint, "handle.helper");
    film = OpenNewFilm();
    camera = AddCamera(film, "Cam");
    editor.hideCalls.clear();
    prints.clear();
    SetLogListener([](const char* text) { prints.emplace_back(text); });
}

CameraHelpersTest::~CameraHelpersTest() {
    SetLogListener(nullptr);
    plugin.scenarioDlg = nullptr;
}

CFilmLinkedKey* CameraHelpersTest::AddPoint(int kind, float time, const Vector3& value) {
    auto* key = static_cast<CFilmLinkedKey*>(AddKey(camera, kind, time));
    key->SetValue(value.Data());
    return key;
}

void CameraHelpersTest::SetHandles(CFilmLinkedKey& key, const Vector3& in, const Vector3& out) {
    key.SetInMethod(BezierMethod::User);
    key.SetOutMethod(BezierMethod::User);
    key.SetInHandle(in.Data());
    key.SetOutHandle(out.Data());
}

void CameraHelpersTest::UserMovesAll(const ObjectList& objects) {
    bool unused = false;
    ObjectList moved = objects;
    plugin.OnViewRequest(ViewRequest::ObjectsMoved, 0, &moved, &unused);
}

std::vector<EditorObject*> CameraHelpersTest::Objects() const {
    ObjectList list;
    helpers.CollectObjects(list);
    return {list.begin(), list.end()};
}

std::vector<std::string> CameraHelpersTest::Printed() {
    return prints;
}
