#include "plugin/ClassDerivation.h"

#include <algorithm>
#include <strings.h>

namespace {

/// Deeper than any class tree; ends the search in a database whose classes form a ring.
constexpr int kMaxDepth = 64;

bool Derives(const IClassDatabase* database, const std::string& className, const std::string& baseName,
             int depth) {
    if (className == baseName) {
        return true;
    }
    const CClassDefinition* definition = depth < kMaxDepth ? FindClass(database, className) : nullptr;
    return definition != nullptr && std::ranges::any_of(definition->baseNames, [&](const std::string& base) {
               return Derives(database, base, baseName, depth + 1);
           });
}

} // namespace

const CClassDefinition* FindClass(const IClassDatabase* database, const std::string& name) {
    if (database == nullptr) {
        return nullptr;
    }
    const auto found = std::ranges::find_if(database->classes, [&name](const CClassDefinition* definition) {
        return strcasecmp(definition->name.c_str(), name.c_str()) == 0;
    });
    return found == database->classes.end() ? nullptr : *found;
}

bool IsClassDerivedFrom(const IClassDatabase* database, const std::string& className,
                        const std::string& baseName) {
    return Derives(database, className, baseName, 0);
}
