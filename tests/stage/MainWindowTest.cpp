#include "tests/stage/WindowFixture.h"

#include "framework/Menu.h"
#include "host/stage/windows/browse/EffectBrowser.h"
#include "host/stage/windows/NumberDialog.h"
#include "host/stage/windows/ObjectPanel.h"
#include "host/stage/windows/ObjectTree.h"
#include "host/stage/windows/TransformFields.h"
#include "host/stage/windows/ViewArea.h"
#include "tests/support/Answering.h"
#include "tests/support/TempFolder.h"

#include <cstring>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QSettings>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTest>
#include <QTimer>

using ::testing::_;

class MainWindowTest : public WindowFixture {
protected:
    QTreeWidgetItem* Item(const EditorObject* object) const { return window.tree->tree->ItemOf(object); }
};

TEST_F(MainWindowTest, TheTreeShowsObjectsUnderTheirParents) {
    engine::SceneObject* cart = AddEmpty("Cart", 0, 0, 0);
    engine::SceneObject* crate = AddEmpty("Crate", 1, 0, 0);
    window.commands.SetParent({crate}, cart);
    Settle();
    EXPECT_EQ(Item(crate)->parent(), Item(cart));
    EXPECT_EQ(Item(cart)->parent(), nullptr);
}

TEST_F(MainWindowTest, PointsOfAFilmsCameraAreNotListed) {
    HelperObjectParams params;
    params.className = ClassName::CameraPosition;
    EditorObject* eye = nullptr;
    window.host.CreateHelperObject("Control", plugin.id, 2, params, &eye);
    Settle();
    ASSERT_NE(eye, nullptr);
    EXPECT_EQ(Item(eye), nullptr);
}

TEST_F(MainWindowTest, TreeAndSelectionFollowEachOther) {
    engine::SceneObject* cart = AddEmpty("Cart", 0, 0, 0);
    engine::SceneObject* crate = AddEmpty("Crate", 1, 0, 0);
    window.host.Select({crate});
    EXPECT_TRUE(Item(crate)->isSelected());
    window.tree->tree->clearSelection();
    Item(cart)->setSelected(true);
    EXPECT_EQ(window.host.level.selection, (ObjectList{cart}));
}

TEST_F(MainWindowTest, ANameEditedInTheTreeRenamesTheObject) {
    engine::SceneObject* cart = AddEmpty("Cart", 0, 0, 0);
    AddEmpty("Wagon", 0, 0, 0);
    EXPECT_CALL(plugin, OnEvent(EventCode::ObjectsRenamed, _)).Times(1);
    Item(cart)->setText(0, "Wagon");
    EXPECT_EQ(cart->name, "Wagon1");
    Item(cart)->setText(0, "  ");
    EXPECT_EQ(Item(cart)->text(0), "Wagon1");
}

TEST_F(MainWindowTest, TheSearchKeepsTheParentsOfWhatItFinds) {
    engine::SceneObject* cart = AddEmpty("Cart", 0, 0, 0);
    engine::SceneObject* crate = AddEmpty("Crate", 1, 0, 0);
    engine::SceneObject* lamp = AddEmpty("Lamp", 2, 0, 0);
    window.commands.SetParent({crate}, cart);
    Settle();
    window.tree->search->setText("CRATE");
    EXPECT_FALSE(Item(crate)->isHidden());
    EXPECT_FALSE(Item(cart)->isHidden());
    EXPECT_TRUE(Item(lamp)->isHidden());
    window.tree->search->clear();
    EXPECT_FALSE(Item(lamp)->isHidden());
}

TEST_F(MainWindowTest, ThePanelShowsAndSetsTheTransform) {
    engine::SceneObject* crate = AddEmpty("Crate", 1, 2, 3);
    window.host.Select({crate});
    Settle();
    stage::TransformFields& fields = *window.panel->transform;
    EXPECT_DOUBLE_EQ(fields.Field(stage::TransformFields::kPosition, 1)->value(), 2.0);
    EXPECT_CALL(plugin, OnEvent(EventCode::ObjectsMoved, _)).Times(1);
    fields.Field(stage::TransformFields::kPosition, 1)->setValue(7.0);
    EXPECT_FLOAT_EQ(crate->GetPosition(0)[1], 7.0f);
    EXPECT_FLOAT_EQ(crate->GetPosition(0)[2], 3.0f);
}

