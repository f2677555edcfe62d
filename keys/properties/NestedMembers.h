#pragma once

#include "plugin/contract/Member.h"

class CClassDefinition;

// Members in the lists and instances that values hold. These walks take no stack, however deep the nesting
// is.

/// Values nest so many levels at most: what is deeper isn't copied. Far beyond any class of the editor.
inline constexpr int kMaxNesting = 64;

/// Whether members nest deeper than kMaxNesting.
bool IsNestedTooDeep(const CClassDefinition& instance);
bool IsNestedTooDeep(const std::list<CMember*>& members);
/// Whether a member stands anywhere below another.
bool IsHeldBy(const CMember& sought, const CMember& holder);
/// Puts a copy of a member at the end; owned by the list.
CMember* AddCopy(std::list<CMember*>& members, const CMember& source);
/// Deletes the members, everything below them, and empties the list.
void DestroyMembers(std::list<CMember*>& members);
