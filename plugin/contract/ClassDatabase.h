#pragma once

#include <list>
#include <string>
#include <vector>

class CMember;

/// A class of level objects as the editor describes it. Owned by the class database.
class CClassDefinition {
public:
    virtual ~CClassDefinition() = default;

    std::string name;
    std::vector<std::string> baseNames;
    std::list<CMember*> members;
    std::list<CMember*> members2;
    std::string description;
};

/// The editor's classes.
class IClassDatabase {
public:
    virtual ~IClassDatabase() = default;

    std::list<CClassDefinition*> classes;
};
