#pragma once

#include "framework/Export.h"

#include <functional>
#include <string>

/// A line that tells the user something and asks nothing, as a program shows it in its status bar. Lost
/// without a host.
FILMS_API void NoteForUser(const std::string& text);

using UserNoteSink = std::function<void(const std::string& text)>;

/// For the program around the windows; an empty one takes it away. The sink must outlive its stay here.
FILMS_API void SetUserNoteSink(UserNoteSink sink);
