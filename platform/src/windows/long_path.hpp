// Paths that are longer than Windows takes them in their everyday form.
#pragma once

#include <string>
#include <string_view>

namespace qel::util::filesystem {

/// The text that is added in front of an absolute path of any length, and in front of one on a share instead of its \\.
inline constexpr std::u16string_view long_prefix = u"\\\\?\\";
inline constexpr std::u16string_view long_share_prefix = u"\\\\?\\UNC\\";

/// The form of an absolute path, without `.`, `..` and `/`, in which its length does not matter. A short one stays as it is.
std::wstring long_form(const std::u16string& path);

} // namespace qel::util::filesystem
