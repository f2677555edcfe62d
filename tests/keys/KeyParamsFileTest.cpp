#include "keys/rules/KeyParamsFile.h"

#include "keys/rules/KeyKinds.h"
#include "tests/plugin/PluginFixture.h"
#include "tests/support/Paths.h"
#include "tests/support/TempFolder.h"

#include <filesystem>
#include <limits>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

const std::string kShipped = SourceFolder() + "/host/stage/data/DefaultKeysParams.fkd";
const std::string kHead = "QuorlEd film key params file\n***************\n";

/// One block, with what stands behind the labels.
std::string Block(const std::string& visible = "1", const std::string& height = "12",
                  const std::string& normal = "1,2,3", const std::string& highlight = "4,5,6") {
    return "** Name : Whatever\nVisible : " + visible + "\nRect height : " + height +
           "\nNormal color (r,g,b) : " + normal + "\nHighlight color (r,g,b) : " + highlight +
           "\n********************\n";
}

std::string Blocks(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += Block();
    }
    return text;
}

class KeyParamsFileTest : public ::testing::Test {
protected:
    bool Load(const std::string& text) {
        WriteWholeFile(path, text);
        return LoadKeyParamsFile(path.c_str(), &records);
    }
    /// A whole file of which only the first block is of interest.
    bool LoadFirst(const std::string& block) { return Load(kHead + block + Blocks(19)); }
    /// How many records have the height of the blocks.
    long Changed() const {
        return std::ranges::count_if(records, [](const KeyKindParams& r) { return r.rectHeight == 12; });
    }

    TempFolder folder;
    const std::string path = folder.File("keys.fkd");
    KeyKindParamsTable records;
};

TEST_F(KeyParamsFileTest, ReadsColoursHeightAndVisibility) {
    ASSERT_TRUE(LoadFirst(Block("0", "7", "1,2,3", "255,16,0")));
    EXPECT_FALSE(records[0].visible);
    EXPECT_EQ(records[0].rectHeight, 7);
    EXPECT_EQ(records[0].normalColor, 0x030201u);
    EXPECT_EQ(records[0].highlightColor, 0x0010FFu);
    EXPECT_TRUE(records[19].visible);
    EXPECT_EQ(Changed(), 19);
}

TEST_F(KeyParamsFileTest, NamesOfTheFileAreNotTaken) {
    records[0].name = "Mine";
    ASSERT_TRUE(LoadFirst(Block()));
    EXPECT_EQ(records[0].name, "Mine");
    EXPECT_EQ(records[1].name, "");
}

TEST_F(KeyParamsFileTest, HeadLinesAndNameLinesMayHoldAnything) {
    std::string block = Block("1", "7");
    block.replace(0, block.find('\n'), "");
    EXPECT_TRUE(Load(std::string(5000, 'x') + "\n\n" + block + Blocks(19)));
    EXPECT_EQ(records[0].rectHeight, 7);
}

TEST_F(KeyParamsFileTest, MissingHeadLineIsFatal) {
    EXPECT_FALSE(Load("One line only\n" + Blocks(20)));
    EXPECT_EQ(Changed(), 0);
}

TEST_F(KeyParamsFileTest, OnlyOneIsVisible) {
    ASSERT_TRUE(LoadFirst(Block("2")));
    EXPECT_FALSE(records[0].visible);
    ASSERT_TRUE(LoadFirst(Block("-1")));
    EXPECT_FALSE(records[0].visible);
    ASSERT_TRUE(LoadFirst(Block("+01")));
    EXPECT_TRUE(records[0].visible);
}

TEST_F(KeyParamsFileTest, NineteenBlocksFailAndAreTaken) {
    EXPECT_FALSE(Load(kHead + Blocks(19)));
    EXPECT_EQ(Changed(), 19);
    EXPECT_EQ(records[19].rectHeight, 15);
}

TEST_F(KeyParamsFileTest, MoreThanTwentyBlocksAreNotRead) {
    EXPECT_TRUE(Load(kHead + Blocks(20) + "rubbish"));
    EXPECT_EQ(Changed(), 20);
}

TEST_F(KeyParamsFileTest, FaultStopsTheReadingAfterWhatWasRead) {
    EXPECT_FALSE(Load(kHead + Block() + Block("1", "x") + Blocks(18)));
    EXPECT_EQ(Changed(), 1);
    EXPECT_FALSE(Load(kHead + Blocks(2) + Block("0", "9", "7,8,9", "1,2") + Blocks(17)));
    EXPECT_EQ(Changed(), 2);
    // The fault is in the last line: the three before it count.
    EXPECT_FALSE(records[2].visible);
    EXPECT_EQ(records[2].rectHeight, 9);
    EXPECT_EQ(records[2].normalColor, 0x090807u);
    EXPECT_EQ(records[2].highlightColor, KeyKindParams::kDefaultHighlight);
}

