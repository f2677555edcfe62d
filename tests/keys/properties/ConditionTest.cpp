#include "tests/keys/properties/PropertyFixture.h"

namespace {

/// Operands that stand in memory as the tag 2 has them.
struct Numbers {
    std::int32_t operand;
    std::int32_t upper;
};

int Evaluate(CMember& controlling, std::uint32_t op, const Numbers& numbers) {
    return CCondition(&controlling, op, &numbers.operand, &numbers.upper).Evaluate();
}

struct OperationRow {
    std::uint32_t op;
    int atFour; ///< what 4, 5 and 6 against 5 give
    int atFive;
    int atSix;
};

void PrintTo(const OperationRow& row, std::ostream* out) {
    *out << "operation " << row.op;
}

class OperationTest : public ::testing::TestWithParam<OperationRow> {};

TEST_P(OperationTest, HoldsOnItsSideOfTheOperand) {
    const OperationRow& row = GetParam();
    IntMember four("Four", 4);
    IntMember five("Five", 5);
    IntMember six("Six", 6);
    EXPECT_EQ(Evaluate(four, row.op, {5, 0}), row.atFour);
    EXPECT_EQ(Evaluate(five, row.op, {5, 0}), row.atFive);
    EXPECT_EQ(Evaluate(six, row.op, {5, 0}), row.atSix);
}

INSTANTIATE_TEST_SUITE_P(Operations, OperationTest,
                         ::testing::Values(OperationRow{0, 0, 1, 0}, OperationRow{1, 1, 0, 1},
                                           OperationRow{2, 1, 0, 0}, OperationRow{3, 1, 1, 0},
                                           OperationRow{4, 0, 0, 1}, OperationRow{5, 0, 1, 1},
                                           // Strictly between 5 and 0 lies nothing.
                                           OperationRow{6, 0, 0, 0}, OperationRow{7, -1, -1, -1},
                                           OperationRow{4294967295u, -1, -1, -1}));

TEST(ConditionTest, BetweenLeavesOutBothBounds) {
    IntMember four("Four", 4);
    IntMember five("Five", 5);
    IntMember six("Six", 6);
    EXPECT_EQ(Evaluate(four, CCondition::kBetween, {4, 6}), 0);
    EXPECT_EQ(Evaluate(five, CCondition::kBetween, {4, 6}), 1);
    EXPECT_EQ(Evaluate(six, CCondition::kBetween, {4, 6}), 0);
}

TEST(ConditionTest, UpperBoundIsTheOperandButForBetween) {
    IntMember member("Number", 0);
    const Numbers numbers{5, 9};
    const CCondition less(&member, CCondition::kLess, &numbers.operand, &numbers.upper);
    EXPECT_EQ(less.value[0].AsInteger(), 5);
    EXPECT_EQ(less.value[1].AsInteger(), 5);
    const CCondition between(&member, CCondition::kBetween, &numbers.operand, &numbers.upper);
    EXPECT_EQ(between.value[1].AsInteger(), 9);
    EXPECT_EQ(between.member, &member);
    EXPECT_EQ(between.op, 6u);
}

TEST(ConditionTest, MissingPartsMakeItInvalid) {
    CMember text("Text", MemberType::String, "text", "TEXTS", 0);
    const CCondition invalid[] = {CCondition(nullptr, 1, "operand", nullptr),
                                  CCondition(&text, 1, nullptr, "upper"),
                                  CCondition(&text, 6, "operand", nullptr)};
    for (const CCondition& condition : invalid) {
        EXPECT_EQ(condition.member, nullptr);
        EXPECT_EQ(condition.op, 0u);
        EXPECT_EQ(condition.Evaluate(), -1);
        for (const CMemberValue& value : condition.value) {
            EXPECT_EQ(value.GetType(), MemberType::Int);
            EXPECT_EQ(value.AsInteger(), 0);
        }
    }
}

TEST(ConditionTest, OperandIsReadByTheTagOfTheControllingMember) {
    IntMember number("Number", 12589);
    const char text[4] = {'-', '1', 0, 0}; // as a number 45 + 49 * 256
    const CCondition equal(&number, CCondition::kEqual, text, nullptr);
    EXPECT_EQ(equal.value[0].AsInteger(), 12589);
    EXPECT_EQ(equal.Evaluate(), 1);
    CMember string("String", MemberType::String, "-1", "TEXTS", 0);
    EXPECT_EQ(CCondition(&string, CCondition::kEqual, text, nullptr).Evaluate(), 1);
}

TEST(ConditionTest, ChangedTagOfTheControllingMemberCanNotBeTold) {
    IntMember number("Number", 5);
    const Numbers numbers{5, 9};
    const CCondition notEqual(&number, CCondition::kNotEqual, &numbers.operand, nullptr);
    EXPECT_EQ(notEqual.Evaluate(), 0);
    number.value[0].ChangeTag(MemberType::ObjectId);
    EXPECT_EQ(notEqual.Evaluate(), -1);
}

TEST(ConditionTest, ChangedTagOfTheUpperBoundMattersToBetweenAlone) {
    IntMember number("Number", 5);
    const Numbers numbers{4, 9};
    CCondition greater(&number, CCondition::kGreater, &numbers.operand, nullptr);
    CCondition between(&number, CCondition::kBetween, &numbers.operand, &numbers.upper);
    greater.value[1].ChangeTag(MemberType::Float);
    between.value[1].ChangeTag(MemberType::Float);
    EXPECT_EQ(greater.Evaluate(), 1);
    EXPECT_EQ(between.Evaluate(), -1);
}

TEST(ConditionTest, NullStringDiffersFromEveryOther) {
    CMember text("Text", MemberType::String, nullptr, "TEXTS", 0);
    EXPECT_EQ(CCondition(&text, CCondition::kNotEqual, "", nullptr).Evaluate(), 1);
    EXPECT_EQ(CCondition(&text, CCondition::kEqual, "", nullptr).Evaluate(), 0);
    EXPECT_EQ(CCondition(&text, CCondition::kLess, "", nullptr).Evaluate(), 0);
    EXPECT_EQ(CCondition(&text, CCondition::kGreaterOrEqual, "", nullptr).Evaluate(), 0);
}

TEST(ConditionTest, DifferentBoolsAreLessWhicheverIsTrue) {
    const bool yes = true;
    const bool no = false;
    CMember on("On", MemberType::Bool, &yes, "BOOLS", 0);
    CMember off("Off", MemberType::Bool, &no, "BOOLS", 0);
    EXPECT_EQ(CCondition(&on, CCondition::kLess, &no, nullptr).Evaluate(), 1);
    EXPECT_EQ(CCondition(&off, CCondition::kLess, &yes, nullptr).Evaluate(), 1);
    EXPECT_EQ(CCondition(&on, CCondition::kGreater, &no, nullptr).Evaluate(), 0);
}

TEST(ConditionTest, ValueOfTheMemberStandsOnTheLeftWhenItIsAsked) {
    IntMember number("Number", 4);
    const Numbers numbers{5, 0};
    const CCondition less(&number, CCondition::kLess, &numbers.operand, nullptr);
    EXPECT_EQ(less.Evaluate(), 1);
    number.value[0].SetByValue(std::int32_t{6});
    EXPECT_EQ(less.Evaluate(), 0);
}

} // namespace
