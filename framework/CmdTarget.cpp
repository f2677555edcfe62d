#include "framework/CmdTarget.h"

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)

const MessageMap* CCmdTarget::GetThisMessageMap() {
    static const MessageMap map{nullptr, nullptr, 0};
    return &map;
}

const MessageMap* CCmdTarget::GetMessageMap() const {
    return GetThisMessageMap();
}

namespace {

bool Matches(const MessageEntry& entry, UINT message, UINT code, UINT id) {
    // A notification code travels in 16 bits.
    const bool sameCode =
        message == WM_NOTIFY ? (entry.code & 0xFFFF) == (code & 0xFFFF) : entry.code == code;
    return entry.message == message && sameCode && id >= entry.id && id <= entry.lastId;
}

} // namespace

BOOL CCmdTarget::OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* handlerInfo) {
    const bool isNotify = HIWORD(static_cast<UINT>(code)) == WM_NOTIFY;
    auto* notify = isNotify ? static_cast<AFX_NOTIFY*>(extra) : nullptr;
    const UINT message = isNotify ? WM_NOTIFY : WM_COMMAND;
    for (const MessageMap* map = GetMessageMap(); map; map = map->base) {
        for (std::size_t i = 0; i < map->count; ++i) {
            const MessageEntry& entry = map->entries[i];
            if (!Matches(entry, message, LOWORD(static_cast<UINT>(code)), id)) {
                continue;
            }
            if (handlerInfo) {
                handlerInfo->target = this;
                return TRUE;
            }
            MessageCall call{message, id, 0, id, 0};
            if (notify) {
                call.lParam = reinterpret_cast<LPARAM>(notify->header);
            }
            if (!entry.call(*this, call)) {
                continue;
            }
            if (notify && notify->result) {
                *notify->result = call.result;
            }
            return TRUE;
        }
    }
    return FALSE;
}
