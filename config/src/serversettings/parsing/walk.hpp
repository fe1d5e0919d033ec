// The working state of one parse.
#pragma once

#include "parsing/user_data.hpp"

#include "qel/config/server_settings.hpp"

#include <cstdint>
#include <deque>
#include <forward_list>
#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

namespace qel::config {

using Tokens = std::deque<std::u16string>;

/// The state of one call of parse_settings.
struct Walk {
    ServerSettings& settings;
    std::ostream& out;

    /// On a flag when a handler is called; after the flag and its value when the handler returns.
    Tokens::const_iterator cursor;
    Tokens::const_iterator end;

    bool extract_root_given = false;
    bool auto_deploy_root_given = false;
    bool https_given = false;

    HttpSettings https{};
    SslContext ssl_context{};
    AccessMap allowed_clients{};
    AccessMap::iterator latest_client = allowed_clients.end();
    UserData user_data{};
    /// What `user_data` refers to if it is not part of a token: texts without their quotes and escapes.
    std::forward_list<std::pair<std::u16string, std::u16string>> unquoted{};
    std::vector<Path> lumo_root{};
};

/// Ends the walk with out_of_range; the driver writes the three parts. Deliberately not a std::exception: those end the
/// walk with parse_error.
struct OutOfRange {
    std::string flag;
    const char* fault;
    /// A number, because the stream writes it: a caller's locale may group its digits.
    optional<std::uint64_t> limit{};
};

} // namespace qel::config
