// Path: its two relations, its parent, and the join.
#include "qel/util/path.hpp"

#include "path_syntax.hpp"

#include <utility>

namespace qel::util::filesystem {
namespace {

/// Compares two elements. All separators are equal, because a root contains some.
int compare(std::u16string_view left, std::u16string_view right) noexcept {
    const auto folded = [](char16_t unit) { return is_separator(unit) ? separators.front() : unit; };
    const std::size_t shared = std::min(left.size(), right.size());
    for (std::size_t at = 0; at < shared; ++at) {
        const char16_t a = folded(left[at]);
        const char16_t b = folded(right[at]);
        if (a != b) return a < b ? -1 : 1;
    }
    if (left.size() == right.size()) return 0;
    return left.size() < right.size() ? -1 : 1;
}

} // namespace

Path::Path() noexcept = default;
Path::Path(std::u16string text) noexcept : text_(std::move(text)) {}
Path::Path(const Path&) = default;
Path::Path(Path&&) noexcept = default;
Path& Path::operator=(const Path&) = default;
Path& Path::operator=(Path&&) noexcept = default;
Path::~Path() = default;

const std::u16string& Path::text() const noexcept {
    return text_;
}

bool Path::empty() const noexcept {
    return text_.empty();
}

Path Path::parent_path() const {
    const std::size_t root = root_length(text_);
    std::size_t end = text_.size();
    const auto drop_while = [&](bool separator) {
        while (end > root && is_separator(text_[end - 1]) == separator)
            --end;
    };
    drop_while(true);
    if (end == root) return Path();
    drop_while(false);
    drop_while(true);
    return Path(text_.substr(0, end));
}

bool Path::operator==(const Path& other) const noexcept {
    return text_ == other.text_;
}

bool Path::operator<(const Path& other) const noexcept {
    Elements left(text_);
    Elements right(other.text_);
    std::u16string_view a = left.root().empty() ? left.next_component() : left.root();
    std::u16string_view b = right.root().empty() ? right.next_component() : right.root();
    while (!a.empty() && !b.empty()) {
        if (const int order = compare(a, b); order != 0) return order < 0;
        a = left.next_component();
        b = right.next_component();
    }
    return a.empty() && !b.empty();
}

} // namespace qel::util::filesystem

namespace qel::i18n {

namespace fs = util::filesystem;

fs::Path operator/(const fs::Path& directory, std::u16string_view component) {
    std::u16string text;
    text.reserve(directory.text().size() + 1 + component.size());
    text = directory.text();
    const bool joins_as_is = text.empty() || fs::ends_in_separator(text) || fs::is_bare_drive(text);
    if (!joins_as_is) text += fs::separators.front();
    text += component;
    return fs::Path(std::move(text));
}

} // namespace qel::i18n
