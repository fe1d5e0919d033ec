// POSIX file calls take bytes.
#include "qel/util/native_path.hpp"

#include "qel/i18n/convert.hpp"

namespace qel::util::filesystem {

std::filesystem::path native(const Path& path) {
    // Cut at a NUL, it would name another file.
    if (path.text().find(u'\0') != path.text().npos) return {};
    return i18n::ustring_to_utf8(path.text());
}

} // namespace qel::util::filesystem
