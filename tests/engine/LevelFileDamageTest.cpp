#include "tests/engine/LevelFileFixture.h"

#include "host/engine/ByteStream.h"

#include <gmock/gmock.h>

#include <limits>
#include <random>

namespace engine_test {

using engine::AppendChunk;
using engine::LevelFileError;
using engine::LevelMessages;
namespace LevelChunk = engine::LevelChunk;
using ::testing::HasSubstr;

/// Level files that are cut, flipped or made up with intent.
class LevelFileDamageTest : public LevelFileBase {
protected:
    /// Opens what may be damaged and uses what came of it. True if it was opened.
    bool OpenAndUse(const std::string& bytes) {
        try {
            Load(bytes);
        } catch (const LevelFileError& error) {
            EXPECT_FALSE(error.reason.empty());
            EXPECT_LE(error.offset, static_cast<std::int64_t>(bytes.size()));
            return false;
        }
        for (IFilm* each : Films().films) {
            if (each != nullptr) {
                each->Activate();
                each->SetTime(1.0f, 0.5f);
                each->Stop();
            }
        }
        for (const auto& object : level.Data()->Objects()) {
            object->SetMatrix(engine::Matrix4{}.m, 0);
        }
        // What was opened can be saved and opened again.
        const std::string again = Saved();
        Load(again);
        EXPECT_EQ(Saved().size(), again.size());
        return true;
    }
    /// A level file of a header and these chunks.
    static std::string LevelOf(const std::string& chunks) {
        std::string header;
        engine::ByteWriter out(header);
        out.U32(engine::kLevelVersion);
        out.I32(1);
        std::string inner;
        AppendChunk(inner, LevelChunk::Header, header);
        inner += chunks;
        std::string bytes;
        AppendChunk(bytes, LevelChunk::Level, inner);
        return bytes;
    }
    /// An object's chunk.
    static std::string ObjectBytes(int id, int parentId, const std::string& name) {
        std::string core;
        engine::ByteWriter out(core);
        out.I32(id);
        out.I32(0);
        out.I32(parentId);
        out.U32(0);
        out.U8(1);
        out.U8(1);
        out.Text("MeshObject");
        out.Text(name);
        out.Text("");
        out.Floats(engine::Matrix4{}.m, 16);
        std::string parts;
        AppendChunk(parts, LevelChunk::ObjectCore, core);
        std::string bytes;
        AppendChunk(bytes, LevelChunk::Object, parts);
        return bytes;
    }
    static std::string ObjectsOf(const std::string& objects) {
        std::string bytes;
        AppendChunk(bytes, LevelChunk::Objects, objects);
        return bytes;
    }
};

TEST_F(LevelFileDamageTest, FileCutAtAnyByteIsRefused) {
    client.rootText = "root";
    client.objectText = "object";
    MakeSample();
    const std::string bytes = Saved();
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        EXPECT_THROW(engine::ParseLevel(level, "cut", bytes.substr(0, length)), LevelFileError) << length;
    }
    EXPECT_TRUE(OpenAndUse(bytes));
}

TEST_F(LevelFileDamageTest, EachFlippedByteIsSurvived) {
    MakeSample();
    const std::string bytes = Saved();
    level.SetChunkClient(nullptr);
    int opened = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        std::string flipped = bytes;
        flipped[i] = static_cast<char>(~flipped[i]);
        opened += OpenAndUse(flipped) ? 1 : 0;
    }
    EXPECT_GT(opened, 0);
    EXPECT_LT(opened, static_cast<int>(bytes.size()));
}

TEST_F(LevelFileDamageTest, RandomDamageIsSurvived) {
    client.rootText = "root";
    client.objectText = "object";
    MakeSample();
    const std::string bytes = Saved();
    std::mt19937 random(20061);
    for (int round = 0; round < 1500; ++round) {
        std::string damaged = bytes;
        for (unsigned hits = 1 + random() % 8; hits > 0; --hits) {
            damaged[random() % damaged.size()] = static_cast<char>(random());
        }
        OpenAndUse(damaged);
    }
    EXPECT_TRUE(OpenAndUse(bytes));
}

TEST_F(LevelFileDamageTest, DamagedObjectCostsThatObjectAndAMessage) {
    std::string bad;
    AppendChunk(bad, LevelChunk::Object, "\xFF\xFF no chunks");
    const LevelMessages messages =
        Load(LevelOf(ObjectsOf(ObjectBytes(1, 0, "A") + bad + ObjectBytes(2, 0, "B"))));
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_THAT(messages[0], HasSubstr("test.level: an object is left out"));
    EXPECT_THAT(messages[0], HasSubstr("at byte "));
    EXPECT_NE(level.FindObject("A"), nullptr);
    EXPECT_NE(level.FindObject("B"), nullptr);
    EXPECT_EQ(level.Data()->Objects().size(), 2u);
}

TEST_F(LevelFileDamageTest, ObjectWithoutADescriptionIsLeftOut) {
    std::string empty;
    AppendChunk(empty, LevelChunk::Object, "");
    EXPECT_EQ(Load(LevelOf(ObjectsOf(empty))).size(), 1u);
    EXPECT_TRUE(level.Data()->Objects().empty());
}

