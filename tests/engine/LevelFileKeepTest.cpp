#include "tests/engine/LevelFileFixture.h"

#include "host/engine/ByteStream.h"

#include <gmock/gmock.h>

#include <functional>
#include <initializer_list>
#include <sys/stat.h>

namespace engine_test {

using engine::AppendChunk;
using engine::LevelMessages;
namespace LevelChunk = engine::LevelChunk;
using ::testing::HasSubstr;

/// Level files of a newer program, with parts that this one does not know.
class LevelFileKeepTest : public LevelFileBase {
protected:
    LevelFileKeepTest() { level.SetChunkClient(nullptr); }

    using Change = std::function<std::string(std::string)>;

    /// The container with the data of the first chunk of the first id, and so on inwards, changed.
    static std::string Changed(std::string_view container, std::vector<std::uint16_t> ids,
                               const Change& change) {
        if (ids.empty()) {
            return change(std::string(container));
        }
        const std::uint16_t wanted = ids.front();
        ids.erase(ids.begin());
        std::string bytes;
        bool found = false;
        engine::ChunkCursor cursor(container, 0);
        for (engine::FoundChunk chunk; cursor.Next(chunk);) {
            const bool isWanted = chunk.id == wanted && !found;
            found = found || isWanted;
            AppendChunk(bytes, chunk.id,
                        isWanted ? Changed(chunk.data, ids, change) : std::string(chunk.data));
        }
        EXPECT_TRUE(found) << wanted;
        return bytes;
    }
    static std::string Unknown(const std::string& text) {
        std::string bytes;
        AppendChunk(bytes, 6999, text);
        return bytes;
    }
    /// Puts unknown chunks in front of all parts of a container and behind them.
    static std::string Wrapped(const std::string& parts) {
        return Unknown("in front") + parts + Unknown("behind");
    }
    /// Opens the sample with six more bytes at the end of a part, and the messages of it.
    LevelMessages LoadWithSixMore(std::vector<std::uint16_t> ids) {
        MakeSample();
        return Load(
            Changed(Saved(), std::move(ids), [](const std::string& data) { return data + "newer!"; }));
    }
};

TEST_F(LevelFileKeepTest, UnknownChunksInAFilmAreWrittenBackWhereTheyStood) {
    MakeSample();
    const std::string bytes =
        Changed(Saved(), {LevelChunk::Level, LevelChunk::Films, LevelChunk::Film}, Wrapped);
    EXPECT_TRUE(Load(bytes).empty());
    EXPECT_TRUE(Saved() == bytes);
}

TEST_F(LevelFileKeepTest, UnknownChunksInATrackAreWrittenBackWhereTheyStood) {
    MakeSample();
    const std::string bytes = Changed(
        Saved(), {LevelChunk::Level, LevelChunk::Films, LevelChunk::Film, LevelChunk::Track}, Wrapped);
    EXPECT_TRUE(Load(bytes).empty());
    EXPECT_TRUE(Saved() == bytes);
}

TEST_F(LevelFileKeepTest, BytesBehindTheLevelAreWrittenBack) {
    MakeSample();
    const std::string bytes = Saved() + "a signature, or whatever a tool has put here";
    EXPECT_TRUE(Load(bytes).empty());
    EXPECT_TRUE(Saved() == bytes);
    level.New("");
    EXPECT_EQ(Saved().find("a signature"), std::string::npos);
}

TEST_F(LevelFileKeepTest, ASecondHeadOfAFilmIsKeptAndDoesNotCount) {
    MakeSample();
    std::string second;
    AppendChunk(second, LevelChunk::FilmHead, "whatever it says");
    const std::string bytes = Changed(Saved(), {LevelChunk::Level, LevelChunk::Films, LevelChunk::Film},
                                      [&](const std::string& parts) { return parts + second; });
    EXPECT_TRUE(Load(bytes).empty());
    EXPECT_TRUE(Saved() == bytes);
}

TEST_F(LevelFileKeepTest, FieldsAppendedToAKnownPartAreToldBeforeASaveDropsThem) {
    const std::initializer_list<std::vector<std::uint16_t>> parts = {
        {LevelChunk::Header},
        {LevelChunk::Objects, LevelChunk::Object, LevelChunk::ObjectCore},
        {LevelChunk::Films, LevelChunk::Film, LevelChunk::FilmHead},
        {LevelChunk::Films, LevelChunk::Film, LevelChunk::Track, LevelChunk::TrackHead},
        {LevelChunk::Groups},
        {LevelChunk::Sun},
        {LevelChunk::Views},
    };
    for (std::vector<std::uint16_t> part : parts) {
        level.New("");
        film = &Films().MakeFilm(0);
        film->AddTrack(film->CreateLevelTrack());
        part.insert(part.begin(), LevelChunk::Level);
        const LevelMessages messages = LoadWithSixMore(part);
        ASSERT_EQ(messages.size(), 1u) << part.back();
        EXPECT_THAT(messages[0], HasSubstr("ends with 6 bytes that this program does not know"))
            << part.back();
        EXPECT_THAT(messages[0], HasSubstr("test.level")) << part.back();
        EXPECT_NE(level.FindObject("Robot"), nullptr) << part.back();
        EXPECT_NE(Films().FilmAt(0), nullptr) << part.back();
        EXPECT_FALSE(Films().FilmAt(0)->Tracks().empty()) << part.back();
    }
}

TEST_F(LevelFileKeepTest, AFilmAndATrackWithoutAHeadAreTold) {
    MakeSample();
    std::string headless;
    AppendChunk(headless, LevelChunk::Film, Unknown("no head"));
    std::string track;
    AppendChunk(track, LevelChunk::Track, Unknown("no head either"));
    std::string bytes = Changed(Saved(), {LevelChunk::Level, LevelChunk::Films},
                                [&](const std::string& films) { return films + headless; });
    bytes = Changed(bytes, {LevelChunk::Level, LevelChunk::Films, LevelChunk::Film},
                    [&](const std::string& parts) { return parts + track; });
    const LevelMessages messages = Load(bytes);
    ASSERT_EQ(messages.size(), 2u);
    EXPECT_THAT(messages[0], HasSubstr("a track without a head"));
    EXPECT_THAT(messages[1], HasSubstr("a film without a head"));
}

TEST_F(LevelFileKeepTest, AFifoInPlaceOfALevelIsRefusedAtOnce) {
    ASSERT_EQ(mkfifo(Path("pipe.level").c_str(), 0600), 0);
    EXPECT_THROW(engine::LoadLevel(level, Path("pipe.level")), engine::LevelFileError);
    EXPECT_THROW(engine::LoadLevel(level, "/dev/zero"), engine::LevelFileError);
    EXPECT_NE(level.Data(), nullptr);
}

TEST_F(LevelFileKeepTest, ALevelOpenedByARelativePathHasAnAbsoluteFolder) {
    MakeSample();
    WriteFile("a.level", Saved());
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder);
    engine::LoadLevel(level, "a.level");
    EXPECT_EQ(level.Folder(), folder.string() + "/");
    engine::SaveLevel(level, "./b.level");
    std::filesystem::current_path(before);
    EXPECT_EQ(level.Folder(), folder.string() + "/");
}

} // namespace engine_test
