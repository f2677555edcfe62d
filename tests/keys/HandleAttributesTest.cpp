#include "tests/keys/AttributesFixture.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using RecordedVector = RecordedKey<CFilmVectorKey, &ShowFloats>;
using RecordedScalar = RecordedKey<CFilmScalarKey, &ShowFloat>;

constexpr const char* kIn = "IN CONTROL POINT";
constexpr const char* kOut = "OUT CONTROL POINT";

/// Vector keys and keys of one float: their values and handles.
class HandleAttributesTest : public AttributesTest {
protected:
    HandleAttributesTest() {
        vector.kind = KeyKind::Position;
        vector.value = {1.0f, 2.0f, 3.0f};
        vector.inHandle = {4.0f, 5.0f, 6.0f};
        vector.outHandle = {7.0f, 8.0f, 9.0f};
        scalar.kind = KeyKind::Roll;
        scalar.value = 1.0f;
        scalar.inValue = 2.0f;
        scalar.outValue = 3.0f;
    }
    void FillVectorWith(int kind, int inMethod, int outMethod) {
        vector.kind = kind;
        vector.inMethod = inMethod;
        vector.outMethod = outMethod;
        vector.log.clear();
        Fill(vector);
    }

    RecordedVector vector;
    RecordedScalar scalar;
};

class MethodRowTest : public HandleAttributesTest, public ::testing::WithParamInterface<int> {};

} // namespace

TEST_P(MethodRowTest, ShowsTheMethodAndTheHandleWithUserAlone) {
    static constexpr const char* kNames[] = {"Smooth", "Linear", "Slowdown", "Speedup", "User", "Inverse"};
    const int method = GetParam();
    FillVectorWith(KeyKind::Position, method, BezierMethod::Smooth);
    EXPECT_EQ(TextOf("In type", kIn), kNames[method]);
    const CMember* row = rows.FindMember("In type", kIn);
    EXPECT_EQ(row->mode, CMember::kEnumerated);
    EXPECT_EQ(row->typeName, "String");
    EXPECT_THAT(row->items, ElementsAre("Smooth", "Linear", "Slowdown", "Speedup", "User", "Inverse"));
    EXPECT_EQ(IsHidden("In X", kIn), method != BezierMethod::User);
    EXPECT_EQ(IsHidden("In Z", kIn), method != BezierMethod::User);
    EXPECT_TRUE(IsHidden("Out X", kOut));
}

TEST_P(MethodRowTest, ChosenMethodIsStored) {
    FillVectorWith(KeyKind::Position, BezierMethod::Smooth, BezierMethod::Smooth);
    Choose("Out type", kOut, GetParam());
    Apply(vector);
    ASSERT_GE(vector.log.size(), 3u);
    EXPECT_EQ(vector.log[0], "SetValue 1 2 3");
    EXPECT_EQ(vector.log[1], "SetInMethod 0");
    EXPECT_EQ(vector.log[2], "SetOutMethod " + std::to_string(GetParam()));
    EXPECT_EQ(vector.log.size(), GetParam() == BezierMethod::User ? 4u : 3u);
}

INSTANTIATE_TEST_SUITE_P(Methods, MethodRowTest, ::testing::Range(0, 6));

TEST_F(HandleAttributesTest, BothHandlesAreWrittenBehindTheirMethods) {
    for (const int kind : {KeyKind::Position, KeyKind::Scale}) {
        FillVectorWith(kind, BezierMethod::User, BezierMethod::User);
        Type("In Y", kIn, "50.5");
        Type("Out Z", kOut, "90");
        Apply(vector);
        EXPECT_THAT(vector.log, ElementsAre("SetValue 1 2 3", "SetInMethod 4", "SetInHandle 4 50.5 6",
                                            "SetOutMethod 4", "SetOutHandle 7 8 90"));
    }
}

TEST_F(HandleAttributesTest, HandleStaysWhileTheMethodIsAnother) {
    FillVectorWith(KeyKind::Position, BezierMethod::User, BezierMethod::Smooth);
    Type("In X", kIn, "40");
    Choose("In type", kIn, BezierMethod::Linear);
    Apply(vector);
    EXPECT_THAT(vector.log, ElementsAre("SetValue 1 2 3", "SetInMethod 1", "SetOutMethod 0"));
    Choose("In type", kIn, BezierMethod::User);
    vector.log.clear();
    Apply(vector);
    EXPECT_EQ(vector.log[2], "SetInHandle 40 5 6"); // the rows keep what was typed
}

TEST_F(HandleAttributesTest, MethodWithoutANameShowsNothingAndBecomesUser) {
    // Required: no choice is written as "User", with the handle's rows, which don't show.
    FillVectorWith(KeyKind::Position, 7, -1);
    EXPECT_EQ(TextOf("In type", kIn), "");
    EXPECT_EQ(TextOf("Out type", kOut), "");
    EXPECT_TRUE(IsHidden("In X", kIn));
    Apply(vector);
    EXPECT_THAT(vector.log, ElementsAre("SetValue 1 2 3", "SetInMethod 4", "SetInHandle 4 5 6",
                                        "SetOutMethod 4", "SetOutHandle 7 8 9"));
    scalar.inMethod = 7;
    Fill(scalar);
    Apply(scalar);
    EXPECT_THAT(scalar.log, ElementsAre("SetValue 1", "SetInMethod 4", "SetInHandle 2", "SetOutMethod 0"));
}

