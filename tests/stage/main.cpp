#include "framework/FilmsApplication.h"
#include "host/stage/windows/Theme.h"

#include <clocale>
#include <gtest/gtest.h>
#include <QApplication>
#include <QTemporaryDir>

/// Windows need an application, and its settings must not be the user's.
int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    const QTemporaryDir settings;
    qputenv("XDG_CONFIG_HOME", settings.path().toUtf8());
    FilmsApplication application(argc, argv);
    QCoreApplication::setOrganizationName("StageTest");
    QCoreApplication::setApplicationName("StageTest");
    std::setlocale(LC_NUMERIC, "C");
    stage::ApplyTheme(application);
    return RUN_ALL_TESTS();
}
