#pragma once

#include "plugin/contract/ClassDatabase.h"

#include <memory>

/// While one stands on the stack, instances are copied just as they are. Otherwise they are made anew from
/// their class first, which would have no end for a class that holds an instance of itself.
class CopyInstancesAsTheyAre {
public:
    CopyInstancesAsTheyAre() { ++standing; }
    ~CopyInstancesAsTheyAre() { --standing; }
    CopyInstancesAsTheyAre(const CopyInstancesAsTheyAre&) = delete;
    CopyInstancesAsTheyAre& operator=(const CopyInstancesAsTheyAre&) = delete;

    static bool IsAsked() { return standing > 0; }

private:
    static thread_local int standing;
};

/// A copy of an instance: one of its class from the database with the source's values. Null for a class that
/// the database doesn't know, or without a database.
std::unique_ptr<CClassDefinition> CopyInstance(const IClassDatabase* database,
                                               const CClassDefinition& source);

/// Gives an instance the values of another of its class, member by member. Members that only the source has
/// are added; what only the instance has stays, since conditions may look at it. Neither may hold the other.
void UpdateInstance(CClassDefinition& instance, const CClassDefinition& source);
