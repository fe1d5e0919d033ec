// What a server may do above its memory threshold, in the words of the flag and the record.
#pragma once

#include <string_view>

namespace qel::config::overflow_action {

inline constexpr std::u16string_view purge_responses = u"purge_responses";
inline constexpr std::u16string_view archive_responses = u"archive_responses";

} // namespace qel::config::overflow_action
