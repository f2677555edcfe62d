#include "tests/helpers/CameraHelpersFixture.h"

#include <cmath>

using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace {

constexpr std::array<float, 4> kGreen{0, 1, 0, 1};
constexpr std::array<float, 4> kBlue{0, 0, 1, 1};

class CreateHelpersTest : public CameraHelpersTest {
protected:
    std::vector<std::string> Classes() const {
        std::vector<std::string> classes;
        for (const HelperObjectParams& params : editor.helperParams) {
            classes.push_back(params.className);
        }
        return classes;
    }
};

class UpdateHelpersTest : public CameraHelpersTest {
protected:
    static std::vector<float> Matrix(const EditorObject& object) {
        return {object.GetMatrix(0), object.GetMatrix(0) + 16};
    }
};

} // namespace

TEST_F(CreateHelpersTest, MakesSixObjectsInOrderThroughTheControlPlugin) {
    EXPECT_TRUE(helpers.CreateObjects());
    EXPECT_THAT(editor.calls,
                ElementsAre("CreateHelperObject CameraPositionEditorObject 2",
                            "CreateHelperObject CameraTargetEditorObject 2",
                            "CreateHelperObject CameraControlPointEditorObject 2",
                            "CreateHelperObject CameraControlPointEditorObject 2",
                            "CreateHelperObject CameraControlPointEditorObject 2",
                            "CreateHelperObject CameraControlPointEditorObject 2", "RedrawViews"));
    EXPECT_THAT(Printed(), ElementsAre("[CCameraHelpersController::CreateObjects()] TODO\n"));
    EXPECT_EQ(helpers.positionObject->GetInfo()->className, "CameraPositionEditorObject");
    EXPECT_EQ(helpers.targetObject->GetInfo()->className, "CameraTargetEditorObject");
    EXPECT_EQ(helpers.posInControl->name, "PosInControlPoint");
    EXPECT_EQ(helpers.posOutControl->name, "PosOutControlPoint");
    EXPECT_EQ(helpers.targetInControl->name, "TargetInControlPoint");
    EXPECT_EQ(helpers.targetOutControl->name, "TargetOutControlPoint");
}

TEST_F(CreateHelpersTest, ParametersStandForAnUnnamedObjectAtTheOrigin) {
    helpers.CreateObjects();
    ASSERT_THAT(editor.helperParams, SizeIs(6));
    for (const HelperObjectParams& params : editor.helperParams) {
        EXPECT_EQ(params.position, Vector3{});
        EXPECT_EQ(params.rotation, Vector3{});
        EXPECT_EQ(params.scale, (Vector3{1, 1, 1}));
        EXPECT_EQ(params.name, "");
    }
    EXPECT_EQ(editor.helperParams[0].modelPath, "./eye.helper");
    EXPECT_EQ(editor.helperParams[1].modelPath, "./target.helper");
    EXPECT_EQ(editor.helperParams[2].modelPath, "./handle.helper");
    EXPECT_EQ(editor.helperParams[5].modelPath, "./handle.helper");
}

TEST_F(CreateHelpersTest, ModelPathIsTheWayFromTheBaseFolder) {
    editor.helperFolder = "/editor/data/helpers";
    editor.descriptors.clear();
    editor.AddClassDescriptor(ClassName::CameraPosition, "../common/./eye.helper");
    editor.AddClassDescriptor(ClassName::CameraTarget, "/elsewhere/target.helper");
    editor.AddClassDescriptor(ClassName::CameraControlPoint, "");
    EXPECT_TRUE(helpers.CreateObjects());
    ASSERT_THAT(editor.helperParams, SizeIs(6));
    EXPECT_EQ(editor.helperParams[0].modelPath, "../common/eye.helper");
    EXPECT_EQ(editor.helperParams[1].modelPath, "../../../elsewhere/target.helper");
}

