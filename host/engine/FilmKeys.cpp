#include "host/engine/FilmKeys.h"

#include "host/engine/DescribedKey.h"
#include "host/engine/FilmManager.h"
#include "host/engine/SceneObject.h"
#include "plugin/contract/ClassIds.h"

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>

namespace engine {

namespace {

constexpr std::size_t kDescriptionBytes = 512;
constexpr float kSameTime = 0.000001f; ///< seconds; two keys nearer than this stand at one time

constexpr const char* kMethods[] = {"Smooth", "Linear", "Slowdown", "Speedup", "User", "Inverse"};

const char* MethodName(int method) {
    return method >= 0 && method < 6 ? kMethods[method] : "Smooth";
}

std::string Line(const char* format, ...) __attribute__((format(printf, 1, 2)));
std::string Line(const char* format, ...) {
    char text[256];
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    return std::string(text) + '\n';
}

std::string PointLine(const char* label, const Vector3& point) {
    return Line("%s: %.3f, %.3f, %.3f", label, point.x, point.y, point.z);
}

std::string MethodLine(int in, int out) {
    return Line("In: %s  Out: %s", MethodName(in), MethodName(out));
}

/// The string that a setter was given, null for null.
const std::string* TextOf(const void* value) {
    return static_cast<const std::string*>(value);
}

} // namespace

template <class Base> void KeyRecord<Base>::Describe(char* buffer, int framesPerSecond) const {
    if (buffer == nullptr) {
        return;
    }
    NoteDescribed(*this);
    const KeyKindInfo* info = FindKeyKind(this->kind);
    std::string text = std::string(info != nullptr ? info->title : "") + '\n';
    // Required elsewhere too: a frame number is cut, not rounded; half a frame in 1000 hides float errors.
    const double frame = std::floor(static_cast<double>(this->time) * framesPerSecond + 0.0005);
    text += Line("Time: %.3f s (frame %.0f)", this->time, frame);
    if ((this->flags & KeyFlag::NoDuration) == 0) {
        text += Line("Duration: %.3f s", this->endTime - this->time);
    }
    text += DescribeContent();
    const std::size_t length = std::min(text.size(), kDescriptionBytes - 1);
    text.copy(buffer, length);
    buffer[length] = '\0';
}

template <class Base> bool KeyRecord<Base>::Equals(const IFilmKey& other, bool compareTime) const {
    if (other.kind != this->kind) {
        return false;
    }
    if (compareTime && !(std::fabs(other.time - this->time) < kSameTime)) {
        return false;
    }
    return SameFields<Base>(*this, static_cast<const Base&>(other));
}

void CameraKey::SetValue(const void* value) {
    if (value != nullptr) {
        cameraName = *TextOf(value);
        Changed();
    }
}

std::string CameraKey::DescribeContent() const {
    return Line("Camera: %s", cameraName.c_str()) + Line("Delay: %.3f s", delayTime);
}

float AnimationKey::GetNaturalDuration() const {
    CFilmObjectTrack* owner = AsObjectTrack(track);
    if (owner == nullptr || owner->actor == nullptr || !(frequency > 0.0f) || repeats < 1) {
        return -1.0f;
    }
    const auto& actor = static_cast<const SceneObject&>(*owner->actor);
    const float duration = actor.GetAnimationDuration(actor.FindClip(animationName));
    return duration < 0.0f ? -1.0f : duration * static_cast<float>(repeats) / frequency;
}

void AnimationKey::SetValue(const void* value) {
    if (value != nullptr) {
        meshElement = *TextOf(value);
        Changed();
    }
}

void AnimationKey::SetInHandle(const void* value) {
    if (value != nullptr) {
        animationName = *TextOf(value);
        Changed();
    }
}

std::string AnimationKey::DescribeContent() const {
    std::string text = Line("Animation: %s", animationName.c_str());
    if (!meshElement.empty()) {
        text += Line("Mesh element: %s", meshElement.c_str());
    }
    return text + Line("Frequency: %.3f  Repeats: %d", frequency, repeats);
}

void FxKey::SetValue(const void* value) {
    if (value != nullptr) {
        SetLinkElement(*TextOf(value));
    }
}

void FxKey::SetOutHandle(const void* value) {
    if (value != nullptr) {
        objectId = *static_cast<const std::int32_t*>(value);
        Changed();
    }
}

void FxKey::SetLinkElement(const std::string& element) {
    linkElement = element;
    Changed();
}

void FxKey::SetLinkObject(EditorObject* object) {
    objectId = object != nullptr ? object->id : 0;
    Changed();
}

std::string FxKey::DescribeContent() const {
    std::string text = Line("FX: %s", fxName.c_str());
    if (kind != KeyKind::FxRain && kind != KeyKind::FxBlind) {
        if (objectId != 0) {
            text += Line("Object: %d %s", objectId, linkElement.c_str());
        }
        text += PointLine("Position", position);
    }
    return text;
}

float SpeechKey::GetNaturalDuration() const {
    return manager->SoundSeconds(speechPath);
}

void SpeechKey::SetValue(const void* value) {
    if (value != nullptr) {
        speechPath = *TextOf(value);
        Changed();
    }
}

std::string SpeechKey::DescribeContent() const {
    return Line("Speech: %s", speechPath.c_str()) + Line("Text: %s", speechText.c_str());
}

float SoundKey::GetNaturalDuration() const {
    return looped != 0 ? -1.0f : manager->SoundSeconds(wavPath);
}

void SoundKey::SetValue(const void* value) {
    if (value != nullptr) {
        wavPath = *TextOf(value);
        Changed();
    }
}

std::string SoundKey::DescribeContent() const {
    return Line("Sound: %s", wavPath.c_str()) + (looped != 0 ? "Looped\n" : "");
}

template <class Base> void VectorRecord<Base>::Store(const void* source, Vector3& target) {
    if (source != nullptr) {
        std::copy_n(static_cast<const float*>(source), 3, target.Data());
        this->Changed();
    }
}

template <class Base> std::string VectorRecord<Base>::DescribeContent() const {
    return PointLine("Value", this->value) + MethodLine(this->inMethod, this->outMethod);
}

Matrix4 LinkedKey::LinkSpace() const {
    return linkObject != nullptr ? static_cast<const SceneObject*>(linkObject)->ElementWorld(linkElement)
                                 : Matrix4{};
}

void LinkedKey::StoreWorld(const void* source, Vector3& target) {
    if (source == nullptr) {
        return;
    }
    const auto* point = static_cast<const float*>(source);
    target = {point[0], point[1], point[2]};
    Matrix4 inverse;
    if (linkObject != nullptr && Invert(LinkSpace(), inverse)) {
        target = TransformPoint(target, inverse);
    }
    Changed();
}

void LinkedKey::SetValue(const void* point) {
    StoreWorld(point, value);
}

void LinkedKey::SetInHandle(const void* handle) {
    StoreWorld(handle, inHandle);
}

void LinkedKey::SetOutHandle(const void* handle) {
    StoreWorld(handle, outHandle);
}

void LinkedKey::MoveTo(EditorObject* object, const std::string& element) {
    if (object == linkObject && (element == linkElement || object == nullptr)) {
        linkElement = element;
        linkObjectId = object != nullptr ? object->id : 0;
        return;
    }
    const Matrix4 before = LinkSpace();
    linkObject = object;
    linkObjectId = object != nullptr ? object->id : 0;
    linkElement = element;
    Matrix4 after;
    if (Invert(LinkSpace(), after)) {
        const Matrix4 change = Multiply(before, after);
        for (Vector3* point : {&value, &inHandle, &outHandle}) {
            *point = TransformPoint(*point, change);
        }
    }
    Changed();
}

void LinkedKey::SetLinkElement(const std::string& element) {
    MoveTo(linkObject, element);
}

void LinkedKey::SetLinkObject(EditorObject* object) {
    MoveTo(object, linkElement);
}

void LinkedKey::GetInPoint(Vector3& point) const {
    point = TransformPoint(inHandle, LinkSpace());
}

void LinkedKey::GetOutPoint(Vector3& point) const {
    point = TransformPoint(outHandle, LinkSpace());
}

void LinkedKey::CopyContent(const CFilmLinkedKey& other) {
    VectorRecord::CopyContent(other);
    linkObject = other.linkObject;
}

std::string LinkedKey::DescribeContent() const {
    std::string text = VectorRecord::DescribeContent();
    if (linkObject != nullptr) {
        text += Line("Linked to: %s(%d) %s", linkObject->name.c_str(), linkObject->id, linkElement.c_str());
    }
    return text;
}

void JavaKey::SetValue(const void* value) {
    if (value != nullptr) {
        methodName = *TextOf(value);
        Changed();
    }
}

std::string JavaKey::DescribeContent() const {
    return Line("Method: %s", methodName.c_str()) + (callAfterStop != 0 ? "Called after the film\n" : "");
}

int FlagsKey::GetFlagCount() const {
    return 1;
}

const char* FlagsKey::GetFlagName(int index) const {
    if (index != 0) {
        return "";
    }
    if (AsLevelTrack(track) != nullptr) {
        return "Black bars";
    }
    return AsObjectTrack(track) != nullptr ? "Hidden" : "Light on";
}

std::string FlagsKey::DescribeContent() const {
    std::string text;
    for (int i = 0; i < GetFlagCount(); ++i) {
        text += Line("%s: %s", GetFlagName(i), (keyFlags >> i & 1u) != 0 ? "yes" : "no");
    }
    return text;
}

void ScalarKey::Store(const void* source, float& target) {
    if (source != nullptr) {
        target = *static_cast<const float*>(source);
        Changed();
    }
}

void ScalarKey::SetValue(const void* number) {
    Store(number, value);
}

void ScalarKey::SetInHandle(const void* number) {
    Store(number, inValue);
}

void ScalarKey::SetOutHandle(const void* number) {
    Store(number, outValue);
}

void ScalarKey::SetInMethod(int method) {
    inMethod = method;
    Changed();
}

void ScalarKey::SetOutMethod(int method) {
    outMethod = method;
    Changed();
}

std::string ScalarKey::DescribeContent() const {
    return Line("Value: %.3f", value) + MethodLine(inMethod, outMethod);
}

template class KeyRecord<CFilmCameraKey>;
template class KeyRecord<CFilmAnimationKey>;
template class KeyRecord<CFilmFxKey>;
template class KeyRecord<CFilmSpeechKey>;
template class KeyRecord<CFilmSoundKey>;
template class KeyRecord<CFilmVectorKey>;
template class KeyRecord<CFilmLinkedKey>;
template class KeyRecord<CFilmJavaKey>;
template class KeyRecord<CFilmFlagsKey>;
template class KeyRecord<CFilmScalarKey>;
template class VectorRecord<CFilmVectorKey>;
template class VectorRecord<CFilmLinkedKey>;

static_assert(sizeof(VectorKey) == 80, "the memory budget of a key counts on 80 bytes");

} // namespace engine
