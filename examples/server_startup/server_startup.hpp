// What the two entries, main and wmain, share with the server, and what only they can know.
#pragma once

#include <deque>
#include <string>

namespace server_startup {

/// Runs the server to its end; `tokens` are its flags without the program's name. Returns the exit code: 0, or
/// 1 when it could not start, with the reason on the standard error stream.
int run(const std::deque<std::u16string>& tokens);

unsigned own_process_id();

/// Whether a process of this number is there. It may be another than the one that wrote the number.
bool is_running(unsigned process_id);

} // namespace server_startup
