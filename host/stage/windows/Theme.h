#pragma once

#include "host/stage/windows/ThemeColors.h"

class QApplication;
class QPalette;
class QString;

namespace stage {

/// What the user wants: as the desktop has it, or one whatever that is.
enum class ThemeChoice { Desktop, Light, Dark };

/// Kept per user; counts from the next start on.
ThemeChoice ChosenTheme();
void ChooseTheme(ThemeChoice choice);
/// Whether the desktop's own colours, as the toolkit got them, or the variable GTK_THEME say dark.
bool IsDesktopDark(const QPalette& desktop, const QString& gtkTheme);

/// The editor's look: Fusion with a calm palette and a style sheet for docks, bars and lists, light or dark.
/// Once, before the first window.
void ApplyTheme(QApplication& application);

} // namespace stage
