#include "host/stage/windows/browse/SoundPreview.h"

#include "framework/FileDialog.h"
#include "host/sound/StereoWavWriter.h"
#include "host/stage/windows/browse/WaveCache.h"
#include "host/stage/windows/browse/WaveView.h"
#include "tests/stage/WindowFixture.h"
#include "tests/support/Answering.h"
#include "tests/support/TempFolder.h"

#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLayout>
#include <QListView>
#include <QPushButton>
#include <QTest>
#include <QTreeView>
#include <QUrl>
#include <unistd.h>

namespace {

constexpr int kRate = 8000;

void WriteSound(const std::string& path, float seconds) {
    const int descriptor = open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    sound::StereoWavWriter writer(descriptor, path, kRate);
    std::vector<float> samples;
    for (int i = 0; i < static_cast<int>(seconds * kRate); ++i) {
        samples.insert(samples.end(), {0.5f, -0.5f});
    }
    writer.Write(samples);
    writer.Finish();
    close(descriptor);
}

/// A dialog that opens sounds, in a folder with a.wav of two seconds, b.wav of half a second and a broken
/// one.
class SoundPreviewTest : public testing::Test {
protected:
    SoundPreviewTest() {
        WriteSound(folder.File("a.wav"), 2.0f);
        WriteSound(folder.File("b.wav"), 0.5f);
        WriteWholeFile(folder.File("broken.wav"), "no sound at all");
        std::filesystem::create_directory(folder.File("folder.wav"));
        dialog.setOption(QFileDialog::DontUseNativeDialog);
        dialog.setNameFilters({"Wav files (*.wav)", "OGG files (*.ogg)"});
        dialog.setDirectory(QString::fromStdString(folder.Path()));
        preview = static_cast<stage::SoundPreview*>(stage::SoundPreview::Maker({})(dialog));
        dialog.layout()->addWidget(preview);
        dialog.show();
    }
    void Show(const char* name) const { preview->ShowFile(QString::fromStdString(folder.File(name))); }

