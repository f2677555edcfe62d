#pragma once

#include "framework/Wnd.h"

#include <string>

/// The popup with the description of a key. The main control places it and writes its text.
class CFilmsKeyDescrWnd : public CWnd {
    DECLARE_MESSAGE_MAP()

public:
    std::string text;

protected:
    void OnPaint();
};
