#include "framework/private/BitmapReader.h"

#include "framework/private/ByteReader.h"

#include <QList>

namespace {

constexpr int kMaxSide = 16384;

struct Header {
    std::uint32_t size = 0;
    int width = 0;
    int height = 0;
    int bits = 0;
    std::uint32_t compression = 0;
    std::uint32_t colors = 0;
    bool topDown = false;
};

std::optional<Header> ReadHeader(ByteReader& in) {
    Header h;
    h.size = in.U32();
    h.width = static_cast<std::int32_t>(in.U32());
    const auto height = static_cast<std::int32_t>(in.U32());
    in.U16(); // planes
    h.bits = in.U16();
    h.compression = in.U32();
    in.Skip(12); // picture size and resolution
    h.colors = in.U32();
    in.U32(); // important colours
    if (!in.Ok() || h.size < 40 || h.width <= 0 || h.width > kMaxSide || height == 0 || height > kMaxSide ||
        height < -kMaxSide) {
        return std::nullopt;
    }
    h.topDown = height < 0;
    h.height = height < 0 ? -height : height;
    constexpr std::uint32_t kPlain = 0;
    constexpr std::uint32_t kMasks = 3;
    const bool knownDepth = h.bits == 1 || h.bits == 4 || h.bits == 8 || h.bits == 24 || h.bits == 32;
    if (!knownDepth || (h.compression != kPlain && !(h.compression == kMasks && h.bits == 32))) {
        return std::nullopt;
    }
    in.Skip(h.size - 40);
    if (h.compression == kMasks && h.size == 40) {
        in.Skip(12);
    }
    return h;
}

QList<QRgb> ReadPalette(ByteReader& in, const Header& h) {
    QList<QRgb> palette;
    if (h.bits > 8) {
        in.Skip(std::size_t{h.colors} * 4);
        return palette;
    }
    const std::uint32_t full = 1U << h.bits;
    const std::uint32_t count = h.colors == 0 ? full : std::min(h.colors, full);
    for (std::uint32_t i = 0; i < count; ++i) {
        palette.append(0xFF000000U | in.U32());
    }
    palette.resize(static_cast<int>(full), 0xFF000000U);
    return palette;
}

QRgb PixelAt(const std::byte* row, int x, const Header& h, const QList<QRgb>& palette) {
    const auto byteAt = [row](int i) { return std::to_integer<unsigned>(row[i]); };
    switch (h.bits) {
    case 32:
        return byteAt(4 * x) | byteAt(4 * x + 1) << 8 | byteAt(4 * x + 2) << 16 | byteAt(4 * x + 3) << 24;
    case 24:
        return 0xFF000000U | byteAt(3 * x) | byteAt(3 * x + 1) << 8 | byteAt(3 * x + 2) << 16;
    case 8:
        return palette[static_cast<int>(byteAt(x))];
    case 4:
        return palette[static_cast<int>(x % 2 == 0 ? byteAt(x / 2) >> 4 : byteAt(x / 2) & 15)];
    default:
        return palette[static_cast<int>((byteAt(x / 8) >> (7 - x % 8)) & 1)];
    }
}

} // namespace

std::optional<QImage> ReadBitmap(std::span<const std::byte> bytes, bool* hasAlpha) {
    ByteReader in(bytes);
    const std::optional<Header> header = ReadHeader(in);
    if (!header) {
        return std::nullopt;
    }
    const QList<QRgb> palette = ReadPalette(in, *header);
    const std::size_t stride = (static_cast<std::size_t>(header->width) * header->bits + 31) / 32 * 4;
    const std::span<const std::byte> pixels = in.Take(stride * header->height);
    if (!in.Ok()) {
        return std::nullopt;
    }
    QImage image(header->width, header->height, QImage::Format_ARGB32);
    bool anyAlpha = false;
    for (int y = 0; y < header->height; ++y) {
        const int sourceRow = header->topDown ? y : header->height - 1 - y;
        const std::byte* row = pixels.data() + stride * sourceRow;
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < header->width; ++x) {
            line[x] = PixelAt(row, x, *header, palette);
            anyAlpha = anyAlpha || (header->bits == 32 && qAlpha(line[x]) != 0);
        }
    }
    if (header->bits == 32 && !anyAlpha) {
        image = image.convertToFormat(QImage::Format_RGB32).convertToFormat(QImage::Format_ARGB32);
    }
    if (hasAlpha) {
        *hasAlpha = anyAlpha;
    }
    return image;
}
