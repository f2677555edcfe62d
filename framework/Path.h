#pragma once

#include "framework/Constants.h"
#include "framework/Export.h"

#include <string>

inline constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 16;

// Paths with either separator; results use '/'. Drive letters compare without case, names exactly.

/// The file, or if it is relative, the file under the directory; "." and ".." are resolved, never above the
/// root.
FILMS_API std::string PathCombine(const std::string& directory, const std::string& file);
/// The way from one path to the other, beginning with "./" or "../", or "." alone. Without
/// FILE_ATTRIBUTE_DIRECTORY a path's last part is a file, and an ending separator does not make one more.
/// False, and an empty text, when the two have no root in common.
FILMS_API bool PathRelativePathTo(std::string& result, const std::string& from, DWORD fromAttributes,
                                  const std::string& to, DWORD toAttributes);
/// The path of the running program; empty when the system does not tell.
FILMS_API std::string GetModuleFileName();
/// Up to and with the last separator; empty without one.
FILMS_API std::string PathDirectory(const std::string& path);
