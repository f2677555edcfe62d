#include "tests/keys/properties/PropertyFixture.h"
#include "tests/support/CommaLocale.h"

#include <cmath>
#include <limits>
#include <string>

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr std::int32_t kMaxInt = 2147483647;
constexpr std::int32_t kMinInt = -kMaxInt - 1;
constexpr std::int64_t kMaxInt64 = 9223372036854775807;

std::string FloatText(float number) {
    TaggedValue value(MemberType::Float);
    value.SetByValue(number);
    return TextOf(value);
}

std::string VectorText(float x, float y, float z) {
    TaggedValue value(MemberType::Vector);
    value.SetByValue(x, y, z);
    return TextOf(value);
}

float ParsedFloat(const char* text) {
    return TaggedValue(MemberType::Float, text).AsFloat();
}

Vector3 ParsedVector(const std::string& text) {
    return TaggedValue(MemberType::Vector, text.c_str()).AsVector();
}

TEST(MemberValueTextTest, NewValueIsIntZero) {
    const CMemberValue value;
    EXPECT_EQ(value.GetType(), 2u);
    EXPECT_EQ(value.AsInteger(), 0);
    EXPECT_EQ(TextOf(value), "0");
}

struct TextRow {
    std::uint32_t tag;
    const char* given;
    const char* shown;
};

void PrintTo(const TextRow& row, std::ostream* out) {
    *out << "tag " << row.tag << " given \"" << row.given << '"';
}

class ParsedTextTest : public ::testing::TestWithParam<TextRow> {};

TEST_P(ParsedTextTest, ShowsWhatWasParsed) {
    const TextRow& row = GetParam();
    EXPECT_EQ(TextOf(TaggedValue(row.tag, row.given)), row.shown);
}

INSTANTIATE_TEST_SUITE_P(
    Tags, ParsedTextTest,
    ::testing::Values(
        // A character: the first one; none shows nothing.
        TextRow{0, "Abc", "A"}, TextRow{0, "\xe4", "\xe4"}, TextRow{0, "", ""},
        // A byte: the low 8 bits. 300 = 256 + 44.
        TextRow{1, "255", "255"}, TextRow{1, "300", "44"}, TextRow{1, "-1", "255"}, TextRow{1, "x", "0"},
        TextRow{1, "99999999999", "255"},
        // int32
        TextRow{2, "-12", "-12"}, TextRow{12, "65535", "65535"}, TextRow{18, "7", "7"},
        TextRow{2, " \t\n+3 apples", "3"}, TextRow{2, "1e3", "1"}, TextRow{2, "0x10", "0"},
        TextRow{2, "", "0"}, TextRow{2, "- 5", "0"}, TextRow{2, "2147483647", "2147483647"},
        TextRow{2, "2147483648", "2147483647"}, TextRow{2, "99999999999", "2147483647"},
        TextRow{12, "-99999999999", "-2147483648"}, TextRow{18, "99999999999999999999999", "2147483647"},
        // float32
        TextRow{3, "1.5", "1.50000"}, TextRow{3, "-0", "-0.00000"}, TextRow{3, "-2.25", "-2.25000"},
        // int64: nothing shows.
        TextRow{4, "5", ""},
        // int16: the low 16 bits. 70000 = 65536 + 4464.
        TextRow{5, "-32768", "-32768"}, TextRow{5, "32768", "-32768"}, TextRow{5, "65535", "-1"},
        TextRow{5, "70000", "4464"}, TextRow{5, "99999999999", "-1"},
        // Strings
        TextRow{6, "", ""}, TextRow{6, "null", "null"}, TextRow{13, "crate.wav", "crate.wav"},
        TextRow{14, "a", "a"}, TextRow{17, "Grüße", "Grüße"}, TextRow{19, "kept", "kept"},
        TextRow{20, "kept", "kept"}, TextRow{21, "kept", "kept"},
        // Nothing
        TextRow{7, "5", ""}, TextRow{10, "5", ""}, TextRow{11, "5", ""}, TextRow{22, "5", ""},
        TextRow{4294967295u, "5", ""},
        // bool
        TextRow{9, "true", "true"}, TextRow{9, "TRUE", "true"}, TextRow{9, "tRuE", "true"},
        TextRow{9, "1", "false"}, TextRow{9, "true ", "false"}, TextRow{9, " true", "false"},
        TextRow{9, "", "false"},
        // An instance without a database, and a list
        TextRow{15, "Lamp", "null"}, TextRow{15, "null", "null"}, TextRow{16, "3 items", "null"}));

