#include "host/engine/KeyFormat.h"

#include "host/engine/ByteStream.h"
#include "host/engine/FilmManager.h"

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

/// Visits a record's fields in the file's order, for writing and for reading alike.
struct Writing {
    ByteWriter& out;
    void operator()(const std::string& text) { out.Text(text); }
    void operator()(const Vector3& vector) { out.Floats(vector.Data(), 3); }
    void operator()(float number) { out.F32(number); }
    void operator()(std::int32_t number) { out.I32(number); }
    void operator()(std::uint32_t number) { out.U32(number); }
    void operator()(std::uint8_t number) { out.U8(number); }
    void Method(std::int32_t method) { WriteMethod(out, method); }
};

struct Reading {
    ByteReader& in;
    void operator()(std::string& text) { text = in.Text(); }
    void operator()(Vector3& vector) { in.Floats(vector.Data(), 3); }
    void operator()(float& number) { number = in.F32(); }
    void operator()(std::int32_t& number) { number = in.I32(); }
    void operator()(std::uint32_t& number) { number = in.U32(); }
    void operator()(std::uint8_t& number) { number = in.U8(); }
    void Method(std::int32_t& method) { method = ReadMethod(in); }
};

template <class Visit, class Key> void VisitVector(Visit& visit, Key& key) {
    visit(key.value);
    visit(key.inHandle);
    visit(key.outHandle);
    visit.Method(key.inMethod);
    visit.Method(key.outMethod);
}

template <class To, class From> auto& As(From& key) {
    using Target = std::conditional_t<std::is_const_v<From>, const To, To>;
    return static_cast<Target&>(key);
}

template <class Visit, class Key> void VisitTimed(Visit& visit, Key& key) {
    if (key.kind == KeyKind::Camera) {
        auto& record = As<CFilmCameraKey>(key);
        visit(record.cameraName);
        visit(record.priority);
        visit(record.delayTime);
    } else if (key.kind == KeyKind::Animation) {
        auto& record = As<CFilmAnimationKey>(key);
        visit(record.meshElement);
        visit(record.animationName);
        visit(record.frequency);
        visit(record.repeats);
        visit(record.startFrame);
    } else if (key.kind == KeyKind::Speech) {
        auto& record = As<CFilmSpeechKey>(key);
        visit(record.speechPath);
        visit(record.speechText);
    } else if (key.kind == KeyKind::Sound) {
        auto& record = As<CFilmSoundKey>(key);
        visit(record.wavPath);
        visit(record.soundPosition);
        visit(record.followObject);
        visit(record.looped);
    } else {
        auto& record = As<CFilmFxKey>(key);
        visit(record.fxName);
        visit(record.deleteFlag);
        visit(record.objectId);
        visit(record.linkElement);
        visit(record.position);
        visit(record.normal);
        visit(record.forward);
    }
}

template <class Visit, class Key> void VisitContent(Visit& visit, Key& key) {
    switch (key.kind) {
    case KeyKind::Position:
    case KeyKind::Rotation:
    case KeyKind::Scale:
    case KeyKind::Color:
        return VisitVector(visit, As<CFilmVectorKey>(key));
    case KeyKind::CameraPosition:
    case KeyKind::CameraTarget: {
        auto& record = As<CFilmLinkedKey>(key);
        VisitVector(visit, record);
        visit(record.linkObjectId);
        visit(record.linkElement);
        return;
    }
    case KeyKind::JavaMethod: {
        auto& record = As<CFilmJavaKey>(key);
        visit(record.methodName);
        visit(record.callAfterStop);
        return;
    }
    case KeyKind::Flags:
        return visit(As<CFilmFlagsKey>(key).keyFlags);
    case KeyKind::Roll:
    case KeyKind::FieldOfView: {
        auto& record = As<CFilmScalarKey>(key);
        visit(record.value);
        visit(record.inValue);
        visit(record.outValue);
        visit.Method(record.inMethod);
        visit.Method(record.outMethod);
        return;
    }
    default:
        return VisitTimed(visit, key);
    }
}

std::uint32_t OwnFlags(int kind) {
    return kind >= KeyKind::Position ? KeyFlag::NoDuration : 0u;
}

} // namespace

namespace {

constexpr std::size_t kPlainVectorBytes = 1 + sizeof(float) + 3 * sizeof(Vector3) + 2;

void WriteMarks(ByteWriter& out, const IFilmKey& key, int kind) {
    // Compared by bits, so that a negative zero and not-a-number come back as they were.
    const bool hasEnd = !(key.endTime == 0.0f) || std::signbit(key.endTime);
    const bool hasFlags = key.flags != OwnFlags(kind);
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
    return key.endTime == 0.0f && !std::signbit(key.endTime) && key.flags == OwnFlags(kind) &&
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
    key.flags = OwnFlags(kind);
    return true;
}

bool IsVectorKind(int kind) {
    return (kind >= KeyKind::Position && kind <= KeyKind::Scale) || kind == KeyKind::Color;
}

} // namespace

void WriteKeys(std::span<IFilmKey* const> keys, int kind, std::string& bytes) {
    ByteWriter out(bytes);
    out.U32(static_cast<std::uint32_t>(keys.size()));
    Writing visit{out};
    const bool vectors = IsVectorKind(kind);
    for (const IFilmKey* key : keys) {
        if (!vectors || !WritePlainVector(bytes, static_cast<const CFilmVectorKey&>(*key), kind)) {
            WriteMarks(out, *key, kind);
            VisitContent(visit, *key);
        }
    }
}

namespace {

void ReadKey(ByteReader& in, Reading& visit, IFilmKey& key) {
    const std::uint8_t marks = in.U8();
    key.time = in.F32();
    key.endTime = (marks & kHasEndTime) != 0 ? in.F32() : 0.0f;
    key.flags = (marks & kHasFlags) != 0 ? in.U32() : OwnFlags(key.kind);
    VisitContent(visit, key);
}

bool ReadAll(ByteReader& in, int kind, FilmManager& manager, CFilmTrack& track, bool listed,
             std::vector<IFilmKey*>& keys) {
    Reading visit{in};
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
            ReadKey(in, visit, *key);
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

} // namespace engine
