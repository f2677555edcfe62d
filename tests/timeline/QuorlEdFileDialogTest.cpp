#include "files/QuorlEdFileDialog.h"

#include "framework/Path.h"
#include "framework/TestHooks.h"
#include "tests/support/TempFolder.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QTimer>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr const char* kRefusal = "You must select file within directory (or its subdirectory): ";

/// A program that lies in a folder of its own, with the sub-folder "sub". The working directory of the tests
/// is put back.
class QuorlEdFileDialogTest : public ::testing::Test {
protected:
    QuorlEdFileDialogTest() : before(std::filesystem::current_path()) {
        std::filesystem::create_directories(program.File("sub/deep"));
        std::filesystem::current_path(other.Path());
        Hooks().messageBox = [this](const std::string& text, UINT type) {
            boxes.push_back(text);
            boxType = type;
            return IDOK;
        };
    }
    ~QuorlEdFileDialogTest() override { std::filesystem::current_path(before); }

    /// Runs the dialog; the user chooses the path, or cancels for an empty one.
    int Run(CQuorlEdFileDialog& dialog, const std::string& choice) {
        dialog.programDir = program.Path();
        Hooks().fileDialog = [this, choice](CFileDialog& shown) {
            firstFolder = shown.GetFolderPath();
            shown.SetPathName(choice);
            return choice.empty() ? IDCANCEL : IDOK;
        };
        return dialog.DoModal();
    }
    static std::string WorkingDir() { return std::filesystem::current_path().string() + "/"; }

    HookScope hooks;
    TempFolder program;
    TempFolder other;
    std::filesystem::path before;
    std::string firstFolder;
    std::vector<std::string> boxes;
    UINT boxType = 0;
};

} // namespace

TEST_F(QuorlEdFileDialogTest, ProgramDirectoryIsThatOfTheRunningProgram) {
    const CQuorlEdFileDialog dialog(TRUE);
    EXPECT_TRUE(dialog.useProgramDir);
    EXPECT_TRUE(dialog.requiredDir.empty());
    EXPECT_EQ(dialog.programDir,
              std::filesystem::read_symlink("/proc/self/exe").parent_path().string() + "/");
}

TEST_F(QuorlEdFileDialogTest, BeginsInTheProgramDirectory) {
    CQuorlEdFileDialog dialog(TRUE);
    EXPECT_EQ(Run(dialog, program.File("a.wav")), IDOK);
    EXPECT_EQ(firstFolder, program.Path());
}

TEST_F(QuorlEdFileDialogTest, BeginsInTheFolderOfTheFileThatItIsGiven) {
    CQuorlEdFileDialog below(TRUE, nullptr, "sub/a.wav");
    Run(below, "");
    EXPECT_EQ(firstFolder, program.File("sub/"));
    CQuorlEdFileDialog backwards(TRUE, nullptr, ".\\sub\\deep\\a.wav");
    Run(backwards, "");
    EXPECT_EQ(firstFolder, program.File("sub/deep/"));
    CQuorlEdFileDialog absolute(TRUE, nullptr, "/elsewhere/a.wav");
    Run(absolute, "");
    EXPECT_EQ(firstFolder, "/elsewhere/");
    CQuorlEdFileDialog plain(TRUE, nullptr, "a.wav");
    Run(plain, "");
    EXPECT_EQ(firstFolder, program.Path());
}

TEST_F(QuorlEdFileDialogTest, WithoutTheProgramDirectoryTheBaseDecides) {
    CQuorlEdFileDialog dialog(TRUE, nullptr, "/elsewhere/a.wav");
    dialog.useProgramDir = false;
    dialog.ofn.lpstrInitialDir = "/begin";
    Run(dialog, "");
    EXPECT_EQ(firstFolder, "/begin");
    EXPECT_EQ(WorkingDir(), program.Path()) << "the working directory follows all the same";
}

TEST_F(QuorlEdFileDialogTest, WorkingDirectoryIsTheProgramsAfterOkAndAfterCancel) {
    CQuorlEdFileDialog dialog(TRUE);
    EXPECT_EQ(Run(dialog, other.File("a.wav")), IDOK);
    EXPECT_EQ(WorkingDir(), program.Path());
    std::filesystem::current_path(other.Path());
    EXPECT_EQ(Run(dialog, ""), IDCANCEL);
    EXPECT_EQ(WorkingDir(), program.Path());
}

TEST_F(QuorlEdFileDialogTest, ProgramDirectoryThatWentLeavesTheWorkingDirectory) {
    CQuorlEdFileDialog dialog(TRUE);
    const std::string present = WorkingDir();
    Hooks().fileDialog = [](CFileDialog&) { return IDCANCEL; };
    dialog.programDir = program.File("gone/");
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_EQ(WorkingDir(), present);
}

