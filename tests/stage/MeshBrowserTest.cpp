#include "host/engine/mesh/Mesh.h"
#include "host/stage/windows/browse/AnimationBrowser.h"
#include "host/stage/windows/browse/MeshElementBrowser.h"
#include "host/stage/windows/browse/ModelPicture.h"
#include "host/stage/windows/browse/PlayBar.h"
#include "tests/stage/WindowFixture.h"
#include "tests/support/Paths.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QSettings>
#include <QSlider>
#include <QTest>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

using namespace stage;

namespace {

using Answer = std::optional<std::string>;

QTreeWidgetItem* Row(const MeshBrowser& browser, const char* text) {
    const QList<QTreeWidgetItem*> found =
        browser.list->findItems(text, Qt::MatchExactly | Qt::MatchRecursive, 0);
    EXPECT_EQ(found.size(), 1) << text;
    return found.isEmpty() ? nullptr : found.front();
}

std::string Current(const MeshBrowser& browser) {
    return browser.list->currentItem() != nullptr ? browser.list->currentItem()->text(0).toStdString() : "-";
}

std::vector<std::string> ShownRows(const MeshBrowser& browser) {
    std::vector<std::string> shown;
    for (QTreeWidgetItemIterator row(browser.list, QTreeWidgetItemIterator::NotHidden); *row != nullptr;
         ++row) {
        shown.push_back((*row)->text(0).toStdString());
    }
    return shown;
}

bool MayTake(const MeshBrowser& browser) {
    for (const QPushButton* button : browser.findChildren<QPushButton*>()) {
        if (button->isDefault()) {
            return button->isEnabled();
        }
    }
    ADD_FAILURE() << "no default button";
    return false;
}

QImage PictureOf(const MeshBrowser& browser) {
    return browser.picture->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

/// Pixels that differ; all of them for pictures of different sizes.
int Differing(const QImage& a, const QImage& b) {
    if (a.size() != b.size()) {
        return a.width() * a.height();
    }
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            count += a.pixel(x, y) != b.pixel(x, y) ? 1 : 0;
        }
    }
    return count;
}

/// In the list; pixels.
void MoveMouse(const MeshBrowser& browser, const QPoint& place) {
    QWidget& rows = *browser.list->viewport();
    QMouseEvent move(QEvent::MouseMove, place, rows.mapToGlobal(place), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QApplication::sendEvent(&rows, &move);
}

/// A plain box of nodes that have no triangles: `count` of them, ten below each.
BrowsedObject ManyElements(int count) {
    const auto mesh = std::make_shared<mesh::Mesh>();
    for (int i = 0; i < count; ++i) {
        mesh::MeshNode node;
        node.name = "element " + std::to_string(i);
        node.parent = i == 0 ? -1 : (i - 1) / 10;
        mesh->nodes.push_back(node);
    }
    mesh->Finish();
    BrowsedObject object;
    object.exists = true;
    object.name = "Tower";
    object.mesh = mesh;
    return object;
}

} // namespace

class MeshBrowserTest : public WindowFixture {
protected:
    engine::SceneObject* AddModel(const std::string& name, const char* file) {
        const QString model = QString::fromStdString(SampleFolder()) + "/models/" + file;
        EXPECT_TRUE(QFile::copy(model, folder.filePath(QString("meshes/") + file)));
        engine::ObjectSpec spec;
        spec.className = ClassName::Mesh;
        spec.name = name;
        spec.meshName = std::string("meshes/") + file;
        engine::SceneObject* object = window.host.level.CreateObject(spec);
        window.ObjectsChanged();
        Settle();
        return object;
    }

    Answer BrowseElement(EditorObject* object, const std::string& present,
                         const std::function<void(MeshElementBrowser&)>& use) {
        Answer answer;
        Answering([&](QWidget& dialog) { use(dynamic_cast<MeshElementBrowser&>(dialog)); },
                  [&] { answer = window.BrowseMeshElement(object, present); });
        return answer;
    }

