#pragma once

class QApplication;
class QWidget;

namespace stage {

/// The editor's look: Fusion with a calm light palette and a style sheet for docks, bars and lists.
void ApplyTheme(QApplication& application);

namespace Color {
constexpr unsigned kAccent = 0xff1f7a8c;
constexpr unsigned kFilm = 0xffd9822b; ///< what belongs to a film: badges, attached views
constexpr unsigned kIcon = 0xff46505a;
constexpr unsigned kMuted = 0xff7a858f;
constexpr unsigned kDanger = 0xffb3413a;
} // namespace Color

} // namespace stage
