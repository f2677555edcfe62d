#include "tests/stage/WindowFixture.h"

#include "host/stage/windows/EntryField.h"
#include "host/stage/windows/LightFields.h"
#include "host/stage/windows/ObjectPanel.h"
#include "host/stage/windows/TransformFields.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>

using ::testing::_;

class PanelSeveralTest : public WindowFixture {
protected:
    PanelSeveralTest() {
        left = AddCrate("Left", -100, 0, 50);
        right = AddCrate("Right", 100, 0, 70);
        window.host.Select({left, right});
        Settle();
    }
    stage::EntryField& Field(int row, int axis) const { return *window.panel->transform->Field(row, axis); }
    static void Type(stage::EntryField& field, const char* text) {
        field.setFocus();
        field.selectAll();
        QTest::keyClicks(&field, text);
        QTest::keyClick(&field, Qt::Key_Return);
        Settle();
    }

    engine::SceneObject* left;
    engine::SceneObject* right;
};

TEST_F(PanelSeveralTest, WhatDiffersIsMixedAndTheRestIsShown) {
    EXPECT_TRUE(Field(stage::TransformFields::kPosition, 0).IsMixed());
    EXPECT_EQ(Field(stage::TransformFields::kPosition, 0).text(), "");
    EXPECT_FALSE(Field(stage::TransformFields::kPosition, 1).IsMixed());
    EXPECT_FALSE(window.panel->name->isEnabled());
    EXPECT_EQ(window.panel->mesh->currentText(), "meshes/crate.glb");
}

TEST_F(PanelSeveralTest, AnEntryGoesToAllAndLeavesTheirOtherNumbers) {
    EXPECT_CALL(plugin, OnEvent(EventCode::ObjectsMoved, _)).Times(1);
    Type(Field(stage::TransformFields::kPosition, 1), "1m");
    EXPECT_FLOAT_EQ(left->GetPosition(0)[1], 100.0f);
    EXPECT_FLOAT_EQ(right->GetPosition(0)[1], 100.0f);
    EXPECT_FLOAT_EQ(left->GetPosition(0)[0], -100.0f);
    EXPECT_FLOAT_EQ(right->GetPosition(0)[2], 70.0f);
}

TEST_F(PanelSeveralTest, AMixedFieldTakesAlsoTheNumberThatItHeldBefore) {
    // The field's own number is that of the last object it showed alone: 0 by its making.
    Type(Field(stage::TransformFields::kPosition, 0), "0");
    EXPECT_FLOAT_EQ(left->GetPosition(0)[0], 0.0f);
    EXPECT_FLOAT_EQ(right->GetPosition(0)[0], 0.0f);
    EXPECT_FALSE(Field(stage::TransformFields::kPosition, 0).IsMixed());
}

TEST_F(PanelSeveralTest, LeavingAMixedFieldChangesNothing) {
    EXPECT_CALL(plugin, OnEvent(EventCode::ObjectsMoved, _)).Times(0);
    stage::EntryField& field = Field(stage::TransformFields::kPosition, 0);
    field.setFocus();
    QTest::keyClick(&field, Qt::Key_Return);
    Settle();
    EXPECT_FLOAT_EQ(left->GetPosition(0)[0], -100.0f);
    EXPECT_TRUE(field.IsMixed());
}

TEST_F(PanelSeveralTest, OneOfThemAloneShowsItsOwnNumbersAgain) {
    window.host.Select({right});
    Settle();
    EXPECT_FALSE(Field(stage::TransformFields::kPosition, 0).IsMixed());
    EXPECT_EQ(Field(stage::TransformFields::kPosition, 0).text(), "100.00");
    EXPECT_EQ(window.panel->name->text(), "Right");
}

TEST_F(PanelSeveralTest, APartlyCheckedBoxBecomesOneOrTheOther) {
    window.commands.SetVisible(*left, false);
    Settle();
    EXPECT_EQ(window.panel->visible->checkState(), Qt::PartiallyChecked);
    EXPECT_EQ(left->visible, 0) << "showing changes nothing";
    EXPECT_EQ(right->visible, 1);
    window.panel->visible->click();
    Settle();
    EXPECT_EQ(left->visible, right->visible);
    EXPECT_NE(window.panel->visible->checkState(), Qt::PartiallyChecked);
}

TEST_F(PanelSeveralTest, AllGetTheChosenParentAndMesh) {
    engine::SceneObject* cart = AddEmpty("Cart", 0, 0, 0);
    window.host.Select({left, right});
    Settle();
    emit window.panel->parentBox->activated(window.panel->parentBox->findText("Cart"));
    EXPECT_EQ(left->Parent(), cart);
    EXPECT_EQ(right->Parent(), cart);
    emit window.panel->mesh->activated(0);
    EXPECT_EQ(left->meshName, "");
    EXPECT_EQ(right->meshName, "");
}

TEST_F(PanelSeveralTest, LightsShareTheirFields) {
    engine::ObjectSpec spec;
    spec.className = ClassName::GLLight;
    spec.name = "Lamp";
    engine::SceneObject* a = window.host.level.CreateObject(spec);
    engine::SceneObject* b = window.host.level.CreateObject(spec);
    b->light->intensity = 3.0f;
    window.host.Select({a, b});
    Settle();
    EXPECT_TRUE(window.panel->light->intensity->IsMixed());
    window.panel->light->range->setValue(500.0);
    EXPECT_FLOAT_EQ(a->light->range, 500.0f);
    EXPECT_FLOAT_EQ(b->light->range, 500.0f);
    EXPECT_FLOAT_EQ(a->light->intensity, 1.0f);
    EXPECT_FLOAT_EQ(b->light->intensity, 3.0f);
}
