#pragma once

#include "framework/private/NativeWindow.h"

// Makes the widget of a window class in the parent's client area; `flags` are those of a top-level window.
NativeWindow* MakeNative(const std::string& className, DWORD style, QWidget* parent, Qt::WindowFlags flags);

// A plain framework object of the fitting class for a control that a template makes; owned by the caller.
CWnd* MakeControlObject(const std::string& className, DWORD style);
