#include "keys/properties/NestedMembers.h"
#include "plugin/contract/ClassDatabase.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

namespace {

using Level = std::vector<const CMember*>;

void Append(Level& level, const std::list<CMember*>& members) {
    level.insert(level.end(), members.begin(), members.end());
}

void Append(Level& level, const CClassDefinition& instance) {
    Append(level, instance.members);
    Append(level, instance.members2);
    Append(level, instance.members3);
}

void AppendHeld(Level& level, const CMemberValue& value) {
    if (const std::list<CMember*>* members = value.AsList()) {
        Append(level, *members);
    }
    if (const CClassDefinition* instance = value.AsInstance()) {
        Append(level, *instance);
    }
}

Level LevelBelow(const Level& level) {
    Level below;
    for (const CMember* member : level) {
        AppendHeld(below, member->value[0]);
        AppendHeld(below, member->value[1]);
    }
    return below;
}

bool IsLevelTooDeep(Level level) {
    for (int depth = 1; depth <= kMaxNesting && !level.empty(); ++depth) {
        level = LevelBelow(level);
    }
    return !level.empty();
}

} // namespace

bool IsNestedTooDeep(const CClassDefinition& instance) {
    Level level;
    Append(level, instance);
    return IsLevelTooDeep(std::move(level));
}

bool IsNestedTooDeep(const std::list<CMember*>& members) {
    Level level;
    Append(level, members);
    return IsLevelTooDeep(std::move(level));
}

bool IsHeldBy(const CMember& sought, const CMember& holder) {
    for (Level level = LevelBelow({&holder}); !level.empty(); level = LevelBelow(level)) {
        if (std::ranges::find(level, &sought) != level.end()) {
            return true;
        }
    }
    return false;
}

CMember* AddCopy(std::list<CMember*>& members, const CMember& source) {
    auto copy = std::make_unique<CMember>();
    copy->CopyFrom(source);
    members.push_back(copy.get());
    return copy.release();
}

void DestroyMembers(std::list<CMember*>& members) {
    std::list<CMember*> leaving;
    leaving.swap(members);
    while (!leaving.empty()) {
        CMember* member = leaving.front();
        leaving.pop_front();
        member->value[0].GiveMembersTo(leaving);
        member->value[1].GiveMembersTo(leaving);
        delete member;
    }
}
