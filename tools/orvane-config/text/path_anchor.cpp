// Where a path begins, as the system reads it. std::filesystem of MinGW takes the path of a share for a relative one.
#include "text/path_anchor.hpp"

#include "text/spelling.hpp"

#include "qel/util/path.hpp"

namespace orvane {

PathAnchor anchor_of(std::u16string_view path) {
    if (!backslash_separates()) return path.starts_with(u'/') ? PathAnchor::full : PathAnchor::none;
    const auto separates = [path](std::size_t at) { return at < path.size() && is_one_of(path[at], u"/\\"); };
    if (path.size() > 1 && path[1] == u':') return separates(2) ? PathAnchor::full : PathAnchor::drive;
    if (!separates(0)) return PathAnchor::none;
    return separates(1) ? PathAnchor::full : PathAnchor::root;
}

bool backslash_separates() {
    static const bool separates = qel::util::filesystem::Path(u"a\\b").parent_path().text() == u"a";
    return separates;
}

} // namespace orvane
