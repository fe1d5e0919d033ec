// A number of bytes, read from text such as "64 MiB".
#pragma once

#include "qel/util/platform_export.hpp"

#include <cstdint>
#include <iosfwd>

namespace qel::util {

/// A byte count with its text form: `<digits>[<spaces>][<unit>]`.
///
/// Units, in any case: `B`; `K`, `KB`, `KiB`; and so on with `M`, `G`, `T`, `P`, `E`, all powers of 1024.
/// There is no sign and no fraction.
class ZEP_CONFIG_PLATFORM_API storage_size {
public:
    /// Zero bytes.
    storage_size() noexcept;

    /// Reads one size from `in`, up to the end of the text or white space. A text that is none, spaces
    /// without a unit behind them, anything directly behind the size ("1.5K"), or a count of more than 64
    /// bits sets the stream's fail bit and leaves the object unchanged. Returns `in`.
    /// Throws nothing, unless the stream has exceptions enabled: those pass out, and the object is unchanged.
    std::istream& parse(std::istream& in);

    /// The size that was read, in bytes.
    std::uint64_t bytes() const noexcept;

private:
    std::uint64_t bytes_;
};

/// Same as `size.parse(in)`, throws included.
ZEP_CONFIG_PLATFORM_API std::istream& operator>>(std::istream& in, storage_size& size);

} // namespace qel::util
