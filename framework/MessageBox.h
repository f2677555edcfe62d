#pragma once

#include "framework/Constants.h"
#include "framework/Export.h"

#include <string>

/// A modal question or message with the buttons and picture of the MB_ flags; returns the button, IDOK,
/// IDYES...
FILMS_API int AfxMessageBox(const std::string& text, UINT type = MB_OK, UINT help = 0);
FILMS_API int AfxMessageBox(const char* text, UINT type = MB_OK, UINT help = 0);
/// The text of this number in the current module's string table.
FILMS_API int AfxMessageBox(UINT textId, UINT type = MB_OK, UINT help = 0);
