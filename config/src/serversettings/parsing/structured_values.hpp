// Parsers of values with an inner syntax. They throw std::runtime_error (boost::bad_lexical_cast for numbers);
// what they stored before the failure stays stored.
#pragma once

#include "qel/config/server_settings.hpp"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qel::config {

/// <format>[;<content>][ <command>]
/// Appends one handler. The content clause is checked before the format word.
void parse_log_handler(ServerSettings& settings, std::string value);

/// <switch>[ <category>]*
/// Appends one directive per category, or one with an empty category if there is none. Only "on" means on.
void parse_profile_directives(const char* begin, const char* end, std::vector<ProfileDirective>& out);

/// <key> <value>
/// The tokens are as in a quoted command line: separated by blanks and tabs, grouped by '"', escaped by '\'.
std::pair<std::u16string, std::u16string> parse_user_data_pair(std::u16string_view value);

/// The same for the common form: no quotes and escapes, and a single blank. Nothing if the value has another form.
optional<std::pair<std::u16string_view, std::u16string_view>>
plain_user_data_pair(std::u16string_view value) noexcept;

/// <origin>[,<origin>]*
/// Appends the origins, separated by any run of ',' and ' '. Returns whether one of them is "*".
bool parse_cors_origins(std::u16string_view value, std::vector<std::string>& origins);

/// Throws if there is no origin, or if a "*" is not the only one. `origins` is the whole list, but `star_seen` is only
/// about the last value: "*" after others fails, others after "*" pass.
void check_cors_origins(bool star_seen, const std::vector<std::string>& origins);

/// [<host-name>:]<port>
/// The host is the text before the last ':', unchecked; it is not set if there is none.
HttpSettings parse_http_settings(std::u16string_view value);

} // namespace qel::config
