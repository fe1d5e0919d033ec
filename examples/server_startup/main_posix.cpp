// Entry on POSIX: the arguments are bytes, taken as UTF-8.
#include "server_startup.hpp"

#include <qel/i18n/convert.hpp>

#include <cerrno>
#include <climits>
#include <csignal>

#include <unistd.h>

namespace server_startup {

unsigned own_process_id() {
    return static_cast<unsigned>(getpid());
}

bool is_running(unsigned process_id) {
    // What a damaged file reads as would address a group of processes, not one.
    if (process_id == 0 || process_id > static_cast<unsigned>(INT_MAX)) return false;
    return kill(static_cast<pid_t>(process_id), 0) == 0 || errno == EPERM;
}

} // namespace server_startup

int main(int argc, char** argv) {
    std::deque<std::u16string> tokens;
    for (int i = 1; i < argc; ++i)
        tokens.push_back(qel::i18n::utf8_to_ustring(argv[i]));
    return server_startup::run(tokens);
}
