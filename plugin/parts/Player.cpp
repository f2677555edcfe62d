#include "plugin/parts/Player.h"

#include "framework/Pump.h"
#include "plugin/parts/FilmValidation.h"
#include "plugin/session/FilmSession.h"

namespace {

constexpr int kSpaceKey = 32;
/// Plays inside plays. A ruler that is dragged in a playing film starts one at each move; deeper ones are
/// left to the loop that runs, so that the stack stays bounded.
constexpr int kDeepestPlay = 32;
/// Milliseconds to seconds. Float32 and widened: films play by its value, not by an exact 0.001.
constexpr double kSecondsPerMillisecond = 0.001f;

double ClockMilliseconds() {
    return static_cast<double>(timeGetTime()); // an unsigned 32-bit count
}

} // namespace

void Player::Play() {
    if (session.isPlaying != 0) {
        Stop();
    }
    if (session.currentFilm == nullptr) {
        return;
    }
    ValidateFilm(session.currentFilm);
    session.isPlaying = 1;
    StartTiming();
    if (depth >= kDeepestPlay) {
        return;
    }
    ++depth;
    while (session.isPlaying != 0 && PumpMessages() && Advance()) {
    }
    --depth;
}

/// The loss of precision of the float32 origin is part of how films play.
void Player::StartTiming() {
    origin = static_cast<float>(ClockMilliseconds() - static_cast<double>(session.currentTime) * 1000.0);
}

/// Dispatches what waits in the thread's queue. False once the film no longer plays. The press of the
/// space bar that stops the film reaches nothing else.
bool Player::PumpMessages() {
    MSG message;
    while (PeekMessage(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_KEYDOWN && message.wParam == kSpaceKey && session.isPlaying == 1) {
            Stop();
            return false;
        }
        TranslateMessage(&message);
        DispatchMessage(&message);
    }
    return session.isPlaying != 0;
}

/// Shows the frame of the present clock. False once the film is over; the last frame shown stays.
bool Player::Advance() {
    const double time = (ClockMilliseconds() - static_cast<double>(origin)) * kSecondsPerMillisecond;
    const IFilm* film = session.currentFilm;
    if (film == nullptr || time > static_cast<double>(film->length)) {
        Stop();
        return false;
    }
    session.SetTime(static_cast<float>(time), /*fromWindow*/ false);
    return true;
}

void Player::Stop() {
    session.isPlaying = 0;
    if (session.currentFilm != nullptr) {
        session.currentFilm->Stop();
    }
}
