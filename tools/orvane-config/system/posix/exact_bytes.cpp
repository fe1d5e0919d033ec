// Streams that keep every byte, on POSIX: all do.
#include "system/exact_bytes.hpp"

namespace orvane {

void keep_bytes(std::FILE*) {}

} // namespace orvane
