#pragma once

#include <algorithm>
#include <vector>

namespace stage {

/// Members of a registration list in the order of entry. Members may enter and leave during a delivery:
/// one that has left is not called any more, one that has entered waits for the next delivery.
template <class Member> class ListenerList {
public:
    void Add(Member* member) {
        if (member != nullptr && !Contains(member)) {
            members.push_back(member);
        }
    }
    void Remove(Member* member) { std::erase(members, member); }
    bool Contains(const Member* member) const {
        return std::find(members.begin(), members.end(), member) != members.end();
    }
    bool Empty() const { return members.empty(); }

    template <class Call> void Deliver(Call call) const {
        const std::vector<Member*> present = members;
        for (Member* member : present) {
            if (Contains(member)) {
                call(member);
            }
        }
    }

private:
    std::vector<Member*> members;
};

} // namespace stage