TEST_F(QuorlEdFileDialogTest, PathsAreRelativeToTheProgramDirectory) {
    CQuorlEdFileDialog dialog(TRUE);
    Run(dialog, program.File("sub/a.wav"));
    EXPECT_EQ(dialog.GetRelativePathName(), "./sub/a.wav");
    EXPECT_EQ(dialog.GetPathName(), program.File("sub/a.wav"));
    dialog.programDir = "/opt/editor/";
    EXPECT_EQ(dialog.MakeRelative("/opt/sounds/a.wav"), "../sounds/a.wav");
    EXPECT_EQ(dialog.MakeRelative("/home/u/a.wav"), "../../home/u/a.wav");
}

TEST_F(QuorlEdFileDialogTest, PathWithoutARelativeFormComesBackWhole) {
    CQuorlEdFileDialog dialog(TRUE);
    dialog.programDir = "C:\\editor\\";
    EXPECT_EQ(dialog.MakeRelative("D:\\snd\\a.wav"), "D:\\snd\\a.wav");
    EXPECT_EQ(dialog.MakeRelative("c:\\editor\\snd\\a.wav"), "./snd/a.wav");
    dialog.programDir = "/opt/editor/";
    EXPECT_EQ(dialog.MakeRelative("snd/a.wav"), "snd/a.wav");
    EXPECT_EQ(dialog.MakeRelative(""), "");
}

TEST_F(QuorlEdFileDialogTest, DefaultExtensionMayCarryADot) {
    CQuorlEdFileDialog dotted(FALSE, ".fkd");
    Run(dotted, program.File("keys"));
    EXPECT_EQ(dotted.GetPathName(), program.File("keys.fkd"));
    CQuorlEdFileDialog bare(FALSE, "track");
    Run(bare, program.File("walk"));
    EXPECT_EQ(bare.GetPathName(), program.File("walk.track"));
    Run(bare, program.File("walk.old"));
    EXPECT_EQ(bare.GetPathName(), program.File("walk.old"));
}

TEST_F(QuorlEdFileDialogTest, RequiredDirectoryTakesItselfAndWhatIsBelow) {
    CQuorlEdFileDialog dialog(TRUE);
    dialog.requiredDir = program.File("sub");
    EXPECT_EQ(Run(dialog, program.File("sub/a.wav")), IDOK);
    EXPECT_EQ(Run(dialog, program.File("sub/deep/a.wav")), IDOK);
    dialog.requiredDir = program.File("sub/");
    EXPECT_EQ(Run(dialog, program.File("sub/a.wav")), IDOK);
    EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(QuorlEdFileDialogTest, FileOutsideTheRequiredDirectoryIsRefusedWithAMessage) {
    CQuorlEdFileDialog dialog(TRUE);
    dialog.requiredDir = program.File("sub");
    EXPECT_EQ(Run(dialog, program.File("a.wav")), IDCANCEL);
    EXPECT_THAT(boxes, ElementsAre(kRefusal + program.File("sub")));
    EXPECT_EQ(boxType, 48U);
    Run(dialog, program.File("subway/a.wav"));
    EXPECT_EQ(boxes.size(), 2U) << "a name that only begins alike lies outside";
    dialog.requiredDir = "D:/snd";
    Run(dialog, program.File("sub/a.wav"));
    EXPECT_EQ(boxes.size(), 3U) << "another drive lies outside";
}

TEST_F(QuorlEdFileDialogTest, WalkOutOfTheRequiredDirectoryIsToldAndTheDialogStaysOpen) {
    WriteWholeFile(program.File("sub/in.wav"), "x");
    WriteWholeFile(program.File("out.wav"), "x");
    CQuorlEdFileDialog dialog(TRUE, ".wav", nullptr, OFN_FILEMUSTEXIST, "Sounds (*.wav)|*.wav||");
    dialog.programDir = program.Path();
    dialog.requiredDir = program.File("sub");
    QTimer::singleShot(0, [this] {
        auto* window = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(window, nullptr);
        const auto choose = [window](const std::string& folder, const char* name) {
            window->setDirectory(QString::fromStdString(folder));
            window->findChild<QLineEdit*>("fileNameEdit")->setText(name);
            QMetaObject::invokeMethod(window, "accept");
        };
        emit window->directoryEntered(QString::fromStdString(program.File("sub/deep")));
        EXPECT_TRUE(boxes.empty());
        emit window->directoryEntered(QString::fromStdString(other.Path()));
        EXPECT_EQ(boxes.size(), 1U);
        choose(program.Path(), "out.wav");
        EXPECT_EQ(boxes.size(), 2U);
        EXPECT_TRUE(window->isVisible());
        choose(program.File("sub"), "in.wav");
        EXPECT_FALSE(window->isVisible());
        if (window->isVisible()) {
            window->reject(); // a choice that was refused would keep the test here
        }
    });
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.GetRelativePathName(), "./sub/in.wav");
}
