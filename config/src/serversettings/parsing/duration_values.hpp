// Durations.
#pragma once

#include "qel/config/types.hpp"

#include <string_view>

namespace qel::config {

/// [<blanks>]<hours>[:<minutes>[:<seconds>[.<fraction>]]]
/// The value that boost::lexical_cast gives, or nothing if the cast refuses the text: an empty text is zero, "5" is five
/// hours, any ASCII character may stand for a ':', and a special value such as "+infinity" for the parts that are left.
/// The cast itself reads from a stream, which takes 300,000 instructions and pulls in <iostream>.
optional<time_duration> read_duration(std::u16string_view text);

} // namespace qel::config
