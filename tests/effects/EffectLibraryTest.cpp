#include "host/stage/effects/EffectLibrary.h"
#include "host/stage/effects/EffectSimulation.h"
#include "tests/support/Paths.h"
#include "tests/support/TempFolder.h"

#include <cmath>
#include <filesystem>
#include <gtest/gtest.h>
#include <QByteArray>
#include <random>

namespace {

using stage::EffectKind;
using stage::EffectLibrary;

class EffectLibraryTest : public testing::Test {
protected:
    void Write(const std::string& name, const std::string& text) const {
        const std::string path = folder.File(name.c_str());
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        WriteWholeFile(path, text);
    }

    const TempFolder folder;
    const EffectLibrary library{{folder.File("own"), "", folder.File("shipped")}};
};

TEST_F(EffectLibraryTest, NamesOfAllFoldersAreListedOnceInOrder) {
    Write("shipped/rain/Snow.fx.json", "{}");
    Write("shipped/rain/Hail.fx.json", "{}");
    Write("shipped/rain/readme.txt", "");
    Write("shipped/rain/LOUD.FX.JSON", "{}");
    Write("shipped/rain/.fx.json", "{}");
    Write("shipped/blind/Black.fx.json", "{}");
    Write("own/rain/ash.fx.json", "{}");
    Write("own/rain/Snow.fx.json", "{}");
    EXPECT_EQ(library.Names(EffectKind::Rain), (std::vector<std::string>{"ash", "Hail", "Snow"}));
    EXPECT_EQ(library.Names(EffectKind::Trace), std::vector<std::string>());
}

TEST_F(EffectLibraryTest, TheLevelsOwnEffectGoesBeforeTheShippedOne) {
    Write("shipped/blind/Black.fx.json", R"({"fadeIn":1})");
    EXPECT_EQ(std::get<stage::BlindEffect>(library.Load(EffectKind::Blind, "Black").looks).fadeIn, 1.0f);
    Write("own/blind/Black.fx.json", R"({"fadeIn":2})");
    EXPECT_EQ(std::get<stage::BlindEffect>(library.Load(EffectKind::Blind, "Black").looks).fadeIn, 2.0f);
}

TEST_F(EffectLibraryTest, ABrokenEffectOfTheLevelIsToldAndNotHiddenByTheShippedOne) {
    Write("shipped/blind/Black.fx.json", "{}");
    Write("own/blind/Black.fx.json", "{");
    EXPECT_THROW(library.Load(EffectKind::Blind, "Black"), stage::EffectFileError);
}

TEST_F(EffectLibraryTest, ANameThatNobodyHasIsTold) {
    try {
        library.Load(EffectKind::Rain, "Frogs");
        FAIL();
    } catch (const stage::EffectFileError& error) {
        EXPECT_STREQ(error.what(), "Frogs: no rain effect of that name");
    }
}

TEST_F(EffectLibraryTest, NamesDontLeadOutOfTheFolder) {
    Write("shipped/rain/Hail.fx.json", "{}");
    Write("shipped/blind/Black.fx.json", "{}");
    Write("own/secret.fx.json", "{}");
    EXPECT_EQ(library.PathOf(EffectKind::Rain, "../blind/Black"), "");
    EXPECT_EQ(library.PathOf(EffectKind::Rain, "../secret"), "");
    EXPECT_EQ(library.PathOf(EffectKind::Rain, folder.File("own/secret")), "");
    EXPECT_EQ(library.PathOf(EffectKind::Rain, ""), "");
    EXPECT_EQ(library.PathOf(EffectKind::Rain, std::string("Hail.fx.json\0", 13)), "");
    EXPECT_EQ(library.PathOf(EffectKind::Rain, "Hail"), folder.File("shipped/rain/Hail.fx.json"));
    EXPECT_EQ(library.PathOf(EffectKind::Rain, std::string(5000, 'x')), "");
}

TEST(ShippedEffectsTest, EachKindHasSixThatCanBeReadAndShowSomething) {
    const EffectLibrary shipped({SourceFolder() + "/host/stage/data/effects"});
    for (int code = 1; code <= stage::kEffectKinds; ++code) {
        EffectKind kind = EffectKind::Sequence;
        ASSERT_TRUE(stage::EffectKindOf(code, kind));
        const std::vector<std::string> names = shipped.Names(kind);
        EXPECT_EQ(names.size(), 6u) << stage::EffectKindName(kind);
        for (const std::string& name : names) {
            const stage::EffectSimulation simulation(shipped.Load(kind, name), 1);
            EXPECT_NE(simulation.TheEffect().about, "") << name;
            // Both would be empty or clear for an effect that nobody can see.
            EXPECT_TRUE(!simulation.At(0.3f).empty() || simulation.Screen(1.0f, 2.0f).a > 0.0f) << name;
        }
    }
}

TEST(ShippedEffectsTest, DamagedFilesAreRefusedOrShowNoMoreThanAnyFileMay) {
    const EffectLibrary shipped({SourceFolder() + "/host/stage/data/effects"});
    std::mt19937 random(20261122);
    int refused = 0;
    int shown = 0;
    for (int round = 0; round < 6000; ++round) {
        EffectKind kind = EffectKind::Sequence;
        ASSERT_TRUE(stage::EffectKindOf(1 + round % stage::kEffectKinds, kind));
        const std::vector<std::string> names = shipped.Names(kind);
        QByteArray bytes =
            QByteArray::fromStdString(ReadWholeFile(shipped.PathOf(kind, names[random() % names.size()])));
        for (unsigned changes = 1 + random() % 3; changes > 0; --changes) {
            constexpr char kCharacters[] = "0123456789-.eE,:[]{}\"#x";
            bytes[static_cast<qsizetype>(random() % static_cast<unsigned>(bytes.size()))] =
                kCharacters[random() % (sizeof(kCharacters) - 1)];
        }
        try {
            const stage::EffectSimulation simulation(stage::EffectFile::Parse(kind, bytes, "x"), 1);
            for (const stage::EffectSprite& sprite : simulation.At(1.0f)) {
                EXPECT_TRUE(std::isfinite(sprite.place.x + sprite.place.y + sprite.place.z + sprite.size));
            }
            EXPECT_LE(simulation.At(1.0f).size(), 5001u);
            ++shown;
        } catch (const stage::EffectFileError&) {
            ++refused;
        }
    }
    EXPECT_GT(refused, 0);
    EXPECT_GT(shown, 0);
}

} // namespace
