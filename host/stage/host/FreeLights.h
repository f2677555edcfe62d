#pragma once

#include <string>
#include <vector>

namespace stage {

class EditorHost;

/// Names of the lights that the next save leaves out: a plug-in keeps them with their films, and they are in
/// no film any more. Asks the plug-ins with event 20, as a save does.
std::vector<std::string> LightsWithoutFilm(EditorHost& host);

/// What the user is told when a light is taken out of its film.
std::string FreedLightText(const std::string& name);

} // namespace stage
