#include "host/engine/UniqueNames.h"

#include "host/engine/LevelData.h"

namespace engine {

UniqueNames::UniqueNames(const LevelData& data, const EditorObject* except) {
    taken.reserve(data.Objects().size());
    for (const auto& object : data.Objects()) {
        if (object.get() != except) {
            taken.insert(object->name);
        }
    }
}

bool UniqueNames::IsTaken(const std::string& name) {
    ++lookups;
    return taken.contains(name);
}

std::string UniqueNames::Take(const std::string& wanted) {
    std::string unique = wanted.empty() ? "Object" : wanted;
    if (IsTaken(unique)) {
        // "Crate7" asks for the next free "Crate", not for "Crate71".
        const std::size_t lastLetter = unique.find_last_not_of("0123456789");
        const std::string base = lastLetter == std::string::npos ? unique : unique.substr(0, lastLetter + 1);
        int& number = nextNumbers.try_emplace(base, 1).first->second;
        do {
            unique = base + std::to_string(number++);
        } while (IsTaken(unique));
    }
    taken.insert(unique);
    return unique;
}

} // namespace engine