TEST_F(CreateHelpersTest, ObjectsAreCollectedInTheOrderOfTheFields) {
    helpers.CreateObjects();
    EXPECT_THAT(Objects(),
                ElementsAre(helpers.positionObject, helpers.posInControl, helpers.posOutControl,
                            helpers.targetObject, helpers.targetInControl, helpers.targetOutControl));
}

TEST_F(CreateHelpersTest, FailsWithoutTheControlPlugin) {
    editor.hasControl = false;
    EXPECT_FALSE(helpers.CreateObjects());
    EXPECT_THAT(
        Printed(),
        ElementsAre("[CCameraHelpersController::CreateObjects()] plugin Control is not accessible\n"));
    EXPECT_THAT(editor.calls, IsEmpty());
}

TEST_F(CreateHelpersTest, FailsWithoutTheHost) {
    IEditor* host = plugin.editor;
    plugin.editor = nullptr;
    EXPECT_FALSE(helpers.CreateObjects());
    helpers.GetHelpersDesc();
    helpers.ShowObjects(false);
    plugin.editor = host;
    EXPECT_THAT(
        Printed(),
        ElementsAre("[CCameraHelpersController::CreateObjects()] plugin Control is not accessible\n",
                    "[CCameraHelpersController::GetHelpersDesc()] called before editor is available"));
}

TEST_F(CreateHelpersTest, FailsWithoutOneOfTheClassesAndTriesAgain) {
    editor.descriptors.pop_back();
    editor.AddClassDescriptor("CameraControlPointEditorObject2", "handle.helper"); // names match exactly
    EXPECT_FALSE(helpers.CreateObjects());
    EXPECT_THAT(Printed(),
                ElementsAre("[CCameraHelpersController::CreateObjects()] cannot get helper definitions\n"));
    EXPECT_THAT(editor.helperParams, IsEmpty());
    editor.AddClassDescriptor(ClassName::CameraControlPoint, "handle.helper");
    EXPECT_TRUE(helpers.CreateObjects());
    EXPECT_THAT(Objects(), SizeIs(6));
}

TEST_F(CreateHelpersTest, RefusedObjectsStayNullAndTheRestIsMade) {
    editor.refusedHelpers = {ClassName::CameraControlPoint};
    EXPECT_TRUE(helpers.CreateObjects());
    EXPECT_THAT(Objects(), ElementsAre(helpers.positionObject, helpers.targetObject));
    EXPECT_THAT(Printed(), Contains("[CCameraHelpersController::CreateObjects()] TODO\n"));
}

TEST_F(CreateHelpersTest, NextTryMakesOnlyWhatIsMissing) {
    editor.refusedHelpers = {ClassName::CameraPosition};
    EXPECT_TRUE(helpers.CreateObjects());
    EditorObject* target = helpers.targetObject;
    editor.refusedHelpers.clear();
    editor.helperParams.clear();
    EXPECT_TRUE(helpers.CreateObjects());
    EXPECT_THAT(Classes(), ElementsAre("CameraPositionEditorObject"));
    EXPECT_EQ(helpers.targetObject, target);
}

TEST_F(CreateHelpersTest, ResetForgetsTheObjectsAndKeepsTheClasses) {
    helpers.CreateObjects();
    helpers.Reset();
    EXPECT_THAT(Objects(), IsEmpty());
    editor.descriptors.clear(); // the classes need not be looked for again
    editor.AddClassDescriptor("Other", "other.helper");
    EXPECT_NE(helpers.positionDesc, nullptr);
    EXPECT_NE(helpers.targetDesc, nullptr);
    EXPECT_NE(helpers.controlPointDesc, nullptr);
    helpers.positionDesc = helpers.targetDesc = helpers.controlPointDesc = nullptr;
}

TEST_F(CreateHelpersTest, DestroyedObjectIsForgotten) {
    helpers.CreateObjects();
    EditorObject* handle = helpers.posInControl;
    editor.DeleteObjects({handle});
    EXPECT_EQ(helpers.posInControl, nullptr);
    EXPECT_THAT(Objects(), SizeIs(5));
    helpers.ForgetObject(nullptr);
    EXPECT_THAT(Objects(), SizeIs(5));
}

