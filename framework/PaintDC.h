#pragma once

#include "framework/DC.h"
#include "framework/Wnd.h"

/// The surface of a window while it handles WM_PAINT. Made anywhere else it draws nothing. The window is
/// first asked to erase itself if its invalidation wanted that; when it answers 0, ps.fErase stays set.
class FILMS_API CPaintDC : public CDC {
    DECLARE_DYNAMIC(CPaintDC)
public:
    explicit CPaintDC(CWnd* window);
    ~CPaintDC() override;

    PAINTSTRUCT ps;
};

/// A surface of the window outside painting: it measures text and is a model for bitmaps, and its clip box is
/// empty.
class FILMS_API CClientDC : public CDC {
    DECLARE_DYNAMIC(CClientDC)
public:
    explicit CClientDC(CWnd* window);
};
