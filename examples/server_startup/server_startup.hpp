// What the server needs from the operating system.
#pragma once

namespace server_startup {

unsigned own_process_id();

/// Whether a process with this number exists. It may not be the one that wrote the number.
bool is_running(unsigned process_id);

} // namespace server_startup
