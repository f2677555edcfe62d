#include "host/engine/KeyFormat.h"

#include "host/engine/ByteStream.h"
#include "host/engine/FilmManager.h"
#include "host/engine/KeyFields.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <type_traits>

namespace engine {

namespace {

constexpr std::uint8_t kHasEndTime = 1;
constexpr std::uint8_t kHasFlags = 2;
/// Method byte that says: 32 bits follow. Only numbers outside the six methods need it.
constexpr std::uint8_t kWideMethod = 255;
/// Marks and time.
constexpr std::size_t kSmallestKey = 5;

void WriteMethod(ByteWriter& out, std::int32_t method) {
    if (method >= 0 && method < kWideMethod) {
        out.U8(static_cast<std::uint8_t>(method));
    } else {
        out.U8(kWideMethod);
        out.I32(method);
    }
}

std::int32_t ReadMethod(ByteReader& in) {
    const std::uint8_t method = in.U8();
    return method == kWideMethod ? in.I32() : method;
}

/// Visitors of KeyFields.
template <class Record> struct Writing {
    ByteWriter& out;
    const Record& record;
    void operator()(auto field) { Put(record.*field); }
    void Place(auto field) { Put(record.*field); }
    void Method(auto field) { WriteMethod(out, record.*field); }
    void Put(const std::string& text) { out.Text(text); }
    void Put(const Vector3& vector) { out.Floats(vector.Data(), 3); }
    void Put(float number) { out.F32(number); }
    void Put(std::int32_t number) { out.I32(number); }
    void Put(std::uint32_t number) { out.U32(number); }
    void Put(std::uint8_t number) { out.U8(number); }
};

template <class Record> struct Reading {
    ByteReader& in;
    Record& record;
    void operator()(auto field) { Get(record.*field); }
    void Place(auto field) { Get(record.*field); }
    void Method(auto field) { record.*field = ReadMethod(in); }
    void Get(std::string& text) { text = in.Text(); }
    void Get(Vector3& vector) { in.Floats(vector.Data(), 3); }
    void Get(float& number) { number = in.F32(); }
    void Get(std::int32_t& number) { number = in.I32(); }
    void Get(std::uint32_t& number) { number = in.U32(); }
    void Get(std::uint8_t& number) { number = in.U8(); }
};

/// Calls `with` with the record as what its kind says it is.
template <class Key, class With> void AsRecord(Key& key, With&& with) {
    WithKeyRecord(key.kind, [&]<class Record>(std::type_identity<Record>) {
        with(static_cast<std::conditional_t<std::is_const_v<Key>, const Record, Record>&>(key));
    });
}

void WriteContent(ByteWriter& out, const IFilmKey& key) {
    AsRecord(key, [&out]<class Record>(const Record& record) {
        KeyFields<Record>::Visit(Writing<Record>{out, record});
    });
}

void ReadContent(ByteReader& in, IFilmKey& key) {
    AsRecord(key, [&in]<class Record>(Record& record) {
        KeyFields<Record>::Visit(Reading<Record>{in, record});
    });
}

} // namespace

namespace {

constexpr std::size_t kPlainVectorBytes = 1 + sizeof(float) + 3 * sizeof(Vector3) + 2;

void WriteMarks(ByteWriter& out, const IFilmKey& key, int kind) {
    // Compared by bits, so that a negative zero and not-a-number come back as they were.
    const bool hasEnd = !(key.endTime == 0.0f) || std::signbit(key.endTime);
    const bool hasFlags = key.flags != OwnKeyFlags(kind);
    out.U8(static_cast<std::uint8_t>((hasEnd ? kHasEndTime : 0) | (hasFlags ? kHasFlags : 0)));
    out.F32(key.time);
    if (hasEnd) {
        out.F32(key.endTime);
    }
    if (hasFlags) {
        out.U32(key.flags);
    }
}

bool IsPlainVector(const CFilmVectorKey& key, int kind) {
    const auto small = [](std::int32_t method) { return method >= 0 && method < kWideMethod; };
    return key.endTime == 0.0f && !std::signbit(key.endTime) && key.flags == OwnKeyFlags(kind) &&
           small(key.inMethod) && small(key.outMethod);
}

/// The bulk of a film: 43 bytes at once for a key without anything unusual.
bool WritePlainVector(std::string& bytes, const CFilmVectorKey& key, int kind) {
    if (!IsPlainVector(key, kind)) {
        return false;
    }
    char piece[kPlainVectorBytes] = {};
    std::memcpy(piece + 1, &key.time, sizeof key.time);
    std::memcpy(piece + 5, &key.value, sizeof(Vector3));
    std::memcpy(piece + 17, &key.inHandle, sizeof(Vector3));
    std::memcpy(piece + 29, &key.outHandle, sizeof(Vector3));
    piece[sizeof piece - 2] = static_cast<char>(key.inMethod);
    piece[sizeof piece - 1] = static_cast<char>(key.outMethod);
    bytes.append(piece, sizeof piece);
    return true;
}

/// The reading side of WritePlainVector; false if the next key is not such a one.
bool ReadPlainVector(ByteReader& in, CFilmVectorKey& key, int kind) {
    const std::string_view ahead = in.Ahead(kPlainVectorBytes);
    if (ahead.size() < kPlainVectorBytes || ahead[0] != 0) {
        return false;
    }
    const auto inMethod = static_cast<std::uint8_t>(ahead[kPlainVectorBytes - 2]);
    const auto outMethod = static_cast<std::uint8_t>(ahead[kPlainVectorBytes - 1]);
    if (inMethod == kWideMethod || outMethod == kWideMethod) {
        return false;
    }
    in.Bytes(kPlainVectorBytes);
    std::memcpy(&key.time, ahead.data() + 1, sizeof key.time);
    std::memcpy(&key.value, ahead.data() + 5, sizeof(Vector3));
    std::memcpy(&key.inHandle, ahead.data() + 17, sizeof(Vector3));
    std::memcpy(&key.outHandle, ahead.data() + 29, sizeof(Vector3));
    key.inMethod = inMethod;
    key.outMethod = outMethod;
    key.endTime = 0.0f;
    key.flags = OwnKeyFlags(kind);
    return true;
}

bool IsVectorKind(int kind) {
    bool isVector = false;
    WithKeyRecord(kind, [&]<class Record>(std::type_identity<Record>) {
        isVector = std::is_same_v<Record, CFilmVectorKey>;
    });
    return isVector;
}

} // namespace

void WriteKeys(std::span<IFilmKey* const> keys, int kind, std::string& bytes) {
    ByteWriter out(bytes);
    out.U32(static_cast<std::uint32_t>(keys.size()));
    const bool vectors = IsVectorKind(kind);
    for (const IFilmKey* key : keys) {
        if (!vectors || !WritePlainVector(bytes, static_cast<const CFilmVectorKey&>(*key), kind)) {
            WriteMarks(out, *key, kind);
            WriteContent(out, *key);
        }
    }
}

namespace {

void ReadKey(ByteReader& in, IFilmKey& key) {
    const std::uint8_t marks = in.U8();
    key.time = in.F32();
    key.endTime = (marks & kHasEndTime) != 0 ? in.F32() : 0.0f;
    key.flags = (marks & kHasFlags) != 0 ? in.U32() : OwnKeyFlags(key.kind);
    ReadContent(in, key);
}

bool ReadAll(ByteReader& in, int kind, FilmManager& manager, CFilmTrack& track, bool listed,
             std::vector<IFilmKey*>& keys) {
    const std::uint32_t count = in.U32();
    if (count > in.Left() / kSmallestKey) {
        return false;
    }
    keys.reserve(count);
    const bool vectors = IsVectorKind(kind);
    for (std::uint32_t i = 0; i < count && in.Good(); ++i) {
        IFilmKey* key = manager.Keys().CreateKey(kind);
        if (key == nullptr) {
            return false;
        }
        keys.push_back(key);
        key->track = &track;
        if (listed) {
            track.keys.push_back(key);
        }
        if (!vectors || !ReadPlainVector(in, static_cast<CFilmVectorKey&>(*key), kind)) {
            ReadKey(in, *key);
        }
    }
    return in.Good() && in.Left() == 0;
}

} // namespace

bool ReadKeys(std::string_view bytes, int kind, FilmManager& manager, CFilmTrack& track, bool listed,
              std::vector<IFilmKey*>& keys) {
    ByteReader in(bytes);
    const std::size_t before = track.keys.size();
    keys.clear();
    if (ReadAll(in, kind, manager, track, listed, keys)) {
        return true;
    }
    track.keys.resize(before);
    for (IFilmKey* key : keys) {
        manager.Keys().DestroyKey(key);
    }
    keys.clear();
    return false;
}

namespace {

/// Visitor of KeyFields that goes past a record's fields.
template <class Record> struct Skipping {
    ByteReader& in;
    template <class Value> void operator()(Value Record::* /*field*/) { Skip(std::type_identity<Value>()); }
    template <class Base, class Value> void operator()(Value Base::* /*field*/) {
        Skip(std::type_identity<Value>());
    }
    void Place(auto field) { (*this)(field); }
    void Method(auto) { ReadMethod(in); }
    void Skip(std::type_identity<std::string>) { in.Bytes(in.U32()); }
    template <class Value> void Skip(std::type_identity<Value>) { in.Bytes(sizeof(Value)); }
};

void SkipKey(ByteReader& in, int kind) {
    const std::uint8_t marks = in.U8();
    in.Bytes(sizeof(float) * ((marks & kHasEndTime) != 0 ? 2 : 1));
    in.Bytes((marks & kHasFlags) != 0 ? sizeof(std::uint32_t) : 0);
    WithKeyRecord(kind, [&in]<class Record>(std::type_identity<Record>) {
        KeyFields<Record>::Visit(Skipping<Record>{in});
    });
}

} // namespace

std::vector<std::string_view> KeyPieces(std::string_view bytes, int kind) {
    ByteReader in(bytes);
    const std::uint32_t count = in.U32();
    std::vector<std::string_view> pieces;
    pieces.reserve(std::min<std::size_t>(count, in.Left() / kSmallestKey));
    for (std::uint32_t i = 0; i < count && in.Good(); ++i) {
        const std::size_t begin = in.Position();
        SkipKey(in, kind);
        pieces.push_back(bytes.substr(begin, in.Position() - begin));
    }
    return in.Good() && in.Left() == 0 ? pieces : std::vector<std::string_view>{};
}

bool ReadKeyPiece(std::string_view piece, IFilmKey& key) {
    ByteReader in(piece);
    ReadKey(in, key);
    if (key.kind == KeyKind::CameraPosition || key.kind == KeyKind::CameraTarget) {
        static_cast<CFilmLinkedKey&>(key).linkObject = nullptr;
    }
    return in.Good() && in.Left() == 0;
}

} // namespace engine
