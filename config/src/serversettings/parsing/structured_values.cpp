// Log handlers, profiling directives, user data, origins and listeners.
#include "parsing/structured_values.hpp"

#include "parsing/fast_paths.hpp"

#include "qel/i18n/convert.hpp"

#include <boost/throw_exception.hpp>
#include <boost/tokenizer.hpp>

#include <algorithm>
#include <stdexcept>
#include <string_view>

namespace qel::config {
namespace {

/// The enumerator whose text form is `text`, or null.
template <class Enumerators>
const typename Enumerators::value_type* named(const Enumerators& all, std::string_view text) {
    const auto found = std::find_if(all.begin(), all.end(), [&](auto one) { return to_text(one) == text; });
    return found == all.end() ? nullptr : &*found;
}

logging::log_content_type parse_log_content(std::string_view clause) {
    const auto* content = named(logging::log_content_types, clause);
    if (content == nullptr)
        BOOST_THROW_EXCEPTION(std::runtime_error("using invalid content string " + std::string(clause)));
    return *content;
}

} // namespace

void parse_log_handler(ServerSettings& settings, std::string value) {
    const auto space = std::min(value.find(' '), value.size());
    const std::string_view handler = std::string_view(value).substr(0, space);

    const auto semicolon = handler.find(';');
    const auto content = semicolon == handler.npos ? logging::log_content_type::content_default
                                                   : parse_log_content(handler.substr(semicolon + 1));
    const auto* type = named(logging::log_format_types, handler.substr(0, semicolon));
    if (type == nullptr) BOOST_THROW_EXCEPTION(std::runtime_error("bad log format type"));
    LogHandlerInfo& stored = settings.log_handler().emplace_back();
    stored.format() = *type;
    stored.content() = content;
    stored.command() = std::move(value.erase(0, std::min(space + 1, value.size())));
}

void parse_profile_directives(const char* begin, const char* end, std::vector<ProfileDirective>& out) {
    const char* space = std::find(begin, end, ' ');
    const bool on = std::string_view(begin, space) == "on";
    if (out.empty()) out.reserve(static_cast<std::size_t>(std::count(begin, end, ' ')));
    if (space == end) out.emplace_back(on, std::string());
    // A trailing space gives an empty category, and so do two adjacent spaces.
    while (space != end) {
        const char* const word = space + 1;
        space = std::find(word, end, ' ');
        out.emplace_back(on, std::string(word, space));
    }
}

std::pair<std::u16string, std::u16string> parse_user_data_pair(std::u16string_view value) {
    using Separator = boost::escaped_list_separator<char16_t>;
    using Tokenizer = boost::tokenizer<Separator, std::u16string_view::const_iterator, std::u16string>;

    const Tokenizer tokens(value, Separator(u"\\", u" \t", u"\""));
    // One token at a time: a surplus token is reported before a bad escape after it is seen.
    auto token = tokens.begin();
    const auto end = tokens.end();
    if (token != end) {
        std::u16string key = *token;
        do {
            ++token;
        } while (token != end && token->empty());
        if (token != end) {
            std::u16string text = *token;
            if (++token == end) return {std::move(key), std::move(text)};
        }
    }
    BOOST_THROW_EXCEPTION(
        std::runtime_error("Invalid or missing arguments: \"" + i18n::ustring_to_term(value) + "\""));
}

optional<std::pair<std::u16string_view, std::u16string_view>>
plain_user_data_pair(std::u16string_view value) noexcept {
    // Letters are above all four.
    const auto is_special = [](char16_t c) {
        return c <= u'\\' && (c == u' ' || c == u'\t' || c == u'"' || c == u'\\');
    };
    const auto blank = std::find_if(value.begin(), value.end(), is_special);
    if (value.end() - blank < 2 || *blank != u' ' || std::any_of(blank + 1, value.end(), is_special))
        return {};
    return std::pair(std::u16string_view(value.begin(), blank), std::u16string_view(blank + 1, value.end()));
}

bool parse_cors_origins(std::u16string_view value, std::vector<std::string>& origins) {
    const auto is_separator = [](char16_t c) { return c == u',' || c == u' '; };
    bool star_seen = false;
    // Reserve exactly only for the first value, which mostly is the only one: repeated exact reservations would be
    // slow.
    if (origins.empty())
        origins.reserve(1 + static_cast<std::size_t>(std::count(value.begin(), value.end(), u',')));
    for (auto end = value.begin();;) {
        const auto begin = std::find_if_not(end, value.end(), is_separator);
        if (begin == value.end()) return star_seen;
        end = std::find_if(begin, value.end(), is_separator);
        origins.push_back(i18n::ustring_to_utf8({begin, end}));
        star_seen = star_seen || origins.back() == "*";
    }
}

void check_cors_origins(bool star_seen, const std::vector<std::string>& origins) {
    if (origins.empty()) BOOST_THROW_EXCEPTION(std::runtime_error("must supply at least one value"));
    if (star_seen && origins.size() != 1) {
        BOOST_THROW_EXCEPTION(std::runtime_error("using * in a list is not allowed"));
    }
}

HttpSettings parse_http_settings(std::u16string_view value) {
    HttpSettings listener;
    const auto colon = value.rfind(u':');
    if (colon != std::u16string::npos) {
        listener.host() = std::u16string(value.substr(0, colon));
        value.remove_prefix(colon + 1);
    }
    listener.port(port_from(value));
    return listener;
}

} // namespace qel::config
