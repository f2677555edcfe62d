#pragma once

#include "host/engine/Level.h"
#include "plugin/contract/Film.h"

#include <string>

/// Fills one film with tracks and keys through the engine, as a user would.
class FilmMaker {
public:
    FilmMaker(engine::Level& level, const char* name, float length);

    /// How a key joins its neighbours.
    struct Ease {
        int in;
        int out;
    };
    static constexpr Ease kSmooth{BezierMethod::Smooth, BezierMethod::Smooth};
    static constexpr Ease kSoft{BezierMethod::Slowdown, BezierMethod::Slowdown};
    static constexpr Ease kLinear{BezierMethod::Linear, BezierMethod::Linear};

    CFilmTrack* Level() { return film->mainTrack; }
    CFilmObjectTrack* Actor(const char* objectName);
    CFilmGLLightTrack* Sun(EditorObject* helper);
    CFilmGLLightTrack* GLLight(EditorObject* helper);
    CFilmDynLightTrack* DynLight(EditorObject* helper);
    CFilmCameraTrack* Camera(const char* name);

    /// Kinds 10, 11, 12 and 14; positions in metres.
    void Vector(CFilmTrack* track, int kind, float time, const Vector3& value, Ease ease = kSmooth);
    /// Kinds 16 and 17, in metres; `follows` may be null.
    void Point(CFilmTrack* camera, int kind, float time, const Vector3& value, Ease ease = kSmooth,
               const char* follows = nullptr, const char* element = "");
    /// Kinds 18 and 19, degrees.
    void Scalar(CFilmTrack* camera, int kind, float time, float value, Ease ease = kSmooth);
    void Cut(const char* cameraName, float from, float to, int priority = 0);
    /// 0 repeats go on without end.
    void Animation(CFilmTrack* track, const char* clip, float from, float to, int repeats = 0,
                   float frequency = 1.0f);
    void Sound(CFilmTrack* track, const char* path, float from, float to, bool looped);
    void Speech(CFilmTrack* track, const char* path, const char* text, float from, float to);
    /// What an effect shows and where. On an object's track the place is in that object's space, on the
    /// level's in that of `at`, or in the world's without one; metres.
    struct Fx {
        const char* name;
        Vector3 place{};
        const char* at = nullptr; ///< an object's name, for the level's track
        const char* element = "";
        Vector3 normal{0, 1, 0};
    };
    /// Kinds 2 to 7; the effect goes with its key.
    void Effect(CFilmTrack* track, int kind, float from, float to, const Fx& fx);
    void Method(CFilmTrack* track, const char* name, float time, bool afterStop);
    void Flags(CFilmTrack* track, float time, unsigned flags);
    /// Closes all tracks; call when every key is there.
    void Finish();

private:
    template <class Key> Key* Make(int kind, float from, float to);
    void Add(CFilmTrack* track, IFilmKey* key);
    EditorObject* Find(const char* name);

    engine::Level& level;
    IFilm* film;
};
