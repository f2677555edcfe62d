#include "host/stage/windows/Theme.h"

#include "host/stage/windows/StageStyle.h"

#include <QApplication>
#include <QPalette>
#include <QSettings>

namespace stage {

namespace {

constexpr const char* kSetting = "looks/theme";

struct PaletteEntry {
    QPalette::ColorRole role;
    QRgb ThemeColors::*color;
};

constexpr PaletteEntry kPalette[] = {
    {QPalette::Window, &ThemeColors::window},       {QPalette::WindowText, &ThemeColors::text},
    {QPalette::Base, &ThemeColors::base},           {QPalette::AlternateBase, &ThemeColors::alternateBase},
    {QPalette::Text, &ThemeColors::text},           {QPalette::Button, &ThemeColors::button},
    {QPalette::ButtonText, &ThemeColors::text},     {QPalette::BrightText, &ThemeColors::highlightText},
    {QPalette::ToolTipBase, &ThemeColors::tip},     {QPalette::ToolTipText, &ThemeColors::tipText},
    {QPalette::Highlight, &ThemeColors::highlight}, {QPalette::HighlightedText, &ThemeColors::highlightText},
    {QPalette::Link, &ThemeColors::link},           {QPalette::PlaceholderText, &ThemeColors::placeholder},
};

constexpr QPalette::ColorRole kDisabled[] = {QPalette::WindowText, QPalette::Text, QPalette::ButtonText};

/// Names of colours stand between percent signs.
constexpr const char* kStyleSheet = R"(
QMainWindow::separator { background: %line%; width: 5px; height: 5px; }
QMainWindow::separator:hover { background: %accent%; }
QDockWidget { font-weight: 600; }
QDockWidget::title { background: %title%; padding: 6px 8px; border-bottom: 1px solid %line%; }
QToolBar { background: %bar%; border: none; border-bottom: 1px solid %line%; spacing: 3px; padding: 3px 6px; }
QToolBar::separator { background: %hoverLine%; width: 1px; margin: 4px 5px; }
QToolButton { padding: 4px; border: 1px solid transparent; border-radius: 4px; }
QToolButton:hover { background: %hover%; border-color: %hoverLine%; }
QToolButton:pressed { background: %pressed%; }
QToolButton:checked { background: %chosen%; border-color: %accent%; }
QToolButton#qt_toolbar_ext_button { background: %chosen%; border-color: %accent%; padding: 1px; }
QToolBar[objectName^="PluginBar"], stage--ToolWindowDock QToolBar { background: %pictureBar%; }
QToolBar[objectName^="PluginBar"] QToolButton:hover, stage--ToolWindowDock QToolBar QToolButton:hover { background: %pictureHover%; }
QToolBar[objectName^="PluginBar"] QToolButton:checked, stage--ToolWindowDock QToolBar QToolButton:checked { background: %pictureHover%; }
QMenuBar { background: %bar%; padding: 2px 4px; }
QMenuBar::item { padding: 4px 9px; border-radius: 4px; background: transparent; }
QMenuBar::item:selected { background: %chosen%; }
QMenu { background: %menu%; border: 1px solid %hoverLine%; padding: 4px; }
QMenu::item { padding: 4px 25px 4px 21px; border: 1px solid transparent; border-radius: 4px; }
QMenu::item:selected { background: %chosen%; border-color: %accent%; }
QMenu::item:disabled { color: %disabled%; background: transparent; border-color: transparent; }
QMenu::separator { height: 1px; background: %menuLine%; margin: 4px 8px; }
QStatusBar { background: %bar%; border-top: 1px solid %line%; }
QStatusBar::item { border: none; }
QTreeWidget, QListWidget { border: 1px solid %line%; border-radius: 4px; outline: none; }
QTreeWidget::item, QListWidget::item { padding: 3px 2px; }
QToolTip { background: %tip%; color: %tipText%; border: none; padding: 4px 6px; }
QLabel[role="hint"] { color: %muted%; }
QLabel[role="title"] { font-weight: 600; }
QLabel[role="mode"] { background: %highlight%; color: %highlightText%; border-radius: 3px; padding: 1px 8px; }
)";

struct ColorName {
    const char* name;
    QRgb ThemeColors::*color;
};

constexpr ColorName kNames[] = {
    {"%line%", &ThemeColors::line},
    {"%accent%", &ThemeColors::accent},
    {"%title%", &ThemeColors::title},
    {"%bar%", &ThemeColors::bar},
    {"%hoverLine%", &ThemeColors::hoverLine},
    {"%hover%", &ThemeColors::hover},
    {"%pressed%", &ThemeColors::pressed},
    {"%chosen%", &ThemeColors::chosen},
    {"%menu%", &ThemeColors::menu},
    {"%menuLine%", &ThemeColors::menuLine},
    {"%highlight%", &ThemeColors::highlight},
    {"%highlightText%", &ThemeColors::highlightText},
    {"%disabled%", &ThemeColors::disabled},
    {"%tip%", &ThemeColors::tip},
    {"%pictureBar%", &ThemeColors::pictureBar},
    {"%pictureHover%", &ThemeColors::pictureHover},
    {"%tipText%", &ThemeColors::tipText},
    {"%muted%", &ThemeColors::muted},
};

QString StyleSheetOf(const ThemeColors& colors) {
    QString sheet = kStyleSheet;
    for (const ColorName& entry : kNames) {
        sheet.replace(entry.name, QColor::fromRgb(colors.*entry.color).name());
    }
    return sheet;
}

QPalette PaletteOf(const ThemeColors& colors) {
    QPalette palette;
    for (const PaletteEntry& entry : kPalette) {
        palette.setColor(entry.role, QColor::fromRgb(colors.*entry.color));
    }
    for (const QPalette::ColorRole role : kDisabled) {
        palette.setColor(QPalette::Disabled, role, QColor::fromRgb(colors.disabled));
    }
    // What Fusion shades edges with.
    const QColor button = QColor::fromRgb(colors.button);
    palette.setColor(QPalette::Light, button.lighter(120));
    palette.setColor(QPalette::Midlight, button.lighter(108));
    palette.setColor(QPalette::Mid, QColor::fromRgb(colors.hoverLine));
    palette.setColor(QPalette::Dark, button.darker(150));
    palette.setColor(QPalette::Shadow, button.darker(250));
    return palette;
}

} // namespace

