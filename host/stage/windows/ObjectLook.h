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
/// Whether lists show the object: points of a film's camera come and go with it and are left out.
bool IsListed(const engine::SceneObject& object);

} // namespace stage
