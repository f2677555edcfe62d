#include "framework/Resource.h"

#include "framework/Gdi.h"
#include "framework/Menu.h"
#include "framework/ToolBar.h"
#include "TestResources.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <vector>

namespace {

using Bytes = std::vector<std::byte>;

void Put(Bytes& out, std::uint64_t value, int size) {
    for (int i = 0; i < size; ++i) {
        out.push_back(static_cast<std::byte>(value >> (8 * i)));
    }
}

// One record of the compiled form, with type and name as numbers.
void PutRecord(Bytes& out, UINT type, UINT id, const Bytes& data) {
    Put(out, data.size(), 4);
    Put(out, 32, 4);
    Put(out, 0xFFFF | type << 16, 4);
    Put(out, 0xFFFF | id << 16, 4);
    out.resize(out.size() + 16);
    out.insert(out.end(), data.begin(), data.end());
    while (out.size() % 4 != 0) {
        out.push_back(std::byte{});
    }
}

TEST(ResourceTest, SameNumberNamesDifferentThings) {
    const ResourceScope scope(TestResources());
    EXPECT_FALSE(FindResource(TestResources(), RT_BITMAP, 1757).empty());
    EXPECT_FALSE(FindResource(TestResources(), RT_TOOLBAR, 1757).empty());
    EXPECT_TRUE(FindResource(TestResources(), RT_MENU, 1757).empty());
    EXPECT_EQ(LoadString(36820), "Play movie");
}

TEST(ResourceTest, StringsComeByNumberAndMissingOnesAreEmpty) {
    std::string text = "old";
    EXPECT_TRUE(LoadString(TestResources(), 36838, text));
    EXPECT_EQ(text, "Undo");
    EXPECT_FALSE(LoadString(TestResources(), 36821, text));
    EXPECT_EQ(text, "");
    EXPECT_FALSE(LoadString(TestResources(), 7, text));
    EXPECT_FALSE(LoadString(nullptr, 36838, text));
}

TEST(ResourceTest, ScopeSwitchesTheModuleAndBack) {
    ASSERT_EQ(AfxGetResourceHandle(), nullptr);
    {
        const ResourceScope outer(TestResources());
        EXPECT_EQ(AfxGetResourceHandle(), TestResources());
        const ResourceScope inner(nullptr);
        EXPECT_EQ(LoadString(36838), "");
    }
    EXPECT_EQ(AfxGetResourceHandle(), nullptr);
}

TEST(ResourceTest, BitmapKeepsSizeColoursAndAlpha) {
    const ResourceScope scope(TestResources());
    CBitmap bitmap;
    ASSERT_TRUE(bitmap.LoadBitmap(1757));
    BITMAP info;
    bitmap.GetBitmap(&info);
    EXPECT_EQ(info.bmWidth, 48);
    EXPECT_EQ(info.bmHeight, 16);
    EXPECT_FALSE(bitmap.LoadBitmap(1));
}

TEST(ResourceTest, MenusOfBothVersionsRead) {
    const ResourceScope scope(TestResources());
    CMenu menu;
    ASSERT_TRUE(menu.LoadMenu(1752));
    CMenu* main = menu.GetSubMenu(0);
    ASSERT_NE(main, nullptr);
    EXPECT_EQ(main->GetMenuItemCount(), 5U);
    EXPECT_EQ(main->GetMenuItemID(0), 36797U);
    EXPECT_EQ(main->GetMenuState(36820, MF_BYCOMMAND), MF_GRAYED);
    EXPECT_EQ(main->GetMenuItemID(2), 0U);
    EXPECT_EQ(main->GetMenuItemID(3), 0xFFFFFFFFU);
    EXPECT_EQ(main->GetMenuState(36854, MF_BYCOMMAND), MF_CHECKED);
    CMenu extended;
    ASSERT_TRUE(extended.LoadMenu(1753));
    std::string text;
    extended.GetMenuString(12, text, MF_BYCOMMAND);
    EXPECT_EQ(text, "Second");
    EXPECT_EQ(extended.GetMenuState(12, MF_BYCOMMAND), MF_CHECKED);
}

TEST(ResourceTest, EveryTruncationFailsCleanly) {
    const auto menuBytes = FindResource(TestResources(), RT_MENU, 1752);
    const auto bitmapBytes = FindResource(TestResources(), RT_BITMAP, 1757);
    const auto barBytes = FindResource(TestResources(), RT_TOOLBAR, 1757);
    for (std::size_t cut = 0; cut < bitmapBytes.size(); cut += cut < 200 ? 1 : 97) {
        Bytes file;
        const auto part = [cut](std::span<const std::byte> all) {
            const auto kept = all.first(std::min(cut, all.size()));
            return Bytes(kept.begin(), kept.end());
        };
        PutRecord(file, RT_MENU, 1, part(menuBytes));
        PutRecord(file, RT_BITMAP, 1, part(bitmapBytes));
        PutRecord(file, RT_TOOLBAR, 1, part(barBytes));
        PutRecord(file, RT_STRING, 1, part(FindResource(TestResources(), RT_STRING, 36838 / 16 + 1)));
        const ResourceModule module(file);
        EXPECT_TRUE(module.IsValid());
        const ResourceScope scope(&module);
        CMenu menu;
        EXPECT_EQ(menu.LoadMenu(1), cut >= menuBytes.size());
        CBitmap bitmap;
        EXPECT_FALSE(bitmap.LoadBitmap(1));
        CToolBar bar;
        bar.LoadToolBar(1);
        EXPECT_EQ(bar.GetButtonCount(), cut >= barBytes.size() ? 4 : 0);
        for (UINT id = 0; id < 16; ++id) {
            LoadString(id);
        }
    }
}

TEST(ResourceTest, DamagedFileKeepsWhatStandsBeforeTheDamage) {
    Bytes file;
    PutRecord(file, RT_STRING, 1, {std::byte{1}, std::byte{0}, std::byte{'A'}, std::byte{0}});
    Put(file, 0xFFFFFFFF, 4);
    Put(file, 32, 4);
    const ResourceModule module(file);
    EXPECT_FALSE(module.IsValid());
    std::string text;
    EXPECT_TRUE(LoadString(&module, 0, text));
    EXPECT_EQ(text, "A");
}

TEST(ResourceTest, RandomDamageNeverCrashes) {
    Bytes file;
    for (const auto& [type, id] :
         {std::pair{RT_MENU, 1752U}, {RT_MENU, 1753U}, {RT_BITMAP, 1757U}, {RT_TOOLBAR, 1757U}}) {
        const auto bytes = FindResource(TestResources(), type, id);
        PutRecord(file, type, id, Bytes(bytes.begin(), bytes.end()));
    }
    std::mt19937 random(5);
    for (int round = 0; round < 2000; ++round) {
        Bytes damaged = file;
        for (int i = 0; i < 4; ++i) {
            damaged[random() % damaged.size()] = static_cast<std::byte>(random());
        }
        const ResourceModule module(damaged);
        const ResourceScope scope(&module);
        CMenu menu;
        menu.LoadMenu(1752);
        menu.LoadMenu(1753);
        CBitmap bitmap;
        bitmap.LoadBitmap(1757);
        CToolBar bar;
        bar.LoadToolBar(1757);
        EXPECT_LE(bar.GetButtonCount(), 65535);
    }
}

TEST(ResourceTest, MenuNestedWithoutEndIsRefused) {
    Bytes menu;
    Put(menu, 0, 4);
    for (int i = 0; i < 5000; ++i) {
        Put(menu, MF_POPUP | 0x80, 2);
        Put(menu, 'x', 2);
        Put(menu, 0, 2);
    }
    Bytes file;
    PutRecord(file, RT_MENU, 1, menu);
    const ResourceModule module(file);
    const ResourceScope scope(&module);
    CMenu loaded;
    EXPECT_FALSE(loaded.LoadMenu(1));
}

} // namespace
