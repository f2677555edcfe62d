#include "host/engine/ChunkClient.h"
#include "host/engine/LevelFile.h"
#include "tests/plugin/PluginFixture.h"
#include "tests/support/Paths.h"
#include "tests/support/TempFolder.h"

#include <random>

namespace {

/// The sample level, damaged, is opened with the plug-in, played a little, and saved.
class SampleLevelDamageTest : public PluginTest {
protected:
    SampleLevelDamageTest() : sample(ReadWholeFile(SampleFolder() + "/harbour.level")) {
        client.plugins = {&plugin};
        editor.level.SetChunkClient(&client);
    }
    ~SampleLevelDamageTest() override { editor.level.SetChunkClient(nullptr); }

    /// False if the file was refused; then the open level is as it was.
    bool Open(std::string bytes) {
        const std::size_t objects = editor.level.Data()->Objects().size();
        try {
            engine::PendingLevel pending =
                engine::ParseLevel(editor.level, "damaged.level", std::move(bytes));
            plugin.OnNew();
            engine::InstallLevel(editor.level, std::move(pending));
        } catch (const engine::LevelFileError& error) {
            EXPECT_FALSE(error.reason.empty());
            EXPECT_EQ(error.path, "damaged.level");
            EXPECT_EQ(editor.level.Data()->Objects().size(), objects);
            return false;
        }
        plugin.OnEvent(EventCode::LevelLoaded, nullptr);
        return true;
    }
    void UseAndSave() {
        plugin.SelectFilmByIndex(0);
        plugin.SetTime(5.0f, false);
        plugin.SetCurrentFilm(nullptr);
        engine::LevelMessages messages;
        engine::SerializeLevel(editor.level, "damaged.level", messages);
    }

    std::string sample;
    engine::PluginChunkClient client;
};

} // namespace

TEST_F(SampleLevelDamageTest, WholeSampleOpensWithItsLights) {
    ASSERT_TRUE(Open(sample));
    EXPECT_EQ(plugin.lightHelpers.helpers.size(), 3u);
    EXPECT_NE(Films().films[0], nullptr);
    EXPECT_NE(Films().films[1], nullptr);
}

TEST_F(SampleLevelDamageTest, SampleCutAtAnyByteIsRefusedOrOpened) {
    int refused = 0;
    for (std::size_t length = 0; length < sample.size(); ++length) {
        refused += Open(sample.substr(0, length)) ? 0 : 1;
    }
    EXPECT_GT(refused, 0);
    ASSERT_TRUE(Open(sample));
    UseAndSave();
}

TEST_F(SampleLevelDamageTest, RandomFlipsAreSurvived) {
    std::mt19937 random(20261120);
    int opened = 0;
    for (int round = 0; round < 1500; ++round) {
        std::string bytes = sample;
        for (unsigned flips = 1 + random() % 8; flips > 0; --flips) {
            bytes[random() % bytes.size()] ^= static_cast<char>(1u << (random() % 8));
        }
        if (Open(bytes)) {
            ++opened;
            UseAndSave();
        }
    }
    EXPECT_GT(opened, 0);
}
