#include "framework/private/MenuReader.h"

#include "framework/private/ByteReader.h"
#include "framework/private/MenuData.h"
#include "framework/private/Utf.h"

namespace {

constexpr int kDeepest = 16;
constexpr UINT kLastItem = 0x80;

bool ReadItems(ByteReader& in, MenuData& menu, int depth) {
    if (depth > kDeepest) {
        return false;
    }
    for (bool last = false; !last;) {
        const UINT flags = in.U16();
        last = (flags & kLastItem) != 0;
        MenuItem item;
        item.flags = flags & (MF_GRAYED | MF_DISABLED | MF_CHECKED | MF_POPUP);
        if (!(flags & MF_POPUP)) {
            item.id = in.U16();
        }
        item.text = ToUtf8(in.Text());
        if (!in.Ok()) {
            return false;
        }
        if (flags & MF_POPUP) {
            item.popup = std::make_shared<MenuData>();
            if (!ReadItems(in, *item.popup, depth + 1)) {
                return false;
            }
        } else if (item.id == 0 && item.text.empty()) {
            item.flags = MF_SEPARATOR;
        }
        menu.items.push_back(std::move(item));
    }
    return true;
}

// The extended form: 32-bit fields, aligned, and states apart from types.
bool ReadExtendedItems(ByteReader& in, MenuData& menu, int depth) {
    constexpr UINT kPopup = 1;
    if (depth > kDeepest) {
        return false;
    }
    for (bool last = false; !last;) {
        in.Align(4);
        const UINT type = in.U32();
        const UINT state = in.U32();
        MenuItem item;
        item.id = in.U32();
        const UINT kind = in.U16();
        last = (kind & kLastItem) != 0;
        item.text = ToUtf8(in.Text());
        item.flags = (type & MF_SEPARATOR) | (state & (MF_GRAYED | MF_DISABLED | MF_CHECKED));
        if (!in.Ok()) {
            return false;
        }
        if (kind & kPopup) {
            in.Align(4);
            in.U32(); // help id
            item.flags |= MF_POPUP;
            item.popup = std::make_shared<MenuData>();
            if (!ReadExtendedItems(in, *item.popup, depth + 1)) {
                return false;
            }
        }
        menu.items.push_back(std::move(item));
    }
    return true;
}

} // namespace

std::shared_ptr<MenuData> ReadMenu(std::span<const std::byte> bytes) {
    ByteReader in(bytes);
    const UINT version = in.U16();
    const UINT skip = in.U16();
    in.Skip(skip);
    auto menu = std::make_shared<MenuData>();
    const bool read = version == 0   ? ReadItems(in, *menu, 0)
                      : version == 1 ? ReadExtendedItems(in, *menu, 0)
                                     : false;
    return read ? menu : nullptr;
}