struct FaultRow {
    const char* visible;
    const char* height;
    const char* normal;
    const char* highlight;
    long changed; ///< 1 if the height of 12 was read before the fault
};

class KeyParamsFaultTest : public KeyParamsFileTest, public ::testing::WithParamInterface<FaultRow> {};

TEST_P(KeyParamsFaultTest, IsRefused) {
    const FaultRow& row = GetParam();
    EXPECT_FALSE(LoadFirst(Block(row.visible, row.height, row.normal, row.highlight)));
    EXPECT_EQ(Changed(), row.changed);
}

INSTANTIATE_TEST_SUITE_P(
    Faults, KeyParamsFaultTest,
    ::testing::Values(FaultRow{"", "12", "1,2,3", "4,5,6", 0}, FaultRow{"yes", "12", "1,2,3", "4,5,6", 0},
                      FaultRow{"-", "12", "1,2,3", "4,5,6", 0}, FaultRow{"1x", "12", "1,2,3", "4,5,6", 0},
                      FaultRow{"1", "12.5", "1,2,3", "4,5,6", 1}, FaultRow{"1", "12", "1,2", "4,5,6", 1},
                      FaultRow{"1", "12", "1 ,2,3", "4,5,6", 1}, FaultRow{"1", "12", "1;2;3", "4,5,6", 1},
                      FaultRow{"1", "12", "1,2,3", "4,,6", 1}));

TEST_F(KeyParamsFileTest, LabelInOtherLettersIsRefused) {
    std::string block = Block();
    block.replace(block.find("Visible"), 7, "visible");
    EXPECT_FALSE(LoadFirst(block));
    EXPECT_EQ(Changed(), 0);
}

TEST_F(KeyParamsFileTest, BlankLineIsFatalBeforeTheFirstLabelOnly) {
    std::string block = Block();
    block.insert(block.find("Visible"), "\n");
    EXPECT_FALSE(LoadFirst(block));
    block = Block("1 \n\n \t", " 12\n\n", "1,2,3\n\n", " 4, 5, 6\n\n");
    EXPECT_TRUE(LoadFirst(block));
    EXPECT_EQ(Changed(), 20);
}

TEST_F(KeyParamsFileTest, BlanksAroundTheColonMayBeMissing) {
    std::string block = Block();
    block.replace(block.find("Visible : 1"), 11, "Visible:1");
    EXPECT_TRUE(LoadFirst(block));
}

TEST_F(KeyParamsFileTest, LinesMayEndInTwoCharacters) {
    std::string text;
    for (const char c : kHead + Blocks(20)) {
        text += c == '\n' ? "\r\n" : std::string(1, c);
    }
    EXPECT_TRUE(Load(text));
    EXPECT_EQ(Changed(), 20);
    EXPECT_EQ(records[19].highlightColor, 0x060504u);
}

TEST_F(KeyParamsFileTest, ByteOf255EndsASkippedLine) {
    // The name line ends in mid-word, and what follows it is the line that is wanted.
    std::string block = Block();
    block.replace(0, block.find('\n') + 1, "** Na\xFF");
    EXPECT_TRUE(LoadFirst(block));
    EXPECT_EQ(Changed(), 20);
}

TEST_F(KeyParamsFileTest, ByteOf254IsALetterOfASkippedLine) {
    std::string block = Block();
    block.replace(0, block.find('\n') + 1, "** Na\xFEme\n");
    EXPECT_TRUE(LoadFirst(block));
    EXPECT_EQ(Changed(), 20);
}

TEST_F(KeyParamsFileTest, LastLineMayBeMissing) {
    std::string text = kHead + Blocks(20);
    text.resize(text.size() - std::string("\n********************\n").size());
    EXPECT_TRUE(Load(text));
    EXPECT_EQ(Changed(), 20);
}

TEST_F(KeyParamsFileTest, HugeNumbersAreCut) {
    const std::string huge(300, '9');
    ASSERT_TRUE(LoadFirst(Block("1", huge, "1,2,3", "4,5,6")));
    EXPECT_EQ(records[0].rectHeight, std::numeric_limits<int>::max());
    ASSERT_TRUE(LoadFirst(Block("1", "-" + huge, "1,2,3", "4,5,6")));
    EXPECT_EQ(records[0].rectHeight, std::numeric_limits<int>::min());
    ASSERT_TRUE(LoadFirst(Block("1", "2147483647", "1,2,3", "4,5,6")));
    EXPECT_EQ(records[0].rectHeight, 2147483647);
    ASSERT_TRUE(LoadFirst(Block(std::string(300, '0') + "1", "12", "1,2,3", "4,5,6")));
    EXPECT_TRUE(records[0].visible);
}

