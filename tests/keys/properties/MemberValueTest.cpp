#include "keys/properties/NestedMembers.h"
#include "tests/keys/properties/PropertyFixture.h"

#include <array>

namespace {

constexpr std::array kTextTags{6u, 13u, 14u, 17u, 19u, 20u, 21u};
constexpr std::array kEmptyTags{7u, 10u, 11u, 22u, 4294967295u};

void HoldList(CMemberValue& value, const std::list<CMember*>& members) {
    value.ChangeTag(MemberType::MemberList);
    ASSERT_TRUE(value.SetByValue(&members));
}

CMember* FirstIn(const CMemberValue& value) {
    return value.AsList()->front();
}

/// A member whose list holds a member with a list, and so on: so many levels below it.
void Nest(CMember& holder, int levels) {
    holder.value[0].ChangeTag(MemberType::MemberList);
    for (int level = 0; level < levels; ++level) {
        const std::list<CMember*> below{&holder};
        ASSERT_TRUE(holder.value[0].SetByValue(&below)) << level;
    }
}

int CountLevels(const CMemberValue& value) {
    int levels = 0;
    for (const std::list<CMember*>* list = value.AsList(); list != nullptr;
         list = list->front()->value[0].AsList()) {
        ++levels;
    }
    return levels;
}

TEST(MemberValueTest, EveryChangeOfTagStandsAtZero) {
    for (std::uint32_t from = 0; from <= MemberType::Last + 1; ++from) {
        for (std::uint32_t to = 0; to <= MemberType::Last + 1; ++to) {
            if (from == to) {
                continue;
            }
            TaggedValue value(from, "7");
            value.ChangeTag(to);
            EXPECT_EQ(value.GetType(), to);
            EXPECT_EQ(value.AsInteger(), 0);
            EXPECT_EQ(value.AsFloat(), 0.0f);
            EXPECT_EQ(value.AsVector(), Vector3());
            EXPECT_FALSE(value.AsBool());
            EXPECT_EQ(value.AsString(), nullptr);
            EXPECT_EQ(value.AsInstance(), nullptr);
            EXPECT_EQ(value.AsList(), nullptr);
            EXPECT_EQ(value.FirstWord(), 0);
        }
    }
}

TEST(MemberValueTest, SameTagKeepsWhatIsHeld) {
    TaggedValue text(MemberType::String, "kept");
    text.ChangeTag(MemberType::String);
    EXPECT_STREQ(text.AsString(), "kept");
}

TEST(MemberValueTest, ReadersOfOtherFamiliesAnswerZero) {
    const TaggedValue number(MemberType::Int, "1");
    EXPECT_EQ(number.AsFloat(), 0.0f);
    EXPECT_FALSE(number.AsBool());
    EXPECT_EQ(number.AsString(), nullptr);
    EXPECT_EQ(number.AsVector(), Vector3());
    const TaggedValue real(MemberType::Float, "1");
    EXPECT_EQ(real.AsInteger(), 0);
    const TaggedValue flag(MemberType::Bool, "true");
    EXPECT_EQ(flag.AsInteger(), 0);
    EXPECT_TRUE(flag.AsBool());
}

TEST(MemberValueTest, FirstWordIsThePayloadsOrNoIndexForAnAddress) {
    EXPECT_EQ(TaggedValue(0, "\xe4").FirstWord(), 228);
    EXPECT_EQ(TaggedValue(1, "200").FirstWord(), 200);
    EXPECT_EQ(TaggedValue(2, "-3").FirstWord(), -3);
    EXPECT_EQ(TaggedValue(3, "1").FirstWord(), 0x3F800000); // 1.0f
    EXPECT_EQ(TaggedValue(4, "4294967298").FirstWord(), 2); // 2^32 + 2
    EXPECT_EQ(TaggedValue(5, "-1").FirstWord(), 65535);
    EXPECT_EQ(TaggedValue(8, "2").FirstWord(), 0x40000000); // 2.0f
    EXPECT_EQ(TaggedValue(9, "true").FirstWord(), 1);
    EXPECT_EQ(TaggedValue(6).FirstWord(), 0);
    EXPECT_EQ(TaggedValue(6, "text").FirstWord(), -1);
    TaggedValue list(MemberType::MemberList);
    const std::list<CMember*> none;
    list.SetByValue(&none);
    EXPECT_EQ(list.FirstWord(), -1);
}

TEST(MemberValueTest, IntegerIsStoredInTheWidthOfTheTag) {
    TaggedValue character(MemberType::Char);
    EXPECT_TRUE(character.SetByValue(std::int32_t{228}));
    EXPECT_EQ(character.AsInteger(), -28);
    TaggedValue byte(MemberType::Byte);
    EXPECT_TRUE(byte.SetByValue(std::int32_t{-1}));
    EXPECT_EQ(byte.AsInteger(), 255);
    TaggedValue shorter(MemberType::Short);
    EXPECT_TRUE(shorter.SetByValue(std::int32_t{70000})); // 65536 + 4464
    EXPECT_EQ(shorter.AsInteger(), 4464);
    TaggedValue number(MemberType::ObjectId);
    EXPECT_TRUE(number.SetByValue(std::int64_t{4294967301})); // 2^32 + 5
    EXPECT_EQ(number.AsInteger(), 5);
    TaggedValue longer(MemberType::Int64);
    EXPECT_TRUE(longer.SetByValue(std::int64_t{4294967301}));
    EXPECT_EQ(longer.AsInteger(), 4294967301);
    TaggedValue real(MemberType::Float);
    EXPECT_TRUE(real.SetByValue(std::int32_t{3}));
    EXPECT_EQ(real.AsFloat(), 3.0f);
    TaggedValue flag(MemberType::Bool);
    EXPECT_TRUE(flag.SetByValue(std::int32_t{256}));
    EXPECT_TRUE(flag.AsBool());
    EXPECT_TRUE(flag.SetByValue(false));
    EXPECT_FALSE(flag.AsBool());
}

TEST(MemberValueTest, ValueOfAnotherFamilyIsRefusedAndChangesNothing) {
    TaggedValue text(MemberType::String, "kept");
    EXPECT_FALSE(text.SetByValue(std::int32_t{1}));
    EXPECT_FALSE(text.SetByValue(1.0f));
    EXPECT_FALSE(text.SetByValue(true));
    EXPECT_FALSE(text.SetByValue(1.0f, 2.0f, 3.0f));
    EXPECT_FALSE(text.SetByValue(static_cast<const CClassDefinition*>(nullptr)));
    EXPECT_FALSE(text.SetByValue(static_cast<const std::list<CMember*>*>(nullptr)));
    EXPECT_STREQ(text.AsString(), "kept");
    TaggedValue number(MemberType::Int, "5");
    EXPECT_FALSE(number.SetByValue("6"));
    EXPECT_FALSE(number.SetByValue(6.0f));
    EXPECT_EQ(number.AsInteger(), 5);
}

TEST(MemberValueTest, TagsThatHoldNothingRefuseEveryValue) {
    for (const std::uint32_t tag : kEmptyTags) {
        TaggedValue value(tag);
        const std::array<char, 16> memory{};
        EXPECT_FALSE(value.SetByValue(std::int32_t{1})) << tag;
        EXPECT_FALSE(value.SetByValue(std::int64_t{1})) << tag;
        EXPECT_FALSE(value.SetByValue(1.0f)) << tag;
        EXPECT_FALSE(value.SetByValue(true)) << tag;
        EXPECT_FALSE(value.SetByValue("text")) << tag;
        EXPECT_FALSE(value.SetFromPointer(memory.data())) << tag;
        EXPECT_EQ(TextOf(value), "") << tag;
    }
}

TEST(MemberValueTest, NullStringByValueLeavesTheValueNull) {
    for (const std::uint32_t tag : kTextTags) {
        TaggedValue value(tag, "text");
        EXPECT_TRUE(value.SetByValue(static_cast<const char*>(nullptr))) << tag;
        EXPECT_EQ(value.AsString(), nullptr) << tag;
    }
}

TEST(MemberValueTest, StringIsDuplicated) {
    for (const std::uint32_t tag : kTextTags) {
        std::array<char, 4> text{'o', 'l', 'd', '\0'};
        TaggedValue value(tag);
        EXPECT_TRUE(value.SetByValue(text.data())) << tag;
        text[0] = 'c';
        EXPECT_STREQ(value.AsString(), "old") << tag;
    }
}

TEST(MemberValueTest, PointerIsReadInTheWidthOfTheTag) {
    // 0x80C5 is -32571 as an int16; 0x0102030480C5 holds it in its low half.
    const std::array<std::uint8_t, 12> memory{0xC5, 0x80, 0x04, 0x03, 0x02, 0x01, 0, 0, 0, 0, 0, 0};
    TaggedValue character(MemberType::Char);
    EXPECT_TRUE(character.SetFromPointer(memory.data()));
    EXPECT_EQ(character.AsInteger(), 0xC5 - 256);
    TaggedValue byte(MemberType::Byte);
    EXPECT_TRUE(byte.SetFromPointer(memory.data()));
    EXPECT_EQ(byte.AsInteger(), 0xC5);
    TaggedValue shorter(MemberType::Short);
    EXPECT_TRUE(shorter.SetFromPointer(memory.data()));
    EXPECT_EQ(shorter.AsInteger(), -32571);
    for (const std::uint32_t tag : {2u, 12u, 18u}) {
        TaggedValue number(tag);
        EXPECT_TRUE(number.SetFromPointer(memory.data()));
        EXPECT_EQ(number.AsInteger(), 0x030480C5);
    }
    TaggedValue longer(MemberType::Int64);
    EXPECT_TRUE(longer.SetFromPointer(memory.data()));
    EXPECT_EQ(longer.AsInteger(), 0x0102030480C5);
    TaggedValue flag(MemberType::Bool);
    EXPECT_TRUE(flag.SetFromPointer(memory.data())); // neither 0 nor 1
    EXPECT_EQ(TextOf(flag), "true");
    EXPECT_TRUE(flag.SetFromPointer(memory.data() + 6));
    EXPECT_EQ(TextOf(flag), "false");
    const std::array reals{1.5f, 2.5f, -3.5f};
    TaggedValue real(MemberType::Float);
    EXPECT_TRUE(real.SetFromPointer(reals.data()));
    EXPECT_EQ(real.AsFloat(), 1.5f);
    TaggedValue vector(MemberType::Vector);
    EXPECT_TRUE(vector.SetFromPointer(reals.data()));
    EXPECT_EQ(vector.AsVector(), (Vector3{1.5f, 2.5f, -3.5f}));
}

TEST(MemberValueTest, PointerToATextIsReadAsTheNumberOfItsBytes) {
    const char text[4] = {'-', '1', 0, 0};
    TaggedValue number(MemberType::Int);
    EXPECT_TRUE(number.SetFromPointer(text));
    EXPECT_EQ(number.AsInteger(), 12589); // 45 + 49 * 256
    const char empty[4] = {};
    EXPECT_TRUE(number.SetFromPointer(empty));
    EXPECT_EQ(number.AsInteger(), 0);
}

TEST(MemberValueTest, NullPointerIsRefusedButByInstances) {
    for (std::uint32_t tag = 0; tag <= MemberType::Last + 1; ++tag) {
        TaggedValue value(tag, "7");
        const std::string before = TextOf(value);
        EXPECT_EQ(value.SetFromPointer(nullptr), tag == MemberType::Instance) << tag;
        EXPECT_EQ(TextOf(value), before) << tag;
    }
}

TEST(MemberValueTest, PointerMayLieInTheOwnString) {
    for (const std::uint32_t tag : kTextTags) {
        TaggedValue value(tag, "Harbour");
        EXPECT_TRUE(value.SetFromPointer(value.AsString() + 4)) << tag;
        EXPECT_STREQ(value.AsString(), "our") << tag;
        EXPECT_TRUE(value.SetByValue(value.AsString())) << tag;
        EXPECT_STREQ(value.AsString(), "our") << tag;
    }
}

TEST(MemberValueTest, AssignTakesTagAndPayloadOfEveryFamily) {
    for (std::uint32_t tag = 0; tag < MemberType::Instance; ++tag) {
        const TaggedValue source(tag, "1");
        for (std::uint32_t former = 0; former <= MemberType::Last + 1; ++former) {
            TaggedValue value(former, "9");
            value.Assign(source);
            EXPECT_EQ(value.GetType(), tag);
            EXPECT_EQ(TextOf(value), TextOf(source));
        }
    }
}

TEST(MemberValueTest, AssignOfANullStringFreesTheHeldOne) {
    for (const std::uint32_t tag : kTextTags) {
        TaggedValue value(tag, "held");
        value.Assign(TaggedValue(tag));
        EXPECT_EQ(value.AsString(), nullptr) << tag;
    }
}

TEST(MemberValueTest, AssignToItselfChangesNothing) {
    TaggedValue text(MemberType::String, "kept");
    text.Assign(text);
    EXPECT_STREQ(text.AsString(), "kept");
    IntMember one("One", 1);
    TaggedValue list(MemberType::MemberList);
    HoldList(list, {&one});
    const CMember* held = FirstIn(list);
    list.Assign(list);
    EXPECT_EQ(FirstIn(list), held);
}

TEST(MemberValueTest, ListIsADeepCopy) {
    IntMember one("One", 1);
    IntMember two("Two", 2);
    TaggedValue list(MemberType::MemberList);
    HoldList(list, {&one, &two});
    one.value[0].SetByValue(std::int32_t{10});
    TaggedValue copy(MemberType::Int);
    copy.Assign(list);
    FirstIn(list)->value[0].SetByValue(std::int32_t{20});
    EXPECT_EQ(NumberOf(FirstIn(list)), 20);
    EXPECT_EQ(NumberOf(FirstIn(copy)), 1);
    EXPECT_EQ(copy.AsList()->back()->name, "Two");
    EXPECT_EQ(TextOf(copy), "2 items");
    EXPECT_TRUE(copy.SetByValue(static_cast<const std::list<CMember*>*>(nullptr)));
    EXPECT_EQ(TextOf(copy), "null");
}

TEST(MemberValueTest, ListMayBeGivenToTheValueThatHoldsIt) {
    IntMember one("One", 1);
    TaggedValue list(MemberType::MemberList);
    HoldList(list, {&one});
    EXPECT_TRUE(list.SetByValue(list.AsList()));
    EXPECT_EQ(NumberOf(FirstIn(list)), 1);
    EXPECT_TRUE(list.SetFromPointer(list.AsList()));
    EXPECT_EQ(NumberOf(FirstIn(list)), 1);
}

TEST(MemberValueTest, ValueTakesAPartOfItself) {
    IntMember one("One", 1);
    TaggedValue list(MemberType::MemberList);
    HoldList(list, {&one});
    list.Assign(FirstIn(list)->value[0]);
    EXPECT_EQ(TextOf(list), "1");
    // A list in the list in its place.
    CMember holder;
    Nest(holder, 3);
    holder.value[0].Assign(FirstIn(holder.value[0])->value[0]);
    EXPECT_EQ(CountLevels(holder.value[0]), 2);
}

TEST(MemberValueTest, PartTakesTheValueThatHoldsIt) {
    CMember holder;
    Nest(holder, 2);
    FirstIn(holder.value[0])->value[0].Assign(holder.value[0]);
    EXPECT_EQ(CountLevels(holder.value[0]), 3);
}

TEST(MemberValueTest, ListNestsSixtyFourLevelsAndNoMore) {
    ASSERT_EQ(kMaxNesting, 64);
    CMember holder;
    Nest(holder, 64);
    EXPECT_EQ(CountLevels(holder.value[0]), 64);
    const std::list<CMember*> deeper{&holder};
    EXPECT_FALSE(holder.value[0].SetByValue(&deeper));
    EXPECT_EQ(CountLevels(holder.value[0]), 64);
    TaggedValue copy(MemberType::Int, "5");
    copy.Assign(holder.value[0]);
    EXPECT_EQ(CountLevels(copy), 64);
}

TEST(MemberValueTest, DeepestNestingIsLeftWithoutDeepCalls) {
    CMember part;
    Nest(part, 60);
    const std::list<CMember*> parts{&part};
    CMember holder;
    Nest(holder, 1);
    // Each round adds 61 levels below the innermost: more of them than calls would fit a stack.
    CMember* innermost = FirstIn(holder.value[0]);
    for (int round = 0; round < 600; ++round) {
        innermost->value[0].ChangeTag(MemberType::MemberList);
        ASSERT_TRUE(innermost->value[0].SetByValue(&parts));
        while (innermost->value[0].AsList() != nullptr) {
            innermost = FirstIn(innermost->value[0]);
        }
    }
    EXPECT_EQ(CountLevels(holder.value[0]), 1 + 600 * 61);
    TaggedValue refused(MemberType::Int, "5");
    refused.Assign(holder.value[0]);
    EXPECT_EQ(TextOf(refused), "null");
    EXPECT_EQ(refused.GetType(), MemberType::MemberList);
    holder.value[0].Parse("null");
    EXPECT_EQ(TextOf(holder.value[0]), "null");
}

class InstanceValueTest : public ::testing::Test {
protected:
    InstanceValueTest() {
        CClassDefinition& lamp = database.Add("Lamp");
        lamp.AddMember(IntMember("Power", 100));
        lamp.AddMember2(IntMember("Colour", 3));
        database.Add("Boat").AddMember(IntMember("Length", 5));
        CMember part("Part", MemberType::Instance, nullptr, "PARTS", 0);
        part.value[0].Parse("Lamp");
        database.Add("Pier").AddMember(part);
    }

