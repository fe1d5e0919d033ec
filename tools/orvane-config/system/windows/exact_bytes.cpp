// Streams that keep every byte, on Windows.
#include "system/exact_bytes.hpp"

#include <fcntl.h>
#include <io.h>

namespace orvane {

void keep_bytes(std::FILE* stream) {
    std::fflush(stream);
    _setmode(_fileno(stream), _O_BINARY);
}

} // namespace orvane
