#pragma once

#include "plugin/contract/Plugin.h"
#include "plugin/contract/Types.h"

#include <list>

class FilmSession;

/// False if a film of the level needs one of the objects, as an actor or because a camera follows it, with a
/// message for each use; `messages` may be null. False without a level too, true for null.
bool CanDeleteObjects(const FilmSession& session, const ObjectList* objects,
                      std::list<DeleteMessage>* messages);
