#pragma once

#include "framework/TestHooks.h"

#include <string>
#include <vector>

class CWnd;

/// Notes every drawing call while it lives, and gives back the hooks of before.
class DrawRecorder {
public:
    DrawRecorder();
    DrawRecorder(const DrawRecorder&) = delete;
    DrawRecorder& operator=(const DrawRecorder&) = delete;

    /// Paints a window and its children, shown or not, and returns the calls as lines.
    std::vector<std::string> Paint(CWnd& window);
    std::vector<std::string> Lines() const;

    std::vector<DrawCall> calls;

private:
    HookScope hooks;
};

/// One call as text, with pens as style/width/colour and colours as 0xBBGGRR in six digits:
///   line 1,2 3,4 pen 0/0/000000
///   rect 0,0,10,5 pen 0/0/000000 brush FAFAFA       (hollow: brush none)
///   poly 1,2 3,4 5,6 pen 0/0/000000 brush 0000FF
///   fill 0,0,10,5 FFFFFF
///   text 2,2 'words'
///   text 2,2,8,8 'words' format 16
///   copy 0,0,10,5
std::string DescribeCall(const DrawCall& call);