TEST(MemberValueTextTest, NullStringOfEveryTagShowsTheWordNull) {
    for (const std::uint32_t tag : {6u, 13u, 14u, 17u, 19u, 20u, 21u}) {
        EXPECT_EQ(TextOf(TaggedValue(tag)), "null") << tag;
    }
}

TEST(MemberValueTextTest, ParseOfNullChangesNothing) {
    TaggedValue text(MemberType::String, "before");
    text.Parse(nullptr);
    EXPECT_EQ(TextOf(text), "before");
    TaggedValue number(MemberType::Int, "5");
    number.Parse(nullptr);
    EXPECT_EQ(number.AsInteger(), 5);
}

TEST(MemberValueTextTest, Int64HoldsWhatItDoesNotShow) {
    EXPECT_EQ(TaggedValue(MemberType::Int64, "-5000000000").AsInteger(), -5000000000);
    EXPECT_EQ(TaggedValue(MemberType::Int64, "9223372036854775807").AsInteger(), kMaxInt64);
    EXPECT_EQ(TaggedValue(MemberType::Int64, "9223372036854775808").AsInteger(), kMaxInt64);
    EXPECT_EQ(TaggedValue(MemberType::Int64, "-9223372036854775809").AsInteger(), -kMaxInt64 - 1);
}

TEST(MemberValueTextTest, FloatHasFiveDecimalsRoundedToEven) {
    EXPECT_EQ(FloatText(0.1f), "0.10000");
    EXPECT_EQ(FloatText(0.015625f), "0.01562"); // 1/64 lies just between two texts, and so does
    EXPECT_EQ(FloatText(0.046875f), "0.04688"); // 3/64
    EXPECT_EQ(FloatText(-1234567.0f), "-1234567.00000");
    // (2 - 2^-23) * 2^127
    EXPECT_EQ(FloatText(std::numeric_limits<float>::max()), "340282346638528859811704183484516925440.00000");
    EXPECT_EQ(FloatText(std::numeric_limits<float>::denorm_min()), "0.00000");
}

TEST(MemberValueTextTest, WhatIsNoFiniteNumberIsFiveCharactersWide) {
    EXPECT_EQ(FloatText(kInfinity), "  inf");
    EXPECT_EQ(FloatText(-kInfinity), " -inf");
    EXPECT_EQ(FloatText(std::copysign(std::nanf(""), 1.0f)), "  nan");
    EXPECT_EQ(FloatText(std::copysign(std::nanf(""), -1.0f)), " -nan");
}

TEST(MemberValueTextTest, FloatReadsTheNumberThatTheTextBeginsWith) {
    EXPECT_EQ(ParsedFloat("  +2.5 metres"), 2.5f);
    EXPECT_EQ(ParsedFloat("\t\n-.5"), -0.5f);
    EXPECT_EQ(ParsedFloat("1e2"), 100.0f);
    EXPECT_EQ(ParsedFloat("1e"), 1.0f);
    EXPECT_EQ(ParsedFloat("1,5"), 1.0f);
    EXPECT_EQ(ParsedFloat("0x10"), 16.0f);
    EXPECT_EQ(ParsedFloat("metres"), 0.0f);
    EXPECT_EQ(ParsedFloat(""), 0.0f);
    EXPECT_TRUE(std::signbit(ParsedFloat("-0")));
    EXPECT_TRUE(std::isnan(ParsedFloat("nan")));
    EXPECT_EQ(ParsedFloat("-Infinity"), -kInfinity);
}

TEST(MemberValueTextTest, FloatTooLargeIsAnInfinityAndOneTooSmallZero) {
    EXPECT_EQ(ParsedFloat("1e39"), kInfinity);
    EXPECT_EQ(ParsedFloat("-1e39"), -kInfinity);
    EXPECT_EQ(ParsedFloat("1e999"), kInfinity);
    EXPECT_EQ(ParsedFloat(std::string(10000, '9').c_str()), kInfinity);
    EXPECT_EQ(ParsedFloat("1e-60"), 0.0f);
    EXPECT_EQ(ParsedFloat("1e-999"), 0.0f);
}

TEST(MemberValueTextTest, VectorHasFourDecimalsEach) {
    EXPECT_EQ(VectorText(1, 2, 3), "1.0000 , 2.0000 , 3.0000");
    EXPECT_EQ(VectorText(0.03125f, -0.5f, 1000000), "0.0312 , -0.5000 , 1000000.0000"); // 1/32 is a tie
    EXPECT_EQ(VectorText(kInfinity, -kInfinity, std::nanf("")), "  inf ,  -inf ,   nan");
    EXPECT_EQ(TextOf(TaggedValue(MemberType::Vector)), "0.0000 , 0.0000 , 0.0000");
}