    const TempFolder folder;
    QFileDialog dialog;
    stage::SoundPreview* preview = nullptr;
};

TEST_F(SoundPreviewTest, OnlyDialogsForSoundsHaveOne) {
    QFileDialog levels;
    levels.setNameFilters({"Levels (*.level)"});
    EXPECT_EQ(stage::SoundPreview::Maker({})(levels), nullptr);
}

TEST_F(SoundPreviewTest, FolderOfTheLevelIsAmongThePlaces) {
    std::filesystem::create_directory(folder.File("sounds"));
    QFileDialog sounds;
    sounds.setOption(QFileDialog::DontUseNativeDialog);
    sounds.setNameFilters({"Wav files (*.wav)"});
    QString level = QString::fromStdString(folder.Path());
    stage::SoundPreview::Maker([level] { return level; })(sounds);
    EXPECT_TRUE(sounds.sidebarUrls().contains(QUrl::fromLocalFile(QDir::cleanPath(level))));
    EXPECT_TRUE(sounds.sidebarUrls().contains(QUrl::fromLocalFile(QDir::cleanPath(level + "/sounds"))));
    const qsizetype before = sounds.sidebarUrls().size();
    QFileDialog again;
    again.setOption(QFileDialog::DontUseNativeDialog);
    again.setNameFilters({"Wav files (*.wav)"});
    again.setSidebarUrls(sounds.sidebarUrls());
    stage::SoundPreview::Maker([level] { return level; })(again);
    EXPECT_EQ(again.sidebarUrls().size(), before) << "once each";
}

TEST_F(SoundPreviewTest, NothingIsShownWhenNothingIsChosenAnyMore) {
    auto* list = dialog.findChild<QTreeView*>("treeView");
    ASSERT_NE(list, nullptr);
    dialog.setViewMode(QFileDialog::Detail);
    ASSERT_TRUE(QTest::qWaitFor([&] { return list->model()->rowCount(list->rootIndex()) > 0; }));
    list->selectionModel()->select(list->model()->index(0, 0, list->rootIndex()),
                                   QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    Show("a.wav");
    ASSERT_NE(preview->wave->Wave(), nullptr);
    list->selectionModel()->clearSelection();
    EXPECT_EQ(preview->wave->Wave(), nullptr);
    EXPECT_FALSE(preview->button->isEnabled());
}

TEST_F(SoundPreviewTest, AChosenSoundShowsItsWaveAndWhatItIs) {
    emit dialog.currentChanged(QString::fromStdString(folder.File("a.wav")));
    ASSERT_NE(preview->wave->Wave(), nullptr);
    EXPECT_EQ(preview->name->text(), "a.wav");
    EXPECT_EQ(preview->info->text(), "0:02.00   8000 Hz   stereo");
    EXPECT_TRUE(preview->button->isEnabled());
    preview->ReadOn();
    EXPECT_TRUE(preview->wave->Wave()->IsComplete());
    EXPECT_FALSE(preview->IsReading());
    const QImage picture = preview->wave->grab().toImage();
    // Half as loud as can be, and that is nine tenths of the half: from 0.275 to 0.725 of the height.
    const int x = picture.width() / 2;
    const auto at = [&](double share) {
        return picture.pixelColor(x, static_cast<int>(picture.height() * share));
    };
    EXPECT_EQ(at(0.31), at(0.69));
    EXPECT_EQ(at(0.2), at(0.8));
    EXPECT_NE(at(0.31), at(0.2));
}

TEST_F(SoundPreviewTest, ABrokenFileSaysSo) {
    Show("broken.wav");
    EXPECT_EQ(preview->wave->Wave(), nullptr);
    EXPECT_TRUE(preview->wave->Text().startsWith("This file can't be played.\n"));
    EXPECT_FALSE(preview->wave->Text().contains(QString::fromStdString(folder.Path())));
    EXPECT_FALSE(preview->button->isEnabled());
    preview->PlayFrom(0.0f);
    EXPECT_FALSE(preview->IsPlaying());
    Show("missing.wav");
    EXPECT_EQ(preview->wave->Text(), "This file can't be played.\nno such file");
    Show("folder.wav");
    EXPECT_EQ(preview->wave->Text(), "Choose a sound to see and hear it.");
}

TEST_F(SoundPreviewTest, PlayingMovesTheCursorToTheEndAndStops) {
    Show("a.wav");
    preview->button->click();
    EXPECT_TRUE(preview->IsPlaying());
    EXPECT_TRUE(preview->IsTicking());
    EXPECT_EQ(preview->button->text(), "Stop");
    preview->PlayFrom(0.25f);
    EXPECT_EQ(preview->Position(), 0.5f);
    preview->Advance(0.5f);
    EXPECT_EQ(preview->Position(), 1.0f);
    EXPECT_EQ(preview->wave->CursorShare(), 0.5f);
    preview->Advance(1.0f);
    EXPECT_FALSE(preview->IsPlaying());
    EXPECT_FALSE(preview->IsTicking());
    EXPECT_LT(preview->wave->CursorShare(), 0.0f);
    EXPECT_EQ(preview->button->text(), "Play");
}

TEST_F(SoundPreviewTest, AClickOnTheWavePlaysFromThere) {
    Show("a.wav");
    QTest::mouseClick(preview->wave, Qt::LeftButton, Qt::NoModifier, QPoint(preview->wave->width() / 2, 10));
    EXPECT_TRUE(preview->IsPlaying());
    EXPECT_NEAR(preview->Position(), 1.0f, 0.02f);
}

TEST_F(SoundPreviewTest, AnotherFileStopsTheSound) {
    Show("a.wav");
    preview->PlayFrom(0.0f);
    Show("b.wav");
    EXPECT_FALSE(preview->IsPlaying());
    EXPECT_EQ(preview->info->text(), "0:00.50   8000 Hz   stereo");
}

TEST_F(SoundPreviewTest, SpaceInTheListPlaysAndStops) {
    auto* list = dialog.findChild<QListView*>("listView");
    ASSERT_NE(list, nullptr);
    Show("a.wav");
    QTest::keyClick(list, Qt::Key_Space);
    EXPECT_TRUE(preview->IsPlaying());
    QTest::keyClick(list, Qt::Key_Space);
    EXPECT_FALSE(preview->IsPlaying());
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(SoundPreviewTest, EscapeStopsTheSoundAndChoosesNothing) {
    Show("a.wav");
    preview->PlayFrom(0.0f);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_FALSE(preview->IsPlaying());
    EXPECT_FALSE(preview->IsTicking());
}

TEST_F(SoundPreviewTest, TheDialogKeepsItsSize) {
    dialog.resize(900, 560);
    dialog.reject();
    QFileDialog again;
    again.setNameFilters({"Wav files (*.wav)"});
    stage::SoundPreview::Maker({})(again);
    EXPECT_EQ(again.size(), QSize(900, 560));
}

TEST_F(SoundPreviewTest, AWaveOnceReadIsThereAtOnceUntilTheFileChanges) {
    stage::WaveCache cache;
    const std::string path = folder.File("a.wav");
    const std::shared_ptr<sound::SoundWave> first = cache.Get(path);
    EXPECT_EQ(cache.Get(path), first);
    EXPECT_NE(cache.Get(folder.File("b.wav")), first);
    EXPECT_EQ(cache.Get(path), first);
    WriteSound(path, 1.0f);
    EXPECT_EQ(cache.Get(path)->Seconds(), 1.0f);
    EXPECT_THROW(cache.Get(folder.File("broken.wav")), sound::SoundError);
    EXPECT_THROW(cache.Get(folder.File("broken.wav")), sound::SoundError);
}

class SoundDialogTest : public WindowFixture {};

TEST_F(SoundDialogTest, StagesDialogsForSoundsHaveAPreviewOfThePresentFile) {
    WriteSound(PathOf("horn.wav"), 1.0f);
    CFileDialog sounds(TRUE, ".wav", PathOf("horn.wav").c_str(), 0, "Wav files (*.wav)|*.wav||");
    Answering(
        [&](QWidget& dialog) {
            auto* preview = dialog.findChild<stage::SoundPreview*>();
            ASSERT_NE(preview, nullptr);
            EXPECT_TRUE(preview->isVisible());
            EXPECT_EQ(preview->name->text(), "horn.wav");
            QTest::keyClick(&dialog, Qt::Key_Escape);
        },
        [&] { EXPECT_EQ(sounds.DoModal(), IDCANCEL); });
    CFileDialog levels(TRUE, ".level", nullptr, 0, "Levels (*.level)|*.level||");
    Answering(
        [](QWidget& dialog) {
            EXPECT_EQ(dialog.findChild<stage::SoundPreview*>(), nullptr);
            QTest::keyClick(&dialog, Qt::Key_Escape);
        },
        [&] { EXPECT_EQ(levels.DoModal(), IDCANCEL); });
}

} // namespace
