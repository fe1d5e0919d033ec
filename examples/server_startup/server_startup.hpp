// What the server needs from the operating system.
#pragma once

#include <vector>

namespace server_startup {

unsigned own_process_id();

/// Whether a process with this number exists. It may not be the one that wrote the number.
bool is_running(unsigned process_id);

/// The signals that stop the server: those of this system, except for those that are ignored already, as after `nohup`.
std::vector<int> ending_signals();

} // namespace server_startup