TEST_F(UpdateHelpersTest, NoTrackWithoutObjectsOnlyHidesNothing) {
    helpers.UpdateObjects(nullptr, 1.0f);
    EXPECT_THAT(editor.helperParams, IsEmpty());
    ASSERT_THAT(editor.hideCalls, SizeIs(1));
    EXPECT_THAT(editor.hideCalls[0].objects, IsEmpty());
    EXPECT_TRUE(editor.hideCalls[0].hidden);
}

TEST_F(UpdateHelpersTest, ObjectsStandWhereTheCameraWasPosedLast) {
    AddPoint(KeyKind::CameraPosition, 0, {1, 2, 3});
    AddPoint(KeyKind::CameraTarget, 0, {4, 5, 6});
    plugin.SetFrame(0, -1);
    Visualize();
    EXPECT_EQ(PositionOf(*helpers.positionObject), (Vector3{1, 2, 3}));
    EXPECT_EQ(PositionOf(*helpers.targetObject), (Vector3{4, 5, 6}));
    EXPECT_FALSE(IsHidden(helpers.positionObject));
    EXPECT_FALSE(IsHidden(helpers.targetObject));
}

TEST_F(UpdateHelpersTest, AllAreShownAndThenTheHandlesWithoutAKeyAreHidden) {
    Visualize();
    ASSERT_THAT(editor.hideCalls, SizeIs(2));
    EXPECT_FALSE(editor.hideCalls[0].hidden);
    EXPECT_THAT(editor.hideCalls[0].objects, SizeIs(6));
    EXPECT_TRUE(editor.hideCalls[1].hidden);
    EXPECT_THAT(editor.hideCalls[1].objects, ElementsAre(helpers.posInControl, helpers.posOutControl,
                                                         helpers.targetInControl, helpers.targetOutControl));
}

TEST_F(UpdateHelpersTest, OnlySidesWithAHandleOfTheirOwnShowIt) {
    CFilmLinkedKey* eye = AddPoint(KeyKind::CameraPosition, 0, {});
    CFilmLinkedKey* target = AddPoint(KeyKind::CameraTarget, 0, {});
    eye->SetInMethod(BezierMethod::User);
    eye->SetOutMethod(BezierMethod::Inverse);
    target->SetInMethod(BezierMethod::Linear);
    target->SetOutMethod(BezierMethod::User);
    Visualize();
    EXPECT_FALSE(IsHidden(helpers.posInControl));
    EXPECT_TRUE(IsHidden(helpers.posOutControl));
    EXPECT_TRUE(IsHidden(helpers.targetInControl));
    EXPECT_FALSE(IsHidden(helpers.targetOutControl));
}

TEST_F(UpdateHelpersTest, WithAllHandlesShownTheHostIsAskedToHideNone) {
    SetHandles(*AddPoint(KeyKind::CameraPosition, 0, {}), {0, 0, -2}, {0, 0, 2});
    SetHandles(*AddPoint(KeyKind::CameraTarget, 0, {0, 0, 9}), {0, 0, 8}, {0, 0, 10});
    Visualize();
    ASSERT_THAT(editor.hideCalls, SizeIs(2));
    EXPECT_THAT(editor.hideCalls.front().objects, SizeIs(6));
    EXPECT_FALSE(editor.hideCalls.front().hidden);
    EXPECT_THAT(editor.hideCalls.back().objects, IsEmpty());
    EXPECT_TRUE(editor.hideCalls.back().hidden);
}

