// POSIX paths: one separator, one root.
#include "path_syntax.hpp"

namespace qel::util::filesystem {

constinit const std::u16string_view separators = u"/";

std::size_t root_length(std::u16string_view text) noexcept {
    return text.starts_with(u'/') ? 1 : 0;
}

bool is_bare_drive(std::u16string_view) noexcept {
    return false;
}

} // namespace qel::util::filesystem
