#include "files/base/Log.h"
#include "framework/Menu.h"
#include "framework/Resource.h"
#include "keys/views/NullTimeTrackKey.h"
#include "keys/views/TimedTrackKey.h"
#include "plugin/base/PluginResources.h"
#include "tests/keys/KeyFixture.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr UINT kKeyMenu = 1754;
constexpr UINT kSetDuration = 36817;
constexpr UINT kCalcDuration = 36832;
constexpr UINT kPasteAttributes = 36837;
constexpr UINT kGreyed = MF_GRAYED | MF_DISABLED;

std::vector<std::string> debugLines;

class KeyMenuTest : public KeyTest {
protected:
    KeyMenuTest() {
        const ResourceScope scope(PluginResources());
        source.LoadMenu(kKeyMenu);
        menu.CreatePopupMenu();
        debugLines.clear();
        SetLogListener([](const char* text) { debugLines.emplace_back(text); });
    }
    ~KeyMenuTest() override { SetLogListener(nullptr); }

    void Fill(IFilmKey* record) {
        CNullTimeTrackKey view;
        view.record = record;
        view.context = &timeline;
        view.FillKeyMenu(&menu, &source);
    }
    bool IsGreyed(UINT command) const {
        return (menu.GetMenuState(command, MF_BYCOMMAND) & kGreyed) == kGreyed;
    }
    /// Commands with a check mark, also those of sub-menus.
    std::vector<UINT> Checked() const {
        std::vector<UINT> checked;
        for (UINT command = 36797; command <= 36877; ++command) {
            const UINT state = menu.GetMenuState(command, MF_BYCOMMAND);
            if (state != 0xFFFFFFFF && (state & MF_CHECKED) != 0) {
                checked.push_back(command);
            }
        }
        return checked;
    }
    static std::vector<std::string> Texts(const CMenu& from) {
        std::vector<std::string> texts;
        for (const MenuItem& item : from.Items()) {
            texts.push_back((item.flags & MF_SEPARATOR) != 0 ? "-" : item.text);
        }
        return texts;
    }

    CMenu source;
    CMenu menu;
};

TEST_F(KeyMenuTest, OffersTheItemsOfTheResource) {
    Fill(NewRecord(KeyKind::Sound));
    EXPECT_THAT(Texts(menu), ElementsAre("Remove key", "Set position", "Set duration", "Calc key duration",
                                         "Copy attributes", "Paste attributes"));
}

TEST_F(KeyMenuTest, NothingIsFilledWithoutARecordOrAMenu) {
    Fill(nullptr);
    EXPECT_THAT(Texts(menu), IsEmpty());
    CNullTimeTrackKey view;
    view.record = NewRecord(KeyKind::Position);
    view.FillKeyMenu(nullptr, &source);
    view.FillKeyMenu(&menu, nullptr);
    EXPECT_THAT(Texts(menu), IsEmpty());
}

TEST_F(KeyMenuTest, PasteIsGreyedWhileNothingWasCopied) {
    Fill(NewRecord(KeyKind::Sound));
    EXPECT_TRUE(IsGreyed(kPasteAttributes));
}

TEST_F(KeyMenuTest, DurationsAreGreyedForAKeyWithoutOne) {
    LoggingKey record;
    record.kind = KeyKind::JavaMethod;
    record.flags = KeyFlag::NoDuration | KeyFlag::MayOverlap;
    record.natural = 3.0f;
    Fill(&record);
    EXPECT_TRUE(IsGreyed(kSetDuration));
    EXPECT_TRUE(IsGreyed(kCalcDuration));
}

TEST_F(KeyMenuTest, CalculationIsGreyedForAKeyWithoutANaturalDuration) {
    LoggingKey record;
    record.kind = KeyKind::Sound;
    record.natural = -1.0f;
    Fill(&record);
    EXPECT_FALSE(IsGreyed(kSetDuration));
    EXPECT_TRUE(IsGreyed(kCalcDuration));
}

TEST_F(KeyMenuTest, CalculationIsOfferedFromANaturalDurationOfZeroOn) {
    LoggingKey record;
    record.kind = KeyKind::Sound;
    record.natural = 0.0f;
    Fill(&record);
    EXPECT_FALSE(IsGreyed(kSetDuration));
    EXPECT_FALSE(IsGreyed(kCalcDuration));
}

class MethodMenuTest : public KeyMenuTest, public ::testing::WithParamInterface<int> {};

TEST_P(MethodMenuTest, BezierKindOffersItsTwoSetsOfMethods) {
    Fill(NewRecord(GetParam()));
    EXPECT_THAT(Texts(menu),
                ElementsAre("Remove key", "Set position", "Set duration", "Calc key duration",
                            "Copy attributes", "Paste attributes", "-", "In method", "Out method"));
    for (const int popup : {7, 8}) {
        EXPECT_THAT(Texts(*menu.GetSubMenu(popup)),
                    ElementsAre("Smooth", "Linear", "Slowdown", "Speedup", "User", "Inverse"));
    }
}

TEST_P(MethodMenuTest, MethodsOfTheRecordHaveACheckMark) {
    IFilmKey* record = NewRecord(GetParam());
    record->SetInMethod(BezierMethod::Inverse);
    record->SetOutMethod(BezierMethod::Slowdown);
    Fill(record);
    EXPECT_THAT(Checked(), ElementsAre(36861u, 36867u));
}

