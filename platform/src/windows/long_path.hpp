// Paths that are too long for Windows in their usual form.
#pragma once

#include <string>
#include <string_view>

namespace qel::util::filesystem {

/// The prefix of an absolute path of any length, and the one that replaces the \\ of a path on a share.
inline constexpr std::u16string_view long_prefix = u"\\\\?\\";
inline constexpr std::u16string_view long_share_prefix = u"\\\\?\\UNC\\";

/// The form of an absolute path, without `.`, `..` and `/`, that may have any length. A short one is not changed.
std::wstring long_form(const std::u16string& path);

} // namespace qel::util::filesystem
