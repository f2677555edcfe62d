#pragma once

#include <QRgb>

namespace stage {

/// The colours that Stage's windows are made of. Two sets, one to be present.
struct ThemeColors {
    QRgb window, text;           ///< of panels
    QRgb base, alternateBase;    ///< of lists and fields
    QRgb button, bar;            ///< buttons; menu, tool and status bars
    QRgb title, line;            ///< titles of docks; lines between areas
    QRgb menu, menuLine;         ///< menus and their rules
    QRgb hover, pressed, chosen; ///< tool buttons
    QRgb hoverLine;
    QRgb pictureBar, pictureHover; ///< toolbars whose pictures are made for a light ground
    QRgb tip, tipText;
    QRgb highlight, highlightText;
    QRgb accent, film, icon, muted, danger, link;
    QRgb placeholder, disabled;
};

const ThemeColors& LightColors();
const ThemeColors& DarkColors();
/// The present ones.
const ThemeColors& PresentColors();
void SetPresentColors(const ThemeColors& colors);

/// Relative contrast of two opaque colours, 1 to 21, as the guidelines for accessible web content define it.
double ContrastOf(QRgb one, QRgb other);

/// A colour of the present theme, whichever that is.
class ThemeColor {
public:
    constexpr explicit ThemeColor(QRgb ThemeColors::*which) : member(which) {}
    operator QRgb() const { return PresentColors().*member; } // NOLINT(google-explicit-constructor)

private:
    QRgb ThemeColors::*member;
};

namespace Color {
constexpr ThemeColor kAccent{&ThemeColors::accent};
constexpr ThemeColor kFilm{&ThemeColors::film}; ///< what belongs to a film: badges, attached views
constexpr ThemeColor kIcon{&ThemeColors::icon};
constexpr ThemeColor kMuted{&ThemeColors::muted};
constexpr ThemeColor kDanger{&ThemeColors::danger};
} // namespace Color

} // namespace stage
