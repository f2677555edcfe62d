#include "tests/keys/properties/PropertyFixture.h"
#include "tests/support/CommaLocale.h"

#include <memory>

namespace {

using Instance = std::unique_ptr<CClassDefinition>;

class ClassDefinitionTest : public ::testing::Test {
protected:
    Instance Create(const char* name) { return Instance(CreateInstance(&database, name)); }
    bool Derives(const char* name, const char* base) { return IsClassDerivedFrom(&database, name, base); }

    OwnDatabase database;
};

TEST_F(ClassDefinitionTest, NewClassIsEmpty) {
    const CClassDefinition definition;
    EXPECT_EQ(definition.flag1, 1);
    EXPECT_EQ(definition.flag2, 1);
    EXPECT_TRUE(definition.name.empty());
    EXPECT_TRUE(definition.members.empty());
    EXPECT_TRUE(definition.members2.empty());
}

TEST_F(ClassDefinitionTest, AddedMembersAreCopiesAtTheEnd) {
    CClassDefinition& lamp = database.Add("Lamp");
    IntMember power("Power", 100);
    lamp.AddMember(IntMember("First", 1));
    CMember* added = lamp.AddMember(power);
    CMember* second = lamp.AddMember2(power);
    power.value[0].SetByValue(std::int32_t{5});
    EXPECT_EQ(lamp.members.back(), added);
    EXPECT_EQ(lamp.members.size(), 2u);
    EXPECT_EQ(lamp.members2, std::list<CMember*>{second});
    EXPECT_EQ(NumberOf(added), 100);
    EXPECT_EQ(NumberOf(second), 100);
}

TEST_F(ClassDefinitionTest, FindIsTheFirstOfTheNameIgnoringCase) {
    const CClassDefinition* lamp = &database.Add("Lamp");
    database.Add("LAMP");
    EXPECT_EQ(FindClass(&database, "LAMP"), lamp);
    EXPECT_EQ(FindClass(&database, "lAmP"), lamp);
    EXPECT_EQ(FindClass(&database, "Lam"), nullptr);
    EXPECT_EQ(FindClass(&database, ""), nullptr);
    EXPECT_EQ(FindClass(nullptr, "Lamp"), nullptr);
}

TEST_F(ClassDefinitionTest, InstanceHasNameDescriptionBasesAndBothLists) {
    CClassDefinition& lamp = database.Add("Lamp");
    lamp.description = "Gives light";
    lamp.baseNames = {"Light", "Prop"};
    lamp.AddMember(IntMember("Power", 100))->flags = 10 | 1u << 6; // bits 1, 3 and 6
    lamp.AddMember2(IntMember("Colour", 3));
    const Instance instance = Create("lamp");
    ASSERT_NE(instance, nullptr);
    EXPECT_NE(instance.get(), &lamp);
    EXPECT_EQ(instance->name, "Lamp");
    EXPECT_EQ(instance->description, "Gives light");
    EXPECT_EQ(instance->baseNames, lamp.baseNames);
    ASSERT_EQ(instance->members.size(), 1u);
    ASSERT_EQ(instance->members2.size(), 1u);
    EXPECT_EQ(NumberOf(instance->members.front()), 100);
    EXPECT_EQ(NumberOf(instance->members2.front()), 3);
    EXPECT_EQ(instance->members.front()->flags, 5u | 1u << 6); // bits 0, 2 and 6
    EXPECT_EQ(instance->members2.front()->flags, 5u);
    EXPECT_EQ(lamp.members.front()->flags, 10u | 1u << 6);
}

TEST_F(ClassDefinitionTest, UnknownClassHasNoInstance) {
    EXPECT_EQ(Create("Nobody"), nullptr);
    EXPECT_EQ(CreateInstance(nullptr, "Lamp"), nullptr);
}

TEST_F(ClassDefinitionTest, ClassThatHoldsAnInstanceOfItselfHasAnEnd) {
    CClassDefinition& ring = database.Add("Ring");
    CMember link("Link", MemberType::Instance, nullptr, "PARTS", 0);
    link.value[0].Parse("Ring");
    ring.AddMember(link);
    ring.AddMember(link);
    const Instance instance = Create("Ring");
    ASSERT_EQ(instance->members.size(), 2u);
    EXPECT_EQ(TextOf(instance->members.front()->value[0]), "Ring");
    TaggedValue value(MemberType::Instance, "Ring");
    TaggedValue copy(MemberType::Instance);
    copy.Assign(value);
    EXPECT_EQ(copy.AsInstance()->members.size(), 2u);
}

TEST_F(ClassDefinitionTest, InstanceInAClassIsCopiedWithItsValues) {
    database.Add("Lamp").AddMember(IntMember("Power", 100));
    CMember part("Part", MemberType::Instance, nullptr, "PARTS", 0);
    part.value[0].Parse("Lamp");
    part.value[0].AsInstance()->members.front()->value[0].SetByValue(std::int32_t{40});
    database.Add("Pier").AddMember(part);
    const Instance pier = Create("Pier");
    const CClassDefinition* lamp = pier->members.front()->value[0].AsInstance();
    ASSERT_NE(lamp, nullptr);
    EXPECT_EQ(NumberOf(lamp->members.front()), 40);
}

TEST_F(ClassDefinitionTest, DerivationFollowsAllBases) {
    database.Add("Lamp").baseNames = {"Prop", "Light"};
    database.Add("Light").baseNames = {"Object"};
    database.Add("Prop");
    EXPECT_TRUE(Derives("Lamp", "Prop"));
    EXPECT_TRUE(Derives("Lamp", "Light"));
    EXPECT_TRUE(Derives("Lamp", "Object")); // which is named, but not known
    EXPECT_FALSE(Derives("Prop", "Object"));
    EXPECT_FALSE(Derives("Light", "Lamp"));
}

TEST_F(ClassDefinitionTest, EqualNamesDeriveEvenUnknownAndCaseCounts) {
    database.Add("Lamp").baseNames = {"Light"};
    EXPECT_TRUE(Derives("Nobody", "Nobody"));
    EXPECT_FALSE(Derives("Nobody", "Lamp"));
    EXPECT_FALSE(Derives("lamp", "Lamp"));
    EXPECT_TRUE(Derives("lamp", "Light")); // found ignoring case
    EXPECT_FALSE(Derives("Lamp", "light"));
    EXPECT_TRUE(IsClassDerivedFrom(nullptr, "Lamp", "Lamp"));
    EXPECT_FALSE(IsClassDerivedFrom(nullptr, "Lamp", "Light"));
}

TEST_F(ClassDefinitionTest, RingsWithTwoBasesEachEnd) {
    // Each way through the ring on its own would take 2 to the power of their length steps.
    database.Add("A").baseNames = {"B", "B", "A"};
    database.Add("B").baseNames = {"A", "B", "C"};
    database.Add("C");
    EXPECT_FALSE(Derives("A", "Nobody"));
    EXPECT_TRUE(Derives("A", "C"));
}

TEST_F(ClassDefinitionTest, LongLineOfBasesIsFollowedToItsEnd) {
    constexpr int kClasses = 1000;
    for (int i = 0; i < kClasses; ++i) {
        database.Add(("Class" + std::to_string(i)).c_str()).baseNames = {"Class" + std::to_string(i + 1)};
    }
    EXPECT_TRUE(Derives("Class0", "Class1000"));
    EXPECT_FALSE(Derives("Class0", "Class1001"));
}

} // namespace