TEST_F(KeyParamsFileTest, ColourPartsOutsideAByteAreAddedUp) {
    // 256 + 1 * 256 + 0 = 0x200; -1 + 0 + 0 = 0xFFFFFFFF.
    ASSERT_TRUE(LoadFirst(Block("1", "12", "256,1,0", "-1,0,0")));
    EXPECT_EQ(records[0].normalColor, 0x200u);
    EXPECT_EQ(records[0].highlightColor, 0xFFFFFFFFu);
    const std::string huge(40, '9');
    ASSERT_TRUE(LoadFirst(Block("1", "12", huge + "," + huge + "," + huge, "4,5,6")));
    // 7FFFFFFF + FFFFFF00 + FFFF0000, to 32 bits.
    EXPECT_EQ(records[0].normalColor, 0x7FFEFEFFu);
}

TEST_F(KeyParamsFileTest, HeightOfZeroAndBelowIsTaken) {
    ASSERT_TRUE(LoadFirst(Block("1", "0")));
    EXPECT_EQ(records[0].rectHeight, 0);
    ASSERT_TRUE(LoadFirst(Block("1", "-3")));
    EXPECT_EQ(records[0].rectHeight, -3);
}

TEST_F(KeyParamsFileTest, NothingIsReadFromNowhere) {
    EXPECT_FALSE(LoadKeyParamsFile(nullptr, &records));
    EXPECT_FALSE(LoadKeyParamsFile("", &records));
    EXPECT_FALSE(LoadKeyParamsFile(folder.File("missing.fkd").c_str(), &records));
    EXPECT_FALSE(LoadKeyParamsFile(folder.Path().c_str(), &records));
    EXPECT_FALSE(LoadKeyParamsFile(kShipped.c_str(), nullptr));
    EXPECT_FALSE(Load(""));
    EXPECT_FALSE(Load(kHead));
    EXPECT_EQ(Changed(), 0);
}

TEST_F(KeyParamsFileTest, FileCutInItsLastBlockIsRefusedOrWhole) {
    const std::string whole = kHead + Blocks(20);
    const std::size_t lastNumber = whole.rfind('6');
    for (std::size_t size = (kHead + Blocks(19)).size(); size <= whole.size(); ++size) {
        EXPECT_EQ(Load(whole.substr(0, size)), size > lastNumber) << size;
    }
}

// Writing.

TEST_F(KeyParamsFileTest, WritesTheExactForm) {
    records[0].name = "Not this one";
    records[0].rectHeight = 9;
    records[0].normalColor = 0x030201;
    records[0].highlightColor = 0xFF0010;
    records[19].visible = false;
    ASSERT_TRUE(SaveKeyParamsFile(path, records));
    const std::string text = ReadWholeFile(path);
    const std::string first = "QuorlEd film key params file\n"
                              "***************\n"
                              "** Name : Camera keys\n"
                              "Visible : 1\n"
                              "Rect height : 9\n"
                              "Normal color (r,g,b) : 1,2,3\n"
                              "Highlight color (r,g,b) : 16,0,255\n"
                              "********************\n"
                              "** Name : Animation keys\n";
    EXPECT_EQ(text.substr(0, first.size()), first);
    const std::string last = "********************\n"
                             "** Name : FOV keys\n"
                             "Visible : 0\n"
                             "Rect height : 15\n"
                             "Normal color (r,g,b) : 128,128,128\n"
                             "Highlight color (r,g,b) : 192,192,192\n"
                             "********************\n";
    ASSERT_GE(text.size(), last.size());
    EXPECT_EQ(text.substr(text.size() - last.size()), last);
    EXPECT_EQ(std::ranges::count(text, '\n'), 2 + 20 * 6);
}

TEST_F(KeyParamsFileTest, ShippedFileComesBackByteForByte) {
    ASSERT_TRUE(LoadKeyParamsFile(kShipped.c_str(), &records));
    ASSERT_TRUE(SaveKeyParamsFile(path, records));
    EXPECT_EQ(ReadWholeFile(path), ReadWholeFile(kShipped));
}

TEST_F(KeyParamsFileTest, ShippedFileShowsEveryKindInColoursOfItsOwn) {
    ASSERT_TRUE(LoadKeyParamsFile(kShipped.c_str(), &records));
    for (std::size_t kind = 0; kind < records.size(); ++kind) {
        EXPECT_TRUE(records[kind].visible) << kind;
        EXPECT_EQ(records[kind].rectHeight, 15) << kind;
        EXPECT_GT(GetRValue(records[kind].highlightColor), GetRValue(records[kind].normalColor)) << kind;
        EXPECT_GT(GetGValue(records[kind].highlightColor), GetGValue(records[kind].normalColor)) << kind;
        EXPECT_GT(GetBValue(records[kind].highlightColor), GetBValue(records[kind].normalColor)) << kind;
        for (std::size_t other = 0; other < kind; ++other) {
            EXPECT_NE(records[kind].normalColor, records[other].normalColor) << kind << " and " << other;
        }
    }
}