TEST_F(LevelFileDamageTest, RingsOfParentsAreCutAndTold) {
    const LevelMessages messages =
        Load(LevelOf(ObjectsOf(ObjectBytes(1, 2, "A") + ObjectBytes(2, 1, "B") + ObjectBytes(3, 3, "Self"))));
    EXPECT_EQ(messages.size(), 2u);
    EXPECT_THAT(messages[0], HasSubstr("\"A\" hangs on itself"));
    EXPECT_EQ(level.FindObject("A")->parent, nullptr);
    EXPECT_EQ(level.FindObject("B")->parent, level.FindObject("A"));
    EXPECT_EQ(level.FindObject("Self")->parent, nullptr);
}

TEST_F(LevelFileDamageTest, ChainsOfParentsHaveALimit) {
    std::string chain;
    for (int i = 1; i <= 5000; ++i) {
        chain += ObjectBytes(i, i + 1, "Link"); // each hangs on the next
    }
    Load(LevelOf(ObjectsOf(chain)));
    EXPECT_EQ(level.Data()->Objects().size(), 5000u);
    for (const auto& object : level.Data()->Objects()) {
        int depth = 0;
        for (const EditorObject* above = object.get(); above != nullptr; above = above->parent) {
            ++depth;
        }
        ASSERT_LE(depth, engine::LevelData::kDeepestChild + 1);
    }
    level.FindObject(5000)->SetMatrix(engine::Matrix4{}.m, 0);
}

TEST_F(LevelFileDamageTest, DoubledAndWildIdsBecomeFreshOnes) {
    const int last = std::numeric_limits<int>::max();
    Load(LevelOf(ObjectsOf(ObjectBytes(last, 0, "A") + ObjectBytes(last, 0, "B") + ObjectBytes(-5, 0, "C") +
                           ObjectBytes(0, 0, "D"))));
    EXPECT_EQ(level.Data()->Objects().size(), 4u);
    EXPECT_EQ(level.FindObject(last)->name, "A");
    for (const auto& object : level.Data()->Objects()) {
        EXPECT_GT(object->id, 0);
        EXPECT_EQ(level.FindObject(object->id), object.get());
    }
    EXPECT_GT(MakeObject("E").id, 0);
}

TEST_F(LevelFileDamageTest, MissingObjectsOfTracksAreTold) {
    MakeObject("A");
    AddActor(*level.FindObject("A"));
    engine::LevelMessages none;
    level.FindObject("A")->transient = true; // not written, as if somebody had cut it out
    const LevelMessages messages = Reload();
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_THAT(messages[0], HasSubstr("Film \"Test\": A track drives object"));
    EXPECT_EQ(AsObjectTrack(Films().FilmAt(0)->tracks.back())->actor, nullptr);
}

TEST_F(LevelFileDamageTest, CountsBeyondTheFileCostNoMemory) {
    std::string groups;
    engine::ByteWriter out(groups);
    out.U32(0xFFFFFFFFu);
    std::string chunks;
    AppendChunk(chunks, LevelChunk::Groups, groups);
    AppendChunk(chunks, LevelChunk::Views, groups);
    EXPECT_EQ(Load(LevelOf(chunks)).size(), 2u);
    EXPECT_TRUE(level.Data()->Groups().empty());
    EXPECT_TRUE(level.Data()->savedViews.empty());
}

TEST_F(LevelFileDamageTest, DamagedKeysCostTheirKindOnly) {
    CFilmObjectTrack& track = AddActor(MakeObject("A"));
    AddVector(track, KeyKind::Position, 0.0f, {123456.0f, 0.0f, 0.0f});
    AddVector(track, KeyKind::Rotation, 0.0f, {1.0f, 2.0f, 3.0f});
    std::string bytes = Saved();
    const float mark = 123456.0f;
    std::string pattern(sizeof mark, '\0');
    std::memcpy(pattern.data(), &mark, sizeof mark);
    // The count stands in front of the key's marks and time.
    bytes[bytes.find(pattern) - 9] = 7;
    const LevelMessages messages = Load(bytes);
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_THAT(messages[0], HasSubstr("keys of kind 10"));
    CFilmTrack& back = *Films().FilmAt(0)->tracks.back();
    ASSERT_EQ(back.keys.size(), 1u);
    EXPECT_EQ(back.keys.front()->kind, KeyKind::Rotation);
}

TEST_F(LevelFileDamageTest, TwoFilmsOfOneSlotLeaveTheFirst) {
    const std::string bytes = Saved();
    const std::size_t at = bytes.find("Test");
    ASSERT_NE(at, std::string::npos);
    std::string films;
    // The film's chunk begins 6 bytes for itself, 6 for its head, 2 for the slot and 4 for the length before.
    const std::size_t begin = at - 18;
    std::uint32_t size = 0;
    std::memcpy(&size, bytes.data() + begin + 2, sizeof size);
    const std::string film0 = bytes.substr(begin, size + 6);
    AppendChunk(films, LevelChunk::Films, film0 + film0);
    const LevelMessages messages = Load(LevelOf(films));
    EXPECT_EQ(messages.size(), 1u);
    EXPECT_STREQ(Films().GetFilm(0)->name, "Test");
}

TEST_F(LevelFileDamageTest, FileWithoutHeaderOrOfAnotherKindIsRefused) {
    std::string noHeader;
    AppendChunk(noHeader, LevelChunk::Level, "");
    EXPECT_FALSE(OpenAndUse(noHeader));
    std::string other;
    AppendChunk(other, 1, "");
    EXPECT_FALSE(OpenAndUse(other));
    EXPECT_FALSE(OpenAndUse(""));
    EXPECT_TRUE(OpenAndUse(LevelOf("")));
}

} // namespace engine_test