TEST_F(MainWindowTest, ThePanelSaysCentimetres) {
    QStringList labels;
    for (const QLabel* label : window.panel->transform->findChildren<QLabel*>()) {
        labels.append(label->text());
    }
    EXPECT_TRUE(labels.contains("Position, cm")) << labels.join(" | ").toStdString();
    window.host.Select({AddEmpty("Lamp", 0, 200, 0)});
    Settle();
    EXPECT_EQ(window.panel->light->range->suffix(), " cm");
    EXPECT_GE(window.panel->light->range->maximum(), 100000.0) << "a kilometre";
    QDoubleSpinBox& height = *window.panel->transform->Field(stage::TransformFields::kPosition, 1);
    height.stepUp();
    EXPECT_DOUBLE_EQ(height.value(), 210.0) << "ten centimetres a step";
}

TEST_F(MainWindowTest, ThePanelFollowsSmallMovesFarFromTheOrigin) {
    engine::SceneObject* crate = AddEmpty("Crate", 5000, 0, 0);
    window.host.Select({crate});
    Settle();
    const float position[3] = {5002, 0, 0};
    crate->SetPosition(position, 0);
    window.panel->RefreshTransform();
    EXPECT_DOUBLE_EQ(window.panel->transform->Field(stage::TransformFields::kPosition, 0)->value(), 5002.0);
}

TEST_F(MainWindowTest, AnglesThatTheUserTypedStayAsTyped) {
    engine::SceneObject* crate = AddEmpty("Crate", 0, 0, 0);
    window.host.Select({crate});
    Settle();
    QDoubleSpinBox* turn = window.panel->transform->Field(stage::TransformFields::kRotation, 1);
    turn->setValue(120.0);
    window.panel->RefreshTransform();
    window.panel->Refresh();
    EXPECT_DOUBLE_EQ(turn->value(), 120.0);
    // 120 degrees about y: the right axis is (cos 120, 0, -sin 120).
    EXPECT_NEAR(crate->GetMatrix(0)[0], -0.5f, 1e-5f);
    EXPECT_NEAR(crate->GetMatrix(0)[2], -0.8660254f, 1e-5f);
}

TEST_F(MainWindowTest, ThePanelFollowsAFilmThatMovesTheObject) {
    engine::SceneObject* crate = AddEmpty("Crate", 0, 0, 0);
    window.host.Select({crate});
    Settle();
    const float position[3] = {4, 5, 6};
    crate->SetPosition(position, 0);
    window.host.BroadcastEvent(EventCode::ObjectsMoved, plugin.id, nullptr);
    Settle();
    EXPECT_DOUBLE_EQ(window.panel->transform->Field(stage::TransformFields::kPosition, 2)->value(), 6.0);
}

TEST_F(MainWindowTest, ParentMeshAndLightAreSetInThePanel) {
    engine::SceneObject* cart = AddEmpty("Cart", 0, 0, 0);
    engine::SceneObject* crate = AddCrate("Crate", 1, 0, 0);
    window.host.Select({crate});
    Settle();
    EXPECT_EQ(window.panel->mesh->currentText(), "meshes/crate.glb");
    const int row = window.panel->parentBox->findText("Cart");
    ASSERT_GT(row, 0);
    emit window.panel->parentBox->activated(row);
    EXPECT_EQ(crate->parent, cart);
    emit window.panel->mesh->activated(0);
    EXPECT_EQ(crate->meshName, "");
}

TEST_F(MainWindowTest, RenamingInThePanelKeepsNamesUnique) {
    engine::SceneObject* cart = AddEmpty("Cart", 0, 0, 0);
    AddEmpty("Wagon", 0, 0, 0);
    window.host.Select({cart});
    Settle();
    window.panel->name->setText("Wagon");
    emit window.panel->name->editingFinished();
    EXPECT_EQ(cart->name, "Wagon1");
}

TEST_F(MainWindowTest, ARefusedDeletionShowsEachReasonOnceAndKeepsTheObject) {
    engine::SceneObject* crate = AddEmpty("Crate", 0, 0, 0);
    window.host.Select({crate});
    Settle();
    EXPECT_CALL(plugin, CanDeleteObjects(_, _))
        .WillOnce([&](const ObjectList*, std::list<DeleteMessage>* list) {
            for (int key = 0; key < 3; ++key) {
                list->push_back({"camera Cam from film Intro is linked to Crate(1)", crate, 0});
            }
            list->push_back({"Crate(1) is actor in film Intro", crate, 0});
            return false;
        });
    QString text;
    Answering(
        [&](QWidget& box) {
            text = dynamic_cast<QMessageBox&>(box).informativeText();
            PressButton(box, QMessageBox::Ok);
        },
        [&] { Action("EditDelete")->trigger(); });
    EXPECT_EQ(text, "camera Cam from film Intro is linked to Crate(1)\nCrate(1) is actor in film Intro");
    EXPECT_EQ(window.host.level.FindObject("Crate"), crate);
}

