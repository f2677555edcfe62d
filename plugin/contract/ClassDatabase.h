#pragma once

#include "plugin/contract/Member.h"

#include <cstdint>
#include <list>
#include <string>
#include <vector>

/// A class of level objects as the editor describes it, or an instance of one.
class CClassDefinition {
public:
    CClassDefinition() = default;
    virtual ~CClassDefinition();
    CClassDefinition(const CClassDefinition&) = delete;
    CClassDefinition& operator=(const CClassDefinition&) = delete;

    /// A copy at the end of the first list; owned by this class.
    CMember* AddMember(const CMember& source);
    /// The same at the end of the second list.
    CMember* AddMember2(const CMember& source);

    std::uint8_t flag1 = 1;
    std::uint8_t flag2 = 1;
    std::string name;
    std::vector<std::string> baseNames;
    std::vector<std::string> unusedNames; ///< of the layout; empty
    std::list<CMember*> members;          ///< owned
    std::list<CMember*> members2;         ///< owned
    std::list<CMember*> members3;         ///< owned; nothing fills it
    std::string description;
};

/// The editor's classes, owned by the host.
class IClassDatabase {
public:
    virtual ~IClassDatabase() = default;

    std::list<CClassDefinition*> classes;
};

/// The first class whose name equals `name` ignoring case, or null.
CClassDefinition* FindClass(const IClassDatabase* database, const std::string& name);
/// A new object with copies of the class's members, or null for an unknown class. The caller owns it.
CClassDefinition* CreateInstance(const IClassDatabase* database, const std::string& name);
/// True for equal names (case counts), and when any base of the class derives from `baseName`. A class
/// that is its own ancestor ends in false.
bool IsClassDerivedFrom(const IClassDatabase* database, const std::string& className,
                        const std::string& baseName);
