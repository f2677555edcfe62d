#include "host/stage/windows/app/EndSignals.h"

#include <csignal>
#include <cstdio>
#include <gtest/gtest.h>
#include <QCoreApplication>

namespace {

[[noreturn]] void EndBy(int signal) {
    std::signal(signal, SIG_DFL); // the shell that runs the tests may ignore it
    const stage::EndSignals endSignals([] { std::fputs("the work is kept", stderr); });
    std::raise(signal);
    for (;;) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

} // namespace

/// Each ends a process of its own.
class EndSignalsTest : public ::testing::TestWithParam<int> {};

TEST_P(EndSignalsTest, TheWorkIsKeptAndThenTheSignalEndsTheProgram) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(EndBy(GetParam()), ::testing::KilledBySignal(GetParam()), "the work is kept");
}

INSTANTIATE_TEST_SUITE_P(Signals, EndSignalsTest, ::testing::Values(SIGTERM, SIGHUP, SIGINT));

TEST(IgnoredSignalsTest, ASignalThatIsIgnoredStaysSoAndTheOthersAreGivenBack) {
    std::signal(SIGHUP, SIG_IGN);
    {
        const stage::EndSignals endSignals([] {});
        std::raise(SIGHUP);
    }
    struct sigaction present = {};
    sigaction(SIGHUP, nullptr, &present);
    EXPECT_EQ(present.sa_handler, SIG_IGN);
    sigaction(SIGTERM, nullptr, &present);
    EXPECT_EQ(present.sa_handler, SIG_DFL);
    std::signal(SIGHUP, SIG_DFL);
}
