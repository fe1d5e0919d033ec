// POSIX file calls take bytes.
#include "qel/util/native_path.hpp"

#include "qel/i18n/convert.hpp"

namespace qel::util::filesystem {

std::filesystem::path native(const Path& path) {
    return i18n::ustring_to_utf8(path.text());
}

} // namespace qel::util::filesystem
