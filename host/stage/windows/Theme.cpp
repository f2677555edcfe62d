#include "host/stage/windows/Theme.h"

#include <QApplication>
#include <QPalette>
#include <QStyleFactory>

namespace stage {

namespace {

struct PaletteEntry {
    QPalette::ColorRole role;
    QRgb color;
};

constexpr PaletteEntry kPalette[] = {
    {QPalette::Window, 0xffeceef1},        {QPalette::WindowText, 0xff20262c},
    {QPalette::Base, 0xffffffff},          {QPalette::AlternateBase, 0xfff5f7f9},
    {QPalette::Text, 0xff20262c},          {QPalette::Button, 0xfff2f4f6},
    {QPalette::ButtonText, 0xff20262c},    {QPalette::BrightText, 0xffffffff},
    {QPalette::ToolTipBase, 0xff2b333b},   {QPalette::ToolTipText, 0xfff2f4f6},
    {QPalette::Highlight, Color::kAccent}, {QPalette::HighlightedText, 0xffffffff},
    {QPalette::Link, Color::kAccent},      {QPalette::PlaceholderText, 0xff98a2ab},
};

constexpr PaletteEntry kDisabled[] = {
    {QPalette::WindowText, 0xffa2abb3},
    {QPalette::Text, 0xffa2abb3},
    {QPalette::ButtonText, 0xffa2abb3},
};

constexpr const char* kStyleSheet = R"(
QMainWindow::separator { background: #d5dae0; width: 5px; height: 5px; }
QMainWindow::separator:hover { background: #1f7a8c; }
QDockWidget { font-weight: 600; }
QDockWidget::title { background: #dfe4e9; padding: 6px 8px; border-bottom: 1px solid #ccd3da; }
QToolBar { background: #e6eaee; border: none; border-bottom: 1px solid #ccd3da; spacing: 3px; padding: 3px 6px; }
QToolBar::separator { background: #c6ced6; width: 1px; margin: 4px 5px; }
QToolButton { padding: 4px; border: 1px solid transparent; border-radius: 4px; }
QToolButton:hover { background: #f7f9fa; border-color: #c3cbd3; }
QToolButton:pressed { background: #d3dde3; }
QToolButton:checked { background: #d2e5ea; border-color: #1f7a8c; }
QMenuBar { background: #e6eaee; padding: 2px 4px; }
QMenuBar::item { padding: 4px 9px; border-radius: 4px; background: transparent; }
QMenuBar::item:selected { background: #d2e5ea; }
QMenu { background: #fbfcfd; border: 1px solid #c3cbd3; padding: 4px; }
QMenu::item { padding: 5px 26px 5px 22px; border-radius: 4px; }
QMenu::item:selected { background: #1f7a8c; color: white; }
QMenu::item:disabled { color: #a2abb3; background: transparent; }
QMenu::separator { height: 1px; background: #dde2e7; margin: 4px 8px; }
QStatusBar { background: #e6eaee; border-top: 1px solid #ccd3da; }
QStatusBar::item { border: none; }
QTreeWidget, QListWidget { border: 1px solid #d0d7dd; border-radius: 4px; outline: none; }
QTreeWidget::item, QListWidget::item { padding: 3px 2px; }
QToolTip { background: #2b333b; color: #f2f4f6; border: none; padding: 4px 6px; }
QLabel[role="hint"] { color: #7a858f; }
QLabel[role="title"] { font-weight: 600; }
QLabel[role="mode"] { background: #1f7a8c; color: white; border-radius: 3px; padding: 1px 8px; }
)";

} // namespace

void ApplyTheme(QApplication& application) {
    application.setStyle(QStyleFactory::create("Fusion"));
    QPalette palette;
    for (const PaletteEntry& entry : kPalette) {
        palette.setColor(entry.role, QColor::fromRgb(entry.color));
    }
    for (const PaletteEntry& entry : kDisabled) {
        palette.setColor(QPalette::Disabled, entry.role, QColor::fromRgb(entry.color));
    }
    QApplication::setPalette(palette);
    application.setStyleSheet(kStyleSheet);
}

} // namespace stage
