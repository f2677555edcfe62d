#include "host/stage/host/KeptWork.h"

#include "host/engine/ByteStream.h"

namespace stage {

namespace {

constexpr std::string_view kMark = "StageKeptWork1\n";
constexpr std::uint8_t kHasFile = 1;
constexpr std::uint8_t kOpenedInPart = 2;
constexpr std::uint8_t kDiscarded = 4;

/// FNV-1a, 64 bits.
std::uint64_t SumOf(std::string_view bytes) {
    std::uint64_t sum = 14695981039346656037ULL;
    for (const char byte : bytes) {
        sum = (sum ^ static_cast<unsigned char>(byte)) * 1099511628211ULL;
    }
    return sum;
}

void Put64(engine::ByteWriter& out, std::uint64_t value) {
    out.Raw(&value, sizeof value);
}

std::uint64_t Take64(engine::ByteReader& in) {
    std::uint64_t value = 0;
    in.Raw(&value, sizeof value);
    return value;
}

} // namespace

std::string EncodeWork(const KeptWork& work) {
    std::string body;
    body.reserve(work.bytes.size() + work.path.size() + 64);
    engine::ByteWriter out(body);
    out.U8(static_cast<std::uint8_t>((work.stamp.exists ? kHasFile : 0) |
                                     (work.openedInPart ? kOpenedInPart : 0) |
                                     (work.discarded ? kDiscarded : 0)));
    Put64(out, static_cast<std::uint64_t>(work.when));
    Put64(out, static_cast<std::uint64_t>(work.stamp.changed));
    Put64(out, work.stamp.size);
    Put64(out, work.stamp.hash);
    out.Text(work.path);
    out.Text(work.bytes);
    std::string file(kMark);
    engine::ByteWriter head(file);
    Put64(head, SumOf(body));
    return file + body;
}

bool DecodeWork(std::string_view file, KeptWork& work, std::string& error) {
    if (!file.starts_with(kMark)) {
        error = "this is no kept work, or of a version that this program does not know";
        return false;
    }
    engine::ByteReader in(file.substr(kMark.size()));
    const std::uint64_t sum = Take64(in);
    if (!in.Good() || sum != SumOf(in.Ahead(in.Left()))) {
        error = "the file is damaged or cut short";
        return false;
    }
    const std::uint8_t flags = in.U8();
    work.stamp.exists = (flags & kHasFile) != 0;
    work.openedInPart = (flags & kOpenedInPart) != 0;
    work.discarded = (flags & kDiscarded) != 0;
    work.when = static_cast<std::int64_t>(Take64(in));
    work.stamp.changed = static_cast<std::int64_t>(Take64(in));
    work.stamp.size = Take64(in);
    work.stamp.hash = static_cast<std::size_t>(Take64(in));
    work.path = in.Text();
    work.bytes = in.Text();
    if (!in.Good()) {
        error = "the file is damaged";
    }
    return in.Good();
}

} // namespace stage