TEST(MemberValueTextTest, ThreeLargestFloatsAreShownWhole) {
    constexpr float kMax = std::numeric_limits<float>::max();
    const std::string one = "340282346638528859811704183484516925440.0000";
    EXPECT_EQ(VectorText(kMax, kMax, kMax), one + " , " + one + " , " + one);
}

TEST(MemberValueTextTest, VectorReadsThePieceAgainWhereNoSeparatorFollows) {
    EXPECT_EQ(ParsedVector("1.5 , -2 , 3"), (Vector3{1.5f, -2, 3}));
    EXPECT_EQ(ParsedVector("1"), (Vector3{1, 1, 1}));
    EXPECT_EQ(ParsedVector("1 , 2"), (Vector3{1, 2, 2}));
    EXPECT_EQ(ParsedVector("1,2,3"), (Vector3{1, 1, 1}));
    EXPECT_EQ(ParsedVector("1, 2, 3"), (Vector3{1, 1, 1}));
    EXPECT_EQ(ParsedVector("1 , 2 , 3 , 4"), (Vector3{1, 2, 3}));
    EXPECT_EQ(ParsedVector(" , 2 , "), (Vector3{0, 2, 0}));
    EXPECT_EQ(ParsedVector("red"), (Vector3{0, 0, 0}));
    EXPECT_EQ(ParsedVector("1e39 , -1e39 , 1e-60"), (Vector3{kInfinity, -kInfinity, 0}));
}

TEST(MemberValueTextTest, VectorReadsThe255FirstBytesAlone) {
    // 249 blanks, "1", " , " and two digits are 255 bytes; with a blank more one digit is seen.
    const std::string blanks(249, ' ');
    EXPECT_EQ(ParsedVector(blanks + "1 , 234"), (Vector3{1, 23, 23}));
    EXPECT_EQ(ParsedVector(blanks + " 1 , 234"), (Vector3{1, 2, 2}));
    EXPECT_EQ(ParsedVector(std::string(300, ' ') + "5"), (Vector3{0, 0, 0}));
}

TEST(MemberValueTextTest, LongStringsStayWhole) {
    const std::string speech(10000, 'a');
    EXPECT_EQ(TextOf(TaggedValue(MemberType::String, speech.c_str())), speech);
}

TEST(MemberValueTextTest, StringMayBeParsedFromItsOwnTail) {
    TaggedValue value(MemberType::String, "Harbour");
    value.Parse(value.AsString() + 4);
    EXPECT_EQ(TextOf(value), "our");
}

TEST(MemberValueTextTest, NumbersKeepTheirPointInALocaleWithComma) {
    const CommaLocale comma;
    ASSERT_TRUE(comma.IsInForce());
    EXPECT_EQ(FloatText(1.5f), "1.50000");
    EXPECT_EQ(VectorText(1, 2.5f, 3), "1.0000 , 2.5000 , 3.0000");
    EXPECT_EQ(ParsedFloat("1.25"), 1.25f);
    EXPECT_EQ(ParsedFloat("1,25"), 1.0f);
    EXPECT_EQ(ParsedVector("1.5 , 2.5 , 3.5"), (Vector3{1.5f, 2.5f, 3.5f}));
    EXPECT_EQ(TextOf(TaggedValue(MemberType::Int, "1234567")), "1234567");
    EXPECT_EQ(TaggedValue(MemberType::Int, "1.234").AsInteger(), 1);
}

TEST(MemberValueTextTest, LimitsOfIntAreReadAndShown) {
    EXPECT_EQ(TaggedValue(MemberType::Int, "2147483647").AsInteger(), kMaxInt);
    EXPECT_EQ(TextOf(TaggedValue(MemberType::Int, "-2147483648")), "-2147483648");
    EXPECT_EQ(TaggedValue(MemberType::Int, "-2147483649").AsInteger(), kMinInt);
}

TEST(MemberValueTextTest, ListShowsItsCountAndTakesNothingButNull) {
    IntMember one("One", 1);
    IntMember two("Two", 2);
    const std::list<CMember*> members{&one, &two};
    TaggedValue value(MemberType::MemberList);
    ASSERT_TRUE(value.SetByValue(&members));
    EXPECT_EQ(TextOf(value), "2 items");
    value.Parse("0 items");
    value.Parse("NULL");
    EXPECT_EQ(TextOf(value), "2 items");
    value.Parse("null");
    EXPECT_EQ(TextOf(value), "null");
    const std::list<CMember*> none;
    ASSERT_TRUE(value.SetByValue(&none));
    EXPECT_EQ(TextOf(value), "0 items");
}

} // namespace
