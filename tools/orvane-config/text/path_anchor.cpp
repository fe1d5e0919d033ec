// Where a path begins, as the system reads it. std::filesystem of MinGW takes the path of a share for a relative one.
#include "text/path_anchor.hpp"

#include "text/spelling.hpp"

#include "qel/util/path.hpp"

#include <vector>

namespace orvane {

PathAnchor anchor_of(std::u16string_view path) {
    if (!backslash_separates()) return path.starts_with(u'/') ? PathAnchor::full : PathAnchor::none;
    const auto separates = [path](std::size_t at) { return at < path.size() && is_one_of(path[at], u"/\\"); };
    if (path.size() > 1 && path[1] == u':') return separates(2) ? PathAnchor::full : PathAnchor::drive;
    if (!separates(0)) return PathAnchor::none;
    return separates(1) ? PathAnchor::full : PathAnchor::root;
}

std::u16string volume_of(std::u16string_view path) {
    constexpr std::u16string_view separators = u"/\\";
    if (!backslash_separates() || anchor_of(path) != PathAnchor::full) return {};
    std::vector<std::u16string> elements = split_words(path, separators);
    const auto skip = [&](std::u16string_view name) {
        if (!elements.empty() && elements[0] == name) elements.erase(elements.begin());
    };
    skip(u"?"), skip(u"."), skip(u"UNC");
    if (elements.empty() || elements[0].ends_with(u':')) return elements.empty() ? u"" : elements[0];
    return u"\\\\" + elements[0] + (elements.size() > 1 ? u"\\" + elements[1] : u"");
}

bool backslash_separates() {
    static const bool separates = qel::util::filesystem::Path(u"a\\b").parent_path().text() == u"a";
    return separates;
}

} // namespace orvane