TEST_F(MainWindowTest, DeleteKeyDeletesTheSelection) {
    window.host.Select({AddEmpty("Crate", 0, 0, 0)});
    Settle();
    QTest::keyClick(View(), Qt::Key_Delete);
    EXPECT_TRUE(window.host.level.Data()->Objects().empty());
    Settle();
    EXPECT_FALSE(Action("EditDuplicate")->isEnabled());
}

TEST_F(MainWindowTest, CreatedObjectsStandWhereTheViewLooksAndAreSelected) {
    Action("CreateEmpty")->trigger();
    Settle();
    ASSERT_EQ(window.host.level.selection.size(), 1u);
    const float* place = window.host.level.selection.front()->GetPosition(0);
    // The line of sight from (0, 200, 1200) through (0, 100, 0) meets the ground at z = -1200.
    EXPECT_NEAR(place[0], 0.0f, 1.0f);
    EXPECT_NEAR(place[1], 0.0f, 1.0f);
    EXPECT_NEAR(place[2], -1200.0f, 10.0f);
    Action("CreateLight")->trigger();
    const auto* light = static_cast<engine::SceneObject*>(window.host.level.selection.front());
    EXPECT_TRUE(light->IsLight());
    EXPECT_NEAR(light->GetPosition(0)[1], 200.0f, 1.0f) << "two metres above the ground";
    EXPECT_FLOAT_EQ(light->light->range, 1000.0f);
}

TEST_F(MainWindowTest, SavedLevelsComeBackWhole) {
    AddCrate("Crate", 1, 2, 3);
    ASSERT_TRUE(window.SaveLevelAs(QString::fromStdString(PathOf("a.level"))));
    Action("FileNew")->trigger();
    EXPECT_TRUE(window.host.level.Data()->Objects().empty());
    ASSERT_TRUE(window.OpenLevel(QString::fromStdString(PathOf("a.level"))));
    const engine::SceneObject* crate = window.host.level.FindObject("Crate");
    ASSERT_NE(crate, nullptr);
    EXPECT_FLOAT_EQ(crate->GetPosition(0)[2], 3.0f);
    EXPECT_NE(crate->Mesh(), nullptr);
    EXPECT_EQ(QSettings().value("files/recent").toStringList().front(),
              QString::fromStdString(PathOf("a.level")));
}

