#pragma once

#include "framework/Export.h"
#include "framework/Types.h"

#include <functional>

class CDialog;
class CMenu;
class CToolBar;
class CWnd;
class QFileDialog;
class QIcon;
class QMenu;
class QToolBar;
class QWidget;
struct CRuntimeClass;

// What a host that is itself made of toolkit windows needs to show the framework's menus, tool bars and
// windows.

using CommandSink = std::function<void(UINT)>;

/// The widget behind a window; null before Create and after DestroyWindow.
FILMS_API QWidget* NativeWidget(const CWnd& window);

/// A CWnd for a widget of the host's own, for use as parent or main window. Lives as long as the widget.
FILMS_API CWnd* WrapWidget(QWidget* widget);

/// A menu for the host to show; it is a copy, owned by `parent`. `onCommand` gets the id of a chosen item.
FILMS_API QMenu* BuildQMenu(const CMenu& menu, QWidget* parent, const CommandSink& onCommand);
/// Appends the items of a menu to one that the host builds.
FILMS_API void AppendToQMenu(const CMenu& menu, QMenu* target, const CommandSink& onCommand);

/// The native tool bar of a CToolBar that has been loaded. It follows the data (states, buttons, text) from
/// then on, may be deleted at any time, and lives no longer than the CToolBar. `onCommand` gets the id of a
/// pressed button; without one the tool bar's owner gets WM_COMMAND. Tips come from the resource module
/// current at this call.
FILMS_API QToolBar* CreateNativeToolBar(CToolBar& toolbar, QWidget* parent, CommandSink onCommand);
/// A button's picture; sharp at twice the size when the module has the bitmap's number + 10000.
FILMS_API QIcon ToolBarIcon(const CToolBar& toolbar, int image);

/// Makes a form view of its run-time class as a child of the widget and sends its first update. The view
/// deletes itself with its window. Null when the class is no view or its template is missing.
FILMS_API CWnd* CreateFormView(const CRuntimeClass* viewClass, QWidget* parent, UINT id);

/// What a host has put around a top-level window of the framework, such as a dock. The window's widget is a
/// child of the frame's then, yet for the window and its messages it stays a top-level one.
class FILMS_API IWindowFrame {
public:
    virtual ~IWindowFrame() = default;
    /// The window has shown or hidden itself; its frame follows.
    virtual void ContentShown(bool shown) = 0;
    /// To the front, and with `activate` the keyboard goes to the window.
    virtual void RaiseContent(bool activate) = 0;
    /// The window wants this place, in screen coordinates. The frame may keep it elsewhere.
    virtual void PlaceContent(const CRect& place) = 0;
    /// The window is destroyed; its widget is deleted soon.
    virtual void ContentGone() = 0;
    /// The window is part of another one now, as a docked one is: Escape and Enter don't close it.
    virtual bool IsPanel() const = 0;
    /// Nothing of the window can be seen now although it is shown, as behind another tab: it counts as hidden
    /// for IsWindowVisible, and ShowWindow brings it forward.
    virtual bool IsCovered() const = 0;
};

/// Gives a hidden top-level window a frame whose widget is already around NativeWidget(window); null takes it
/// away. The frame must take itself away if it goes before its window.
FILMS_API void SetWindowFrame(CWnd& window, IWindowFrame* frame);
/// What the window makes of being dragged from one rect to another, in screen coordinates (WM_SIZING).
FILMS_API CRect AskSizing(CWnd& window, const CRect& before, const CRect& now);

/// Hears of each modeless dialog with a sizing border that belongs to the main window or to no window: after
/// its controls are made, before WM_INITDIALOG, while it is hidden. The place to give it a frame.
using ToolWindowSink = std::function<void(CDialog&)>;
FILMS_API void SetToolWindowSink(ToolWindowSink sink);

/// Gives each real dialog that opens a file a widget beside its list of files, such as a preview of the
/// chosen one. The maker is called before the dialog shows; what it returns belongs to the dialog from then
/// on, and null means none. An empty maker takes the last one away. Dialogs that save, and those that a test
/// answers, get none.
FILMS_API void SetFilePreview(std::function<QWidget*(QFileDialog& dialog)> maker);
