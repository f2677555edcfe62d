#pragma once

#include <string>

namespace engine {

// Levels name other files, meshes and sounds, relative to their own folder, with either separator.

/// The path without dependence on the working directory, which file dialogs change. Links stay in it as far
/// as no
/// ".." follows them.
std::string AbsolutePath(const std::string& path);
/// The folder of a level's file, absolute and with a separator at its end. A link in place of the file is
/// followed: names in a file are relative to where the file itself lies.
std::string LevelFolder(const std::string& path);
/// Path of the file behind a name of a level in `folder`. Absolute names stand for themselves. A name that
/// leads nowhere from the level's folder is tried from the program's, where plug-ins' file dialogs start
/// their names.
std::string ReferencePath(const std::string& folder, const std::string& name);
/// The name that leads from folder `to` where `name` leads from folder `from`. Never empty unless `name` is;
/// a name that can't be told in another way stays, as does that of a shape, which is no file.
std::string RebasedReference(const std::string& name, const std::string& from, const std::string& to);
/// Whether both names mean one folder, by links and all spellings.
bool IsSameFolder(const std::string& first, const std::string& second);

} // namespace engine
