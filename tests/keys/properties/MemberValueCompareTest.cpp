#include "tests/keys/properties/PropertyFixture.h"

#include <cmath>
#include <limits>

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();

struct OrderRow {
    std::uint32_t tag;
    const char* left;
    const char* right;
    int order;
    int reverse;
};

void PrintTo(const OrderRow& row, std::ostream* out) {
    *out << "tag " << row.tag << ": \"" << row.left << "\" and \"" << row.right << '"';
}

class OrderTest : public ::testing::TestWithParam<OrderRow> {};

TEST_P(OrderTest, IsAsTheTagSays) {
    const OrderRow& row = GetParam();
    const TaggedValue left(row.tag, row.left);
    const TaggedValue right(row.tag, row.right);
    EXPECT_EQ(left.Compare(right), row.order);
    EXPECT_EQ(right.Compare(left), row.reverse);
}

INSTANTIATE_TEST_SUITE_P(
    Tags, OrderTest,
    ::testing::Values(
        // Characters are signed: byte 228 is -28.
        OrderRow{0, "a", "b", -1, 1}, OrderRow{0, "a", "a", 0, 0}, OrderRow{0, "\xe4", "a", -1, 1},
        OrderRow{1, "200", "100", 1, -1}, OrderRow{1, "5", "5", 0, 0}, OrderRow{2, "-2", "1", -1, 1},
        OrderRow{12, "3", "3", 0, 0}, OrderRow{18, "9", "-9", 1, -1},
        OrderRow{2, "-2147483648", "2147483647", -1, 1}, OrderRow{3, "1", "1.5", -1, 1},
        OrderRow{3, "0", "-0", 0, 0}, OrderRow{3, "inf", "1", 1, -1}, OrderRow{3, "nan", "1", 0, 0},
        OrderRow{3, "nan", "nan", 0, 0}, OrderRow{3, "inf", "nan", 0, 0},
        // 2^32 against 1, so that the high halves decide; then the low ones, which have no sign.
        OrderRow{4, "4294967296", "1", 1, -1}, OrderRow{4, "-1", "0", -1, 1},
        OrderRow{4, "2147483648", "1", 1, -1}, OrderRow{4, "-4294967296", "-4294967295", -1, 1},
        OrderRow{4, "7", "7", 0, 0}, OrderRow{5, "-1", "1", -1, 1}, OrderRow{5, "32768", "0", -1, 1},
        OrderRow{5, "4", "4", 0, 0},
        // Strings by bytes without a sign, case counts.
        OrderRow{6, "Ab", "Abc", -1, 1}, OrderRow{6, "a", "B", 1, -1}, OrderRow{6, "", "", 0, 0},
        OrderRow{6, "\xe4", "z", 1, -1}, OrderRow{13, "x", "x", 0, 0}, OrderRow{14, "x", "y", -1, 1},
        OrderRow{17, "y", "x", 1, -1}, OrderRow{19, "x", "x", 0, 0}, OrderRow{20, "x", "y", -1, 1},
        OrderRow{21, "y", "x", 1, -1},
        // Vectors and bools are never greater.
        OrderRow{8, "1", "1", 0, 0}, OrderRow{8, "2 , 1 , 1", "1", -1, -1},
        OrderRow{8, "1 , 2 , 1", "1", -1, -1}, OrderRow{8, "1 , 1 , 2", "1", -1, -1},
        OrderRow{8, "1.000001 , 1 , 1", "1", 0, 0}, OrderRow{8, "0", "-0", 0, 0},
        OrderRow{8, "nan", "nan", -1, -1}, OrderRow{8, "inf", "inf", -1, -1},
        OrderRow{9, "true", "true", 0, 0}, OrderRow{9, "true", "false", -1, -1},
        // Nothing has no order.
        OrderRow{7, "", "", -2, -2}, OrderRow{10, "", "", -2, -2}, OrderRow{11, "", "", -2, -2},
        OrderRow{22, "", "", -2, -2}));

