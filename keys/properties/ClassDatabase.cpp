#include "plugin/contract/ClassDatabase.h"
#include "keys/properties/InstanceCopies.h"
#include "keys/properties/NestedMembers.h"
#include "keys/properties/NumberText.h"

#include <algorithm>
#include <memory>
#include <set>
#include <utility>

thread_local int CopyInstancesAsTheyAre::standing = 0;

namespace {

/// Bits of a member's flags that members of an instance have, and bits that they haven't.
constexpr std::uint32_t kInstanceBits = 1u << 0 | 1u << 2;
constexpr std::uint32_t kClassBits = 1u << 1 | 1u << 3;

void AddInstanceMembers(std::list<CMember*>& members, const std::list<CMember*>& classMembers) {
    for (const CMember* source : classMembers) {
        CMember* copy = AddCopy(members, *source);
        copy->flags = (copy->flags | kInstanceBits) & ~kClassBits;
    }
}

void UpdateMembers(std::list<CMember*>& members, const std::list<CMember*>& source) {
    auto own = members.begin();
    for (const CMember* other : source) {
        if (own == members.end()) {
            AddCopy(members, *other);
        } else {
            (*own)->CopyFrom(*other);
            ++own;
        }
    }
}

} // namespace

CClassDefinition::~CClassDefinition() {
    DestroyMembers(members);
    DestroyMembers(members2);
    DestroyMembers(members3);
}

CMember* CClassDefinition::AddMember(const CMember& source) {
    return AddCopy(members, source);
}

CMember* CClassDefinition::AddMember2(const CMember& source) {
    return AddCopy(members2, source);
}

CClassDefinition* FindClass(const IClassDatabase* database, const std::string& name) {
    if (database == nullptr) {
        return nullptr;
    }
    const auto found = std::ranges::find_if(database->classes, [&name](const CClassDefinition* definition) {
        return EqualsIgnoringCase(definition->name.c_str(), name.c_str());
    });
    return found == database->classes.end() ? nullptr : *found;
}

CClassDefinition* CreateInstance(const IClassDatabase* database, const std::string& name) {
    const CClassDefinition* definition = FindClass(database, name);
    if (definition == nullptr) {
        return nullptr;
    }
    const CopyInstancesAsTheyAre asTheyAre;
    auto instance = std::make_unique<CClassDefinition>();
    instance->name = definition->name;
    instance->description = definition->description;
    instance->baseNames = definition->baseNames;
    AddInstanceMembers(instance->members, definition->members);
    AddInstanceMembers(instance->members2, definition->members2);
    return instance.release();
}

bool IsClassDerivedFrom(const IClassDatabase* database, const std::string& className,
                        const std::string& baseName) {
    std::vector<std::string> open{className};
    std::set<const CClassDefinition*> seen; // each class once, so that rings and shared bases have an end
    while (!open.empty()) {
        const std::string name = std::move(open.back());
        open.pop_back();
        if (name == baseName) {
            return true;
        }
        const CClassDefinition* definition = FindClass(database, name);
        if (definition != nullptr && seen.insert(definition).second) {
            open.insert(open.end(), definition->baseNames.begin(), definition->baseNames.end());
        }
    }
    return false;
}

std::unique_ptr<CClassDefinition> CopyInstance(const IClassDatabase* database,
                                               const CClassDefinition& source) {
    std::unique_ptr<CClassDefinition> copy;
    if (CopyInstancesAsTheyAre::IsAsked()) {
        copy = std::make_unique<CClassDefinition>();
        copy->name = source.name;
        copy->description = source.description;
        copy->baseNames = source.baseNames;
    } else {
        copy.reset(CreateInstance(database, source.name));
    }
    if (copy != nullptr) {
        UpdateInstance(*copy, source);
    }
    return copy;
}

void UpdateInstance(CClassDefinition& instance, const CClassDefinition& source) {
    UpdateMembers(instance.members, source.members);
    UpdateMembers(instance.members2, source.members2);
}
