#pragma once

#include "keys/views/TransformKeys.h"

class FilmSession;

/// The keys of a track in a film that isn't shown, so that no row has views of them.
class OtherFilmKeys final : public TransformSink {
public:
    /// The level's key factory must be there. Seconds.
    OtherFilmKeys(const FilmSession& session, CFilmTrack& track, float time);

    bool Takes(int) override { return true; }
    CFilmVectorKey* FindKey(int kind) override;
    void TellMoved(const CFilmVectorKey& key) override;
    void AddKey(const TransformChange& change) override;
    RotationsAbout Rotations();

private:
    const FilmSession& session;
    CFilmTrack& track;
    float time;
};
