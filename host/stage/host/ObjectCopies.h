#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace engine {
class Level;
class SceneObject;
} // namespace engine

namespace stage {

class EditorHost;
class LevelSession;

/// Objects as bytes, for the clipboard: what they are, where they stand, which of them hangs on which, which
/// are a group, and from which folder their meshes are named. Bodies of plug-ins and what is kept with the
/// films are left out.
std::string CopyObjects(const engine::Level& level, const std::vector<engine::SceneObject*>& objects);

/// Makes the objects in the open level, with names of their own and meshes named from its folder, and selects
/// them: event 3. The number of objects; none for bytes that CopyObjects has not written.
int PasteObjects(EditorHost& host, LevelSession& session, std::string_view bytes);

} // namespace stage
