// A file-system path as UTF-16 text, kept exactly as it was given.
#pragma once

#include "qel/util/platform_export.hpp"

#include <string>
#include <string_view>

namespace qel::util::filesystem {

/// A path held as UTF-16 text. Nothing is checked, folded or normalised on construction.
///
/// Separators are `/`, and on Windows also the backslash. Two relations are deliberately different:
/// `==` compares the stored texts, code unit by code unit; `<` compares the sequences of path elements.
/// So `a//b` and `a/b` are unequal, and neither is less than the other.
class ZEP_CONFIG_PLATFORM_API Path {
public:
    /// The empty path.
    Path() noexcept;
    /// The text as it is.
    explicit Path(std::u16string text) noexcept;
    ///@{
    /// Copies throw std::bad_alloc, and an assignment that failed changes nothing. Moves throw nothing.
    Path(const Path&);
    Path(Path&&) noexcept;
    Path& operator=(const Path&);
    Path& operator=(Path&&) noexcept;
    ///@}
    ~Path();

    /// The text as it was given.
    const std::u16string& text() const noexcept;
    /// Whether the text is empty.
    bool empty() const noexcept;

    /// The path without its last element. The parent of `/a` is `/`; of `/`, of a drive or share root, and of
    /// a single relative element it is the empty path, so repeated steps always end there. Throws
    /// std::bad_alloc; strong guarantee.
    Path parent_path() const;

    /// Same text, code unit by code unit.
    bool operator==(const Path&) const noexcept;
    /// Lexicographic over the elements; each element compares by code units. Runs of separators count as one,
    /// and a trailing separator adds no element; a leading root is an element of its own.
    bool operator<(const Path&) const noexcept;

private:
    std::u16string text_;
};

} // namespace qel::util::filesystem

namespace qel::i18n {

/// `directory`, one separator where needed, then `component` as it stands: never replaces `directory`,
/// whatever the component begins with. Nothing is put before the component when `directory` is empty. Throws
/// std::bad_alloc; strong guarantee.
ZEP_CONFIG_PLATFORM_API util::filesystem::Path operator/(const util::filesystem::Path& directory,
                                                         std::u16string_view component);

} // namespace qel::i18n
