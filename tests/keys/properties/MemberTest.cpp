#include "tests/keys/properties/PropertyFixture.h"

namespace {

constexpr std::uint32_t kFree = 1u << 8;

/// An enumerated member with the items "red", "green", "blue".
class Colours : public CMember {
public:
    Colours() : CMember("Colour", "LIGHT", 0) {
        mode = kEnumerated;
        SetItemCount(3);
        SetItem(0, "red");
        SetItem(1, "green");
        SetItem(2, "blue");
    }
};

std::string ItemOf(const CMember& member, int index) {
    std::string text = "not written";
    member.GetItem(index, text);
    return text;
}

std::string EnumTextOf(const CMember& member) {
    std::string text = "not written";
    member.GetEnumText(text);
    return text;
}

TEST(MemberTest, WithoutArgumentsIsANamelessString) {
    const CMember member;
    EXPECT_EQ(member.name, "<unnamed>");
    EXPECT_EQ(member.category, "<no category>");
    EXPECT_EQ(member.typeName, "");
    EXPECT_EQ(member.comment, "");
    EXPECT_EQ(member.flags, 0u);
    EXPECT_EQ(member.mode, 0);
    EXPECT_TRUE(member.items.empty());
    EXPECT_FALSE(member.categoryMarked);
    EXPECT_FALSE(member.classValue);
    EXPECT_EQ(member.value[0].GetType(), 6u);
    EXPECT_EQ(member.value[1].GetType(), 6u);
    EXPECT_EQ(member.value[0].AsString(), nullptr);
}

TEST(MemberTest, WithoutATypeIsAString) {
    const CMember member("Label", "CAT;note", kFree);
    EXPECT_EQ(member.name, "Label");
    EXPECT_EQ(member.typeName, "String");
    EXPECT_EQ(member.category, "CAT");
    EXPECT_EQ(member.comment, "note");
    EXPECT_EQ(member.flags, kFree);
    EXPECT_EQ(member.value[0].GetType(), 6u);
    EXPECT_EQ(member.value[1].GetType(), 6u);
    EXPECT_EQ(CMember(nullptr, nullptr, 0).name, "<unnamed>");
    EXPECT_EQ(CMember(nullptr, nullptr, 0).category, "<no category>");
}

TEST(MemberTest, InitialValueGoesToTheFirstValueAlone) {
    const float initial = 2.5f;
    const CMember member(nullptr, MemberType::Float, &initial, "CAT", kFree);
    EXPECT_EQ(member.name, "<unnamed>");
    EXPECT_EQ(member.typeName, "?");
    EXPECT_EQ(member.flags, kFree);
    EXPECT_EQ(member.value[0].AsFloat(), 2.5f);
    EXPECT_EQ(member.value[1].GetType(), MemberType::Float);
    EXPECT_EQ(member.value[1].AsFloat(), 0.0f);
    EXPECT_FALSE(CMember("Part", MemberType::Instance, nullptr, "CAT", 0).classValue);
    EXPECT_EQ(CMember("Number", MemberType::Int, nullptr, "CAT", 0).value[0].AsInteger(), 0);
}

TEST(MemberTest, DescriptionIsMarkedCategoryCommentAndARestThatIsDropped) {
    CMember member;
    member.SetDescription("\\CAT;note;rest");
    EXPECT_EQ(member.category, "CAT");
    EXPECT_EQ(member.comment, "note");
    EXPECT_TRUE(member.categoryMarked);
}

TEST(MemberTest, DescriptionWithoutACommentTakesTheOldOneAway) {
    CMember member;
    member.SetDescription("CAT;note");
    member.SetDescription("WHOLE TEXT");
    EXPECT_EQ(member.category, "WHOLE TEXT");
    EXPECT_EQ(member.comment, "");
    member.SetDescription(";only a note");
    EXPECT_EQ(member.category, "");
    EXPECT_EQ(member.comment, "only a note");
    member.SetDescription("");
    EXPECT_EQ(member.category, "");
    EXPECT_EQ(member.comment, "");
}

TEST(MemberTest, MarkOfTheCategoryStays) {
    CMember member;
    member.SetDescription("\\");
    EXPECT_TRUE(member.categoryMarked);
    EXPECT_EQ(member.category, "");
    member.SetDescription("PLAIN");
    EXPECT_TRUE(member.categoryMarked);
    member.SetDescription("\\\\TWICE");
    EXPECT_EQ(member.category, "\\TWICE");
}

TEST(MemberTest, NullDescriptionTakesTheCategoryAlone) {
    CMember member;
    member.SetDescription("\\CAT;note");
    member.SetDescription(nullptr);
    EXPECT_EQ(member.category, "<no category>");
    EXPECT_EQ(member.comment, "note");
    EXPECT_TRUE(member.categoryMarked);
}

TEST(MemberTest, DescriptionMayBeTheOwnCategoryAndOfAnyLength) {
    CMember member;
    const std::string category(10000, 'C');
    member.SetDescription((category + ";" + category).c_str());
    EXPECT_EQ(member.category, category);
    EXPECT_EQ(member.comment, category);
    member.SetDescription(member.category.c_str() + 9997);
    EXPECT_EQ(member.category, "CCC");
    EXPECT_EQ(member.comment, "");
}

TEST(MemberTest, ItemsAreReachedFromZeroToTheCount) {
    CMember member;
    EXPECT_FALSE(member.SetItem(0, "red"));
    EXPECT_EQ(ItemOf(member, 0), "");
    member.SetItemCount(2);
    EXPECT_TRUE(member.SetItem(1, "green"));
    EXPECT_EQ(ItemOf(member, 0), "");
    EXPECT_EQ(ItemOf(member, 1), "green");
    for (const int index : {-1, 2, 2147483647, -2147483647 - 1}) {
        EXPECT_FALSE(member.SetItem(index, "red")) << index;
        std::string text = "not written";
        EXPECT_FALSE(member.GetItem(index, text)) << index;
        EXPECT_EQ(text, "") << index;
    }
    EXPECT_TRUE(member.SetItem(1, nullptr));
    EXPECT_EQ(ItemOf(member, 1), "");
}

TEST(MemberTest, AnotherCountEmptiesTheItems) {
    Colours member;
    member.SetItemCount(3);
    EXPECT_EQ(member.items, std::vector<std::string>(3));
    member.SetItemCount(0);
    EXPECT_TRUE(member.items.empty());
    member.SetItemCount(-5);
    EXPECT_TRUE(member.items.empty());
}

TEST(MemberTest, ItemMayBeSetFromItsOwnTail) {
    Colours member;
    EXPECT_TRUE(member.SetItem(1, member.items[1].c_str() + 2));
    EXPECT_EQ(ItemOf(member, 1), "een");
}

TEST(MemberTest, EnumIndexIsStoredAsAnIntAndLeavesTheSecondValue) {
    Colours member;
    EXPECT_TRUE(member.SetEnumIndex(2));
    EXPECT_EQ(member.value[0].GetType(), 2u);
    EXPECT_EQ(member.value[0].AsInteger(), 2);
    EXPECT_EQ(member.value[1].GetType(), 6u);
    EXPECT_EQ(EnumTextOf(member), "blue");
}

TEST(MemberTest, EnumIndexOutsideTheItemsIsRefused) {
    Colours member;
    ASSERT_TRUE(member.SetEnumIndex(1));
    for (const int index : {-1, 3, 2147483647}) {
        EXPECT_FALSE(member.SetEnumIndex(index)) << index;
    }
    EXPECT_EQ(member.value[0].AsInteger(), 1);
    member.mode = CMember::kPlain;
    EXPECT_FALSE(member.SetEnumIndex(0));
    EXPECT_EQ(EnumTextOf(member), "");
    CMember none;
    none.mode = CMember::kEnumerated;
    EXPECT_FALSE(none.SetEnumIndex(0));
    EXPECT_EQ(EnumTextOf(none), "");
}

TEST(MemberTest, EnumIndexFreesAStringThatWasHeld) {
    Colours member;
    member.value[0].Parse("a text");
    EXPECT_EQ(EnumTextOf(member), "");
    EXPECT_TRUE(member.SetEnumIndex(0));
    EXPECT_EQ(EnumTextOf(member), "red");
}

TEST(MemberTest, IndexMinusOneHasNoItem) {
    Colours member;
    ASSERT_TRUE(member.SetEnumIndex(0));
    member.value[0].SetByValue(std::int32_t{-1});
    std::string text = "not written";
    EXPECT_FALSE(member.GetEnumText(text));
    EXPECT_EQ(text, "");
}

TEST(MemberTest, NullStringOfAnEnumeratedMemberIsItsFirstItem) {
    const Colours member;
    EXPECT_EQ(EnumTextOf(member), "red");
}

TEST(MemberTest, CopyIsEverythingButTheConditions) {
    CMember other("Label", MemberType::Float, nullptr, "\\CAT;note", 0);
    other.value[0].SetByValue(2.5f);
    other.value[1].SetByValue(3.5f);
    other.flags = CMember::kHidden | kFree;
    other.classValue = true;
    other.typeName = "Metres";
    IntMember controlling("Number", 5);
    const std::int32_t five = 5;
    ASSERT_NE(other.AddCondition(&controlling, CCondition::kEqual, &five, nullptr), nullptr);
    CMember member("Before", "OLD;old", 0);
    EXPECT_TRUE(member.CopyFrom(other));
    EXPECT_EQ(member.name, "Label");
    EXPECT_EQ(member.category, "CAT");
    EXPECT_EQ(member.comment, "note");
    EXPECT_EQ(member.typeName, "Metres");
    EXPECT_EQ(member.flags, CMember::kHidden | kFree);
    EXPECT_TRUE(member.categoryMarked);
    EXPECT_TRUE(member.classValue);
    EXPECT_EQ(member.value[0].AsFloat(), 2.5f);
    EXPECT_EQ(member.value[1].AsFloat(), 3.5f);
    EXPECT_TRUE(member.conditions.empty());
}

TEST(MemberTest, CopyKeepsItsOwnConditions) {
    IntMember controlling("Number", 5);
    const std::int32_t five = 5;
    CMember member;
    const CCondition* condition = member.AddCondition(&controlling, CCondition::kEqual, &five, nullptr);
    member.CopyFrom(CMember("Label", "CAT", 0));
    ASSERT_EQ(member.conditions.size(), 1u);
    EXPECT_EQ(member.conditions.front(), condition);
}

TEST(MemberTest, ClassValueOfACopyIsTheOthersInTheEnd) {
    const CMember instance("Part", MemberType::Instance, nullptr, "CAT", 0);
    CMember member;
    EXPECT_TRUE(member.CopyFrom(instance));
    EXPECT_EQ(member.value[0].GetType(), 15u);
    EXPECT_FALSE(member.classValue);
}

TEST(MemberTest, CopyOfAnEnumeratedMemberHasItsItemsAndIndex) {
    Colours other;
    ASSERT_TRUE(other.SetEnumIndex(2));
    CMember member("Before", MemberType::String, "text", "OLD", 0);
    EXPECT_TRUE(member.CopyFrom(other));
    EXPECT_EQ(member.mode, 1);
    EXPECT_EQ(member.items, other.items);
    EXPECT_EQ(EnumTextOf(member), "blue");
    EXPECT_EQ(member.value[1].GetType(), 6u); // as the other's
}

TEST(MemberTest, CopyOfAnIndexOutsideTheItemsKeepsTheIndex) {
    Colours other;
    ASSERT_TRUE(other.SetEnumIndex(2));
    other.value[0].SetByValue(std::int32_t{-1});
    Colours member;
    EXPECT_TRUE(member.CopyFrom(other));
    EXPECT_EQ(member.value[0].AsInteger(), -1);
    EXPECT_EQ(EnumTextOf(member), "");
}

TEST(MemberTest, EnumeratedMemberOfAnotherTagIsCopiedAsItsIndexAlone) {
    const Colours other; // a null string: index 0
    CMember member;
    EXPECT_FALSE(member.CopyFrom(other));
    EXPECT_EQ(member.value[0].GetType(), 2u);
    EXPECT_EQ(EnumTextOf(member), "red");
    Colours object;
    object.value[0].ChangeTag(MemberType::ObjectId);
    object.value[0].SetByValue(std::int32_t{1});
    EXPECT_FALSE(member.CopyFrom(object));
    EXPECT_EQ(EnumTextOf(member), "green");
}

TEST(MemberTest, EnumeratedMemberWithATextIsCopiedWithIt) {
    Colours other;
    other.value[0].Parse("a text");
    CMember member;
    EXPECT_TRUE(member.CopyFrom(other));
    EXPECT_STREQ(member.value[0].AsString(), "a text");
}

TEST(MemberTest, PlainCopyKeepsItsOwnItems) {
    Colours member;
    member.CopyFrom(CMember("Label", "CAT", 0));
    EXPECT_EQ(member.items.size(), 3u);
    EXPECT_EQ(member.mode, 0);
}

TEST(MemberTest, CopyOfItselfChangesNothing) {
    CMember member("Label", MemberType::String, "text", "CAT;note", kFree);
    EXPECT_TRUE(member.CopyFrom(member));
    EXPECT_EQ(member.name, "Label");
    EXPECT_STREQ(member.value[0].AsString(), "text");
}

TEST(MemberTest, MemberTakesOneThatItHolds) {
    CMember inner("Inner", MemberType::String, "text", "CAT;note", kFree);
    const std::list<CMember*> members{&inner};
    CMember member("Outer", MemberType::MemberList, &members, "CAT", 0);
    ASSERT_EQ(TextOf(member.value[0]), "1 items");
    EXPECT_TRUE(member.CopyFrom(*member.value[0].AsList()->front()));
    EXPECT_EQ(member.name, "Inner");
    EXPECT_STREQ(member.value[0].AsString(), "text");
    // In the second value, and with the same tag.
    CMember second("Second", MemberType::MemberList, nullptr, "CAT", 0);
    CMember list("List", MemberType::MemberList, &members, "CAT", 0);
    const std::list<CMember*> lists{&list};
    ASSERT_TRUE(second.value[1].SetByValue(&lists));
    EXPECT_TRUE(second.CopyFrom(*second.value[1].AsList()->front()));
    EXPECT_EQ(second.name, "List");
    EXPECT_EQ(TextOf(second.value[0]), "1 items");
    EXPECT_EQ(TextOf(second.value[1]), "null");
}

TEST(MemberTest, CopyOfAHeldMemberTellsThatOnlyItsIndexWasCopied) {
    Colours inner;
    const std::list<CMember*> members{&inner};
    CMember member("Outer", MemberType::MemberList, &members, "CAT", 0);
    CMember* held = member.value[0].AsList()->front();
    held->value[0].ChangeTag(MemberType::ObjectId); // its copy in the list has the tag 2
    EXPECT_FALSE(member.CopyFrom(*held));
    EXPECT_EQ(member.value[0].GetType(), 2u);
    EXPECT_EQ(EnumTextOf(member), "red");
}

TEST(MemberTest, FirstConditionThatDoesNotHoldHides) {
    IntMember number("Number", 5);
    IntMember other("Other", 1);
    const std::int32_t five = 5;
    const std::int32_t one = 1;
    CMember member;
    member.flags = kFree;
    member.AddCondition(&number, CCondition::kEqual, &five, nullptr);
    member.AddCondition(&other, CCondition::kEqual, &one, nullptr);
    member.UpdateVisibility();
    EXPECT_EQ(member.flags, kFree);
    other.value[0].SetByValue(std::int32_t{2});
    member.UpdateVisibility();
    EXPECT_EQ(member.flags, kFree | CMember::kHidden);
    other.value[0].SetByValue(std::int32_t{1});
    member.UpdateVisibility();
    EXPECT_FALSE(member.IsHidden());
}

TEST(MemberTest, MemberWithoutConditionsIsShown) {
    CMember member;
    member.flags = CMember::kHidden;
    member.UpdateVisibility();
    EXPECT_FALSE(member.IsHidden());
}

TEST(MemberTest, ConditionThatCanNotBeToldHides) {
    IntMember number("Number", 5);
    const std::int32_t five = 5;
    CMember member;
    ASSERT_NE(member.AddCondition(&number, 7, &five, nullptr), nullptr);
    member.UpdateVisibility();
    EXPECT_TRUE(member.IsHidden());
    ASSERT_NE(member.AddCondition(&number, CCondition::kNotEqual, &five, nullptr), nullptr);
    number.value[0].ChangeTag(MemberType::Float);
    member.UpdateVisibility();
    EXPECT_TRUE(member.IsHidden());
}

TEST(MemberTest, NewerConditionOnTheSameMemberReplacesTheOlderAtTheEnd) {
    IntMember first("First", 5);
    IntMember second("Second", 5);
    const std::int32_t five = 5;
    CMember member;
    member.AddCondition(&first, CCondition::kEqual, &five, nullptr);
    CCondition* onSecond = member.AddCondition(&second, CCondition::kEqual, &five, nullptr);
    CCondition* newer = member.AddCondition(&first, CCondition::kLess, &five, nullptr);
    EXPECT_EQ(member.conditions, (std::list<CCondition*>{onSecond, newer}));
    EXPECT_EQ(newer->op, CCondition::kLess);
}

TEST(MemberTest, RefusedConditionChangesNothing) {
    IntMember number("Number", 5);
    const std::int32_t five = 5;
    CMember member;
    const CCondition* kept = member.AddCondition(&number, CCondition::kEqual, &five, nullptr);
    EXPECT_EQ(member.AddCondition(nullptr, CCondition::kEqual, &five, nullptr), nullptr);
    EXPECT_EQ(member.AddCondition(&number, CCondition::kEqual, nullptr, nullptr), nullptr);
    EXPECT_EQ(member.AddCondition(&number, CCondition::kBetween, &five, nullptr), nullptr);
    ASSERT_EQ(member.conditions.size(), 1u);
    EXPECT_EQ(member.conditions.front(), kept);
}

TEST(MemberTest, OperandMayBeTheOneOfTheConditionThatIsReplaced) {
    CMember text("Text", MemberType::String, "red", "CAT", 0);
    CMember member;
    const CCondition* older = member.AddCondition(&text, CCondition::kEqual, "red", nullptr);
    const CCondition* newer =
        member.AddCondition(&text, CCondition::kNotEqual, older->value[0].AsString(), nullptr);
    EXPECT_STREQ(newer->value[0].AsString(), "red");
}

TEST(MemberTest, RemovedConditionIsTheFirstOnThatMember) {
    IntMember first("First", 5);
    IntMember second("Second", 5);
    const std::int32_t five = 5;
    CMember member;
    member.AddCondition(&first, CCondition::kEqual, &five, nullptr);
    const CCondition* onSecond = member.AddCondition(&second, CCondition::kEqual, &five, nullptr);
    member.RemoveCondition(nullptr);
    member.RemoveCondition(&member);
    EXPECT_EQ(member.conditions.size(), 2u);
    member.RemoveCondition(&first);
    ASSERT_EQ(member.conditions.size(), 1u);
    EXPECT_EQ(member.conditions.front(), onSecond);
    member.RemoveCondition(&first);
    EXPECT_EQ(member.conditions.size(), 1u);
}

TEST(MemberTest, NullControllingMemberRemovesNoInvalidCondition) {
    CMember member;
    member.conditions.push_back(new CCondition(nullptr, 0, nullptr, nullptr));
    member.RemoveCondition(nullptr);
    EXPECT_EQ(member.conditions.size(), 1u);
    member.UpdateVisibility();
    EXPECT_TRUE(member.IsHidden());
}

TEST(MemberTest, ConditionMayLookAtItsOwnMember) {
    IntMember member("Number", 5);
    const std::int32_t five = 5;
    ASSERT_NE(member.AddCondition(&member, CCondition::kGreater, &five, nullptr), nullptr);
    member.UpdateVisibility();
    EXPECT_TRUE(member.IsHidden());
    member.value[0].SetByValue(std::int32_t{6});
    member.UpdateVisibility();
    EXPECT_FALSE(member.IsHidden());
}

} // namespace
