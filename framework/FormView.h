#pragma once

#include "framework/Wnd.h"

/// A window that a host makes through its run-time class. It deletes itself when its window is destroyed.
class FILMS_API CView : public CWnd {
    DECLARE_DYNAMIC(CView)
public:
    /// The first update; WM_INITIALUPDATE calls it.
    virtual void OnInitialUpdate();

protected:
    /// Called by the first update and whenever the host has something new to show.
    virtual void OnUpdate(CView* sender, LPARAM hint, CObject* object);
    void PostNcDestroy() override;
    LRESULT OnInitialUpdateMessage(WPARAM wParam, LPARAM lParam);

    DECLARE_MESSAGE_MAP()

    friend FILMS_API void UpdateView(CView& view, LPARAM hint, CObject* object);
};

/// The host's way to tell a view that its data changed.
FILMS_API void UpdateView(CView& view, LPARAM hint = 0, CObject* object = nullptr);

/// A view filled with the controls of a dialog template.
class FILMS_API CFormView : public CView {
    DECLARE_DYNAMIC(CFormView)
public:
    /// FALSE when the template is missing or damaged. The rect's size wins over the template's unless it is
    /// empty.
    BOOL Create(const char* className, const char* windowName, DWORD style, const CRect& rect, CWnd* parent,
                UINT id, CCreateContext* context = nullptr) override;
    void OnInitialUpdate() override;

protected:
    explicit CFormView(UINT templateId) : resourceId(templateId) {}

private:
    UINT resourceId;
};