TEST_F(MainWindowTest, AFileThatIsNoLevelIsReportedAndKeepsTheOpenOne) {
    AddEmpty("Crate", 0, 0, 0);
    QFile file(QString::fromStdString(PathOf("bad.level")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("no level");
    file.close();
    Answering([](QWidget& box) { PressButton(box, QMessageBox::Ok); },
              [&] { EXPECT_FALSE(window.OpenLevel(QString::fromStdString(PathOf("bad.level")))); });
    EXPECT_NE(window.host.level.FindObject("Crate"), nullptr);
}

TEST_F(MainWindowTest, UnsavedChangesAreAskedForBeforeTheyAreLost) {
    Action("CreateEmpty")->trigger();
    EXPECT_TRUE(window.isWindowModified());
    Answering([](QWidget& box) { PressButton(box, QMessageBox::Cancel); },
              [&] { Action("FileNew")->trigger(); });
    EXPECT_EQ(window.host.level.Data()->Objects().size(), 1u);
    Answering([](QWidget& box) { PressButton(box, QMessageBox::Save); },
              [&] { Action("FileNew")->trigger(); });
    EXPECT_TRUE(window.host.level.Data()->Objects().empty());
    ASSERT_TRUE(window.OpenLevel(QString::fromStdString(PathOf("start.level"))));
    EXPECT_EQ(window.host.level.Data()->Objects().size(), 1u);
    Action("CreateEmpty")->trigger();
    Answering([](QWidget& box) { PressButton(box, QMessageBox::Discard); },
              [&] { EXPECT_TRUE(window.close()); });
    EXPECT_EQ(window.host.level.GetLevelData(), nullptr);
}

TEST_F(MainWindowTest, AClosedWindowTellsThePluginToLeaveTheFilm) {
    ::testing::InSequence order;
    EXPECT_CALL(plugin, OnEvent(EventCode::Suspend, _));
    EXPECT_CALL(plugin, OnEvent(EventCode::ReleaseRenderResources, _));
    EXPECT_CALL(plugin, OnNew());
    bool closed = false;
    QObject::connect(&window, &stage::MainWindow::Closed, [&] { closed = true; });
    EXPECT_TRUE(window.close());
    EXPECT_TRUE(closed);
}

TEST_F(MainWindowTest, ShortcutsOfPluginsWorkInTheWholeApplication) {
    window.host.AddShortcuts({{6, 0, "Start / stop playing movie", 13, 8}});
    EXPECT_CALL(plugin, OnShortcut(_, 0, _)).Times(1);
    QTest::keyClick(View(), Qt::Key_Return, Qt::ControlModifier);
    Settle();
}

TEST_F(MainWindowTest, ObjectMenusHoldThePluginsItemsAndRunThem) {
    AddCrate("Crate", 0, 0.5f, 0);
    EXPECT_CALL(plugin, OnObjectMenu(_, _, _, _))
        .WillOnce([this](CMenu* menu, auto, auto, EditorObject* object) {
            EXPECT_EQ(object->name, "Crate");
            menu->InsertMenu(0, MF_BYPOSITION, plugin.id.WithLocal(62).word, "Set object");
            return true;
        });
    EXPECT_CALL(plugin, OnViewMenu(_)).WillOnce([this](CMenu* menu) {
        menu->AppendMenu(MF_SEPARATOR);
        menu->AppendMenu(MF_STRING, plugin.id.WithLocal(60).word, "Attach movie");
        menu->AppendMenu(MF_GRAYED, plugin.id.WithLocal(61).word, "Detach movie");
        return true;
    });
    EXPECT_CALL(plugin, OnCommand(1u, 62u)).Times(1);
    Answering(
        [](QWidget& popup) {
            auto& menu = dynamic_cast<QMenu&>(popup);
            QAction* chosen = nullptr;
            for (QAction* action : menu.actions()) {
                chosen = action->text() == "Set object" ? action : chosen;
                if (action->text() == "Detach movie") {
                    EXPECT_FALSE(action->isEnabled());
                }
            }
            ASSERT_NE(chosen, nullptr);
            menu.setActiveAction(chosen);
            QTest::keyClick(&menu, Qt::Key_Return);
        },
        [&] { Click(PixelOf(0, 0.5f, 0), Qt::NoModifier, Qt::RightButton); });
    EXPECT_EQ(window.host.level.selection.size(), 1u);
}

TEST_F(MainWindowTest, ARightDragIsNoMenu) {
    EXPECT_CALL(plugin, OnViewMenu(_)).Times(0);
    Drag(QPoint(200, 200), QPoint(260, 220), Qt::RightButton);
}

TEST_F(MainWindowTest, NumbersAreAskedForInADialog) {
    float value = 2.5f;
    Answering(
        [](QWidget& dialog) {
            auto& input = dynamic_cast<stage::NumberDialog&>(dialog);
            EXPECT_EQ(input.field->text(), "2.5");
            EXPECT_EQ(input.windowTitle(), "Length");
            input.field->setValue(4.0);
            input.accept();
        },
        [&] { EXPECT_TRUE(window.host.InputNumber(&value, "Length", "Seconds")); });
    EXPECT_FLOAT_EQ(value, 4.0f);
}

TEST_F(MainWindowTest, NumbersSurviveOkToTheLastBitAndAreTakenWithAllTheirDigits) {
    for (const float present : {3.33333f, 0.1f, 1.0e-7f, -16777216.0f, 3.0e9f}) {
        float value = present;
        Answering([](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); },
                  [&] { EXPECT_TRUE(window.host.InputNumber(&value, "Length", "Seconds")); });
        EXPECT_EQ(value, present);
    }
    float value = 3.33333f;
    Answering(
        [](QWidget& dialog) {
            stage::NumberField& field = *dynamic_cast<stage::NumberDialog&>(dialog).field;
            EXPECT_EQ(field.text(), QString("3.33333").replace('.', field.locale().decimalPoint()));
            field.selectAll();
            QTest::keyClicks(&field, QString("0.0333333351").replace('.', field.locale().decimalPoint()));
            QTest::keyClick(&field, Qt::Key_Return);
        },
        [&] { EXPECT_TRUE(window.host.InputNumber(&value, "Length", "Seconds")); });
    EXPECT_EQ(value, 0.0333333351f);
}

TEST_F(MainWindowTest, SelectingAndCopyingManyObjectsChangesTheTreesSelectionAsOftenAsForFew) {
    const auto changes = [this](int count) {
        window.session.New();
        for (int i = 0; i < count; ++i) {
            window.host.level.CreateObject({ClassName::Mesh, "Crate", "", {}, nullptr, true});
        }
        window.ObjectsChanged();
        Settle();
        QSignalSpy spy(window.tree->tree->selectionModel(), &QItemSelectionModel::selectionChanged);
        Action("EditSelectAll")->trigger();
        Action("EditDuplicate")->trigger();
        Settle();
        EXPECT_EQ(window.host.level.selection.size(), static_cast<std::size_t>(count));
        EXPECT_EQ(window.tree->tree->selectedItems().size(), count);
        return spy.count();
    };
    const auto few = changes(30);
    EXPECT_EQ(changes(300), few);
}

TEST_F(MainWindowTest, ACancelledElementPickerAnswersTheNameItWasGivenKnownOrNot) {
    engine::SceneObject* crate = AddCrate("Crate", 0, 0, 0);
    for (const char* present : {"lost bone", ""}) {
        Answering([](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); },
                  [&] { EXPECT_EQ(window.host.BrowseMeshElement(crate, present), present); });
    }
}