TEST_F(KeyParamsFileTest, NothingIsWrittenToNowhere) {
    EXPECT_FALSE(SaveKeyParamsFile("", records));
    EXPECT_FALSE(SaveKeyParamsFile(folder.File("missing/keys.fkd"), records));
    EXPECT_FALSE(SaveKeyParamsFile(folder.Path(), records));
}

TEST_F(KeyParamsFileTest, FullDiskIsAFailure) {
    EXPECT_FALSE(SaveKeyParamsFile("/dev/full", records));
}

// The defaults.

/// The test editor looks for data files under their bare names: in the working directory.
class DefaultKeyParamsTest : public PluginTest {
protected:
    DefaultKeyParamsTest() : home(std::filesystem::current_path()) {
        std::filesystem::current_path(folder.Path());
    }
    ~DefaultKeyParamsTest() override { std::filesystem::current_path(home); }

    const std::filesystem::path home;
    TempFolder folder;
    KeyKindParamsTable own;
    KeyKindParamsTable asked;
};

constexpr const char* kMessage = "File DefaultKeysParams.fkd is corrupt or was deleted";

TEST_F(DefaultKeyParamsTest, ComeFromTheDataFolderWithTheNamesOfTheKinds) {
    WriteWholeFile("DefaultKeysParams.fkd", kHead + Blocks(20));
    own[3].rectHeight = 99;
    LoadDefaultKeyParams(&editor, &asked, own);
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_EQ(asked[3].rectHeight, 12);
    EXPECT_EQ(asked[3].normalColor, 0x030201u);
    for (std::size_t kind = 0; kind < asked.size(); ++kind) {
        EXPECT_EQ(asked[kind].name, GetKeyKindName(static_cast<int>(kind)));
    }
    EXPECT_EQ(own[3].rectHeight, 99);
    EXPECT_EQ(own[3].name, "");
}

KeyKindParams Odd() {
    return {"Odd", 1, 2, 99, false};
}

// Odd, but required: the values go to the control's own table, the names to the one that was asked for.
TEST_F(DefaultKeyParamsTest, MissingFileResetsTheOwnTable) {
    own.fill(Odd());
    asked.fill(Odd());
    LoadDefaultKeyParams(&editor, &asked, own);
    EXPECT_THAT(boxes, ElementsAre(kMessage));
    for (const KeyKindParams& record : own) {
        EXPECT_EQ(record.rectHeight, 15);
        EXPECT_EQ(record.normalColor, 0x808080u);
        EXPECT_EQ(record.highlightColor, 0xC0C0C0u);
        EXPECT_TRUE(record.visible);
        EXPECT_EQ(record.name, "Odd");
    }
    EXPECT_EQ(asked[19].rectHeight, 99);
    EXPECT_EQ(asked[19].name, "FOV keys");
}

TEST_F(DefaultKeyParamsTest, MalformedFileChangesTheAskedTableUpToItsFault) {
    WriteWholeFile("DefaultKeysParams.fkd", kHead + Blocks(1) + "end\n");
    own.fill(Odd());
    asked.fill(Odd());
    LoadDefaultKeyParams(&editor, &asked, own);
    EXPECT_THAT(boxes, ElementsAre(kMessage));
    EXPECT_EQ(asked[0].rectHeight, 12);
    EXPECT_EQ(asked[1].rectHeight, 99);
    EXPECT_EQ(own[0].rectHeight, 15);
}

TEST_F(DefaultKeyParamsTest, OneTableForBothEndsWithTheBuiltInValues) {
    WriteWholeFile("DefaultKeysParams.fkd", kHead + Blocks(19));
    LoadDefaultKeyParams(&editor, &own, own);
    EXPECT_THAT(boxes, ElementsAre(kMessage));
    EXPECT_EQ(own[0].rectHeight, 15);
    EXPECT_EQ(own[0].name, "Camera keys");
}

TEST_F(DefaultKeyParamsTest, WithoutAHostTheUserIsToldToo) {
    LoadDefaultKeyParams(nullptr, &own, own);
    EXPECT_THAT(boxes, ElementsAre(kMessage));
    EXPECT_EQ(own[0].rectHeight, 15);
}

TEST_F(DefaultKeyParamsTest, NoTableDoesNothing) {
    own.fill(Odd());
    LoadDefaultKeyParams(&editor, nullptr, own);
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_EQ(own[0].rectHeight, 99);
}

} // namespace
