#pragma once

#include "framework/Dialog.h"

#include <string>
#include <vector>

/// A plug-in's tool window as a plug-in writes it: it knows nothing of docks. It writes down what reaches it.
class ToolDialog : public CDialog {
    DECLARE_MESSAGE_MAP()
public:
    static constexpr int kMinWidth = 500;
    static constexpr int kMinHeight = 100;
    static constexpr int kFirst = 11; ///< two edits
    static constexpr int kSecond = 12;

    /// Makes the window hidden, 500 by 300, as its own constructor does with a plug-in's.
    explicit ToolDialog(CWnd* parent = nullptr, unsigned resource = 2001);

    BOOL PreTranslateMessage(MSG* message) override;

    std::vector<std::string> log; ///< show, hide, close, destroy
    CSize size;                   ///< of the last WM_SIZE
    std::vector<UINT> sides;      ///< of each WM_SIZING
    std::vector<int> keys;
    int wheel = 0;
    bool mayClose = true;
    bool diesOnClose = false;

protected:
    void OnShowWindow(BOOL show, UINT status);
    void OnSize(UINT type, int width, int height);
    void OnSizing(UINT side, CRect* rect);
    void OnClose();
    void OnDestroy();
    BOOL OnMouseWheel(UINT flags, short delta, CPoint screenPoint);
};
