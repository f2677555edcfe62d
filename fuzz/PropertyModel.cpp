// Lets a stream of bytes work on a few values, members, conditions and classes of the property model, whose
// parts it gives to each other in any order.
#include "keys/properties/NestedMembers.h"
#include "plugin/contract/ClassDatabase.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fuzzer/FuzzedDataProvider.h>
#include <memory>

namespace {

constexpr std::size_t kMembers = 5;
constexpr std::uint32_t kFirstUnfreed = 19;
constexpr int kMaxSteps = 400;
/// What holds more members than this isn't copied any more: copies of copies would take all memory.
constexpr std::size_t kMaxHeld = 300;
constexpr std::array kClassNames{"Lamp", "Boat", "Ring", "boat", "Nobody", "null"};

void Check(bool holds, int line = __builtin_LINE()) {
    if (!holds) {
        std::fprintf(stderr, "fuzz/PropertyModel.cpp:%d: doesn't hold\n", line);
        std::abort();
    }
}

std::size_t CountHeld(const CMemberValue& value);

std::size_t CountHeld(const std::list<CMember*>& members) {
    std::size_t count = members.size();
    for (const CMember* member : members) {
        count += CountHeld(member->value[0]) + CountHeld(member->value[1]);
    }
    return count;
}

std::size_t CountHeld(const CMemberValue& value) {
    if (value.AsList() != nullptr) {
        return CountHeld(*value.AsList());
    }
    const CClassDefinition* instance = value.AsInstance();
    return instance == nullptr ? 0 : CountHeld(instance->members) + CountHeld(instance->members2);
}

/// "Lamp" has plain members, "Boat" a lamp, "Ring" one of its own.
class Database : public IClassDatabase {
public:
    Database() {
        CMemberValue::SetClassDatabase(this);
        const float power = 1.5f;
        const CMember real("Power", MemberType::Float, &power, "LIGHT;of the lamp", 10);
        const CMember text("Name", "LIGHT", 3);
        Add("Lamp", "Boat").AddMember(real);
        classes.back()->AddMember2(text);
        AddHolder("Boat", "Lamp");
        AddHolder("Ring", "Ring");
    }
    ~Database() override {
        CMemberValue::SetClassDatabase(nullptr);
        for (const CClassDefinition* definition : classes) {
            delete definition;
        }
    }

private:
    CClassDefinition& Add(const char* name, const char* base) {
        classes.push_back(new CClassDefinition);
        classes.back()->name = name;
        classes.back()->baseNames = {base, "Ring", base};
        return *classes.back();
    }
    void AddHolder(const char* name, const char* held) {
        CMember part("Part", MemberType::Instance, nullptr, "PARTS", 0);
        CClassDefinition& holder = Add(name, "Ring");
        part.value[0].Parse(held);
        holder.AddMember(part);
        part.value[0].Parse(held);
        holder.AddMember2(part);
    }
};

class Worker {
public:
    Worker(const std::uint8_t* data, std::size_t size)
        : bytes(data, size), leaves(bytes.ConsumeIntegralInRange(0, 31) == 0) {
        for (auto& member : members) {
            member = std::make_unique<CMember>();
        }
    }
    ~Worker() {
        // Conditions look at other members, but not when they go.
        for (auto& member : members) {
            member.reset();
        }
    }

    void Step() {
        switch (bytes.ConsumeIntegralInRange(0, 17)) {
        case 0:
            return AnyValue().ChangeTag(AnyTag());
        case 1:
            return Parse();
        case 2:
            return Assign();
        case 3:
            return CopyFrom();
        case 4:
            return SetFromPointer();
        case 5:
            return SetNumber();
        case 6:
            return SetNested();
        case 7:
            return WrapInList();
        case 8:
            return AddCondition();
        case 9:
            return AnyMember().RemoveCondition(&AnyOfPool());
        case 10:
            return Evaluate();
        case 11:
            return SetItems();
        case 12:
            return SetIndex();
        case 13:
            return Describe();
        case 14:
            return Rebuild();
        case 15:
            return AddToInstance();
        case 16:
            return Compare();
        default:
            return AskDatabase();
        }
    }

    bool HasMore() { return bytes.remaining_bytes() > 0; }

private:
    std::uint32_t AnyTag() {
        const auto tag = bytes.ConsumeIntegralInRange<std::uint32_t>(0, MemberType::Last + 1);
        return !leaves && tag >= kFirstUnfreed && tag <= MemberType::Last ? MemberType::String : tag;
    }
    std::string AnyText() { return bytes.ConsumeRandomLengthString(300); }
    std::string AnyClass() { return bytes.PickValueInArray(kClassNames); }
    CMember& AnyOfPool() { return *members[bytes.ConsumeIntegralInRange<std::size_t>(0, kMembers - 1)]; }

