#include "keys/rules/KeyShift.h"

#include "keys/rules/KeyEnd.h"
#include "tests/keys/KeyFixture.h"

#include <ostream>

namespace {

struct ShiftCase {
    const char* name;
    KeyTimes key;
    float delta;
    std::optional<KeyTimes> shifted;
};

void PrintTo(const ShiftCase& shown, std::ostream* out) {
    *out << shown.name;
}

std::string NameOf(const ::testing::TestParamInfo<ShiftCase>& shown) {
    return shown.param.name;
}

class KeyShiftTest : public ::testing::TestWithParam<ShiftCase> {};

} // namespace

TEST_P(KeyShiftTest, GivesTheNewTimes) {
    EXPECT_EQ(ShiftedKey(GetParam().key, GetParam().delta), GetParam().shifted);
}

INSTANTIATE_TEST_SUITE_P(
    Places, KeyShiftTest,
    ::testing::Values(
        ShiftCase{"Later", {4.0f, 4.5f}, 1.5f, KeyTimes{5.5f, 6.0f}},
        ShiftCase{"Earlier", {5.5f, 7.0f}, -5.0f, KeyTimes{0.5f, 2.0f}},
        ShiftCase{"NotAtAll", {4.0f, 4.5f}, 0.0f, KeyTimes{4.0f, 4.5f}},
        // In float32 2.1 + 0.7 is 2.8 and 3.3 + 0.7 is 4, though neither 3.3 nor 0.7 is one.
        ShiftCase{"SumsAreFloat32", {2.1f, 3.3f}, 0.7f, KeyTimes{2.8f, 4.0f}},
        ShiftCase{"ToTheBegin", {5.0f, 6.0f}, -5.0f, KeyTimes{0.0f, 1.0f}},
        ShiftCase{"StraddlingTheBeginIsCut", {4.25f, 7.0f}, -5.0f, KeyTimes{0.0f, 2.0f}},
        ShiftCase{"CutKeysEndAfterAThousandth", {4.75f, 5.0005f}, -5.0f, KeyTimes{0.0f, 0.001f}},
        // 2 to the power -10 is 0.0009765625, 2 to the power -9 0.001953125.
        ShiftCase{"JustBelowAThousandth", {0.0f, 0.0009765625f}, 0.0f, KeyTimes{0.0f, 0.001f}},
        ShiftCase{"AboveAThousandthStays", {0.0f, 0.001953125f}, 0.0f, KeyTimes{0.0f, 0.001953125f}},
        ShiftCase{"StartNearTheBeginIsTheBegin", {0.000005f, 2.0f}, 0.0f, KeyTimes{0.0f, 2.0f}},
        ShiftCase{"StartBesideTheBeginStays", {0.00002f, 2.0f}, 0.0f, KeyTimes{0.00002f, 2.0f}},
        ShiftCase{"EndBeforeTheBegin", {4.0f, 4.5f}, -5.0f, std::nullopt},
        ShiftCase{"EndAtTheBegin", {4.0f, 5.0f}, -5.0f, std::nullopt},
        ShiftCase{"EndNearTheBegin", {0.0f, 0.000005f}, 0.0f, std::nullopt},
        ShiftCase{"EndBesideTheBegin", {0.0f, 0.00002f}, 0.0f, KeyTimes{0.0f, 0.001f}},
        ShiftCase{"EndJustNotNearTheBegin", {0.0f, 0.00001f}, 0.0f, KeyTimes{0.0f, 0.001f}},
        ShiftCase{"StartJustNotNearTheBegin", {0.00001f, 2.0f}, 0.0f, KeyTimes{0.00001f, 2.0f}},
        ShiftCase{"NoLengthToTheBegin", {5.0f, 5.0f}, -5.0f, std::nullopt},
        ShiftCase{"NoLengthAtTheBeginThatIsntMoved", {0.0f, 0.0f}, 0.0f, std::nullopt},
        ShiftCase{"NoLengthFromTheBegin", {0.0f, 0.0f}, 2.0f, KeyTimes{2.0f, 2.0f}}),
    NameOf);

TEST(KeyEndTest, AKeyWithoutADurationEndsWhereItStands) {
    LoggingKey record;
    record.time = 3.0f;
    record.endTime = 9.0f;
    EXPECT_EQ(EndOf(record), 9.0f);
    record.flags = KeyFlag::NoDuration;
    EXPECT_EQ(EndOf(record), 3.0f);
    record.flags = KeyFlag::MayOverlap;
    EXPECT_EQ(EndOf(record), 9.0f);
}
