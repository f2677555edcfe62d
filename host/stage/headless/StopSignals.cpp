#include "host/stage/headless/StopSignals.h"

#include <string>

namespace headless {

namespace {

volatile std::sig_atomic_t caught = 0;

void Note(int signal) {
    caught = signal;
}

std::string Sentence(int signal) {
    return signal == SIGINT ? "stopped by Ctrl+C" : "stopped by signal " + std::to_string(signal);
}

} // namespace

Stopped::Stopped(int signalNumber) : std::runtime_error(Sentence(signalNumber)), signal(signalNumber) {
}

StopSignals::StopSignals() {
    caught = 0;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction& old = before[signal];
        sigaction(signal, nullptr, &old);
        if (old.sa_handler == SIG_IGN) {
            continue;
        }
        struct sigaction noting = {};
        noting.sa_handler = Note;
        noting.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
        sigaction(signal, &noting, nullptr);
    }
}

StopSignals::~StopSignals() {
    for (const auto& [signal, old] : before) {
        sigaction(signal, &old, nullptr);
    }
}

void StopSignals::Check() const {
    if (caught != 0) {
        throw Stopped(caught);
    }
}

} // namespace headless