INSTANTIATE_TEST_SUITE_P(Kinds, MethodMenuTest, ::testing::Values(10, 11, 12, 14, 16, 17, 18, 19));

class NoMethodMenuTest : public KeyMenuTest, public ::testing::WithParamInterface<int> {};

TEST_P(NoMethodMenuTest, OtherKindsOfferNoMethods) {
    Fill(NewRecord(GetParam()));
    EXPECT_EQ(menu.GetMenuItemCount(), 6u);
    EXPECT_THAT(Checked(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Kinds, NoMethodMenuTest, ::testing::Values(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 13, 15));

TEST_F(KeyMenuTest, UnknownMethodIsNotCheckedAndSaidOnce) {
    auto* record = NewRecordOf<CFilmVectorKey>(KeyKind::Position);
    record->inMethod = 6;
    record->outMethod = BezierMethod::Linear;
    Fill(record);
    EXPECT_THAT(Checked(), ElementsAre(36860u));
    EXPECT_THAT(debugLines, ElementsAre("[CTrackKey::GetIDByMethod] unknown method\n"));
}

TEST_F(KeyMenuTest, TwoUnknownMethodsAreSaidTwice) {
    auto* record = NewRecordOf<CFilmScalarKey>(KeyKind::Roll);
    record->inMethod = -1;
    record->outMethod = 7;
    Fill(record);
    EXPECT_THAT(Checked(), IsEmpty());
    EXPECT_EQ(debugLines.size(), 2u);
}

TEST_F(KeyMenuTest, CheckMarksDoNotStayForTheNextMenu) {
    IFilmKey* record = NewRecord(KeyKind::Position);
    record->SetInMethod(BezierMethod::Linear);
    record->SetOutMethod(BezierMethod::Linear);
    Fill(record);
    menu.CreatePopupMenu();
    record->SetInMethod(BezierMethod::User);
    record->SetOutMethod(BezierMethod::User);
    Fill(record);
    EXPECT_THAT(Checked(), ElementsAre(36858u, 36863u));
}

// Copies of items.

class MenuCopyTest : public KeyMenuTest {
protected:
    MenuCopyTest() { from.CreateMenu(); }
    /// A menu with this popup as its first.
    void Wrap(const CMenu& popup) {
        from.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(popup.GetSafeHmenu()), "Popup");
    }

    CMenu from;
};

TEST_F(MenuCopyTest, TakesItemsSeparatorsAndPopupsInOrder) {
    CMenu inner;
    inner.CreatePopupMenu();
    inner.AppendMenu(MF_STRING, 9, "Inner");
    CMenu popup;
    popup.CreatePopupMenu();
    popup.AppendMenu(MF_STRING, 7, "Seven");
    popup.AppendMenu(MF_SEPARATOR);
    popup.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(inner.GetSafeHmenu()), "More");
    popup.AppendMenu(MF_STRING, 0, "Nothing");
    Wrap(popup);
    CTrackKey::CopyMenuItems(&menu, &from);
    EXPECT_THAT(Texts(menu), ElementsAre("Seven", "-", "More", "-"));
    EXPECT_EQ(menu.GetMenuItemID(0), 7u);
    EXPECT_EQ(menu.GetSubMenu(2)->GetSafeHmenu(), inner.GetSafeHmenu());
}

TEST_F(MenuCopyTest, AppendsBehindWhatIsThere) {
    CMenu popup;
    popup.CreatePopupMenu();
    popup.AppendMenu(MF_STRING, 7, "Seven");
    Wrap(popup);
    menu.AppendMenu(MF_STRING, 1, "One");
    CTrackKey::CopyMenuItems(&menu, &from);
    EXPECT_THAT(Texts(menu), ElementsAre("One", "Seven"));
}

TEST_F(MenuCopyTest, TakesTheFirstPopupAlone) {
    CMenu first;
    first.CreatePopupMenu();
    first.AppendMenu(MF_STRING, 7, "Seven");
    CMenu second;
    second.CreatePopupMenu();
    second.AppendMenu(MF_STRING, 8, "Eight");
    from.AppendMenu(MF_STRING, 5, "No popup");
    Wrap(first);
    Wrap(second);
    CTrackKey::CopyMenuItems(&menu, &from);
    EXPECT_THAT(Texts(menu), ElementsAre("Seven"));
}

TEST_F(MenuCopyTest, SubMenusLiveOnWithoutTheirSource) {
    {
        CMenu inner;
        inner.CreatePopupMenu();
        inner.AppendMenu(MF_STRING, 9, "Inner");
        CMenu popup;
        popup.CreatePopupMenu();
        popup.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(inner.GetSafeHmenu()), "More");
        CMenu gone;
        gone.CreateMenu();
        gone.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(popup.GetSafeHmenu()), "Popup");
        CTrackKey::CopyMenuItems(&menu, &gone);
    }
    EXPECT_THAT(Texts(*menu.GetSubMenu(0)), ElementsAre("Inner"));
}

TEST_F(MenuCopyTest, NothingIsCopiedFromNothing) {
    CTrackKey::CopyMenuItems(nullptr, &source);
    CTrackKey::CopyMenuItems(&menu, nullptr);
    CTrackKey::CopyMenuItems(&menu, &from);
    EXPECT_THAT(Texts(menu), IsEmpty());
}

} // namespace
