#include "framework/FileDialog.h"
#include "framework/QtBridge.h"
#include "framework/TestHooks.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QLayout>
#include <QPointer>
#include <QTemporaryDir>
#include <QTimer>

#include <fstream>
#include <functional>

namespace {

class FilePreviewTest : public testing::Test {
protected:
    ~FilePreviewTest() override { SetFilePreview({}); }

    // Runs a real dialog and cancels it when `look` has seen it.
    void Open(bool opens, const std::function<void(QFileDialog&)>& look) {
        CFileDialog dialog(opens ? TRUE : FALSE, "wav", nullptr, 0, "Sounds (*.wav)|*.wav||");
        dialog.ofn.lpstrInitialDir = folder.path().toStdString();
        QTimer::singleShot(0, [&look] {
            auto* window = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(window, nullptr);
            look(*window);
            window->reject();
        });
        EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    }

    QTemporaryDir folder;
};

TEST_F(FilePreviewTest, WidgetStandsRightOfTheListAndDiesWithTheDialog) {
    QPointer<QLabel> preview;
    SetFilePreview([&preview](QFileDialog& dialog) {
        preview = new QLabel("wave");
        preview->setMinimumWidth(120);
        QObject::connect(&dialog, &QFileDialog::currentChanged, preview.data(), &QLabel::setText);
        return preview.data();
    });
    const QString file = folder.filePath("a.wav");
    std::ofstream(file.toStdString()) << "x";
    Open(true, [&](QFileDialog& window) {
        ASSERT_TRUE(preview);
        EXPECT_TRUE(preview->isVisible());
        EXPECT_EQ(preview->window(), &window);
        const auto* list = window.findChild<QWidget*>("stackedWidget");
        ASSERT_NE(list, nullptr);
        const QRect listPlace(list->mapTo(&window, QPoint()), list->size());
        const QRect place(preview->mapTo(&window, QPoint()), preview->size());
        EXPECT_GT(place.left(), listPlace.right());
        EXPECT_GE(place.width(), 120);
        EXPECT_TRUE(window.rect().contains(place));
        EXPECT_LE(place.top(), listPlace.top());
        EXPECT_GE(place.bottom(), listPlace.bottom());
        emit window.currentChanged(file);
        EXPECT_EQ(preview->text(), file);
    });
    EXPECT_FALSE(preview);
}

TEST_F(FilePreviewTest, DialogsThatSaveAndThoseOfTestsGetNone) {
    int asked = 0;
    SetFilePreview([&asked](QFileDialog&) -> QWidget* {
        ++asked;
        return nullptr;
    });
    qsizetype widgets = 0;
    Open(false, [&widgets](QFileDialog& window) { widgets = window.layout()->count(); });
    EXPECT_EQ(asked, 0);
    Open(true, [&widgets](QFileDialog& window) { EXPECT_EQ(window.layout()->count(), widgets); });
    EXPECT_EQ(asked, 1);
    const HookScope hooks;
    Hooks().fileDialog = [](CFileDialog&) { return IDCANCEL; };
    CFileDialog answered(TRUE);
    EXPECT_EQ(answered.DoModal(), IDCANCEL);
    EXPECT_EQ(asked, 1);
}

} // namespace
