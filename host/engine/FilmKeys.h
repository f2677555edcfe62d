#pragma once

#include "host/engine/KeyChannel.h"
#include "host/engine/KeyFields.h"
#include "host/engine/Math.h"
#include "plugin/contract/KeyKindTable.h"

namespace engine {

/// What the key records have in common. Each setter tells the key's channel.
template <class Base> class KeyRecord : public Base {
public:
    void SetTime(float newTime) override {
        this->time = newTime;
        Changed();
    }
    void SetEndTime(float newTime) override {
        this->endTime = newTime;
        Changed();
    }
    float GetTime() const override { return this->time; }
    float GetNaturalDuration() const override { return -1.0f; }
    void Describe(char* buffer, int framesPerSecond) const override;
    void CopyFrom(const IFilmKey& other, int) override {
        if (&other != this && other.kind == this->kind) {
            CopyContent(static_cast<const Base&>(other));
            Changed();
        }
    }
    bool Equals(const IFilmKey& other, bool compareTime) const override;
    void SetValue(const void*) override {}
    void SetInHandle(const void*) override {}
    void SetOutHandle(const void*) override {}
    void SetInMethod(int) override {}
    void SetOutMethod(int) override {}
    void SetLinkElement(const std::string&) override {}
    void SetLinkObject(EditorObject*) override {}

protected:
    /// `other` is of the same kind.
    virtual void CopyContent(const Base& other) { CopyFields<Base>(other, *this); }
    /// One or more lines, each with its end.
    virtual std::string DescribeContent() const = 0;
    void Changed() { MarkChannelDirty(*this); }
};

class CameraKey final : public KeyRecord<CFilmCameraKey> {
public:
    void SetValue(const void* value) override;

private:
    std::string DescribeContent() const override;
};

class AnimationKey final : public KeyRecord<CFilmAnimationKey> {
public:
    /// Clip seconds times repeats over frequency; -1.0 without a known clip, a frequency or a last repeat.
    float GetNaturalDuration() const override;
    void SetValue(const void* value) override;
    void SetInHandle(const void* value) override;

private:
    std::string DescribeContent() const override;
};

class FxKey final : public KeyRecord<CFilmFxKey> {
public:
    void SetValue(const void* value) override;
    void SetOutHandle(const void* value) override;
    void SetLinkElement(const std::string& element) override;
    void SetLinkObject(EditorObject* object) override;

private:
    std::string DescribeContent() const override;
};

class FilmManager;

class SpeechKey final : public KeyRecord<CFilmSpeechKey> {
public:
    explicit SpeechKey(const FilmManager& filmManager) : manager(&filmManager) {}
    float GetNaturalDuration() const override;
    void SetValue(const void* value) override;

private:
    std::string DescribeContent() const override;

    const FilmManager* manager;
};

class SoundKey final : public KeyRecord<CFilmSoundKey> {
public:
    explicit SoundKey(const FilmManager& filmManager) : manager(&filmManager) {}
    /// -1.0 for a looped sound.
    float GetNaturalDuration() const override;
    void SetValue(const void* value) override;

private:
    std::string DescribeContent() const override;

    const FilmManager* manager;
};

template <class Base> class VectorRecord : public KeyRecord<Base> {
public:
    void SetValue(const void* vector) override { Store(vector, this->value); }
    void SetInHandle(const void* handle) override { Store(handle, this->inHandle); }
    void SetOutHandle(const void* handle) override { Store(handle, this->outHandle); }
    void SetInMethod(int method) override {
        this->inMethod = method;
        this->Changed();
    }
    void SetOutMethod(int method) override {
        this->outMethod = method;
        this->Changed();
    }

protected:
    std::string DescribeContent() const override;
    void Store(const void* source, Vector3& target);
};

class VectorKey final : public VectorRecord<CFilmVectorKey> {};

/// The setters take world points and store them in the space of the link. A new link keeps the world
/// points, as things stand at that moment; writing the fields does not.
class LinkedKey final : public VectorRecord<CFilmLinkedKey> {
public:
    void SetValue(const void* point) override;
    void SetInHandle(const void* handle) override;
    void SetOutHandle(const void* handle) override;
    void SetLinkElement(const std::string& element) override;
    void SetLinkObject(EditorObject* object) override;
    void GetInPoint(Vector3& point) const override;
    void GetOutPoint(Vector3& point) const override;

private:
    void CopyContent(const CFilmLinkedKey& other) override;
    std::string DescribeContent() const override;
    Matrix4 LinkSpace() const;
    void StoreWorld(const void* source, Vector3& target);
    void MoveTo(EditorObject* object, const std::string& element);
};

class JavaKey final : public KeyRecord<CFilmJavaKey> {
public:
    void SetValue(const void* value) override;

private:
    std::string DescribeContent() const override;
};

/// The flags' names depend on the class of the track that holds the key.
class FlagsKey final : public KeyRecord<CFilmFlagsKey> {
public:
    int GetFlagCount() const override;
    const char* GetFlagName(int index) const override;

private:
    std::string DescribeContent() const override;
};

class ScalarKey final : public KeyRecord<CFilmScalarKey> {
public:
    void SetValue(const void* number) override;
    void SetInHandle(const void* number) override;
    void SetOutHandle(const void* number) override;
    void SetInMethod(int method) override;
    void SetOutMethod(int method) override;

private:
    std::string DescribeContent() const override;
    void Store(const void* source, float& target);
};

/// The engine's class of a record class of the contract.
template <class Base> struct EngineKeyOf;
template <> struct EngineKeyOf<CFilmCameraKey> { using Type = CameraKey; };
template <> struct EngineKeyOf<CFilmAnimationKey> { using Type = AnimationKey; };
template <> struct EngineKeyOf<CFilmFxKey> { using Type = FxKey; };
template <> struct EngineKeyOf<CFilmSpeechKey> { using Type = SpeechKey; };
template <> struct EngineKeyOf<CFilmSoundKey> { using Type = SoundKey; };
template <> struct EngineKeyOf<CFilmVectorKey> { using Type = VectorKey; };
template <> struct EngineKeyOf<CFilmLinkedKey> { using Type = LinkedKey; };
template <> struct EngineKeyOf<CFilmJavaKey> { using Type = JavaKey; };
template <> struct EngineKeyOf<CFilmFlagsKey> { using Type = FlagsKey; };
template <> struct EngineKeyOf<CFilmScalarKey> { using Type = ScalarKey; };
template <class Base> using EngineKey = typename EngineKeyOf<Base>::Type;

/// Bits of CFilmFlagsKey::keyFlags by track class.
namespace TrackFlag {
constexpr unsigned LightOn = 1;      ///< on light tracks
constexpr unsigned ObjectHidden = 1; ///< on object tracks
constexpr unsigned BlackBars = 1;    ///< on the level track: the picture is drawn in the wide format
} // namespace TrackFlag

} // namespace engine
