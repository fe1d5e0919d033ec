// Takes a flag and its value from the tokens.
#pragma once

#include "parsing/walk.hpp"

#include "qel/util/storage_size.hpp"

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace qel::config {

using logging::severity_level;
using util::storage_size;

/// The type that the record stores for a value of kind T: for a size, its byte count.
template <class T>
using Stored = std::conditional_t<std::is_same_v<T, storage_size>, std::uint64_t, T>;

/// Consumes the flag at the cursor and, unless T is bool, the next token as its value, whatever it looks like. Returns
/// the converted value, or true for a bool.
///
/// T is one of the kinds below; a std::u16string_view is the token itself, for values that are parsed further. Throws
/// std::runtime_error naming the flag and the value if the value is missing or cannot be converted.
template <class T>
Stored<T> parse_flag(Walk& walk);

template <>
bool parse_flag<bool>(Walk& walk);

extern template Path parse_flag<Path>(Walk&);
extern template std::u16string parse_flag<std::u16string>(Walk&);
extern template std::u16string_view parse_flag<std::u16string_view>(Walk&);
extern template std::string parse_flag<std::string>(Walk&);
extern template unsigned int parse_flag<unsigned int>(Walk&);
extern template std::uint64_t parse_flag<storage_size>(Walk&);
extern template time_duration parse_flag<time_duration>(Walk&);
extern template severity_level parse_flag<severity_level>(Walk&);

} // namespace qel::config
