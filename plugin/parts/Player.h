#pragma once

class FilmSession;

/// Plays the open film by the clock. Playing is a loop inside `Play` that pumps the thread's messages itself,
/// so anything can run within it, another `Play` too: what is open is read anew after each pump.
class Player {
public:
    /// Both belong to the plug-in object: `clockOrigin` is its `playOrigin`.
    Player(FilmSession& openSession, float& clockOrigin) : session(openSession), origin(clockOrigin) {}
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    /// Plays on from the current time. Blocks until the film stops.
    void Play();
    void Stop();

private:
    void StartTiming();
    bool PumpMessages();
    bool Advance();

    FilmSession& session;
    float& origin; ///< clock milliseconds at film time 0
    int depth = 0; ///< timing loops that run inside each other
};
