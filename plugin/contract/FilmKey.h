#pragma once

#include "plugin/contract/KeyKind.h"
#include "plugin/contract/Types.h"

#include <cstdint>
#include <string>

/// A key record. Made by IKeyFactory; owned by its track once added, by the maker before.
/// Times are seconds from the start of the film.
class IFilmKey {
public:
    virtual ~IFilmKey() = default;
    virtual void SetTime(float time) = 0;
    virtual void SetEndTime(float time) = 0;
    /// Writes the text of the description popup, at most 512 bytes with the terminator.
    virtual void Describe(char* buffer, int framesPerSecond) const = 0;
    virtual float GetTime() const = 0;
    /// Seconds that the key's content takes, -1.0 if it has no length of its own.
    virtual float GetNaturalDuration() const = 0;
    /// Copies the content of a key of the same kind, not its times. Other kinds are left alone.
    virtual void CopyFrom(const IFilmKey& other, int zero) = 0;
    virtual bool Equals(const IFilmKey& other, bool compareTime) const = 0;
    /// What the pointers of the three setters mean is told at each kind's record below.
    virtual void SetValue(const void* value) = 0;
    virtual void SetInHandle(const void* handle) = 0;
    virtual void SetOutHandle(const void* handle) = 0;
    virtual void SetInMethod(int method) = 0;
    virtual void SetOutMethod(int method) = 0;
    virtual void SetLinkElement(const std::string& element) = 0;
    virtual void SetLinkObject(EditorObject* object) = 0;

    CFilmTrack* track = nullptr; ///< null while in no track
    std::uint32_t flags = 0;     ///< KeyFlag bits
    float time = 0.0f;
    float endTime = 0.0f;
    std::int32_t kind = KeyKind::None;
};

/// Kind 0. SetValue: `const std::string*`, the camera's name.
class CFilmCameraKey : public IFilmKey {
public:
    std::string cameraName;
    std::int32_t priority = 0; ///< row of the key; the lowest in force wins
    float delayTime = 0.0f;    ///< seconds
};

/// Kind 1. SetValue: `const std::string*`, mesh element; SetInHandle: `const std::string*`, sequence.
class CFilmAnimationKey : public IFilmKey {
public:
    std::string meshElement;
    std::string animationName;
    float frequency = 1.0f; ///< playing speed, 1 is the sequence's own
    std::int32_t repeats = 1;
    float startFrame = 0.0f;
};

/// Kinds 2 to 7. SetValue: `const std::string*`, link element; SetOutHandle: `const std::int32_t*`, object
/// id.
class CFilmFxKey : public IFilmKey {
public:
    std::string fxName;
    std::uint8_t deleteFlag = 0; ///< kinds 2, 3, 4, 6
    std::int32_t objectId = 0;   ///< kinds 2, 3, 4, 7; 0 none
    std::string linkElement;
    Vector3 position;
    Vector3 normal{0.0f, 1.0f, 0.0f};
    Vector3 forward{0.0f, 0.0f, 1.0f}; ///< kind 3
};

/// Kind 8. SetValue: `const std::string*`, path of the sound file.
class CFilmSpeechKey : public IFilmKey {
public:
    std::string speechPath;
    std::string speechText;
};

/// Kind 9. SetValue: `const std::string*`, path of the sound file.
class CFilmSoundKey : public IFilmKey {
public:
    std::string wavPath;
    Vector3 soundPosition;
    std::uint8_t followObject = 0;
    std::uint8_t looped = 0;
};

/// Kinds 10, 11, 12, 14, 16, 17. The three setters take a pointer to 3 floats. Handles are points in the
/// space of the value: position in units, rotation in degrees, scale as factors, colour r, g, b in 0 to 1.
class CFilmVectorKey : public IFilmKey {
public:
    Vector3 value;
    Vector3 inHandle;
    Vector3 outHandle;
    std::int32_t inMethod = BezierMethod::Smooth;
    std::int32_t outMethod = BezierMethod::Smooth;
};

/// Kinds 16 and 17: a camera point, which may follow an object or one of its mesh elements. With a link
/// the value and handles are in the space of what is followed. The three setters take world points, and a
/// new link keeps the world points as things stand then; writing the fields does neither.
class CFilmLinkedKey : public CFilmVectorKey {
public:
    /// The handles as world points.
    virtual void GetInPoint(Vector3& point) const = 0;
    virtual void GetOutPoint(Vector3& point) const = 0;

    EditorObject* linkObject = nullptr;
    std::int32_t linkObjectId = 0;
    std::string linkElement;
};

/// Kind 13. SetValue: `const std::string*`, name of the script method.
class CFilmJavaKey : public IFilmKey {
public:
    std::string methodName;
    std::uint8_t callAfterStop = 0;
};

/// Kind 15: a set of named flags. The value setters do nothing.
class CFilmFlagsKey : public IFilmKey {
public:
    virtual int GetFlagCount() const = 0;
    /// Empty beyond the count.
    virtual const char* GetFlagName(int index) const = 0;

    std::uint32_t keyFlags = 0;
};

/// Kinds 18 (degrees of roll) and 19 (degrees of view). The three setters take a pointer to one float.
class CFilmScalarKey : public IFilmKey {
public:
    float value = 0.0f;
    float inValue = 0.0f;
    float outValue = 0.0f;
    std::int32_t inMethod = BezierMethod::Smooth;
    std::int32_t outMethod = BezierMethod::Smooth;
};
