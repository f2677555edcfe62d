#include "framework/private/DialogTemplate.h"

#include "framework/Constants.h"
#include "framework/private/ByteReader.h"
#include "framework/private/Utf.h"
#include "framework/Resource.h"

namespace {

constexpr std::uint32_t kExtended = 0xFFFF0001;

// A text, or 0xFFFF and a number.
struct NameOrNumber {
    std::string name;
    UINT number = 0;
};

NameOrNumber ReadName(ByteReader& in) {
    NameOrNumber result;
    std::u16string text;
    const std::uint16_t first = in.U16();
    if (first == 0xFFFF) {
        result.number = in.U16();
    } else if (first != 0) {
        text.push_back(first);
        text += in.Text();
    }
    result.name = ToUtf8(text);
    return result;
}

std::string ClassName(const NameOrNumber& name) {
    constexpr const char* kNames[] = {"BUTTON", "EDIT", "STATIC", "LISTBOX", "SCROLLBAR", "COMBOBOX"};
    constexpr UINT kFirst = 0x80;
    if (name.number >= kFirst && name.number < kFirst + std::size(kNames)) {
        return kNames[name.number - kFirst];
    }
    return name.name;
}

CRect ReadRect(ByteReader& in) {
    const int x = in.I16();
    const int y = in.I16();
    const int width = in.I16();
    const int height = in.I16();
    return {DialogX(x), DialogY(y), DialogX(x) + DialogX(width), DialogY(y) + DialogY(height)};
}

DialogItem ReadItem(ByteReader& in, bool extended) {
    DialogItem item;
    in.Align(4);
    if (extended) {
        in.U32(); // help id
        item.exStyle = in.U32();
        item.style = in.U32();
    } else {
        item.style = in.U32();
        item.exStyle = in.U32();
    }
    item.rect = ReadRect(in);
    item.id = extended ? in.U32() & 0xFFFF : in.U16();
    item.className = ClassName(ReadName(in));
    item.text = ReadName(in).name;
    in.Skip(in.U16()); // creation data
    return item;
}

std::shared_ptr<const CFont> ReadFont(ByteReader& in, bool extended) {
    constexpr int kBold = 600; // the least weight that is bold, of 100 to 900
    constexpr int kMostPoints = 200;
    constexpr int kTenths = 10;
    const int points = in.U16();
    const bool isBold = extended && in.U16() >= kBold;
    const bool isItalic = extended && (in.U16() & 0xFF) != 0; // the upper half is the character set
    const std::string face = ToUtf8(in.Text());
    if (points == 0 || points > kMostPoints || face.empty()) {
        return nullptr;
    }
    auto font = std::make_shared<CFont>();
    font->CreatePointFont(points * kTenths, face.c_str());
    font->bold = isBold;
    font->italic = isItalic;
    return font;
}

} // namespace

std::optional<DialogTemplate> ReadDialog(std::span<const std::byte> bytes) {
    ByteReader in(bytes);
    DialogTemplate dialog;
    const std::uint32_t first = in.U32();
    const bool extended = first == kExtended;
    if (extended) {
        in.U32(); // help id
        dialog.exStyle = in.U32();
        dialog.style = in.U32();
    } else {
        dialog.style = first;
        dialog.exStyle = in.U32();
    }
    const UINT count = in.U16();
    dialog.rect = ReadRect(in);
    ReadName(in); // menu
    ReadName(in); // window class
    dialog.caption = ToUtf8(in.Text());
    if (dialog.style & DS_SETFONT) {
        dialog.font = ReadFont(in, extended);
    }
    for (UINT i = 0; i < count && in.Ok(); ++i) {
        dialog.items.push_back(ReadItem(in, extended));
    }
    return in.Ok() ? std::optional(std::move(dialog)) : std::nullopt;
}

std::optional<DialogTemplate> LoadDialog(UINT id) {
    const auto bytes = FindResource(AfxGetResourceHandle(), RT_DIALOG, id);
    return bytes.empty() ? std::nullopt : ReadDialog(bytes);
}