    static std::int64_t PowerOf(const CMemberValue& value) {
        return NumberOf(value.AsInstance()->members.front());
    }
    static void SetPower(const CMemberValue& value, std::int32_t power) {
        value.AsInstance()->members.front()->value[0].SetByValue(power);
    }

    OwnDatabase database;
    TaggedValue value{MemberType::Instance};
};

TEST_F(InstanceValueTest, ParseMakesAnInstanceByNameWithoutCase) {
    value.Parse("lamp");
    ASSERT_NE(value.AsInstance(), nullptr);
    EXPECT_EQ(TextOf(value), "Lamp");
    EXPECT_EQ(PowerOf(value), 100);
    EXPECT_EQ(value.AsInstance()->members.front()->flags & 1u, 1u);
    EXPECT_EQ(value.AsInstance()->members2.front()->flags & 1u, 1u);
    value.Parse("Boat");
    EXPECT_EQ(TextOf(value), "Boat");
}

TEST_F(InstanceValueTest, ParseOfAnUnknownClassLeavesTheInstance) {
    value.Parse("Lamp");
    const CClassDefinition* lamp = value.AsInstance();
    value.Parse("Nobody");
    value.Parse("Null");
    EXPECT_EQ(value.AsInstance(), lamp);
    value.Parse("null");
    EXPECT_EQ(value.AsInstance(), nullptr);
}

TEST_F(InstanceValueTest, AssignUpdatesAnInstanceOfTheSameClassInPlace) {
    value.Parse("Lamp");
    const CClassDefinition* lamp = value.AsInstance();
    const CMember* power = lamp->members.front();
    TaggedValue other(MemberType::Instance, "Lamp");
    SetPower(other, 40);
    other.AsInstance()->members2.front()->value[0].SetByValue(std::int32_t{8});
    value.Assign(other);
    EXPECT_EQ(value.AsInstance(), lamp);
    EXPECT_EQ(lamp->members.front(), power);
    EXPECT_EQ(PowerOf(value), 40);
    EXPECT_EQ(NumberOf(lamp->members2.front()), 8);
}

TEST_F(InstanceValueTest, AssignMakesAnInstanceOfAnotherClassWithItsValues) {
    value.Parse("Boat");
    TaggedValue other(MemberType::Instance, "Lamp");
    SetPower(other, 40);
    value.Assign(other);
    EXPECT_EQ(TextOf(value), "Lamp");
    EXPECT_EQ(PowerOf(value), 40);
    SetPower(other, 41);
    EXPECT_EQ(PowerOf(value), 40);
    value.Assign(TaggedValue(MemberType::Instance));
    EXPECT_EQ(value.AsInstance(), nullptr);
}

TEST_F(InstanceValueTest, AssignTellsClassesApartByCase) {
    value.Parse("Lamp");
    const CClassDefinition* lamp = value.AsInstance();
    TaggedValue other(MemberType::Instance, "Lamp");
    other.AsInstance()->name = "LAMP";
    value.Assign(other);
    // Made anew, under the name that the database has.
    EXPECT_NE(value.AsInstance(), lamp);
    EXPECT_EQ(TextOf(value), "Lamp");
}

TEST_F(InstanceValueTest, MembersThatOnlyTheOtherHasAreAdded) {
    value.Parse("Lamp");
    TaggedValue other(MemberType::Instance, "Lamp");
    other.AsInstance()->AddMember(IntMember("Range", 12));
    value.Assign(other);
    ASSERT_EQ(value.AsInstance()->members.size(), 2u);
    EXPECT_EQ(NumberOf(value.AsInstance()->members.back()), 12);
    value.Assign(TaggedValue(MemberType::Instance, "Lamp"));
    EXPECT_EQ(value.AsInstance()->members.size(), 2u);
}

TEST_F(InstanceValueTest, ByValueIsADeepCopyAndNullEmpties) {
    TaggedValue other(MemberType::Instance, "Lamp");
    SetPower(other, 40);
    EXPECT_TRUE(value.SetByValue(other.AsInstance()));
    SetPower(other, 41);
    EXPECT_EQ(PowerOf(value), 40);
    EXPECT_TRUE(value.SetFromPointer(other.AsInstance()));
    EXPECT_EQ(PowerOf(value), 41);
    EXPECT_TRUE(value.SetFromPointer(nullptr));
    EXPECT_EQ(value.AsInstance(), nullptr);
}

TEST_F(InstanceValueTest, ValueMayBeGivenItsOwnInstanceOrAPartOfIt) {
    value.Parse("Pier");
    EXPECT_TRUE(value.SetByValue(value.AsInstance()));
    EXPECT_EQ(TextOf(value), "Pier");
    const CMemberValue& part = value.AsInstance()->members.front()->value[0];
    SetPower(part, 40);
    value.Assign(part);
    EXPECT_EQ(TextOf(value), "Lamp");
    EXPECT_EQ(PowerOf(value), 40);
}

TEST_F(InstanceValueTest, InstanceTakesTheValuesOfOneOfItsClassInside) {
    // A pier that holds a pier that holds a lamp.
    value.Parse("Pier");
    value.AsInstance()->members.front()->value[0].Assign(TaggedValue(MemberType::Instance, "Pier"));
    const CMemberValue& inner = value.AsInstance()->members.front()->value[0];
    SetPower(inner.AsInstance()->members.front()->value[0], 40);
    value.Assign(inner);
    const CMemberValue& part = value.AsInstance()->members.front()->value[0];
    EXPECT_EQ(TextOf(part), "Lamp");
    EXPECT_EQ(PowerOf(part), 40);
}

TEST_F(InstanceValueTest, InsideTakesTheValuesOfTheInstanceAround) {
    value.Parse("Pier");
    const CMemberValue& part = value.AsInstance()->members.front()->value[0];
    value.AsInstance()->members.front()->value[0].Assign(value);
    EXPECT_EQ(TextOf(part), "Pier");
    EXPECT_EQ(TextOf(part.AsInstance()->members.front()->value[0]), "Lamp");
}

TEST_F(InstanceValueTest, WithoutADatabaseTheValueStays) {
    value.Parse("Lamp");
    TaggedValue boat(MemberType::Instance, "Boat");
    TaggedValue lamp(MemberType::Instance, "Lamp");
    SetPower(lamp, 40);
    CMemberValue::SetClassDatabase(nullptr);
    const CClassDefinition* held = value.AsInstance();
    value.Parse("Boat");
    value.Assign(boat);
    EXPECT_FALSE(value.SetByValue(boat.AsInstance()));
    EXPECT_EQ(value.AsInstance(), held);
    value.Assign(lamp); // needs none
    EXPECT_EQ(PowerOf(value), 40);
    TaggedValue number(MemberType::Int, "5");
    number.Assign(boat);
    EXPECT_EQ(number.GetType(), MemberType::Instance);
    EXPECT_EQ(number.AsInstance(), nullptr);
    value.Parse("null");
    EXPECT_EQ(value.AsInstance(), nullptr);
}

TEST_F(InstanceValueTest, InstanceThatNestsTooDeepIsRefused) {
    CMember holder;
    Nest(holder, 64);
    TaggedValue deep(MemberType::Instance, "Boat");
    deep.AsInstance()->members.front()->value[0].ChangeTag(MemberType::MemberList);
    const std::list<CMember*> inner{FirstIn(holder.value[0])};
    ASSERT_TRUE(deep.AsInstance()->members.front()->value[0].SetByValue(&inner));
    EXPECT_FALSE(value.SetByValue(deep.AsInstance()));
    EXPECT_EQ(value.AsInstance(), nullptr);
}

} // namespace
