#include "host/stage/windows/browse/EffectBrowser.h"

#include "host/stage/windows/browse/EffectPicture.h"
#include "tests/support/TempFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

namespace {

constexpr int kParticle = 2;

/// Particle effects Dust, Smoke and Smog, of which the last is broken.
class EffectBrowserTest : public testing::Test {
protected:
    EffectBrowserTest() {
        std::filesystem::create_directories(folder.File("particle"));
        WriteWholeFile(folder.File("particle/Dust.fx.json"), R"({"about":"Fine dust"})");
        WriteWholeFile(folder.File("particle/Smoke.fx.json"), R"({"about":"Thick smoke"})");
        WriteWholeFile(folder.File("particle/Smog.fx.json"), R"({"rate":-1})");
    }
    std::unique_ptr<stage::EffectBrowser> Open(const std::string& present, int kind = kParticle) {
        auto browser = std::make_unique<stage::EffectBrowser>(stage::EffectLibrary({folder.Path()}), kind,
                                                              present, nullptr);
        browser->show();
        return browser;
    }
    static QStringList Shown(const stage::EffectBrowser& browser) {
        QStringList names;
        for (int i = 0; i < browser.list->count(); ++i) {
            if (!browser.list->item(i)->isHidden()) {
                names << browser.list->item(i)->text();
            }
        }
        return names;
    }

    const TempFolder folder;
};

TEST_F(EffectBrowserTest, ThePresentEffectIsSelectedAndRuns) {
    const auto browser = Open("Smoke");
    EXPECT_EQ(Shown(*browser), (QStringList{"Dust", "Smog", "Smoke"}));
    EXPECT_EQ(browser->Chosen(), "Smoke");
    EXPECT_EQ(browser->about->text(), "Thick smoke");
    EXPECT_TRUE(browser->picture->IsTicking());
    browser->hide();
    EXPECT_FALSE(browser->picture->IsTicking());
}

TEST_F(EffectBrowserTest, WithoutAPresentNameNothingIsChosen) {
    const auto browser = Open("");
    EXPECT_EQ(browser->Chosen(), "");
    EXPECT_FALSE(browser->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled());
    EXPECT_EQ(browser->picture->Text(), "Choose an effect to see it.");
}

TEST_F(EffectBrowserTest, TypingSearchesAndArrowsMoveTheList) {
    const auto browser = Open("Dust");
    QTest::keyClicks(browser->search, "smo");
    EXPECT_EQ(Shown(*browser), (QStringList{"Smog", "Smoke", "smo  (no file)"}));
    EXPECT_EQ(browser->Chosen(), "Smog");
    QTest::keyClick(browser->search, Qt::Key_Down);
    EXPECT_EQ(browser->Chosen(), "Smoke");
    QTest::keyClick(browser->search, Qt::Key_Up);
    EXPECT_EQ(browser->Chosen(), "Smog");
    QTest::keyClicks(browser->list, "k");
    EXPECT_EQ(browser->search->text(), "smok") << "typed in the list";
    EXPECT_EQ(browser->Chosen(), "Smoke");
    QTest::keyClick(browser->search, Qt::Key_Return);
    EXPECT_EQ(browser->result(), QDialog::Accepted);
}

TEST_F(EffectBrowserTest, AnEmptiedSearchBringsThePresentEffectBack) {
    const auto browser = Open("Dust");
    browser->search->setText("Smoke");
    EXPECT_EQ(browser->Chosen(), "Smoke");
    browser->search->clear();
    EXPECT_EQ(browser->Chosen(), "Dust");
    EXPECT_EQ(Shown(*browser), (QStringList{"Dust", "Smog", "Smoke"}));
}

TEST_F(EffectBrowserTest, ANameThatNoFileHasIsTaken) {
    const auto browser = Open("Dust");
    browser->search->setText("  Fairy dust ");
    EXPECT_EQ(browser->Chosen(), "Fairy dust");
    EXPECT_FALSE(browser->picture->HasEffect());
    EXPECT_FALSE(browser->picture->IsTicking());
    // One of which a part is in the list can be chosen as the last row.
    browser->search->setText("Dus");
    EXPECT_EQ(browser->Chosen(), "Dust");
    browser->list->setCurrentRow(browser->list->count() - 1);
    EXPECT_EQ(browser->Chosen(), "Dus");
}

TEST_F(EffectBrowserTest, APresentNameThatNoFileHasIsKept) {
    const auto browser = Open("Old smoke ");
    EXPECT_EQ(browser->Chosen(), "Old smoke ");
    EXPECT_EQ(Shown(*browser), (QStringList{"Dust", "Smog", "Smoke", "Old smoke   (no file)"}));
    EXPECT_EQ(Open("\xff\xfe")->Chosen(), "\xff\xfe") << "bytes that are no text";
    const std::string longName(300, 'x');
    EXPECT_EQ(Open(longName)->Chosen(), longName);
}

TEST_F(EffectBrowserTest, ABrokenFileIsToldInThePictureAndCanBeChosen) {
    const auto browser = Open("Smog");
    EXPECT_FALSE(browser->picture->HasEffect());
    EXPECT_TRUE(browser->picture->Text().endsWith("Smog.fx.json: rate: -1 is not between 0.1 and 2000"));
    EXPECT_EQ(browser->Chosen(), "Smog");
}

TEST_F(EffectBrowserTest, AKindThatIsNoneHasAnEmptyListAndTakesNames) {
    const auto browser = Open("", 0);
    EXPECT_EQ(browser->list->count(), 0);
    browser->search->setText("x");
    EXPECT_EQ(browser->Chosen(), "x");
}

TEST_F(EffectBrowserTest, EscapeChoosesNothing) {
    const auto browser = Open("Dust");
    browser->search->setText("Smoke");
    QTest::keyClick(browser->search, Qt::Key_Escape);
    EXPECT_EQ(browser->result(), QDialog::Rejected);
    EXPECT_FALSE(browser->picture->IsTicking());
}

TEST_F(EffectBrowserTest, ADoubleClickTakesTheRow) {
    const auto browser = Open("Dust");
    const QPoint row = browser->list->visualItemRect(browser->list->item(2)).center();
    QTest::mouseClick(browser->list->viewport(), Qt::LeftButton, Qt::NoModifier, row);
    QTest::mouseDClick(browser->list->viewport(), Qt::LeftButton, Qt::NoModifier, row);
    EXPECT_EQ(browser->result(), QDialog::Accepted);
    EXPECT_EQ(browser->Chosen(), "Smoke");
    // The browser went with the second press; the release reaches what was under it.
    QWidget under;
    under.show();
    QTest::mouseRelease(&under, Qt::LeftButton);
    EXPECT_EQ(QApplication::mouseButtons(), Qt::NoButton);
}

TEST_F(EffectBrowserTest, ItsSizeIsRemembered) {
    auto browser = Open("Dust");
    browser->resize(640, 410);
    browser->reject();
    browser = Open("Dust");
    EXPECT_EQ(browser->size(), QSize(640, 410));
}

} // namespace
