#include "framework/Resource.h"

#include "framework/private/ByteReader.h"
#include "framework/private/Utf.h"

#include <optional>

namespace {

// A type or name: 0xFFFF and a number, or a text, which this system does not use. Nothing for a text.
std::optional<UINT> ReadNumber(ByteReader& in) {
    const std::uint16_t first = in.U16();
    if (first == 0xFFFF) {
        return in.U16();
    }
    if (first != 0) {
        in.Text();
    }
    return std::nullopt;
}

HINSTANCE current = nullptr;

} // namespace

ResourceModule::ResourceModule(std::span<const std::byte> compiled) {
    ByteReader file(compiled);
    while (!file.AtEnd()) {
        const std::size_t start = file.Position();
        const std::uint32_t dataSize = file.U32();
        const std::uint32_t headerSize = file.U32();
        constexpr std::uint32_t kSmallestHeader = 24;
        if (!file.Ok() || headerSize < kSmallestHeader || headerSize > compiled.size() - start) {
            valid = false;
            return;
        }
        ByteReader header(compiled.subspan(start, headerSize));
        header.Skip(8);
        const std::optional<UINT> type = ReadNumber(header);
        const std::optional<UINT> id = ReadNumber(header);
        file.Skip(headerSize - 8);
        const std::span<const std::byte> bytes = file.Take(dataSize);
        if (!header.Ok() || !file.Ok()) {
            valid = false;
            return;
        }
        file.Align(4);
        // The file begins with an empty record of type 0.
        if (type && id && *type != 0) {
            entries.push_back({*type, *id, bytes});
        }
    }
}

std::span<const std::byte> ResourceModule::Find(UINT type, UINT id) const {
    for (const Entry& entry : entries) {
        if (entry.type == type && entry.id == id) {
            return entry.bytes;
        }
    }
    return {};
}

HINSTANCE AfxGetResourceHandle() {
    return current;
}
void AfxSetResourceHandle(HINSTANCE module) {
    current = module;
}

ResourceScope::ResourceScope(HINSTANCE module) : old(current) {
    current = module;
}
ResourceScope::~ResourceScope() {
    current = old;
}

std::span<const std::byte> FindResource(HINSTANCE module, UINT type, UINT id) {
    return module ? module->Find(type, id) : std::span<const std::byte>();
}

bool LoadString(HINSTANCE module, UINT id, std::string& text) {
    // Texts lie in blocks of 16, each with its length in front.
    ByteReader in(FindResource(module, RT_STRING, id / 16 + 1));
    text.clear();
    for (UINT i = 0; i < id % 16; ++i) {
        in.Skip(std::size_t{in.U16()} * 2);
    }
    const std::uint16_t length = in.U16();
    std::u16string wide;
    for (int i = 0; in.Ok() && i < length; ++i) {
        wide.push_back(in.U16());
    }
    if (!in.Ok() || length == 0) {
        return false;
    }
    text = ToUtf8(wide);
    return true;
}

std::string LoadString(UINT id) {
    std::string text;
    LoadString(AfxGetResourceHandle(), id, text);
    return text;
}
