#include "tests/plugin/PluginFixture.h"
#include "tests/support/Paths.h"
#include "tests/support/TempFolder.h"
#include "timeline/FilmsMainCtrl.h"

#include <filesystem>
#include <memory>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

const std::string kShipped = SourceFolder() + "/host/stage/data/DefaultKeysParams.fkd";
constexpr const char* kDefaults = "DefaultKeysParams.fkd";

/// Main controls without a window. The test editor looks for data files in the working directory.
class MainCtrlKeysParamsTest : public PluginTest {
protected:
    MainCtrlKeysParamsTest() : home(std::filesystem::current_path()) {
        std::filesystem::current_path(folder.Path());
        std::filesystem::copy_file(kShipped, kDefaults);
    }
    ~MainCtrlKeysParamsTest() override { std::filesystem::current_path(home); }

    const std::filesystem::path home;
    TempFolder folder;
};

TEST_F(MainCtrlKeysParamsTest, ControlStartsWithTheFileOfTheDataFolder) {
    const CFilmsMainCtrl control(plugin);
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_EQ(control.GetKeyParams(0)->name, "Camera keys");
    EXPECT_EQ(control.GetKeyParams(0)->normalColor, RGB(106, 168, 222));
    EXPECT_EQ(control.GetKeyParams(19)->name, "FOV keys");
    EXPECT_EQ(control.GetKeyParams(20), nullptr);
    EXPECT_EQ(control.GetKeyParams(-1), nullptr);
}

TEST_F(MainCtrlKeysParamsTest, ControlStartsWithBuiltInValuesAfterOneMessage) {
    std::filesystem::remove(kDefaults);
    const CFilmsMainCtrl control(plugin);
    EXPECT_THAT(boxes, ElementsAre("File DefaultKeysParams.fkd is corrupt or was deleted"));
    for (int kind = 0; kind < KeyKind::FilterCount; ++kind) {
        EXPECT_EQ(control.GetKeyParams(kind)->rectHeight, 15);
        EXPECT_EQ(control.GetKeyParams(kind)->normalColor, 0x808080u);
        EXPECT_EQ(control.GetKeyParams(kind)->highlightColor, 0xC0C0C0u);
        EXPECT_TRUE(control.GetKeyParams(kind)->visible);
    }
    EXPECT_EQ(control.GetKeyParams(1)->name, "Animation keys");
}

TEST_F(MainCtrlKeysParamsTest, SavedParametersComeBackByImport) {
    CFilmsMainCtrl control(plugin);
    control.keyParams[4].rectHeight = 7;
    control.keyParams[4].visible = false;
    ASSERT_TRUE(control.SaveKeysParams("own.fkd"));
    CFilmsMainCtrl other(plugin);
    ASSERT_TRUE(other.ImportKeysParams("own.fkd"));
    EXPECT_EQ(other.keyParams[4].rectHeight, 7);
    EXPECT_FALSE(other.keyParams[4].visible);
    EXPECT_FALSE(other.ImportKeysParams("missing.fkd"));
    EXPECT_FALSE(other.ImportKeysParams(nullptr));
    EXPECT_FALSE(other.SaveKeysParams(""));
}

TEST_F(MainCtrlKeysParamsTest, ReloadGoesBackToTheDataFolder) {
    CFilmsMainCtrl control(plugin);
    control.keyParams[4].rectHeight = 7;
    control.Reset();
    EXPECT_EQ(control.keyParams[4].rectHeight, 15);
    EXPECT_THAT(boxes, IsEmpty());
}

TEST_F(MainCtrlKeysParamsTest, ControlMayGoWhileTheUserIsToldOfTheMissingFile) {
    auto control = std::make_unique<CFilmsMainCtrl>(plugin);
    std::filesystem::remove(kDefaults);
    Hooks().messageBox = [&](const std::string& text, UINT) {
        boxes.push_back(text);
        control.reset();
        return IDOK;
    };
    control->Reset();
    EXPECT_EQ(control, nullptr);
    EXPECT_THAT(boxes, ElementsAre("File DefaultKeysParams.fkd is corrupt or was deleted"));
}

TEST_F(MainCtrlKeysParamsTest, LoadingElsewhereLeavesTheControl) {
    CFilmsMainCtrl control(plugin);
    control.keyParams[4].rectHeight = 7;
    KeyKindParamsTable asked;
    ASSERT_TRUE(control.LoadKeysParams(kDefaults, &asked));
    control.LoadDefaultKeysParams(&asked);
    EXPECT_EQ(asked[4].name, "FX trace keys");
    EXPECT_EQ(control.keyParams[4].rectHeight, 7);
}

} // namespace
