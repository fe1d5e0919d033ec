// The working state of one parse, and the taking of a flag's value.
#pragma once

#include "qel/config/server_settings.hpp"
#include "qel/util/storage_size.hpp"

#include <cstdint>
#include <deque>
#include <iosfwd>
#include <map>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace qel::config {

using logging::severity_level;
using util::storage_size;
using Tokens = std::deque<std::u16string>;

/// What one call of parse_settings works on; created at its start, gone at its return.
struct Walk {
    ServerSettings& settings;
    std::ostream& out;

    /// On a flag when a handler is called; behind the flag and its value when the handler returns.
    Tokens::const_iterator cursor;
    Tokens::const_iterator end;

    bool extract_root_given = false;
    bool auto_deploy_root_given = false;
    bool https_given = false;

    HttpSettings https{};
    SslContext ssl_context{};
    AccessMap allowed_clients{};
    std::map<std::u16string, std::u16string> user_data{};
    std::vector<Path> lumo_root{};
};

/// What the record holds for a value of kind T: for a size, its byte count.
template <class T>
using Stored = std::conditional_t<std::is_same_v<T, storage_size>, std::uint64_t, T>;

/// Consumes the flag at the cursor and, unless T is bool, the next token as its value, whatever that looks
/// like. Returns the converted value, or true for a bool.
///
/// T is Path, std::u16string, std::u16string_view (of the token itself, for values that are taken apart), std::string,
/// unsigned int, storage_size, time_duration, severity_level or bool. Throws std::runtime_error naming flag and value when the value is missing
/// or does not convert.
template <class T>
Stored<T> parse_flag(Walk& walk);

/// Ends the walk with out_of_range, after the text is written. Deliberately no std::exception: those end it with
/// parse_error.
struct OutOfRange {};

} // namespace qel::config
