// Every text of Stage's own windows has room, at the scale that the program is started with
// (QT_SCALE_FACTOR).
#include "host/engine/ClassDatabase.h"
#include "host/stage/windows/browse/EffectBrowser.h"
#include "host/stage/windows/films/FilmNameDialog.h"
#include "host/stage/windows/HelpDialogs.h"
#include "host/stage/windows/NumberDialog.h"
#include "host/stage/windows/RecoverDialog.h"
#include "tests/stage/WindowFixture.h"
#include "tests/support/Paths.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QDockWidget>
#include <QLabel>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <QToolBar>

namespace {

/// A label that wraps needs the height for its width, one that may be cut on purpose none.
bool HasRoom(const QWidget& widget) {
    if (widget.sizePolicy().horizontalPolicy() == QSizePolicy::Ignored) {
        return true;
    }
    const QSize wanted = widget.minimumSizeHint();
    const int height = widget.hasHeightForWidth() ? widget.heightForWidth(widget.width()) : wanted.height();
    const auto* label = qobject_cast<const QLabel*>(&widget);
    const bool wraps = label != nullptr && label->wordWrap();
    return (wraps || widget.width() >= wanted.width()) && widget.height() >= height;
}

bool IsInside(const QWidget& widget) {
    const QWidget* parent = widget.parentWidget();
    return parent == nullptr || widget.isWindow() || parent->rect().contains(widget.geometry());
}

/// Texts that are cut, of labels, buttons and choices that can be seen.
std::string CutTexts(const QWidget& window) {
    std::string cut;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        const auto* label = qobject_cast<const QLabel*>(widget);
        const auto* button = qobject_cast<const QAbstractButton*>(widget);
        const auto* choice = qobject_cast<const QComboBox*>(widget);
        const QString text = label != nullptr    ? label->text()
                             : button != nullptr ? button->text()
                             : choice != nullptr ? choice->currentText()
                                                 : QString();
        if (!text.isEmpty() && widget->isVisible() && (!HasRoom(*widget) || !IsInside(*widget))) {
            cut += text.toStdString() + " has " + std::to_string(widget->width()) + 'x' +
                   std::to_string(widget->height()) + " of " +
                   std::to_string(widget->minimumSizeHint().width()) + 'x' +
                   std::to_string(widget->minimumSizeHint().height()) + '\n';
        }
    }
    return cut;
}

class TextRoomTest : public WindowFixture {
protected:
    static std::string CutIn(QDialog& dialog) {
        dialog.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&dialog));
        Settle();
        return CutTexts(dialog);
    }
    engine::SceneObject* SelectNew(const char* action) {
        Action(action)->trigger();
        Settle();
        return static_cast<engine::SceneObject*>(window.host.level.selection.front());
    }
};

} // namespace

TEST_F(TextRoomTest, TheCheckFindsWhatIsCut) {
    QDialog dialog;
    auto* label = new QLabel("A long line of words", &dialog);
    label->setGeometry(0, 0, 20, 40);
    dialog.resize(400, 100);
    EXPECT_NE(CutIn(dialog), "");
    label->resize(label->sizeHint());
    EXPECT_EQ(CutIn(dialog), "");
    label->move(390, 0);
    EXPECT_NE(CutIn(dialog), "") << "it goes out of the dialog";
}

TEST_F(TextRoomTest, TheMainWindowWithEachKindOfObject) {
    window.resize(1280, 720);
    for (QDockWidget* dock : window.findChildren<QDockWidget*>()) {
        dock->setVisible(dock->objectName() != "PluginDock");
    }
    Settle();
    EXPECT_EQ(CutTexts(window), "") << "nothing selected: the sun";
    for (const char* action : {"CreateBox", "CreateSphere", "CreateCamera", "CreateLabel", "CreateLight",
                               "CreateDynamicLight", "CreateEmpty", "CreateSound"}) {
        SelectNew(action);
        EXPECT_EQ(CutTexts(window), "") << action;
    }
    Action("EditSelectAll")->trigger();
    Settle();
    EXPECT_EQ(CutTexts(window), "") << "several with mixed values";
}

TEST_F(TextRoomTest, Dialogs) {
    stage::ShortcutsDialog keys(stage::AllShortcuts(window), &window);
    EXPECT_EQ(CutIn(keys), "");
    stage::FilmNameDialog name("New film", "Movie 1", {"Movie 1"}, /*isNew*/ true, &window);
    EXPECT_EQ(CutIn(name), "");
    stage::NumberDialog number("Adjust", "How many minutes from one autosave to the next", 2.0f, &window);
    EXPECT_EQ(CutIn(number), "");
    stage::RecoverDialog recover({}, &window);
    EXPECT_EQ(CutIn(recover), "");
}

TEST_F(TextRoomTest, TheStepsToAFirstFilm) {
    stage::ShowFirstFilm(&window);
    Settle();
    for (QWidget* top : QApplication::topLevelWidgets()) {
        if (auto* dialog = qobject_cast<QDialog*>(top); dialog != nullptr && dialog->isVisible()) {
            EXPECT_EQ(CutIn(*dialog), "");
            dialog->close();
        }
    }
}

TEST_F(TextRoomTest, About) {
    std::string cut = "not shown";
    QTimer::singleShot(0, &window, [&] {
        QWidget* box = QApplication::activeModalWidget();
        ASSERT_NE(box, nullptr);
        Settle();
        cut = CutTexts(*box);
        box->close();
    });
    stage::ShowAbout(&window);
    EXPECT_EQ(cut, "");
}

TEST_F(TextRoomTest, TheBrowserOfEffects) {
    constexpr int kParticles = 3; // kind of key
    stage::EffectBrowser browser(stage::EffectLibrary({SourceFolder() + "/host/stage/data/effects"}),
                                 kParticles, "Smoke", &window);
    EXPECT_EQ(CutIn(browser), "");
}