    const std::list<CMember*>* MembersIn(const CMemberValue& value) {
        if (const CClassDefinition* instance = value.AsInstance()) {
            return bytes.ConsumeBool() ? &instance->members : &instance->members2;
        }
        return value.AsList();
    }
    /// One of the pool or any below.
    CMember& AnyMember() {
        CMember* member = &AnyOfPool();
        while (bytes.ConsumeBool()) {
            const std::list<CMember*>* held = MembersIn(member->value[bytes.ConsumeBool() ? 1 : 0]);
            if (held == nullptr || held->empty()) {
                break;
            }
            member = *std::next(held->begin(),
                                bytes.ConsumeIntegralInRange<int>(0, static_cast<int>(held->size()) - 1));
        }
        return *member;
    }
    CMemberValue& AnyValue() { return AnyMember().value[bytes.ConsumeBool() ? 1 : 0]; }
    bool IsTooMuch(const CMemberValue& value) const { return CountHeld(value) > kMaxHeld; }
    bool IsTooMuch(const CMember& member) const {
        return IsTooMuch(member.value[0]) || IsTooMuch(member.value[1]);
    }

    void Parse() {
        CMemberValue& value = AnyValue();
        const std::string text = value.GetType() == MemberType::Instance ? AnyClass() : AnyText();
        value.Parse(bytes.ConsumeBool() ? text.c_str() : value.AsString());
        std::string shown;
        value.ToText(shown);
        if (value.GetType() == MemberType::Int) {
            const std::int64_t before = value.AsInteger();
            value.Parse(shown.c_str());
            Check(value.AsInteger() == before);
        }
        if (const char* held = value.AsString()) {
            Check(shown == held);
        }
    }

    void Assign() {
        const CMemberValue& source = AnyValue();
        CMemberValue& value = AnyValue();
        if (IsTooMuch(source)) {
            return;
        }
        const std::uint32_t tag = source.GetType();
        // Instances of unknown classes and lists that nest too deep.
        const bool mayStay =
            tag == MemberType::Instance || (source.AsList() != nullptr && IsNestedTooDeep(*source.AsList()));
        std::string expected;
        std::string text;
        source.ToText(expected);
        value.Assign(source);
        value.ToText(text);
        Check(value.GetType() == tag && (mayStay || text == expected));
    }

    void CopyFrom() {
        const CMember& source = AnyMember();
        CMember& member = AnyMember();
        if (IsTooMuch(source)) {
            return;
        }
        const std::string name = source.name;
        const std::uint32_t tag = source.value[0].GetType();
        const bool whole = member.CopyFrom(source);
        Check(member.name == name && (!whole || member.value[0].GetType() == tag));
    }

    /// What stands where a value of the tag is read from; good until the next call, and while the pool
    /// stands.
    const void* AnyPointer(std::uint32_t tag) {
        const CMemberValue& other = AnyValue();
        if (bytes.ConsumeIntegralInRange(0, 7) == 0) {
            return nullptr;
        }
        if (tag == MemberType::Instance) {
            return IsTooMuch(other) ? nullptr : other.AsInstance();
        }
        if (tag == MemberType::MemberList) {
            return IsTooMuch(other) ? nullptr : other.AsList();
        }
        if (other.AsString() != nullptr && other.GetType() == tag && bytes.ConsumeBool()) {
            return other.AsString();
        }
        const std::string text = AnyText();
        memory[turn ^= 1].fill(0);
        text.copy(memory[turn].data(), memory[turn].size() - 1);
        return memory[turn].data();
    }

    void SetFromPointer() {
        CMemberValue& value = AnyValue();
        const std::uint32_t tag = value.GetType();
        const void* pointer = AnyPointer(tag);
        const bool taken = value.SetFromPointer(pointer);
        Check(value.GetType() == tag && (pointer != nullptr || taken == (tag == MemberType::Instance)));
    }

    void SetNumber() {
        CMemberValue& value = AnyValue();
        const float real = bytes.ConsumeFloatingPoint<float>();
        switch (bytes.ConsumeIntegralInRange(0, 4)) {
        case 0:
            value.SetByValue(bytes.ConsumeIntegral<std::int32_t>());
            break;
        case 1:
            value.SetByValue(bytes.ConsumeIntegral<std::int64_t>());
            break;
        case 2:
            value.SetByValue(real);
            break;
        case 3:
            value.SetByValue(bytes.ConsumeBool());
            break;
        default:
            value.SetByValue(real, bytes.ConsumeFloatingPoint<float>(), -real);
            break;
        }
    }

    void SetNested() {
        const CMemberValue& source = AnyValue();
        CMemberValue& value = AnyValue();
        if (IsTooMuch(source)) {
            return;
        }
        // The source may be gone after the first of them that is taken.
        if (value.GetType() == MemberType::Instance) {
            value.SetByValue(source.AsInstance());
        } else if (value.GetType() == MemberType::MemberList) {
            value.SetByValue(source.AsList());
        } else {
            value.SetByValue(source.AsString());
        }
    }

    void WrapInList() {
        CMemberValue& value = AnyValue();
        std::list<CMember*> list;
        for (int i = bytes.ConsumeIntegralInRange(0, 4); i > 0; --i) {
            CMember& member = AnyMember();
            if (!IsTooMuch(member)) {
                list.push_back(&member);
            }
        }
        if (bytes.ConsumeBool()) {
            value.ChangeTag(MemberType::MemberList);
            // What it held is gone, and with it members of the list perhaps.
            list.remove_if([this](const CMember* member) { return !IsOfPool(member); });
        }
        value.SetByValue(&list);
    }

