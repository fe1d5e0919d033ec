// Processes on POSIX.
#include "server_startup.hpp"

#include <cerrno>
#include <climits>
#include <csignal>

#include <unistd.h>

namespace server_startup {

unsigned own_process_id() {
    return static_cast<unsigned>(getpid());
}

bool is_running(unsigned process_id) {
    // The value read from a damaged file could name a group of processes.
    if (process_id == 0 || process_id > static_cast<unsigned>(INT_MAX)) return false;
    return kill(static_cast<pid_t>(process_id), 0) == 0 || errno == EPERM;
}

std::vector<int> ending_signals() {
    std::vector<int> signals;
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action = {};
        if (sigaction(number, nullptr, &action) == 0 && action.sa_handler != SIG_IGN)
            signals.push_back(number);
    }
    return signals;
}

} // namespace server_startup