TEST_F(HandleAttributesTest, RowWithoutAChoiceOfMethodsLeavesItsSideAlone) {
    FillVectorWith(KeyKind::Position, BezierMethod::User, BezierMethod::Linear);
    rows.FindMember("In type", kIn)->mode = CMember::kPlain;
    Apply(vector);
    EXPECT_THAT(vector.log, ElementsAre("SetValue 1 2 3", "SetOutMethod 1"));
}

TEST_F(HandleAttributesTest, RotationLosesXOfItsOutgoingHandle) {
    FillVectorWith(KeyKind::Rotation, BezierMethod::User, BezierMethod::User);
    Apply(vector);
    // Required: "Out X" shows y, so (7, 8, 9) becomes (8, 8, 9).
    EXPECT_THAT(vector.log, ElementsAre("SetValue 1 2 3", "SetInMethod 4", "SetInHandle 4 5 6",
                                        "SetOutMethod 4", "SetOutHandle 8 8 9"));
}

TEST_F(HandleAttributesTest, RotationWithAnotherMethodKeepsItsHandle) {
    auto& real = *NewRecordOf<CFilmVectorKey>(KeyKind::Rotation);
    real.outHandle = {7.0f, 8.0f, 9.0f};
    Fill(real);
    Apply(real);
    EXPECT_EQ(real.outHandle, (Vector3{7.0f, 8.0f, 9.0f}));
    Choose("Out type", kOut, BezierMethod::User);
    Type("Out X", kOut, "70"); // what is typed is written as it is named
    Apply(real);
    EXPECT_EQ(real.outHandle, (Vector3{70.0f, 8.0f, 9.0f}));
}

TEST_F(HandleAttributesTest, RotationAndScaleWithoutTheirFirstRowWriteNothing) {
    for (const int kind : {KeyKind::Rotation, KeyKind::Scale}) {
        FillVectorWith(kind, BezierMethod::User, BezierMethod::User);
        rows.FindMember(kind == KeyKind::Scale ? "X" : "Rotation X",
                        kind == KeyKind::Scale ? "SCALE" : "ROTATION ANGLES")
            ->name = "other";
        Apply(vector);
        EXPECT_THAT(vector.log, IsEmpty());
    }
    FillVectorWith(KeyKind::Position, BezierMethod::Smooth, BezierMethod::Smooth);
    rows.FindMember("Pos X", "POSITION")->name = "other";
    Type("Pos Y", "POSITION", "20");
    Apply(vector);
    EXPECT_EQ(vector.log[0], "SetValue 1 20 3"); // what has no row stays
}

TEST_F(HandleAttributesTest, WrittenValueIsThatOfTheText) {
    // Required: editing rounds to the five decimals of the text.
    vector.value = {0.123456789f, 2.0f, 3.0f};
    auto& real = *NewRecordOf<CFilmVectorKey>(KeyKind::Position);
    real.value = vector.value;
    Fill(real);
    Apply(real);
    EXPECT_EQ(real.value.x, 0.123456789f) << "an untouched row is exact";
    Type("Pos X", "POSITION", TextOf("Pos X", "POSITION").c_str());
    Apply(real);
    EXPECT_EQ(real.value.x, 0.12346f);
}

TEST_F(HandleAttributesTest, FieldOfViewIsCutTo360) {
    scalar.kind = KeyKind::FieldOfView;
    Fill(scalar);
    Type("FOV", "FOV", "400");
    Apply(scalar);
    EXPECT_EQ(scalar.log[0], "SetValue 360");
    EXPECT_EQ(TextOf("FOV", "FOV"), "400.00000"); // until the rows are made anew
    Type("FOV", "FOV", "360");
    Apply(scalar);
    EXPECT_EQ(scalar.log[3], "SetValue 360");
    Type("FOV", "FOV", "-5");
    Apply(scalar);
    EXPECT_EQ(scalar.log[6], "SetValue -5"); // Required: no lower limit.
}

TEST_F(HandleAttributesTest, RollHasNoLimit) {
    Fill(scalar);
    Type("Roll", "ROLL", "1e9");
    Apply(scalar);
    EXPECT_EQ(scalar.log[0], "SetValue 1e+09");
}

TEST_F(HandleAttributesTest, KeysOfOneFloatWriteHandlesBehindMethods) {
    scalar.outMethod = BezierMethod::User;
    Fill(scalar);
    EXPECT_TRUE(IsHidden("In value", kIn));
    EXPECT_FALSE(IsHidden("Out value", kOut));
    Choose("In type", kIn, BezierMethod::User);
    EXPECT_FALSE(IsHidden("In value", kIn));
    Type("In value", kIn, "20");
    Type("Out value", kOut, "30");
    Apply(scalar);
    EXPECT_THAT(scalar.log, ElementsAre("SetValue 1", "SetInMethod 4", "SetInHandle 20", "SetOutMethod 4",
                                        "SetOutHandle 30"));
}
