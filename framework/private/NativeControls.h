#pragma once

#include "framework/private/NativeWindow.h"

#include <QString>

// What the standard controls can do beyond a window; each is implemented by one native class.

class NativeListControl {
public:
    virtual ~NativeListControl() = default;
    virtual int InsertItem(int index, const QString& text) = 0; // -1 appends; the index it got
    virtual bool RemoveItem(int index) = 0;
    virtual void Clear() = 0;
    virtual int Count() const = 0;
    virtual QString ItemText(int index) const = 0;
    virtual UINT_PTR ItemData(int index) const = 0;
    virtual bool SetItemData(int index, UINT_PTR data) = 0;
    virtual int Current() const = 0;
    // Without telling the parent; -1 selects nothing.
    virtual bool SetCurrent(int index) = 0;
};

// A list box adds several selections and places.
class NativeListBoxControl : public NativeListControl {
public:
    virtual bool IsSelected(int index) const = 0;
    virtual bool Select(int index, bool on) = 0;
    virtual CRect ItemRect(int index) const = 0;
    virtual int ItemAt(CPoint point) const = 0;
    virtual int TopIndex() const = 0;
    virtual void SetTopIndex(int index) = 0;
    virtual int ItemHeight() const = 0;
    virtual void SetItemHeight(int height) = 0;
};

class NativeEditControl {
public:
    virtual ~NativeEditControl() = default;
    virtual void SetSelection(int start, int end) = 0;
    virtual void GetSelection(int& start, int& end) const = 0;
    virtual void SetLimit(int characters) = 0;
    virtual void SetReadOnly(bool on) = 0;
};

class NativeTabControl {
public:
    virtual ~NativeTabControl() = default;
    virtual int InsertTab(int index, const QString& label) = 0;
    virtual bool DeleteTab(int index) = 0;
    virtual int TabCount() const = 0;
    virtual int CurrentTab() const = 0;
    virtual void SetCurrentTab(int index) = 0;
    virtual QString TabText(int index) const = 0;
    virtual CRect PageRect() const = 0;
};

// The control behind a window; null without one or for another kind.
template <class Control> Control* ControlOf(const CWnd& wnd) {
    return dynamic_cast<Control*>(wnd.GetSafeHwnd());
}

// The answers of a list to the LB_ and CB_ messages that the two have in common.
int FindText(const NativeListControl& list, int after, const QString& text, bool exact);

NativeWindow* MakeButton(DWORD style, QWidget* parent);
NativeWindow* MakeEdit(DWORD style, QWidget* parent);
NativeWindow* MakeListBox(DWORD style, QWidget* parent);
NativeWindow* MakeComboBox(DWORD style, QWidget* parent);
NativeWindow* MakeStatic(DWORD style, QWidget* parent, Qt::WindowFlags flags);
NativeWindow* MakeTab(DWORD style, QWidget* parent);
NativeWindow* MakeToolBar(DWORD style, QWidget* parent);
