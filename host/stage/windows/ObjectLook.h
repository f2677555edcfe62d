#pragma once

#include "host/stage/windows/Icons.h"

#include <QString>

namespace engine {
class SceneObject;
}

namespace stage {

/// How an object is shown in lists.
IconId IconOf(const engine::SceneObject& object);
/// The class in words, as "Light of a film".
QString ClassText(const engine::SceneObject& object);
/// A name as menus and buttons take it: an '&' in a text of theirs marks the letter behind it.
QString MenuText(const QString& name);
/// Whether lists show the object unless helpers are asked for: what a plug-in makes for itself, as the points
/// of a film's camera and the body of the sun, comes and goes with it and is left out.
bool IsListed(const engine::SceneObject& object);

} // namespace stage
