#include "host/stage/windows/app/EndSignals.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <QSocketNotifier>
#include <unistd.h>

namespace stage {

namespace {

constexpr int kSignals[] = {SIGTERM, SIGHUP, SIGINT};

volatile std::sig_atomic_t writeEnd = -1;

/// Only what a signal handler may call.
void Handle(int number) {
    const int before = errno;
    const auto byte = static_cast<unsigned char>(number);
    [[maybe_unused]] const ssize_t written = write(writeEnd, &byte, 1);
    errno = before;
}

} // namespace

EndSignals::EndSignals(std::function<void()> last) : run(std::move(last)) {
    if (pipe2(pipe, O_CLOEXEC | O_NONBLOCK) != 0) {
        return; // the signals end the program as they always did
    }
    writeEnd = pipe[1];
    notifier = new QSocketNotifier(pipe[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &EndSignals::OnSignal);
    for (const int number : kSignals) {
        struct sigaction former = {};
        sigaction(number, nullptr, &former);
        if (former.sa_handler == SIG_IGN) {
            continue; // as nohup wants it
        }
        struct sigaction action = {};
        action.sa_handler = Handle;
        action.sa_flags = static_cast<int>(SA_RESETHAND) | SA_RESTART;
        sigaction(number, &action, nullptr);
    }
}

EndSignals::~EndSignals() {
    if (pipe[0] < 0) {
        return;
    }
    for (const int number : kSignals) {
        struct sigaction present = {};
        sigaction(number, nullptr, &present);
        if (present.sa_handler == Handle) {
            std::signal(number, SIG_DFL);
        }
    }
    writeEnd = -1;
    close(pipe[0]);
    close(pipe[1]);
}

void EndSignals::OnSignal() {
    unsigned char number = 0;
    if (read(pipe[0], &number, 1) != 1) {
        return;
    }
    notifier->setEnabled(false);
    run();
    std::signal(number, SIG_DFL);
    std::raise(number);
}

} // namespace stage