    Answer BrowseAnimation(EditorObject* object, const std::string& present,
                           const std::function<void(AnimationBrowser&)>& use) {
        Answer answer;
        Answering([&](QWidget& dialog) { use(dynamic_cast<AnimationBrowser&>(dialog)); },
                  [&] { answer = window.BrowseMeshAnimation(object, present); });
        return answer;
    }

    static void PressEnter(MeshBrowser& browser) { QTest::keyClick(browser.search, Qt::Key_Return); }
    static void PressEscape(MeshBrowser& browser) { QTest::keyClick(browser.search, Qt::Key_Escape); }
};

TEST_F(MeshBrowserTest, TheTreeFollowsTheMeshBelowTheWholeObject) {
    BrowseElement(AddModel("Sailor", "sailor.glb"), "", [](MeshElementBrowser& browser) {
        EXPECT_EQ(browser.list->topLevelItem(0)->text(0), "Whole object");
        EXPECT_EQ(Current(browser), "Whole object") << "what the empty name stands for";
        EXPECT_EQ(Row(browser, "Bip01 L Hand")->parent(), Row(browser, "Bip01 L Forearm"));
        EXPECT_EQ(Row(browser, "Bip01")->parent(), nullptr);
        EXPECT_EQ(Row(browser, "jaw")->text(1), "bone");
        EXPECT_EQ(browser.windowTitle(), "Mesh element of Sailor");
        PressEscape(browser);
    });
}

TEST_F(MeshBrowserTest, ThePresentElementIsFoundByItsNameAndByItsShortOne) {
    engine::SceneObject* sailor = AddModel("Sailor", "sailor.glb");
    for (const auto& names : {std::pair{"Bip01 L Forearm", "Bip01 L Forearm"},
                              {"L Forearm", "Bip01 L Forearm"},
                              {"Bip01", "Bip01"},
                              {"hat", "hat"}}) {
        const char* present = names.first;
        const char* found = names.second;
        const Answer answer = BrowseElement(sailor, present, [&](MeshElementBrowser& browser) {
            EXPECT_EQ(Current(browser), found);
            const QRect place = browser.list->visualItemRect(browser.list->currentItem());
            EXPECT_TRUE(browser.list->viewport()->rect().contains(place)) << present;
            PressEnter(browser);
        });
        EXPECT_EQ(answer, Answer(found)) << "the name is given in full";
    }
}

TEST_F(MeshBrowserTest, AnElementThatTheMeshLacksIsToldAndCannotBeTaken) {
    const Answer answer =
        BrowseElement(AddModel("Sailor", "sailor.glb"), "tail", [](MeshElementBrowser& browser) {
            EXPECT_EQ(Current(browser), "-");
            EXPECT_TRUE(browser.note->isVisible());
            EXPECT_EQ(browser.note->text(), "This mesh has no \"tail\".");
            EXPECT_FALSE(MayTake(browser));
            PressEnter(browser);
            EXPECT_TRUE(browser.isVisible()) << "Enter has nothing to take";
            QTest::keyClick(browser.search, Qt::Key_Down);
            EXPECT_EQ(Current(browser), "Whole object");
            EXPECT_FALSE(browser.note->isVisible());
            EXPECT_TRUE(MayTake(browser));
            PressEscape(browser);
        });
    EXPECT_EQ(answer, std::nullopt);
}

TEST_F(MeshBrowserTest, EscapeAnswersNothingWhateverWasChosen) {
    engine::SceneObject* sailor = AddModel("Sailor", "sailor.glb");
    EXPECT_EQ(BrowseElement(sailor, "hat",
                            [](MeshElementBrowser& browser) {
                                browser.list->setCurrentItem(Row(browser, "jaw"));
                                PressEscape(browser);
                            }),
              std::nullopt);
    EXPECT_EQ(BrowseAnimation(sailor, "Walk",
                              [](AnimationBrowser& browser) {
                                  browser.list->setCurrentItem(Row(browser, "Wave"));
                                  QTest::keyClick(browser.list, Qt::Key_Escape);
                              }),
              std::nullopt);
}