ThemeChoice ChosenTheme() {
    const QString chosen = QSettings().value(kSetting).toString();
    return chosen == "light"  ? ThemeChoice::Light
           : chosen == "dark" ? ThemeChoice::Dark
                              : ThemeChoice::Desktop;
}

void ChooseTheme(ThemeChoice choice) {
    QSettings().setValue(kSetting, choice == ThemeChoice::Light  ? "light"
                                   : choice == ThemeChoice::Dark ? "dark"
                                                                 : "desktop");
}

bool IsDesktopDark(const QPalette& desktop, const QString& gtkTheme) {
    return gtkTheme.endsWith(":dark") || gtkTheme.endsWith("-dark", Qt::CaseInsensitive) ||
           desktop.color(QPalette::Window).lightness() < desktop.color(QPalette::WindowText).lightness();
}

void ApplyTheme(QApplication& application) {
    const ThemeChoice choice = ChosenTheme();
    const bool isDark = choice == ThemeChoice::Dark ||
                        (choice == ThemeChoice::Desktop &&
                         IsDesktopDark(QApplication::palette(), qEnvironmentVariable("GTK_THEME")));
    SetPresentColors(isDark ? DarkColors() : LightColors());
    application.setStyle(new StageStyle);
    QApplication::setPalette(PaletteOf(PresentColors()));
    application.setStyleSheet(StyleSheetOf(PresentColors()));
}

} // namespace stage
