#pragma once

#include "framework/Export.h"
#include "framework/Types.h"

#include <functional>

class CMenu;
class CToolBar;
class CWnd;
class QIcon;
class QMenu;
class QToolBar;
class QWidget;
struct CRuntimeClass;

// What a host that is itself made of toolkit windows needs to show the framework's menus, tool bars and
// windows.

using CommandSink = std::function<void(UINT)>;

// The widget behind a window; null before Create and after DestroyWindow.
FILMS_API QWidget* NativeWidget(const CWnd& window);

// A CWnd for a widget of the host's own, for use as parent or main window. Lives as long as the widget.
FILMS_API CWnd* WrapWidget(QWidget* widget);

// A menu for the host to show; it is a copy, owned by `parent`. `onCommand` gets the id of a chosen item.
FILMS_API QMenu* BuildQMenu(const CMenu& menu, QWidget* parent, CommandSink onCommand);
// Appends the items of a menu to one that the host builds.
FILMS_API void AppendToQMenu(const CMenu& menu, QMenu* target, const CommandSink& onCommand);

// The native tool bar of a CToolBar that has been loaded. It follows the data (states, buttons, text) from
// then on, may be deleted at any time, and lives no longer than the CToolBar. `onCommand` gets the id of a
// pressed button; without one the tool bar's owner gets WM_COMMAND. Tips come from the resource module
// current at this call.
FILMS_API QToolBar* CreateNativeToolBar(CToolBar& toolbar, QWidget* parent, CommandSink onCommand);
// A button's picture; sharp at twice the size when the module has the bitmap's number + 10000.
FILMS_API QIcon ToolBarIcon(const CToolBar& toolbar, int image);

// Makes a form view of its run-time class as a child of the widget and sends its first update. The view
// deletes itself with its window. Null when the class is no view or its template is missing.
FILMS_API CWnd* CreateFormView(const CRuntimeClass* viewClass, QWidget* parent, UINT id);
