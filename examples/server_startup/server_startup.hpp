// What the server asks of the system it runs on.
#pragma once

namespace server_startup {

unsigned own_process_id();

/// Whether a process of this number is there. It may be another than the one that wrote the number.
bool is_running(unsigned process_id);

} // namespace server_startup
