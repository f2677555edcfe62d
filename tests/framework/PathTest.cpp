#include "framework/Path.h"

#include "framework/FileDialog.h"
#include "framework/FilmsApplication.h"
#include "framework/TestHooks.h"

#include <gtest/gtest.h>
#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTimer>

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace {

struct RelativeRow {
    const char* from;
    DWORD fromAttributes;
    const char* to;
    DWORD toAttributes;
    const char* expected; // null: none
};

class RelativePathTest : public testing::TestWithParam<RelativeRow> {};

TEST_P(RelativePathTest, FollowsTheCommonRoot) {
    const RelativeRow row = GetParam();
    std::string result = "old";
    EXPECT_EQ(PathRelativePathTo(result, row.from, row.fromAttributes, row.to, row.toAttributes),
              row.expected != nullptr);
    EXPECT_EQ(result, row.expected ? row.expected : "");
}

constexpr DWORD kDir = FILE_ATTRIBUTE_DIRECTORY;

INSTANTIATE_TEST_SUITE_P(
    All, RelativePathTest,
    testing::Values(RelativeRow{"/prog/bin/", 0, "/prog/bin/sub/keys.fkd", 0, "./sub/keys.fkd"},
                    RelativeRow{"/prog/bin/", 0, "/prog/bin/keys.fkd", 0, "./keys.fkd"},
                    RelativeRow{"/prog/bin/", 0, "/prog/data/keys.fkd", 0, "../data/keys.fkd"},
                    RelativeRow{"/a/b/c", kDir, "/a/x", kDir, "../../x"},
                    RelativeRow{"/a/b", kDir, "/a/b", kDir, "."}, RelativeRow{"/a/b", kDir, "/a", kDir, ".."},
                    RelativeRow{"/a/b/file", 0, "/a/b/other", 0, "./other"},
                    RelativeRow{"C:\\prog\\", 0, "c:\\prog\\sub\\a.fkd", 0, "./sub/a.fkd"},
                    RelativeRow{"C:\\prog\\", 0, "D:\\other\\a.fkd", 0, nullptr},
                    RelativeRow{"relative/one", kDir, "other/two", 0, nullptr},
                    RelativeRow{"", kDir, "", kDir, nullptr}));

TEST(PathTest, CombineResolvesDotsAndKeepsAbsoluteFiles) {
    EXPECT_EQ(PathCombine("/prog/bin/", "sub/a.fkd"), "/prog/bin/sub/a.fkd");
    EXPECT_EQ(PathCombine("/prog/bin", "..\\data\\.\\a.fkd"), "/prog/data/a.fkd");
    EXPECT_EQ(PathCombine("/prog", "/abs/a"), "/abs/a");
    EXPECT_EQ(PathCombine("/prog", "../../../a"), "/a");
    EXPECT_EQ(PathCombine("c:\\prog", "a"), "C:/prog/a");
    EXPECT_EQ(PathCombine("/prog", ""), "/prog");
}

TEST(PathTest, DirectoryEndsWithItsSeparator) {
    EXPECT_EQ(PathDirectory("/a/b.txt"), "/a/");
    EXPECT_EQ(PathDirectory("a\\b\\c"), "a\\b\\");
    EXPECT_EQ(PathDirectory("plain"), "");
    EXPECT_TRUE(std::filesystem::exists(GetModuleFileName()));
}

class Asking : public CFileDialog {
public:
    using CFileDialog::CFileDialog;
    bool refuse = false;
    int folderChanges = 0;

protected:
    BOOL OnFileNameOK() override { return refuse; }
    void OnFolderChange() override { ++folderChanges; }
};

TEST(FileDialogTest, HookChoosesAndTheExtensionIsAdded) {
    const HookScope scope;
    Asking dialog(FALSE, ".fkd", nullptr, OFN_OVERWRITEPROMPT, "Keys (*.fkd)|*.fkd||");
    dialog.ofn.lpstrInitialDir = "/begin";
    Hooks().fileDialog = [](CFileDialog& d) {
        EXPECT_EQ(d.GetFolderPath(), "/begin");
        d.SetPathName("/some/where/keys");
        return IDOK;
    };
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.GetPathName(), "/some/where/keys.fkd");
    EXPECT_EQ(dialog.GetFileName(), "keys.fkd");
    EXPECT_EQ(dialog.GetFolderPath(), "/some/where/");
    dialog.refuse = true;
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
}

TEST(FileDialogTest, RealDialogAsksBeforeItClosesAndReturnsThePath) {
    QTemporaryDir folder;
    const std::string wanted = folder.path().toStdString() + "/film.track";
    std::ofstream(wanted) << "x";
    Asking dialog(TRUE, "track", nullptr, OFN_FILEMUSTEXIST, "Movie tracks (*.track)|*.track||");
    dialog.ofn.lpstrInitialDir = folder.path().toStdString();
    dialog.refuse = true;
    QTimer::singleShot(0, [&dialog, &wanted] {
        auto* window = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(window, nullptr);
        EXPECT_EQ(window->nameFilters(), QStringList{"Movie tracks (*.track)"});
        window->findChild<QLineEdit*>("fileNameEdit")->setText(QString::fromStdString(wanted));
        QMetaObject::invokeMethod(window, "accept");
        EXPECT_TRUE(window->isVisible()) << "a refused name keeps the dialog open";
        dialog.refuse = false;
        QMetaObject::invokeMethod(window, "accept");
    });
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.GetPathName(), wanted);
    QTimer::singleShot(0, [] { qobject_cast<QFileDialog*>(QApplication::activeModalWidget())->reject(); });
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
}

TEST(FileDialogTest, OverwritingIsAskedAboutWithTheExtensionInMind) {
    QTemporaryDir folder;
    std::ofstream(folder.path().toStdString() + "/saved-keys.fkd") << "x";
    Asking dialog(FALSE, ".fkd", nullptr, OFN_OVERWRITEPROMPT, "Keys (*.fkd)|*.fkd||");
    dialog.ofn.lpstrInitialDir = folder.path().toStdString();
    bool asked = false;
    QTimer::singleShot(0, [&asked] {
        auto* window = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(window, nullptr);
        window->findChild<QLineEdit*>("fileNameEdit")->setText("saved-keys");
        QTimer::singleShot(0, [&asked, window] {
            auto* question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            asked = question != nullptr;
            if (question) {
                question->button(QMessageBox::No)->click();
            }
            window->reject();
        });
        QMetaObject::invokeMethod(window, "accept");
    });
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_TRUE(asked);
}

TEST(ApplicationTest, ExceptionStaysInTheEventThatThrewIt) {
    auto* app = dynamic_cast<FilmsApplication*>(QCoreApplication::instance());
    ASSERT_NE(app, nullptr);
    std::string reported;
    app->SetExceptionReport([&reported](const std::string& what) { reported = what; });
    struct Thrower : QObject {
        bool event(QEvent*) override { throw std::runtime_error("broken file"); }
    } thrower;
    int later = 0;
    QCoreApplication::postEvent(&thrower, new QEvent(QEvent::User));
    QTimer::singleShot(0, [&later] { ++later; });
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    EXPECT_EQ(reported, "broken file");
    EXPECT_EQ(later, 1);
    app->SetExceptionReport(nullptr);
}

TEST(ApplicationTest, NumbersKeepTheirPoint) {
    EXPECT_EQ(std::stod("1.5"), 1.5);
}

} // namespace
