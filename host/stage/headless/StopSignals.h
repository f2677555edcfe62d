#pragma once

#include <csignal>
#include <map>
#include <stdexcept>

namespace headless {

/// The user or the system asked for the end: Ctrl+C, SIGTERM, SIGHUP.
class Stopped : public std::runtime_error {
public:
    explicit Stopped(int signalNumber);

    const int signal;
};

/// Notes the signals that ask for the end, for the life of the scope, so that work can stop where it leaves
/// nothing broken behind. One at a time. The second signal ends the program at once. A signal that the
/// program's starter ignores, as nohup does, stays ignored.
class StopSignals {
public:
    StopSignals();
    ~StopSignals();
    StopSignals(const StopSignals&) = delete;
    StopSignals& operator=(const StopSignals&) = delete;

    /// Throws Stopped if one came.
    void Check() const;

private:
    std::map<int, struct sigaction> before;
};

} // namespace headless
