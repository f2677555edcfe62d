#include "framework/FilmsApplication.h"
#include "host/stage/render/Renderer.h"
#include "host/stage/windows/Theme.h"
#include "tests/support/CleanWindows.h"

#include <clocale>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <link.h>
#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>

namespace {

int KeepLoaded(dl_phdr_info* library, std::size_t, void*) {
    for (const char* driver : {"LLVM", "_dri.so", "gallium", "EGL_mesa"}) {
        if (std::strstr(library->dlpi_name, driver) != nullptr) {
            dlopen(library->dlpi_name, RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
        }
    }
    return 0;
}

/// The GL driver unloads itself with the last renderer. The leak checker names libraries at the end, and
/// could then not tell the driver's memory from ours.
void KeepGlDriver() {
    std::string error;
    const std::unique_ptr<render::Renderer> renderer = render::Renderer::Create(error);
    dl_iterate_phdr(KeepLoaded, nullptr);
}

/// What a test's windows remember of their places is not for the next test.
class SettingsCleaner final : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override { QSettings().clear(); }
};

} // namespace

/// Windows need an application, and its settings must not be the user's.
int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", /*overwrite*/ 0);
    ::testing::InitGoogleTest(&argc, argv);
    DeleteClosedWindowsAfterEachTest();
    const QTemporaryDir settings;
    qputenv("XDG_CONFIG_HOME", settings.path().toUtf8());
    FilmsApplication application(argc, argv);
    QCoreApplication::setOrganizationName("StageTest");
    QCoreApplication::setApplicationName("StageTest");
    std::setlocale(LC_NUMERIC, "C");
    testing::UnitTest::GetInstance()->listeners().Append(new SettingsCleaner);
    stage::ApplyTheme(application);
    KeepGlDriver();
    return RUN_ALL_TESTS();
}