TEST_F(MeshBrowserTest, TheWholeObjectIsTheEmptyName) {
    const Answer answer =
        BrowseElement(AddModel("Sailor", "sailor.glb"), "hat", [](MeshElementBrowser& browser) {
            browser.list->setCurrentItem(Row(browser, "Whole object"));
            PressEnter(browser);
        });
    EXPECT_EQ(answer, Answer(""));
}

TEST_F(MeshBrowserTest, TypingSearchesAndTheArrowsMoveTheListFromThere) {
    const Answer answer =
        BrowseElement(AddModel("Sailor", "sailor.glb"), "hat", [](MeshElementBrowser& browser) {
            QTest::keyClick(browser.list, 's', Qt::ShiftModifier); // the focus is in the list
            QTest::keyClicks(browser.search, "pine");
            EXPECT_EQ(browser.search->text().toLower(), "spine");
            EXPECT_EQ(ShownRows(browser),
                      (std::vector<std::string>{"Bip01", "Bip01 Pelvis", "Bip01 Spine", "Bip01 Spine1"}))
                << "with those above what was found";
            EXPECT_EQ(Current(browser), "Bip01 Spine") << "the first that was found";
            QTest::keyClick(browser.search, Qt::Key_Down);
            EXPECT_EQ(Current(browser), "Bip01 Spine1");
            QTest::keyClick(browser.search, Qt::Key_Up);
            QTest::keyClick(browser.search, Qt::Key_Down);
            PressEnter(browser);
        });
    EXPECT_EQ(answer, Answer("Bip01 Spine1"));
}

TEST_F(MeshBrowserTest, ArrowsGoFromMatchToMatch) {
    BrowseElement(AddModel("Sailor", "sailor.glb"), "", [](MeshElementBrowser& browser) {
        browser.search->setText("hand");
        EXPECT_EQ(Current(browser), "Bip01 L Hand");
        QTest::keyClick(browser.search, Qt::Key_Down);
        EXPECT_EQ(Current(browser), "Bip01 R Hand") << "past the bones that it hangs on";
        QTest::keyClick(browser.search, Qt::Key_Down);
        EXPECT_EQ(Current(browser), "Bip01 R Hand") << "the last";
        QTest::keyClick(browser.list, Qt::Key_Up);
        EXPECT_EQ(Current(browser), "Bip01 L Hand");
        PressEscape(browser);
    });
}

TEST_F(MeshBrowserTest, ASearchThatFindsNothingTakesNothing) {
    BrowseElement(AddModel("Sailor", "sailor.glb"), "hat", [](MeshElementBrowser& browser) {
        browser.search->setText("anchor");
        EXPECT_EQ(ShownRows(browser), std::vector<std::string>());
        EXPECT_EQ(browser.note->text(), "Nothing is called \"anchor\".");
        EXPECT_FALSE(MayTake(browser));
        browser.search->clear();
        EXPECT_EQ(Current(browser), "hat") << "the present one is back";
        EXPECT_TRUE(MayTake(browser));
        PressEscape(browser);
    });
}

