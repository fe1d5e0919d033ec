#include "parsing/irregular_flags.hpp"

#include "overflow_actions.hpp"
#include "parsing/cache_values.hpp"
#include "parsing/flag_texts.hpp"
#include "parsing/regular_flags.hpp"
#include "parsing/structured_values.hpp"

#include "parse_allowed_clients.hpp"

#include "qel/i18n/convert.hpp"

#include <boost/lexical_cast.hpp>
#include <boost/throw_exception.hpp>

#include <algorithm>
#include <ostream>
#include <stdexcept>

namespace qel::config {
namespace {

using boost::lexical_cast;
using std::u16string;
using std::u16string_view;

void add_cache(Walk& walk, CacheSettings (*parse)(u16string_view)) {
    CacheSettings cache = parse(parse_flag<u16string_view>(walk));
    engaged(walk.settings.cache_list()).list().push_back(std::move(cache));
}

} // namespace

namespace irregular {

void enable_discovery(Walk& walk) {
    parse_flag<bool>(walk);
    walk.settings.enabled_apis().insert("discovery");
}

void enable_statistics(Walk& walk) {
    parse_flag<bool>(walk);
    walk.settings.enabled_apis().insert("statistics");
}

void extract_root(Walk& walk) {
    walk.settings.extract_root() = parse_flag<Path>(walk);
    walk.extract_root_given = true;
}

void auto_deploy_root(Walk& walk) {
    walk.settings.auto_deploy_root() = parse_flag<Path>(walk);
    walk.auto_deploy_root_given = true;
}

void lumo_root(Walk& walk) {
    walk.lumo_root.push_back(parse_flag<Path>(walk));
}

void start_cache(Walk& walk) {
    add_cache(walk, parse_start_cache);
}

void attach_cache(Walk& walk) {
    add_cache(walk, parse_cache_settings);
}

// Replaces the whole listener: a linger threshold given before it is lost.
void http(Walk& walk) {
    walk.settings.http() = parse_http_settings(parse_flag<u16string_view>(walk));
}

void http_linger_threshold(Walk& walk) {
    const std::uint64_t threshold = parse_flag<storage_size>(walk);
    engaged(walk.settings.http()).linger_threshold() = threshold;
}

// 0 is refused only for the threads: a server without workers is allowed. The value is stored before it is checked.
void num_threads(Walk& walk) {
    const unsigned int threads = parse_flag<unsigned int>(walk);
    walk.settings.num_threads() = threads;
    if (threads == 0) throw OutOfRange{i18n::ustring_to_utf8(flag::num_threads), " must be at least 1"};
}

// Stored before it is checked: after the failure the field holds the oversized count.
void request_size_limit(Walk& walk) {
    constexpr std::uint64_t largest = 0x7FFFFFFF;
    const std::uint64_t size = parse_flag<storage_size>(walk);
    walk.settings.request_size_limit() = size;
    if (size > largest) {
        throw OutOfRange{i18n::ustring_to_utf8(flag::request_size_limit), " exceeds maximum value of ",
                         largest};
    }
}

void https(Walk& walk) {
    walk.https = parse_http_settings(parse_flag<u16string_view>(walk));
    walk.https_given = true;
}

void https_verify_peer_mode(Walk& walk) {
    const auto value = parse_flag<u16string_view>(walk);
    // The cast needs a stream, so it is left for the values that it refuses.
    for (const auto mode :
         {SslVerifyPeerMode::no_verify_peer, SslVerifyPeerMode::verify_peer_require_peer_cert})
        if (std::ranges::equal(value, to_text(mode))) return walk.ssl_context.verify_peer_mode(mode);
    walk.ssl_context.verify_peer_mode(lexical_cast<SslVerifyPeerMode>(i18n::ustring_to_utf8(value)));
}

void https_allowed_client(Walk& walk) {
    parse_allowed_clients(parse_flag<std::string>(walk), walk.allowed_clients, walk.latest_client);
}

void log_handler(Walk& walk) {
    parse_log_handler(walk.settings, parse_flag<std::string>(walk));
}

void profile(Walk& walk) {
    const std::string value = parse_flag<std::string>(walk);
    parse_profile_directives(value.data(), value.data() + value.size(), walk.settings.profile());
}

void cors_allowed_origins(Walk& walk) {
    auto& origins = walk.settings.cors_allowed_origins();
    const bool star_seen = parse_cors_origins(parse_flag<u16string_view>(walk), origins);
    check_cors_origins(star_seen, origins);
}

// Stored before it is checked: after the failure the field holds the rejected text.
void server_memory_threshold_overflow_action(Walk& walk) {
    auto& action = walk.settings.server_memory_threshold_overflow_action();
    action = parse_flag<u16string>(walk);
    if (*action != overflow_action::purge_responses && *action != overflow_action::archive_responses) {
        BOOST_THROW_EXCEPTION(std::runtime_error("Invalid memory threshold overflow action."));
    }
}

void user_data(Walk& walk) {
    const auto value = parse_flag<u16string_view>(walk);
    auto pair = plain_user_data_pair(value);
    if (!pair) pair = walk.unquoted.emplace_front(parse_user_data_pair(value));
    auto* const earlier = walk.user_data.add(*pair);
    if (earlier == nullptr) return;
    walk.out << "Warning: overriding previously specified \"" << i18n::ustring_to_term(flag::user_data)
             << "\" value for key \"" << i18n::ustring_to_term(pair->first) << "\"" << std::endl;
    earlier->second = pair->second;
}

// A negative interval is raised too; not-a-date-time is not less than any interval, so it is kept.
void statistics_log_interval(Walk& walk) {
    const boost::posix_time::seconds shortest(1);
    time_duration interval = parse_flag<time_duration>(walk);
    if (interval < shortest) interval = shortest;
    walk.settings.statistics_log_interval() = interval;
}

} // namespace irregular
} // namespace qel::config
