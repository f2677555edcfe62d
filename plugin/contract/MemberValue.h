#pragma once

#include "plugin/contract/Types.h"

#include <cstdint>
#include <list>
#include <memory>
#include <string>

class CClassDefinition;
class CMember;
class IClassDatabase;

/// Tags of CMemberValue: how its payload is read. The numbers are those of the editor's class database.
namespace MemberType {
constexpr std::uint32_t Char = 0;
constexpr std::uint32_t Byte = 1;
constexpr std::uint32_t Int = 2;
constexpr std::uint32_t Float = 3;
constexpr std::uint32_t Int64 = 4;
constexpr std::uint32_t Short = 5;
constexpr std::uint32_t String = 6;
constexpr std::uint32_t Vector = 8; ///< also a colour: r, g, b in 0 to 1
constexpr std::uint32_t Bool = 9;
constexpr std::uint32_t ObjectId = 12;
constexpr std::uint32_t Instance = 15;
constexpr std::uint32_t MemberList = 16;
constexpr std::uint32_t Last = 21;
} // namespace MemberType

/// A tagged value. Tags 6, 13, 14, 17 own a string that may be null; 19, 20, 21 hold one that is copied like
/// it and never freed; 15 owns a class instance, 16 a list of members; 2, 12, 18 an int32; 0, 1, 5 smaller
/// integers, 4 an int64; 3 a float32; 8 three; 9 a bool; 7, 10, 11 and above 21 nothing. Numbers and their
/// texts are those of the C locale. What is given to a value may be a part of it.
///
/// Lists and instances are always copied, so that none can hold itself. What nests more than 64 levels deep
/// is not copied.
class CMemberValue {
public:
    CMemberValue() = default;
    virtual ~CMemberValue();
    CMemberValue(const CMemberValue&) = delete;
    CMemberValue& operator=(const CMemberValue&) = delete;

    std::uint32_t GetType() const { return type; }
    /// Releases what is held and stands at zero (null, false) under the new tag. The same tag changes
    /// nothing.
    void ChangeTag(std::uint32_t tag);

    /// -1, 0, 1; -2 for values that can't be compared.
    int Compare(const CMemberValue& other) const;
    void ToText(std::string& text) const;
    /// Null does nothing. A number that is too large becomes the largest of its type, a float an infinity;
    /// the bytes and shorts take the low bits of an int32. "null" empties an instance or a list; an instance
    /// takes the name of a class that the database knows, and everything else leaves the two alone.
    void Parse(const char* text);
    /// Takes tag and a copy of the payload. An instance of the same class stays and takes the other's values;
    /// otherwise it is made from the database, without which the value keeps what it has.
    void Assign(const CMemberValue& other);
    /// Copies the payload from memory in the width of the present tag; a string, an instance or a list is
    /// what the pointer points at. False for null, but for tag 15, and for tags that hold nothing.
    bool SetFromPointer(const void* pointer);

    // By value. Each answers false, and changes nothing, for a tag that doesn't hold such a value and for
    // what can't be copied. An integer is stored in the width of the tag, and in a float or a bool as well.
    bool SetByValue(std::int32_t number);
    bool SetByValue(std::int64_t number);
    bool SetByValue(float number);
    bool SetByValue(bool flag);
    bool SetByValue(float x, float y, float z);
    /// Copied; null leaves the value null.
    bool SetByValue(const char* text);
    bool SetByValue(const CClassDefinition* instance);
    bool SetByValue(const std::list<CMember*>* members);

    // What is held, or zero under a tag of another family.
    std::int64_t AsInteger() const;
    float AsFloat() const;
    Vector3 AsVector() const;
    bool AsBool() const;
    const char* AsString() const;
    CClassDefinition* AsInstance() const;
    const std::list<CMember*>* AsList() const;
    /// The first four bytes of the payload, which an enumerated member takes for an index whatever its tag
    /// is; -1, which is no index, for what stands for an address.
    std::int32_t FirstWord() const;
    /// Hands the members of a list or an instance over at the end of `members`, and holds null.
    void GiveMembersTo(std::list<CMember*>& members);

    /// The database that instances are made from; null at first, not owned. One for each library that links
    /// this code.
    static void SetClassDatabase(const IClassDatabase* database);

private:
    void Release();
    /// Zero in the union's member of the tag; what was held is forgotten.
    void StandAtZero(std::uint32_t tag);
    void SetText(const char* text);
    void SetInstance(std::unique_ptr<CClassDefinition> instance);
    bool StoreInteger(std::int64_t number);
    /// Makes a value that holds nothing yet a copy. False if an instance or a list can't be copied: then only
    /// the tag is taken.
    bool CopyPayload(const CMemberValue& other);
    bool HoldsClassOf(const CMemberValue& other) const;
    int CompareHeld(const CMemberValue& other) const;
    void ParseVector(const char* text);
    void ParseInstance(const char* text);

    union alignas(8) Payload {
        std::int8_t character;
        std::uint8_t byte;
        std::int16_t number16;
        std::int32_t number;
        std::int64_t number64;
        float real;
        float vector[3];
        bool flag;
        char* text;
        CClassDefinition* instance;
        std::list<CMember*>* members;
    };
    Payload data{.number = 0};
    std::uint32_t type = MemberType::Int;
};