TEST_F(MeshBrowserTest, ADoubleClickTakesTheRow) {
    const Answer answer =
        BrowseElement(AddModel("Sailor", "sailor.glb"), "", [](MeshElementBrowser& browser) {
            const QPoint place = browser.list->visualItemRect(Row(browser, "Bip01 Pelvis")).center();
            QTest::mouseClick(browser.list->viewport(), Qt::LeftButton, Qt::NoModifier, place);
            QTest::mouseDClick(browser.list->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        });
    EXPECT_EQ(answer, Answer("Bip01 Pelvis"));
    // The browser went with the second press; the release reaches what was under it.
    QWidget under;
    under.show();
    QTest::mouseRelease(&under, Qt::LeftButton);
}

TEST_F(MeshBrowserTest, EachElementHasAPictureOfItsOwn) {
    BrowseElement(AddModel("Sailor", "sailor.glb"), "hat", [](MeshElementBrowser& browser) {
        const QImage hat = PictureOf(browser);
        browser.list->setCurrentItem(Row(browser, "Bip01 R Thigh"));
        const QImage thigh = PictureOf(browser);
        browser.list->setCurrentItem(Row(browser, "Whole object"));
        const QImage whole = PictureOf(browser);
        EXPECT_GT(Differing(hat, thigh), 500);
        EXPECT_GT(Differing(thigh, whole), 5000) << "all but the element is toned down";
        browser.list->setCurrentItem(Row(browser, "hat"));
        EXPECT_EQ(Differing(hat, PictureOf(browser)), 0);
        PressEscape(browser);
    });
}

TEST_F(MeshBrowserTest, TheElementUnderTheMouseIsLitUpUntilTheMouseLeaves) {
    BrowseElement(AddModel("Sailor", "sailor.glb"), "hat", [](MeshElementBrowser& browser) {
        const QTreeWidgetItem* pelvis = Row(browser, "Bip01 Pelvis");
        browser.list->scrollToItem(pelvis);
        const QPoint place = browser.list->visualItemRect(pelvis).center();
        QShowEvent opens;
        QApplication::sendEvent(&browser, &opens);
        MoveMouse(browser, place);
        EXPECT_EQ(browser.picture->Scene().Element(), browser.CurrentIndex())
            << "a browser that opens under the mouse shows the present element";
        MoveMouse(browser, place + QPoint(3, 0));
        EXPECT_EQ(browser.picture->Scene().Element(), 1) << "the pelvis is the second node";
        EXPECT_EQ(Current(browser), "hat");
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(browser.list->viewport(), &leave);
        EXPECT_EQ(browser.picture->Scene().Element(), browser.CurrentIndex());
        PressEscape(browser);
    });
}

TEST_F(MeshBrowserTest, AClickOnAPartOfThePictureMakesItCurrent) {
    BrowseElement(AddModel("Crane", "crane.glb"), "hook", [](MeshElementBrowser& browser) {
        browser.search->setText("hook");
        // The model stands on its base: from below upwards that is what the mouse meets first.
        const int middle = browser.picture->width() / 2;
        for (int y = browser.picture->height() - 1; y > 0 && Current(browser) == "hook"; y -= 4) {
            QTest::mouseClick(browser.picture, Qt::LeftButton, Qt::NoModifier, {middle, y});
        }
        EXPECT_EQ(Current(browser), "base");
        EXPECT_EQ(browser.search->text(), "") << "what was clicked must be seen";
        PressEscape(browser);
    });
}

TEST_F(MeshBrowserTest, DraggingTurnsThePictureAndADoubleClickShowsItWholeAgain) {
    BrowseElement(AddModel("Crane", "crane.glb"), "boom", [](MeshElementBrowser& browser) {
        QWidget& picture = *browser.picture;
        const QImage before = PictureOf(browser);
        const QPoint from = picture.rect().center();
        QTest::mousePress(&picture, Qt::LeftButton, Qt::NoModifier, from);
        const QPointF to(from + QPoint(80, 0));
        QMouseEvent move(QEvent::MouseMove, to, picture.mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(&picture, &move);
        QTest::mouseRelease(&picture, Qt::LeftButton, Qt::NoModifier, to.toPoint());
        EXPECT_GT(Differing(before, PictureOf(browser)), 500);
        EXPECT_EQ(Current(browser), "boom") << "a drag is no click";
        QTest::mouseDClick(&picture, Qt::LeftButton, Qt::NoModifier, from);
        EXPECT_EQ(Differing(before, PictureOf(browser)), 0);
        EXPECT_EQ(Current(browser), "boom");
        PressEscape(browser);
    });
}

TEST_F(MeshBrowserTest, TheWheelComesNearer) {
    BrowseElement(AddModel("Crane", "crane.glb"), "", [](MeshElementBrowser& browser) {
        const QImage before = PictureOf(browser);
        const QPointF place(browser.picture->rect().center());
        QWheelEvent wheel(place, browser.picture->mapToGlobal(place), {}, {0, 240}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(browser.picture, &wheel);
        EXPECT_GT(Differing(before, PictureOf(browser)), 500);
        PressEscape(browser);
    });
}

TEST_F(MeshBrowserTest, AnimationsAreListedWithSecondsAndFrames) {
    const Answer answer =
        BrowseAnimation(AddModel("Sailor", "sailor.glb"), "Wave", [](AnimationBrowser& browser) {
            EXPECT_EQ(ShownRows(browser), (std::vector<std::string>{"Idle", "Walk", "Wave", "Talk"}));
            EXPECT_EQ(Current(browser), "Wave");
            EXPECT_EQ(Row(browser, "Wave")->text(1), "2.40");
            EXPECT_EQ(Row(browser, "Wave")->text(2), "72") << "2.4 seconds of 30 frames";
            QTest::keyClicks(browser.search, "wal");
            EXPECT_EQ(Current(browser), "Walk");
            PressEnter(browser);
        });
    EXPECT_EQ(answer, Answer("Walk"));
}

TEST_F(MeshBrowserTest, TheChosenAnimationPlaysInThePictureAlone) {
    engine::SceneObject* sailor = AddModel("Sailor", "sailor.glb");
    window.host.Select({});
    window.session.Save(PathOf("start.level"));
    const engine::Matrix4 place = sailor->World();
    BrowseAnimation(sailor, "Wave", [&](AnimationBrowser& browser) {
        EXPECT_TRUE(browser.playBar->IsTicking());
        browser.playBar->SetPlaying(false);
        browser.playBar->slider->setValue(0);
        const QImage start = PictureOf(browser);
        browser.playBar->slider->setValue(1200);
        const QImage middle = PictureOf(browser);
        EXPECT_GT(Differing(start, middle), 500);
        browser.playBar->SetPlaying(true);
        browser.playBar->Advance(0.6f);
        browser.playBar->SetPlaying(false);
        EXPECT_GT(Differing(middle, PictureOf(browser)), 300);
        EXPECT_EQ(sailor->Pose(), nullptr) << "the level's object stands as it stood";
        EXPECT_EQ(sailor->World(), place);
        QTest::keyClick(browser.list, Qt::Key_Space);
        EXPECT_TRUE(browser.playBar->IsTicking());
        browser.hide();
        EXPECT_FALSE(browser.playBar->IsTicking());
        PressEscape(browser);
    });
    EXPECT_TRUE(window.host.level.selection.empty());
    Settle();
    EXPECT_FALSE(window.session.IsChanged());
}

TEST_F(MeshBrowserTest, AnAnimationThatTheMeshLacksIsToldAndNothingPlays) {
    BrowseAnimation(AddModel("Sailor", "sailor.glb"), "Swim", [](AnimationBrowser& browser) {
        EXPECT_EQ(Current(browser), "-");
        EXPECT_EQ(browser.note->text(), "This mesh has no \"Swim\".");
        EXPECT_FALSE(browser.playBar->IsPlaying());
        EXPECT_FALSE(MayTake(browser));
        PressEscape(browser);
    });
}

TEST_F(MeshBrowserTest, AnObjectWithoutAnimationsSaysSo) {
    BrowseAnimation(AddCrate("Crate", 0, 0, 0), "", [](AnimationBrowser& browser) {
        EXPECT_EQ(browser.note->text(), "Crate has no animations.");
        EXPECT_FALSE(MayTake(browser));
        EXPECT_FALSE(browser.playBar->isEnabled());
        PressEscape(browser);
    });
}

TEST_F(MeshBrowserTest, AnObjectWithoutAMeshOffersItsWholeAndNoObjectNothing) {
    EXPECT_EQ(BrowseElement(AddEmpty("Post", 0, 0, 0), "",
                            [](MeshElementBrowser& browser) {
                                EXPECT_EQ(browser.picture->message, "Post has no mesh.");
                                EXPECT_EQ(ShownRows(browser), std::vector<std::string>{"Whole object"});
                                PressEnter(browser);
                            }),
              Answer(""));
    engine::SceneObject* lost = AddEmpty("Lost", 0, 0, 0);
    lost->SetMeshName("meshes/lost.glb");
    BrowseElement(lost, "", [](MeshElementBrowser& browser) {
        EXPECT_TRUE(browser.picture->message.startsWith("The mesh can't be used.\n"))
            << browser.picture->message.toStdString();
        PressEscape(browser);
    });
    EXPECT_EQ(BrowseElement(nullptr, "Head",
                            [](MeshElementBrowser& browser) {
                                EXPECT_EQ(browser.picture->message, "There is no object to look at.");
                                EXPECT_EQ(ShownRows(browser), std::vector<std::string>());
                                PressEnter(browser);
                                EXPECT_TRUE(browser.isVisible());
                                PressEscape(browser);
                            }),
              std::nullopt);
    BrowseAnimation(nullptr, "", [](AnimationBrowser& browser) {
        EXPECT_EQ(browser.note->text(), "There is no object to look at.");
        PressEscape(browser);
    });
}

TEST_F(MeshBrowserTest, ABrowserClosesWithNothingChosenWhenItsObjectGoes) {
    engine::SceneObject* sailor = AddModel("Sailor", "sailor.glb");
    engine::SceneObject* crate = AddCrate("Crate", 0, 0, 0);
    const Answer answer = BrowseAnimation(sailor, "Wave", [&](AnimationBrowser& browser) {
        window.host.DestroyObjects({crate});
        EXPECT_TRUE(browser.isVisible()) << "another object";
        window.host.DestroyObjects({sailor});
        EXPECT_FALSE(browser.isVisible());
        EXPECT_FALSE(browser.playBar->IsTicking());
        browser.grab(); // what was on its way to the screen still comes out
        browser.accept();
    });
    EXPECT_EQ(answer, std::nullopt);
}

TEST_F(MeshBrowserTest, ABrowserClosesWithNothingChosenWhenTheLevelIsLeft) {
    const Answer answer =
        BrowseElement(AddModel("Sailor", "sailor.glb"), "hat", [this](MeshElementBrowser& browser) {
            window.session.New();
            EXPECT_FALSE(browser.isVisible());
            browser.accept();
        });
    EXPECT_EQ(answer, std::nullopt);
}

TEST_F(MeshBrowserTest, ABrowserGoesWithTheWindowItBelongsTo) {
    auto* parent = new QWidget;
    auto* browser = new MeshElementBrowser(ManyElements(3), "", parent);
    std::optional<std::string> answer = "unanswered";
    Answering([&](QWidget&) { delete parent; }, [&] { answer = MeshBrowser::Run(browser); });
    EXPECT_EQ(answer, std::nullopt);
}

TEST_F(MeshBrowserTest, EachBrowserRemembersItsSize) {
    engine::SceneObject* sailor = AddModel("Sailor", "sailor.glb");
    BrowseElement(sailor, "", [](MeshElementBrowser& browser) {
        browser.resize(640, 480);
        PressEscape(browser);
    });
    BrowseAnimation(sailor, "Walk", [](AnimationBrowser& browser) {
        EXPECT_NE(browser.size(), QSize(640, 480));
        browser.resize(720, 500);
        PressEnter(browser);
    });
    BrowseElement(sailor, "", [](MeshElementBrowser& browser) {
        EXPECT_EQ(browser.size(), QSize(640, 480));
        PressEscape(browser);
    });
    BrowseAnimation(sailor, "", [](AnimationBrowser& browser) {
        EXPECT_EQ(browser.size(), QSize(720, 500));
        PressEscape(browser);
    });
}

TEST_F(MeshBrowserTest, FiveThousandElementsAreSearchedByTheirNames) {
    MeshElementBrowser browser(ManyElements(5000), "element 4999", nullptr);
    browser.show();
    EXPECT_EQ(Current(browser), "element 4999");
    browser.search->setText("element 4321");
    // (4321 - 1) / 10 = 432, then 43, 4 and 0.
    EXPECT_EQ(ShownRows(browser), (std::vector<std::string>{"element 0", "element 4", "element 43",
                                                            "element 432", "element 4321"}));
    EXPECT_EQ(Current(browser), "element 4321");
    browser.search->clear();
    EXPECT_EQ(ShownRows(browser).size(), 5001u);
    QTest::keyClick(browser.search, Qt::Key_Down);
    EXPECT_EQ(Current(browser), "element 4322");
}
