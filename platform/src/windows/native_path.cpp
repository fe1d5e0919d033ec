// Windows file calls take the text as it is, ill-formed parts included.
#include "qel/util/native_path.hpp"

#include "wide.hpp"

namespace qel::util::filesystem {

std::filesystem::path native(const Path& path) {
    // Cut at a zero it would name another file.
    if (path.text().find(u'\0') != path.text().npos) return {};
    return to_wide(path.text());
}

} // namespace qel::util::filesystem
