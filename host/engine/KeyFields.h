#pragma once

#include "plugin/contract/KeyKindTable.h"

namespace engine {

/// What the records of a kind hold, besides times and flags: each field once, in the order of files.
/// `KeyFields<Record>::Visit(visit)` calls for each field, given as a pointer to member,
///
///   visit(field)          for a value
///   visit.Method(field)   for a Bezier method
///   visit.Place(field)    for what says where in its track a key stands: stored, but no content
///
/// Files, copies and comparisons are visitors (KeyFormat.cpp, below).
template <class Record> struct KeyFields;

template <> struct KeyFields<CFilmCameraKey> {
    static constexpr void Visit(auto&& visit) {
        visit(&CFilmCameraKey::cameraName);
        visit.Place(&CFilmCameraKey::priority); // Required: the key's row, which it keeps.
        visit(&CFilmCameraKey::delayTime);
    }
};

template <> struct KeyFields<CFilmAnimationKey> {
    static constexpr void Visit(auto&& visit) {
        visit(&CFilmAnimationKey::meshElement);
        visit(&CFilmAnimationKey::animationName);
        visit(&CFilmAnimationKey::frequency);
        visit(&CFilmAnimationKey::repeats);
        visit(&CFilmAnimationKey::startFrame);
    }
};

template <> struct KeyFields<CFilmFxKey> {
    static constexpr void Visit(auto&& visit) {
        visit(&CFilmFxKey::fxName);
        visit(&CFilmFxKey::deleteFlag);
        visit(&CFilmFxKey::objectId);
        visit(&CFilmFxKey::linkElement);
        visit(&CFilmFxKey::position);
        visit(&CFilmFxKey::normal);
        visit(&CFilmFxKey::forward);
    }
};

template <> struct KeyFields<CFilmSpeechKey> {
    static constexpr void Visit(auto&& visit) {
        visit(&CFilmSpeechKey::speechPath);
        visit(&CFilmSpeechKey::speechText);
    }
};

template <> struct KeyFields<CFilmSoundKey> {
    static constexpr void Visit(auto&& visit) {
        visit(&CFilmSoundKey::wavPath);
        visit(&CFilmSoundKey::soundPosition);
        visit(&CFilmSoundKey::followObject);
        visit(&CFilmSoundKey::looped);
    }
};

template <> struct KeyFields<CFilmVectorKey> {
    static constexpr void Visit(auto&& visit) {
        visit(&CFilmVectorKey::value);
        visit(&CFilmVectorKey::inHandle);
        visit(&CFilmVectorKey::outHandle);
        visit.Method(&CFilmVectorKey::inMethod);
        visit.Method(&CFilmVectorKey::outMethod);
    }
};

template <> struct KeyFields<CFilmLinkedKey> {
    static constexpr void Visit(auto&& visit) {
        KeyFields<CFilmVectorKey>::Visit(visit);
        visit(&CFilmLinkedKey::linkObjectId);
        visit(&CFilmLinkedKey::linkElement);
    }
};

template <> struct KeyFields<CFilmJavaKey> {
    static constexpr void Visit(auto&& visit) {
        visit(&CFilmJavaKey::methodName);
        visit(&CFilmJavaKey::callAfterStop);
    }
};

template <> struct KeyFields<CFilmFlagsKey> {
    static constexpr void Visit(auto&& visit) { visit(&CFilmFlagsKey::keyFlags); }
};

template <> struct KeyFields<CFilmScalarKey> {
    static constexpr void Visit(auto&& visit) {
        visit(&CFilmScalarKey::value);
        visit(&CFilmScalarKey::inValue);
        visit(&CFilmScalarKey::outValue);
        visit.Method(&CFilmScalarKey::inMethod);
        visit.Method(&CFilmScalarKey::outMethod);
    }
};

/// The flags of a new key of a kind.
constexpr std::uint32_t OwnKeyFlags(int kind) {
    return IsTimedKind(kind) ? 0u : KeyFlag::NoDuration;
}

/// Visitors of one record beside another of its kind.
template <class Record> struct CopyingFields {
    const Record& from;
    Record& to;
    void operator()(auto field) { to.*field = from.*field; }
    void Method(auto field) { to.*field = from.*field; }
    void Place(auto) {}
};

template <class Record> struct ComparingFields {
    const Record& a;
    const Record& b;
    bool same = true;
    void operator()(auto field) { same = same && a.*field == b.*field; }
    void Method(auto field) { same = same && a.*field == b.*field; }
    void Place(auto) {}
};

/// Gives a record the contents of another of its kind.
template <class Record> void CopyFields(const Record& from, Record& to) {
    KeyFields<Record>::Visit(CopyingFields<Record>{from, to});
}

/// Whether two records of a kind have the same contents.
template <class Record> bool SameFields(const Record& a, const Record& b) {
    ComparingFields<Record> comparing{a, b};
    KeyFields<Record>::Visit(comparing);
    return comparing.same;
}

} // namespace engine
