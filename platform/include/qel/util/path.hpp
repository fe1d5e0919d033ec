// A file-system path as UTF-16 text, kept exactly as it was given.
#pragma once

#include "qel/util/platform_export.hpp"

#include <string>
#include <string_view>

namespace qel::util::filesystem {

ZEP_CONFIG_PLATFORM_QUIET_BEGIN
/// A path stored as UTF-16 text. Nothing is checked or normalised on construction.
///
/// Separators are `/`, and on Windows also the backslash. Two relations are deliberately different:
/// `==` compares the stored texts, code unit by code unit; `<` compares the sequences of path elements.
/// So `a//b` and `a/b` are unequal, and neither is less than the other.
class ZEP_CONFIG_PLATFORM_API Path {
public:
    /// The empty path.
    Path() noexcept;
    /// Stores the text unchanged.
    explicit Path(std::u16string text) noexcept;
    ///@{
    /// Copies throw std::bad_alloc; an assignment that fails changes nothing.
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

    /// The path without its last element. The parent of `/a` is `/`. The parent of `/`, of a drive or share root, and
    /// of a single relative element is the empty path, so repeated steps always end there. Throws std::bad_alloc.
    Path parent_path() const;

    /// Whether the texts are the same, code unit by code unit.
    bool operator==(const Path&) const noexcept;
    /// Lexicographic over the elements; each element compares by code units. Runs of separators count as one,
    /// and a trailing separator adds no element; a leading root is an element.
    bool operator<(const Path&) const noexcept;

private:
    std::u16string text_{};
};
ZEP_CONFIG_PLATFORM_QUIET_END

} // namespace qel::util::filesystem

namespace qel::i18n {

/// `directory`, one separator if needed, then `component` unchanged. Never replaces `directory`, whatever the component
/// begins with. If `directory` is empty, nothing is put before the component. Throws std::bad_alloc.
///
/// Path is of another namespace, so the operator is found after `using qel::i18n::operator/;` only. Then
/// `directory / u"name"` can be written.
ZEP_CONFIG_PLATFORM_API util::filesystem::Path operator/(const util::filesystem::Path& directory,
                                                         std::u16string_view component);

} // namespace qel::i18n
