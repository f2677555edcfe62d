#include "host/stage/host/NumberEntry.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using stage::EvaluateEntry;
using stage::NumberKind;

struct Entry {
    const char* text;
    NumberKind kind;
    double value;
};

class NumberEntryTest : public testing::TestWithParam<Entry> {};

TEST_P(NumberEntryTest, IsWorkedOut) {
    const std::optional<double> value = EvaluateEntry(GetParam().text, GetParam().kind);
    ASSERT_TRUE(value.has_value()) << GetParam().text;
    EXPECT_NEAR(*value, GetParam().value, 1e-9) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(
    Texts, NumberEntryTest,
    testing::Values(Entry{"12", NumberKind::Plain, 12}, Entry{"-1.5", NumberKind::Plain, -1.5},
                    Entry{"1,5", NumberKind::Plain, 1.5}, Entry{".5", NumberKind::Plain, 0.5},
                    Entry{"35*2", NumberKind::Plain, 70}, Entry{" 2 + 3 * 4 ", NumberKind::Plain, 14},
                    Entry{"(2 + 3) * 4", NumberKind::Plain, 20}, Entry{"10 - 4 - 3", NumberKind::Plain, 3},
                    Entry{"20/4/5", NumberKind::Plain, 1}, Entry{"2*-3", NumberKind::Plain, -6},
                    Entry{"2m", NumberKind::Length, 200}, Entry{"1.5 m + 20 mm", NumberKind::Length, 152},
                    Entry{"1km", NumberKind::Length, 100000}, Entry{"10 cm", NumberKind::Length, 10},
                    Entry{"2in", NumberKind::Length, 5.08}, Entry{"1ft", NumberKind::Length, 30.48},
                    Entry{"3*2m", NumberKind::Length, 600}, Entry{"90\u00b0", NumberKind::Angle, 90},
                    Entry{"0.5turn", NumberKind::Angle, 180},
                    Entry{"1rad", NumberKind::Angle, 57.29577951308232}));

class NoNumberEntryTest : public testing::TestWithParam<const char*> {};

TEST_P(NoNumberEntryTest, IsNotUnderstood) {
    EXPECT_FALSE(EvaluateEntry(GetParam(), NumberKind::Length).has_value());
}

INSTANTIATE_TEST_SUITE_P(Texts, NoNumberEntryTest,
                         testing::Values("", " ", "m", "2 apples", "2mn", "1..5", "1+", "*2", "(1", "1)",
                                         "1/0", "0/0", "1e5", "nan", "inf", "2 3", "90\u00b0", "--", "()"));

TEST(NumberEntryDepthTest, EndlessBracketsAreNoEntry) {
    EXPECT_FALSE(EvaluateEntry(std::string(100000, '('), NumberKind::Plain).has_value());
    EXPECT_FALSE(EvaluateEntry(std::string(100000, '-') + "1", NumberKind::Plain).has_value());
}

} // namespace
