#include "host/engine/ByteStream.h"
#include "tests/engine/LevelFileFixture.h"

#include <functional>

namespace engine_test {

namespace LevelChunk = engine::LevelChunk;

class ObjectNotesTest : public LevelFileBase {
protected:
    ObjectNotesTest() { level.SetChunkClient(nullptr); }

    engine::SceneObject* Make(const std::string& name, const engine::ObjectNotes& notes) {
        engine::ObjectSpec spec;
        spec.className = "EmptyObject";
        spec.name = name;
        spec.notes = notes;
        return level.CreateObject(spec);
    }
    static int Count(const std::string& bytes, std::uint16_t id) {
        int count = 0;
        const std::function<void(std::string_view)> walk = [&](std::string_view container) {
            engine::ChunkCursor cursor(container, 0);
            for (engine::FoundChunk chunk; cursor.Next(chunk);) {
                count += chunk.id == id ? 1 : 0;
                if (chunk.id == LevelChunk::Level || chunk.id == LevelChunk::Objects ||
                    chunk.id == LevelChunk::Object) {
                    walk(chunk.data);
                }
            }
        };
        walk(bytes);
        return count;
    }
};

TEST_F(ObjectNotesTest, ASaveKeepsThem) {
    const engine::ObjectNotes notes{true, 0.75f, "Stairs, \u00e4 la carte"};
    Make("Label", notes);
    EXPECT_TRUE(Reload().empty());
    ASSERT_NE(level.FindObject("Label"), nullptr);
    EXPECT_EQ(level.FindObject("Label")->notes, notes);
}

TEST_F(ObjectNotesTest, AnObjectThatHasNoneIsSavedAsEver) {
    Make("Plain", {});
    EXPECT_EQ(Count(Saved(), LevelChunk::ObjectNotes), 0);
    Make("Locked", {true, 0.0f, ""});
    EXPECT_EQ(Count(Saved(), LevelChunk::ObjectNotes), 1);
}

TEST_F(ObjectNotesTest, AnAngleThatNobodyCanLookWithIsTheUsualOne) {
    EXPECT_FLOAT_EQ((engine::ObjectNotes{false, 0.0f, ""}.Angle()), 1.0471976f);
    EXPECT_FLOAT_EQ((engine::ObjectNotes{false, 4.0f, ""}.Angle()), 1.0471976f);
    EXPECT_FLOAT_EQ((engine::ObjectNotes{false, std::numeric_limits<float>::quiet_NaN(), ""}.Angle()),
                    1.0471976f);
    EXPECT_FLOAT_EQ((engine::ObjectNotes{false, 0.5f, ""}.Angle()), 0.5f);
}

} // namespace engine_test
