#pragma once

#include <string>
#include <vector>

namespace stage {

class EditorHost;

/// What has come of a look at the files of models.
struct ModelNews {
    std::vector<std::string> loaded;  ///< names of the models that are others now
    std::vector<std::string> refused; ///< why others are as before: one sentence each
};

/// Reads the models whose files have changed anew, for all objects that have them: places, names and undo
/// history stay, and an open film poses the new ones. A file that is gone or can't be read leaves the model
/// as it is. Call it where the user does nothing and no film plays.
ModelNews ReloadModels(EditorHost& host);

} // namespace stage
