// Streams that keep every byte.
#pragma once

#include <cstdio>

namespace orvane {

/// From now on, the stream changes no line ends and knows no byte that ends a text.
void keep_bytes(std::FILE* stream);

} // namespace orvane
