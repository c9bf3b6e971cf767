#include "Base/TerminationSignals.h"

#include <array>
#include <csignal>

#include <QuarnKit/Base/Output/UnfinishedFile.h>

namespace quarn::tool {

namespace {

// Closing the terminal, the keyboard, a reader that left, timers, signals of other programs, and
// the limits of time and file size.
constexpr std::array kTerminations = {SIGHUP,  SIGINT,  SIGQUIT, SIGPIPE,   SIGTERM, SIGALRM,
                                      SIGUSR1, SIGUSR2, SIGPROF, SIGVTALRM, SIGXCPU, SIGXFSZ};

// The signal is blocked while its handler runs. When the handler returns, the default action ends
// the process.
extern "C" void removeFilesAndEnd(int number) {
    removeUnfinishedFiles();
    std::signal(number, SIG_DFL);
    std::raise(number);
}

}  // namespace

void cleanUpOnTermination() {
    struct sigaction action {};
    action.sa_handler = removeFilesAndEnd;
    for (const int number : kTerminations) ::sigaddset(&action.sa_mask, number);
    for (const int number : kTerminations) {
        struct sigaction previous {};
        if (::sigaction(number, nullptr, &previous) == 0 && previous.sa_handler == SIG_DFL)
            ::sigaction(number, &action, nullptr);
    }
}

}  // namespace quarn::tool
