#include "tests/stage/WindowFixture.h"

#include "host/stage/windows/ViewArea.h"
#include "host/stage/windows/ViewWidget.h"
#include "tests/support/Paths.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMouseEvent>
#include <QTest>

WindowFixture::WindowFixture()
    : window({folder.path().toStdString(), folder.path().toStdString(), SourceFolder() + "/host/stage/data",
              folder.filePath("state").toStdString()}) {
    using ::testing::_;
    ON_CALL(plugin, CanDeleteObjects(_, _)).WillByDefault(::testing::Return(true));
    EXPECT_CALL(plugin, OnEvent(_, _)).Times(::testing::AnyNumber());
    EXPECT_CALL(plugin, OnCommand(_, _)).Times(::testing::AnyNumber());
    window.host.plugins.Add("mock", &plugin);
    window.host.AddListenerA(&plugin);
    window.host.AddListenerB(&plugin);
    window.host.StartPlugins();
    QDir(folder.path()).mkdir("meshes");
    QFile::copy(QString::fromStdString(SampleFolder() + "/models/crate.glb"),
                folder.filePath("meshes/crate.glb"));
    window.session.Save(PathOf("start.level"));
    window.resize(1000, 700);
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    stage::StageView& view = *window.host.views.At(0);
    view.navigation.LookAt({0.0f, 200.0f, 1200.0f}, {0.0f, 100.0f, 0.0f});
    view.ApplyNavigation();
    Settle();
}

WindowFixture::~WindowFixture() {
    ::testing::Mock::VerifyAndClearExpectations(&plugin);
    window.ShutdownHost();
}

void WindowFixture::Settle() {
    for (int i = 0; i < 3; ++i) {
        QApplication::processEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

engine::SceneObject* WindowFixture::AddCrate(const std::string& name, float x, float y, float z) {
    engine::ObjectSpec spec;
    spec.className = ClassName::Mesh;
    spec.name = name;
    spec.meshName = "meshes/crate.glb";
    spec.matrix.SetTranslation({x, y, z});
    engine::SceneObject* object = window.host.level.CreateObject(spec);
    window.ObjectsChanged();
    Settle();
    return object;
}

engine::SceneObject* WindowFixture::AddEmpty(const std::string& name, float x, float y, float z) {
    engine::ObjectSpec spec;
    spec.className = "EmptyObject";
    spec.name = name;
    spec.matrix.SetTranslation({x, y, z});
    engine::SceneObject* object = window.host.level.CreateObject(spec);
    window.ObjectsChanged();
    Settle();
    return object;
}

QWidget* WindowFixture::View(int number) const {
    return window.views->Widget(number);
}

QPoint WindowFixture::PixelOf(float x, float y, float z) const {
    glm::vec2 pixel(-1.0f);
    EXPECT_TRUE(const_cast<stage::MainWindow&>(window).host.views.At(0)->Project({x, y, z}, pixel));
    return {static_cast<int>(pixel.x), static_cast<int>(pixel.y)};
}

void WindowFixture::Click(const QPoint& place, Qt::KeyboardModifiers modifiers,
                          Qt::MouseButton button) const {
    QTest::mouseClick(View(), button, modifiers, place);
    Settle();
}

void WindowFixture::Drag(const QPoint& from, const QPoint& to, Qt::MouseButton button,
                         Qt::KeyboardModifiers modifiers) const {
    constexpr int kSteps = 4;
    QTest::mouseMove(View(), from);
    QTest::mousePress(View(), button, modifiers, from);
    for (int step = 1; step <= kSteps; ++step) {
        const QPoint place = from + (to - from) * step / kSteps;
        QMouseEvent move(QEvent::MouseMove, QPointF(place), View()->mapToGlobal(QPointF(place)), Qt::NoButton,
                         button, modifiers);
        QApplication::sendEvent(View(), &move);
    }
    QTest::mouseRelease(View(), button, modifiers, to);
    Settle();
}

QAction* WindowFixture::Action(const char* name) const {
    QAction* action = window.findChild<QAction*>(name);
    EXPECT_NE(action, nullptr) << name;
    return action;
}