TEST_F(UpdateHelpersTest, HandlesShowOnlyAtTheirKeysTime) {
    SetHandles(*AddPoint(KeyKind::CameraPosition, 1, {}), {0, 0, -2}, {0, 0, 2});
    AddPoint(KeyKind::CameraPosition, 3, {});
    Visualize();
    plugin.SetTime(1.00009f, false);
    EXPECT_FALSE(IsHidden(helpers.posInControl));
    plugin.SetTime(1.001f, false);
    EXPECT_TRUE(IsHidden(helpers.posInControl));
    EXPECT_TRUE(IsHidden(helpers.posOutControl));
    plugin.SetTime(1.0f, false);
    EXPECT_FALSE(IsHidden(helpers.posOutControl));
    plugin.SetTime(3.0f, false);
    EXPECT_TRUE(IsHidden(helpers.posOutControl));
}

// Along d = (0, 0, -2): side (1, 0, 0), up = d x side = (0, -2, 0), so that row 1 points down.
TEST_F(UpdateHelpersTest, HandleLooksAwayFromItsPointWithItsHeadDown) {
    SetHandles(*AddPoint(KeyKind::CameraPosition, 0, {1, 1, 1}), {1, 1, -1}, {1, 1, 3});
    plugin.SetFrame(0, -1);
    Visualize();
    EXPECT_THAT(Matrix(*helpers.posInControl),
                ElementsAre(1, 0, 0, 0, 0, -1, 0, 0, 0, 0, -1, 0, 1, 1, -1, 1));
    // Along (0, 0, 2): side (-1, 0, 0), up (0, -2, 0).
    EXPECT_THAT(Matrix(*helpers.posOutControl),
                ElementsAre(-1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1, 0, 1, 1, 3, 1));
}

TEST_F(UpdateHelpersTest, HandleOfATargetStandsAroundTheTarget) {
    SetHandles(*AddPoint(KeyKind::CameraTarget, 0, {0, 0, 5}), {3, 0, 5}, {-3, 0, 5});
    plugin.SetFrame(0, -1);
    Visualize();
    // Along (3, 0, 0): side (0, 0, 1), up = (0*1 - 0*0, 0*0 - 3*1, 0) = (0, -3, 0).
    EXPECT_THAT(Matrix(*helpers.targetInControl),
                ElementsAre(0, 0, 1, 0, 0, -1, 0, 0, 1, 0, 0, 0, 3, 0, 5, 1));
    EXPECT_EQ(PositionOf(*helpers.targetOutControl), (Vector3{-3, 0, 5}));
}

TEST_F(UpdateHelpersTest, VerticalHandleHasAxesThatAreNoNumbersAndStandsRight) {
    SetHandles(*AddPoint(KeyKind::CameraPosition, 0, {}), {0, 4, 0}, {0, 0, 0});
    plugin.SetFrame(0, -1);
    Visualize();
    const float* vertical = helpers.posInControl->GetMatrix(0);
    EXPECT_TRUE(std::isnan(vertical[0]));
    EXPECT_EQ(vertical[9], 1.0f);
    EXPECT_EQ(PositionOf(*helpers.posInControl), (Vector3{0, 4, 0}));
    const float* zero = helpers.posOutControl->GetMatrix(0);
    EXPECT_TRUE(std::isnan(zero[9]));
    EXPECT_EQ(PositionOf(*helpers.posOutControl), Vector3{});
}

TEST_F(UpdateHelpersTest, HandleOfATiedKeyStandsInTheWorld) {
    EditorObject* cart = editor.Create("Cart", 10, 0, 0);
    CFilmLinkedKey* eye = AddPoint(KeyKind::CameraPosition, 0, {10, 0, 0});
    SetHandles(*eye, {10, 0, -2}, {10, 0, 2});
    eye->SetLinkObject(cart);
    EXPECT_EQ(eye->inHandle, (Vector3{0, 0, -2}));
    plugin.SetFrame(0, -1);
    Visualize();
    EXPECT_EQ(PositionOf(*helpers.posInControl), (Vector3{10, 0, -2}));
}