TEST_F(MainWindowTest, TheStatusBarTellsWhichAnimationAnObjectLacks) {
    const EditorObject& crate = *AddCrate("Crate", 0, 0, 0);
    EXPECT_EQ(crate.FindAnimation("Foo"), -1);
    EXPECT_EQ(window.statusBar()->currentMessage(),
              "Crate has no animation \"Foo\": the key keeps what it had.");
}

TEST_F(MainWindowTest, EffectsMayBeTypedFreely) {
    Answering(
        [](QWidget& dialog) {
            auto& pick = dynamic_cast<stage::EffectBrowser&>(dialog);
            EXPECT_EQ(pick.list->count(), 6);
            pick.search->setText("MyOwnSmoke");
            pick.accept();
        },
        [&] { EXPECT_EQ(window.host.BrowseObjectName(2, "Smoke"), "MyOwnSmoke"); });
    Answering([](QWidget& dialog) { dynamic_cast<QDialog&>(dialog).reject(); },
              [&] { EXPECT_EQ(window.host.BrowseObjectName(0, "x"), std::nullopt); });
}

TEST_F(MainWindowTest, EffectsOfTheLevelsOwnFolderAreOffered) {
    QDir(folder.path()).mkpath("effects/rain");
    WriteWholeFile(PathOf("effects/rain/Ash.fx.json"), R"({"about":"Of the volcano"})");
    Answering(
        [](QWidget& dialog) {
            auto& pick = dynamic_cast<stage::EffectBrowser&>(dialog);
            EXPECT_EQ(pick.list->item(0)->text(), "Ash");
            EXPECT_EQ(pick.Chosen(), "Snow");
            pick.search->setText("ash");
            EXPECT_EQ(pick.about->text(), "Of the volcano");
            pick.accept();
        },
        [&] { EXPECT_EQ(window.host.BrowseObjectName(5, "Snow"), "Ash"); });
}

TEST_F(MainWindowTest, AFileThatAnotherProgramChangedIsOverwrittenOnlyOnPurpose) {
    const QString path = PathOf("start.level").c_str();
    WriteWholeFile(path.toStdString(), "of another program");
    Answering([](QWidget& box) { PressButton(box, QMessageBox::Cancel); },
              [&] { EXPECT_FALSE(window.SaveLevelAs(path)); });
    EXPECT_EQ(ReadWholeFile(path.toStdString()), "of another program");
    const auto pressOverwrite = [](QWidget& box) {
        EXPECT_EQ(box.objectName(), "FileChanged");
        for (QAbstractButton* button : static_cast<QMessageBox&>(box).buttons()) {
            if (button->text() == "Overwrite") {
                button->click();
                return;
            }
        }
        box.close();
    };
    Answering(pressOverwrite, [&] { EXPECT_TRUE(window.SaveLevelAs(path)); });
    EXPECT_NE(ReadWholeFile(path.toStdString()), "of another program");
    EXPECT_TRUE(window.SaveLevelAs(path));
}

TEST_F(MainWindowTest, AFileThatAnotherProgramChangedCanBeKeptBySavingElsewhere) {
    const QString path = PathOf("start.level").c_str();
    WriteWholeFile(path.toStdString(), "of another program");
    const auto saveElsewhere = [&](QWidget& box) {
        QTimer::singleShot(0, &window, [&] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            dialog->findChild<QLineEdit*>()->setText(PathOf("mine").c_str());
            static_cast<QDialog*>(dialog)->accept();
        });
        static_cast<QMessageBox&>(box).defaultButton()->click();
    };
    Answering(saveElsewhere, [&] { EXPECT_TRUE(window.SaveLevelAs(path)); });
    EXPECT_EQ(window.session.Path(), PathOf("mine.level"));
    EXPECT_TRUE(QFile::exists(PathOf("mine.level").c_str()));
    EXPECT_EQ(ReadWholeFile(path.toStdString()), "of another program");
}
