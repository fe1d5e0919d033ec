// A number of bytes, read from text such as "64 MiB".
#pragma once

#include "qel/util/platform_export.hpp"

#include <cstdint>
#include <iosfwd>

namespace qel::util {

/// A byte count, read from text of the form `<digits>[<spaces>][<unit>]`.
///
/// The units, in upper or lower case, are `B`; `K`, `KB`, `KiB`; and the same with `M`, `G`, `T`, `P`, `E`. All are
/// powers of 1024. A sign or a fraction is not allowed.
class ZEP_CONFIG_PLATFORM_API storage_size {
public:
    /// Zero bytes.
    storage_size() noexcept;

    /// Reads one size from `in`, up to the end of the text or white space. Returns `in`. Sets the stream's fail bit and
    /// leaves the object unchanged if the text is not a size, has spaces without a unit after them, has anything
    /// directly after the size ("1.5K"), or needs more than 64 bits. Throws only if the stream has exceptions enabled;
    /// the object is unchanged then.
    std::istream& parse(std::istream& in);

    /// The size that was read, in bytes.
    std::uint64_t bytes() const noexcept;

private:
    std::uint64_t bytes_;
};

/// The same as `size.parse(in)`, including what it throws.
ZEP_CONFIG_PLATFORM_API std::istream& operator>>(std::istream& in, storage_size& size);

} // namespace qel::util
