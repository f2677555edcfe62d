#pragma once

#include "framework/MessageMap.h"
#include "framework/Object.h"

/// Where a command would be handled; filled instead of calling when a caller only asks.
struct AFX_CMDHANDLERINFO {
    CCmdTarget* target = nullptr;
};

/// A notification on its way through OnCmdMsg, as its `extra` argument.
struct AFX_NOTIFY {
    LRESULT* result = nullptr;
    NMHDR* header = nullptr;
};

/// An object that takes commands through a message map.
class FILMS_API CCmdTarget : public CObject {
    DECLARE_DYNAMIC(CCmdTarget)
public:
    /// Routes a command (code 0), a control's notification code, or, with WM_NOTIFY in the code's high word,
    /// a notification, to the map. True when a handler took it.
    virtual BOOL OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* handlerInfo);

protected:
    static const MessageMap* GetThisMessageMap();
    virtual const MessageMap* GetMessageMap() const;
};