    bool IsOfPool(const CMember* sought) const {
        for (const auto& member : members) {
            if (member.get() == sought) {
                return true;
            }
        }
        return false;
    }

    void AddCondition() {
        CMember& controlling = AnyOfPool();
        CMember& member = AnyMember();
        const std::uint32_t op = bytes.ConsumeIntegralInRange<std::uint32_t>(0, 8);
        const std::uint32_t tag = controlling.value[0].GetType();
        const void* operand = AnyPointer(tag);
        const void* upper = AnyPointer(tag);
        const std::size_t count = member.conditions.size();
        const CCondition* condition = member.AddCondition(&controlling, op, operand, upper);
        Check(condition == nullptr ? member.conditions.size() == count
                                   : member.conditions.back() == condition);
    }

    void Evaluate() {
        CMember& member = AnyMember();
        bool shown = true;
        for (const CCondition* condition : member.conditions) {
            shown = condition->Evaluate() == 1 && shown;
        }
        member.UpdateVisibility();
        Check(member.IsHidden() != shown);
    }

    void SetItems() {
        CMember& member = AnyMember();
        member.SetItemCount(bytes.ConsumeIntegralInRange(-2, 6));
        member.SetItem(bytes.ConsumeIntegralInRange(-2, 6), AnyText().c_str());
        member.SetItem(bytes.ConsumeIntegral<int>(), AnyText().c_str());
        member.mode = bytes.ConsumeIntegralInRange(0, 2);
    }

    void SetIndex() {
        CMember& member = AnyMember();
        const int index = bytes.ConsumeIntegralInRange(-2, 6);
        if (member.SetEnumIndex(index)) {
            Check(member.value[0].GetType() == MemberType::Int && member.value[0].AsInteger() == index);
        }
        std::string text = "before";
        const bool chosen = member.GetEnumText(text);
        Check(chosen || text.empty());
    }

    void Describe() {
        CMember& member = AnyMember();
        const std::string text = AnyText();
        switch (bytes.ConsumeIntegralInRange(0, 3)) {
        case 0:
            return member.SetDescription(member.category.c_str());
        case 1:
            return member.SetDescription(nullptr);
        default:
            member.SetDescription(text.c_str());
            Check(member.category.find(';') == std::string::npos &&
                  member.comment.find(';') == std::string::npos);
        }
    }

    /// Another member in the place of one; conditions on the old one go.
    void Rebuild() {
        const std::size_t place = bytes.ConsumeIntegralInRange<std::size_t>(0, kMembers - 1);
        const std::string name = AnyText();
        const std::uint32_t tag = AnyTag();
        auto made = std::make_unique<CMember>(bytes.ConsumeBool() ? name.c_str() : nullptr, tag,
                                              AnyPointer(tag), name.c_str(), tag);
        for (auto& member : members) {
            ForgetIn(*member, members[place].get());
        }
        members[place] = std::move(made);
    }
    void ForgetIn(CMember& member, const CMember* gone) {
        member.RemoveCondition(gone);
        for (const CMemberValue& value : member.value) {
            if (value.AsList() != nullptr) {
                ForgetInAll(*value.AsList(), gone);
            }
            if (const CClassDefinition* instance = value.AsInstance()) {
                ForgetInAll(instance->members, gone);
                ForgetInAll(instance->members2, gone);
            }
        }
    }
    void ForgetInAll(const std::list<CMember*>& list, const CMember* gone) {
        for (CMember* member : list) {
            ForgetIn(*member, gone);
        }
    }

    void AddToInstance() {
        CClassDefinition* instance = AnyValue().AsInstance();
        const CMember& source = AnyMember();
        if (instance != nullptr && !IsTooMuch(source) && CountHeld(instance->members) < kMaxHeld) {
            Check(instance->AddMember(source) == instance->members.back());
        }
    }

    void Compare() {
        const CMemberValue& a = AnyValue();
        const CMemberValue& b = AnyValue();
        const int order = a.Compare(b);
        Check(order >= -2 && order <= 1);
        Check(a.GetType() == b.GetType() || order == -2);
    }

    void AskDatabase() {
        const std::unique_ptr<CClassDefinition> instance(CreateInstance(&database, AnyClass()));
        IsClassDerivedFrom(&database, AnyClass(), AnyClass());
        CMemberValue::SetClassDatabase(bytes.ConsumeBool() ? &database : nullptr);
    }

    FuzzedDataProvider bytes;
    /// Texts of some tags are never freed. Few inputs use them: a search for leaks follows each, which is
    /// slow.
    bool leaves;
    Database database;
    std::array<std::unique_ptr<CMember>, kMembers> members;
    std::array<std::array<char, 304>, 2> memory{};
    std::size_t turn = 0;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Worker worker(data, size);
    for (int step = 0; step < kMaxSteps && worker.HasMore(); ++step) {
        worker.Step();
    }
    return 0;
}