TEST(MemberValueCompareTest, UnequalTagsHaveNoOrder) {
    EXPECT_EQ(TaggedValue(2, "1").Compare(TaggedValue(12, "1")), -2);
    EXPECT_EQ(TaggedValue(6, "a").Compare(TaggedValue(13, "a")), -2);
    EXPECT_EQ(TaggedValue(22).Compare(TaggedValue(23)), -2);
}

TEST(MemberValueCompareTest, NullStringsAreEqualAndHaveNoOrderWithOthers) {
    for (const std::uint32_t tag : {6u, 13u, 14u, 17u, 19u, 20u, 21u}) {
        const TaggedValue null(tag);
        const TaggedValue empty(tag, "");
        EXPECT_EQ(null.Compare(TaggedValue(tag)), 0) << tag;
        EXPECT_EQ(null.Compare(empty), -2) << tag;
        EXPECT_EQ(empty.Compare(null), -2) << tag;
    }
}

TEST(MemberValueCompareTest, ComponentsAreEqualStrictlyWithinALimit) {
    constexpr float kLimit = 1e-5f;
    const TaggedValue origin(MemberType::Vector);
    TaggedValue near(MemberType::Vector);
    near.SetByValue(0.0f, 0.0f, std::nextafter(kLimit, 0.0f));
    EXPECT_EQ(near.Compare(origin), 0);
    near.SetByValue(0.0f, 0.0f, -std::nextafter(kLimit, 0.0f));
    EXPECT_EQ(near.Compare(origin), 0);
    near.SetByValue(0.0f, 0.0f, kLimit);
    EXPECT_EQ(near.Compare(origin), -1);
    near.SetByValue(0.0f, -kLimit, 0.0f);
    EXPECT_EQ(origin.Compare(near), -1);
    near.SetByValue(std::nextafter(kLimit, 1.0f), 0.0f, 0.0f);
    EXPECT_EQ(near.Compare(origin), -1);
    near.SetByValue(kInfinity, 0.0f, 0.0f);
    EXPECT_EQ(near.Compare(origin), -1);
}

TEST(MemberValueCompareTest, FloatsAreComparedExactly) {
    TaggedValue one(MemberType::Float, "1");
    TaggedValue next(MemberType::Float);
    next.SetByValue(std::nextafter(1.0f, 2.0f));
    EXPECT_EQ(one.Compare(next), -1);
    EXPECT_EQ(next.Compare(one), 1);
}

TEST(MemberValueCompareTest, ListIsNeverEqualToAListNotEvenToItself) {
    const std::list<CMember*> none;
    TaggedValue list(MemberType::MemberList);
    const TaggedValue null(MemberType::MemberList);
    EXPECT_EQ(null.Compare(null), 0);
    list.SetByValue(&none);
    EXPECT_EQ(list.Compare(list), 1);
    EXPECT_EQ(list.Compare(null), -2);
    EXPECT_EQ(null.Compare(list), -2);
}

TEST(MemberValueCompareTest, InstancesAreOrderedByTheNamesOfTheirClasses) {
    OwnDatabase database;
    database.Add("Boat").AddMember(IntMember("Length", 5));
    database.Add("Lamp");
    const TaggedValue boat(MemberType::Instance, "Boat");
    TaggedValue otherBoat(MemberType::Instance, "boat");
    const TaggedValue lamp(MemberType::Instance, "Lamp");
    const TaggedValue null(MemberType::Instance);
    otherBoat.AsInstance()->members.front()->value[0].SetByValue(std::int32_t{6});
    EXPECT_EQ(boat.Compare(otherBoat), 0);
    EXPECT_EQ(boat.Compare(lamp), -1);
    EXPECT_EQ(lamp.Compare(boat), 1);
    EXPECT_EQ(null.Compare(lamp), -2);
    EXPECT_EQ(lamp.Compare(null), -2);
    EXPECT_EQ(null.Compare(TaggedValue(MemberType::Instance)), 0);
}

} // namespace
