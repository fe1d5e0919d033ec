// How the text of a path is read: the differences between the two systems, and the walk over the elements.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace qel::util::filesystem {

// Implemented for each system.

/// Every character that separates elements, one or two, the preferred one first.
extern const std::u16string_view separators;

/// The length of the root that `text` begins with, 0 for a relative path.
std::size_t root_length(std::u16string_view text) noexcept;

/// Whether the text is a drive without a directory, to which a component is joined without a separator.
bool is_bare_drive(std::u16string_view text) noexcept;

// The same on each system.

inline bool is_separator(char16_t unit) noexcept {
    return unit == separators.front() || unit == separators.back();
}

inline bool ends_in_separator(std::u16string_view text) noexcept {
    return !text.empty() && is_separator(text.back());
}

/// The elements of a path in order: its root, if it has one, then its components. Allocates nothing.
class Elements {
public:
    explicit Elements(std::u16string_view text) noexcept
        : root_(text.substr(0, root_length(text))), rest_(text.substr(root_.size())) {}

    /// Empty for a relative path.
    std::u16string_view root() const noexcept { return root_; }

    /// The next component, empty after the last one.
    std::u16string_view next_component() noexcept {
        take_while(true);
        return take_while(false);
    }

private:
    std::u16string_view take_while(bool separator) noexcept {
        const auto end = std::find_if(rest_.begin(), rest_.end(),
                                      [separator](char16_t unit) { return is_separator(unit) != separator; });
        const auto taken = rest_.substr(0, static_cast<std::size_t>(end - rest_.begin()));
        rest_.remove_prefix(taken.size());
        return taken;
    }

    std::u16string_view root_;
    std::u16string_view rest_;
};

} // namespace qel::util::filesystem