TEST_F(UpdateHelpersTest, FailedCreationIsToldAndTriedAgainAtTheNextFrame) {
    editor.hasControl = false;
    Visualize();
    EXPECT_THAT(Printed(), Contains("[CCameraHelpersController::UpdateObjects] cannot create objects\n"));
    EXPECT_THAT(editor.hideCalls, IsEmpty());
    editor.hasControl = true;
    plugin.SetFrame(0, -1);
    EXPECT_THAT(Objects(), SizeIs(6));
}

TEST_F(UpdateHelpersTest, MissingObjectsAreLeftOut) {
    CFilmLinkedKey* eye = AddPoint(KeyKind::CameraPosition, 0, {});
    CFilmLinkedKey* target = AddPoint(KeyKind::CameraTarget, 0, {});
    SetHandles(*eye, {0, 0, 1}, {0, 0, 2});
    SetHandles(*target, {0, 0, 1}, {0, 0, 2});
    editor.refusedHelpers = {ClassName::CameraControlPoint, ClassName::CameraTarget};
    Visualize();
    EXPECT_THAT(Objects(), ElementsAre(helpers.positionObject));
    plugin.OnRender();
    editor.refusedHelpers = {ClassName::CameraPosition};
    editor.DeleteObjects({helpers.positionObject});
    plugin.SetFrame(0, -1); // now the eye alone is missing
    EXPECT_EQ(helpers.positionObject, nullptr);
    EXPECT_THAT(Objects(), SizeIs(5));
    EXPECT_TRUE(IsHidden(helpers.posInControl)) << "there is no eye to stand around";
    EXPECT_FALSE(IsHidden(helpers.targetInControl));
    plugin.OnRender();
}

TEST_F(UpdateHelpersTest, HidingTheCameraHidesItsObjects) {
    Visualize();
    const std::vector<EditorObject*> objects = Objects();
    plugin.SetVisualizedTrack(nullptr);
    EXPECT_EQ(Objects(), objects);
    for (EditorObject* object : objects) {
        EXPECT_TRUE(IsHidden(object));
    }
    Visualize();
    EXPECT_EQ(Objects(), objects) << "the same objects come back";
    EXPECT_THAT(editor.helperParams, SizeIs(6));
}

TEST_F(UpdateHelpersTest, LinesRunFromThePointsToTheHandlesShown) {
    SetHandles(*AddPoint(KeyKind::CameraPosition, 0, {1, 0, 0}), {1, 0, -2}, {1, 0, 2});
    SetHandles(*AddPoint(KeyKind::CameraTarget, 0, {5, 0, 0}), {5, 0, -3}, {5, 0, 3});
    plugin.SetFrame(0, -1);
    Visualize();
    helpers.Draw();
    EXPECT_THAT(editor.lines, ElementsAre(DrawnLine{{1, 0, 0}, {1, 0, -2}, kGreen}, //
                                          DrawnLine{{1, 0, 0}, {1, 0, 2}, kBlue},   //
                                          DrawnLine{{5, 0, 0}, {5, 0, -3}, kGreen}, //
                                          DrawnLine{{5, 0, 0}, {5, 0, 3}, kBlue}));
}

TEST_F(UpdateHelpersTest, HiddenHandlesHaveNoLine) {
    CFilmLinkedKey* eye = AddPoint(KeyKind::CameraPosition, 0, {});
    SetHandles(*eye, {0, 0, -2}, {0, 0, 2});
    eye->SetInMethod(BezierMethod::Smooth);
    Visualize();
    helpers.Draw();
    EXPECT_THAT(editor.lines, ElementsAre(DrawnLine{{}, {0, 0, 2}, kBlue}));
    plugin.SetVisualizedTrack(nullptr);
    editor.lines.clear();
    helpers.Draw();
    EXPECT_THAT(editor.lines, IsEmpty());
}

TEST_F(UpdateHelpersTest, TrackThatIsNoCameraHidesAll) {
    Visualize();
    helpers.UpdateObjects(film->mainTrack, 0);
    for (EditorObject* object : Objects()) {
        EXPECT_TRUE(IsHidden(object));
    }
}
