#include "tests/keys/AttributesFixture.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

using RecordedColor = RecordedKey<CFilmVectorKey, &ShowFloats>;
using RecordedJava = RecordedKey<CFilmJavaKey, &ShowString>;

/// A key with flags of any names.
class NamedFlags final : public RecordedKey<CFilmFlagsKey, &ShowString> {
public:
    int GetFlagCount() const override { return static_cast<int>(names.size()); }
    const char* GetFlagName(int index) const override {
        return names[static_cast<std::size_t>(index)].c_str();
    }

    std::vector<std::string> names;
};

/// Colours, script methods and flags.
class PlainAttributesTest : public AttributesTest {
protected:
    PlainAttributesTest() {
        color.kind = KeyKind::Color;
        java.kind = KeyKind::JavaMethod;
        flags.kind = KeyKind::Flags;
    }

    RecordedColor color;
    RecordedJava java;
    NamedFlags flags;
};

} // namespace

TEST_F(PlainAttributesTest, ColorIsWrittenAsAWholeAndHasNoMethods) {
    color.inMethod = BezierMethod::User;
    Fill(color);
    Type("Color", "COLOR", " 0.100 , 0.200 , 0.300");
    Apply(color);
    EXPECT_THAT(color.log, ElementsAre("SetValue 0.1 0.2 0.3"));
}

TEST_F(PlainAttributesTest, ColorOutsideItsRangeIsKept) {
    color.value = {-1.0f, 2.0f, 300.0f};
    Fill(color);
    Apply(color);
    EXPECT_THAT(color.log, ElementsAre("SetValue -1 2 300"));
}

TEST_F(PlainAttributesTest, ScriptMethodIsWrittenDirectly) {
    Fill(java);
    Type("Name", "JAVA METHOD", "openGate");
    Tick("Call after stop movie", "JAVA METHOD", true);
    Apply(java);
    EXPECT_EQ(java.methodName, "openGate");
    EXPECT_EQ(java.callAfterStop, 1);
    EXPECT_THAT(java.log, IsEmpty());
}

TEST_F(PlainAttributesTest, EachFlagIsItsBitAndOtherBitsStay) {
    flags.names = {"a", "b", "c"};
    flags.keyFlags = 0xF0000005;
    flags.flags = KeyFlag::NoDuration;
    Fill(flags);
    EXPECT_THAT(Lines(), ElementsAre("FLAGS/a/9/true", "FLAGS/b/9/false", "FLAGS/c/9/true"));
    Tick("a", "FLAGS", false);
    Tick("b", "FLAGS", true);
    Apply(flags);
    EXPECT_EQ(flags.keyFlags, 0xF0000006); // b and c
    EXPECT_EQ(flags.flags, KeyFlag::NoDuration) << "the bits of every record are others";
    EXPECT_THAT(flags.log, IsEmpty());
}

TEST_F(PlainAttributesTest, FlagsBeyondTheWordBeginAgain) {
    for (int i = 0; i < 34; ++i) {
        flags.names.push_back("f" + std::to_string(i));
    }
    flags.keyFlags = 0x80000001;
    Fill(flags);
    EXPECT_EQ(TextOf("f0", "FLAGS"), "true");
    EXPECT_EQ(TextOf("f31", "FLAGS"), "true");
    EXPECT_EQ(TextOf("f32", "FLAGS"), "true");
    EXPECT_EQ(TextOf("f33", "FLAGS"), "false");
    Tick("f0", "FLAGS", false); // overwritten by f32, the same bit
    Tick("f33", "FLAGS", true); // the bit of f1
    Apply(flags);
    EXPECT_EQ(flags.keyFlags, 0x80000003);
}

TEST_F(PlainAttributesTest, FlagsBehindAMissingRowStay) {
    flags.names = {"a"};
    flags.keyFlags = 1;
    Fill(flags);
    Tick("a", "FLAGS", false);
    flags.names = {"a", "new", "a"};
    flags.keyFlags = 7;
    Apply(flags);
    EXPECT_EQ(flags.keyFlags, 6u); // Required: not even the third, whose name has a row.
}

TEST_F(PlainAttributesTest, FlagsOfOneNameReadTheFirstRow) {
    flags.names = {"a", "a"};
    flags.keyFlags = 2;
    Fill(flags);
    EXPECT_THAT(Lines(), ElementsAre("FLAGS/a/9/false", "FLAGS/a/9/true"));
    Apply(flags);
    EXPECT_EQ(flags.keyFlags, 0u);
}

TEST_F(PlainAttributesTest, FlagWithoutANameHasARow) {
    flags.names = {""};
    Fill(flags);
    EXPECT_THAT(Lines(), ElementsAre("FLAGS//9/false"));
    Tick("", "FLAGS", true);
    Apply(flags);
    EXPECT_EQ(flags.keyFlags, 1u);
}
