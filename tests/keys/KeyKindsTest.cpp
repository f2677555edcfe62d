#include "keys/rules/KeyKinds.h"
#include "files/base/Log.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

std::vector<std::string> heard;

/// Collects the debug prints of a test.
class KeyKindsTest : public ::testing::Test {
protected:
    KeyKindsTest() {
        heard.clear();
        SetLogListener([](const char* text) { heard.emplace_back(text); });
    }
    ~KeyKindsTest() override { SetLogListener(nullptr); }
};

struct NameRow {
    int kind;
    const char* name;
    bool bezier;
    bool timed;
};

class KindTableTest : public ::testing::TestWithParam<NameRow> {};

TEST_P(KindTableTest, HasTheNameAndRulesOfTheKind) {
    EXPECT_STREQ(GetKeyKindName(GetParam().kind), GetParam().name);
    EXPECT_EQ(IsBezierKind(GetParam().kind), GetParam().bezier);
    EXPECT_EQ(IsTimedKind(GetParam().kind), GetParam().timed);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, KindTableTest,
    ::testing::Values(NameRow{-1, "", false, false}, NameRow{0, "Camera keys", false, true},
                      NameRow{1, "Animation keys", false, true}, NameRow{2, "FX sequence keys", false, true},
                      NameRow{3, "FX particle keys", false, true}, NameRow{4, "FX trace keys", false, true},
                      NameRow{5, "FX rain keys", false, true}, NameRow{6, "FX blind keys", false, true},
                      NameRow{7, "FX flare keys", false, true}, NameRow{8, "Speech keys", false, true},
                      NameRow{9, "Sound keys", false, true}, NameRow{10, "Position keys", true, false},
                      NameRow{11, "Rotation keys", true, false}, NameRow{12, "Scale keys", true, false},
                      NameRow{13, "Java method keys", false, false}, NameRow{14, "Color keys", true, false},
                      NameRow{15, "Flags keys", false, false},
                      NameRow{16, "Camera position keys", true, false},
                      NameRow{17, "Target position keys", true, false}, NameRow{18, "Roll keys", true, false},
                      NameRow{19, "FOV keys", true, false}, NameRow{20, "", false, false},
                      NameRow{21, "No keys", false, false}, NameRow{22, "", false, false},
                      NameRow{2147483647, "", false, false}));

struct MethodRow {
    int method;
    int in;
    int out;
};

class MethodTableTest : public ::testing::TestWithParam<MethodRow> {};

TEST_P(MethodTableTest, HasItsTwoCommands) {
    EXPECT_EQ(GetIDByMethod(GetParam().method, /*in*/ true), GetParam().in);
    EXPECT_EQ(GetIDByMethod(GetParam().method, /*in*/ false), GetParam().out);
}

INSTANTIATE_TEST_SUITE_P(Methods, MethodTableTest,
                         ::testing::Values(MethodRow{0, 36854, 36859}, MethodRow{1, 36855, 36860},
                                           MethodRow{2, 36856, 36861}, MethodRow{3, 36857, 36862},
                                           MethodRow{4, 36858, 36863}, MethodRow{5, 36867, 36868}));

TEST_F(KeyKindsTest, UnknownMethodHasNoCommandAndSaysSo) {
    EXPECT_EQ(GetIDByMethod(6, true), -1);
    EXPECT_EQ(GetIDByMethod(-1, false), -1);
    const std::string line = "[CTrackKey::GetIDByMethod] unknown method\n";
    EXPECT_EQ(heard, (std::vector<std::string>{line, line}));
}

TEST_F(KeyKindsTest, KnownMethodSaysNothing) {
    GetIDByMethod(5, false);
    EXPECT_TRUE(heard.empty());
}

} // namespace
