// The flag table: which flag stores what, and the flags that do more than store.
#include "parsing/flag_table.hpp"

#include "parsing/cache_values.hpp"
#include "parsing/flag_texts.hpp"
#include "parsing/regular_flags.hpp"
#include "parsing/structured_values.hpp"

#include "parse_allowed_clients.hpp"

#include "qel/i18n/convert.hpp"

#include <boost/lexical_cast.hpp>
#include <boost/throw_exception.hpp>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <ostream>
#include <stdexcept>

namespace qel::config {
namespace {

using S = ServerSettings;
using boost::lexical_cast;
using std::u16string;
using std::u16string_view;

template <CacheSettings (*parse)(u16string_view)>
void add_cache(Walk& walk) {
    CacheSettings cache = parse(parse_flag<u16string_view>(walk));
    engaged(walk.settings.cache_list()).list().push_back(std::move(cache));
}

// --- flags that do more than store

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

// Replaces the listener whole: a linger threshold given before it is lost.
void http(Walk& walk) {
    walk.settings.http() = parse_http_settings(parse_flag<u16string_view>(walk));
}

void http_linger_threshold(Walk& walk) {
    const std::uint64_t threshold = parse_flag<storage_size>(walk);
    engaged(walk.settings.http()).linger_threshold() = threshold;
}

// 0 is refused for the threads only: a server without workers is meant to be possible. Stored before it is
// checked.
void num_threads(Walk& walk) {
    const unsigned int threads = parse_flag<unsigned int>(walk);
    walk.settings.num_threads() = threads;
    if (threads == 0) {
        walk.out << i18n::ustring_to_utf8(flag::num_threads) << " must be at least 1";
        throw OutOfRange();
    }
}

// Stored before it is checked: after the failure the field holds the oversized count.
void request_size_limit(Walk& walk) {
    constexpr std::uint64_t largest = 0x7FFFFFFF;
    const std::uint64_t size = parse_flag<storage_size>(walk);
    walk.settings.request_size_limit() = size;
    if (size > largest) {
        // The number as the stream writes numbers: a caller's locale may group its digits.
        walk.out << i18n::ustring_to_utf8(flag::request_size_limit) << " exceeds maximum value of "
                 << largest;
        throw OutOfRange();
    }
}

void https(Walk& walk) {
    walk.https = parse_http_settings(parse_flag<u16string_view>(walk));
    walk.https_given = true;
}

void https_verify_peer_mode(Walk& walk) {
    const auto value = parse_flag<u16string_view>(walk);
    // The cast, which takes a stream, is left with what it refuses.
    for (const auto mode :
         {SslVerifyPeerMode::no_verify_peer, SslVerifyPeerMode::verify_peer_require_peer_cert})
        if (std::ranges::equal(value, to_text(mode))) return walk.ssl_context.verify_peer_mode(mode);
    walk.ssl_context.verify_peer_mode(lexical_cast<SslVerifyPeerMode>(i18n::ustring_to_utf8(value)));
}

void https_allowed_client(Walk& walk) {
    parse_allowed_clients(parse_flag<std::string>(walk), walk.allowed_clients);
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
    if (*action != u"purge_responses" && *action != u"archive_responses") {
        BOOST_THROW_EXCEPTION(std::runtime_error("Invalid memory threshold overflow action."));
    }
}

void user_data(Walk& walk) {
    auto [key, value] = parse_user_data_pair(parse_flag<u16string_view>(walk));
    const auto [entry, inserted] = walk.user_data.try_emplace(std::move(key));
    if (!inserted) {
        walk.out << "Warning: overriding previously specified \"" << i18n::ustring_to_term(flag::user_data)
                 << "\" value for key \"" << i18n::ustring_to_term(entry->first) << "\"" << std::endl;
    }
    entry->second = std::move(value);
}

// A negative interval is raised too; not-a-date-time compares less than nothing and is kept.
void statistics_log_interval(Walk& walk) {
    const boost::posix_time::seconds shortest(1);
    time_duration interval = parse_flag<time_duration>(walk);
    if (interval < shortest) interval = shortest;
    walk.settings.statistics_log_interval() = interval;
}

// --- the table

// clang-format off
constexpr Row table[] = {
    {flag::wait,                                    set<&S::wait_mode>},
    {flag::halt_on_segv,                            set<&S::halt_on_segv>},
    {flag::no_banner,                               set<&S::no_banner>},
    {flag::disable_control_c,                       set<&S::disable_control_c>},
    {flag::detach_console,                          set<&S::detach_console>},
    {flag::merge_worker_streams,                    set<&S::merge_worker_streams>},
    {flag::no_display,                              set<&S::no_display>},
    {flag::show_server_structure,                   set<&S::show_server_structure>},
    {flag::hide_telvar_error_stack,                 set<&S::hide_telvar_error_stack>},
    {flag::log_stdout,                              set<&S::log_stdout>},
    {flag::enable_http_pipelining,                  set<&S::enable_http_pipelining>},
    {flag::use_single_comp_thread,                  set<&S::use_single_comp_thread>},
    {flag::enable_discovery,                        enable_discovery},
    {flag::enable_statistics,                       enable_statistics},
    {flag::extract_root,                            extract_root},
    {flag::auto_deploy_root,                        auto_deploy_root},
    {flag::lumo_root,                               lumo_root},
    {flag::log_root,                                store<Path, &S::log_root>},
    {flag::pid_root,                                store<Path, &S::pid_root>},
    {flag::endpoint_root,                           store<Path, &S::endpoint_root>},
    {flag::log_archive_root,                        store<Path, &S::log_archive_root>},
    {flag::files_root,                              store<Path, &S::files_root>},
    {flag::start_cache,                             add_cache<parse_start_cache>},
    {flag::attach_cache,                            add_cache<parse_cache_settings>},
    {flag::http,                                    http},
    {flag::socket_root,                             store<u16string, &S::socket_root>},
    {flag::num_workers,                             store<unsigned int, &S::num_workers>},
    {flag::num_threads,                             num_threads},
    {flag::control_port,                            store<unsigned int, &S::control_port>},
    {flag::start_listener,                          store<unsigned int, &S::start_listener>},
    {flag::worker_restart_interval,                 store<time_duration, &S::worker_restart_interval>},
    {flag::worker_restart_memory_limit_interval,    store<time_duration, &S::worker_restart_memory_limit_interval>},
    {flag::worker_memory_check_interval,            store<time_duration, &S::worker_memory_check_interval>},
    {flag::worker_memory_trigger,                   store_memory<&WorkerMemoryLimit::trigger>},
    {flag::worker_memory_target,                    store_memory<&WorkerMemoryLimit::target>},
    {flag::log_rotation_size,                       store<storage_size, &S::log_rotation_size>},
    {flag::log_archive_max_size,                    store<storage_size, &S::log_archive_max_size>},
    {flag::worker_restart_memory_limit,             store<storage_size, &S::worker_restart_memory_limit>},
    {flag::request_size_limit,                      request_size_limit},
    {flag::http_linger_threshold,                   http_linger_threshold},
    {flag::queue_time_trigger,                      store_queue_time<&RequestQueueTime::trigger>},
    {flag::queue_time_target,                       store_queue_time<&RequestQueueTime::target>},
    {flag::driver,                                  store<u16string, &S::driver>},
    {flag::log_severity,                            store<severity_level, &S::log_severity>},
    {flag::https,                                   https},
    {flag::https_private_key_file,                  store_tls<Path, &SslContext::private_key_file>},
    {flag::https_key_passphrase_file,               store_tls<Path, &SslContext::key_passphrase_file>},
    {flag::https_cert_chain_file,                   store_tls<Path, &SslContext::cert_chain_file>},
    {flag::https_ca_file,                           store_tls<Path, &SslContext::ca_file>},
    {flag::https_tmp_dh_param_file,                 store_tls<Path, &SslContext::tmp_dh_param_file>},
    {flag::https_use_crl,                           set_tls<&SslContext::use_crl>},
    {flag::https_use_system_store,                  set_tls<&SslContext::use_system_store>},
    {flag::https_allow_all_clients,                 set_tls<&SslContext::allow_all_clients>},
    {flag::https_verify_peer_mode,                  https_verify_peer_mode},
    {flag::https_allowed_client,                    https_allowed_client},
    {flag::https_protocol_list,                     store_tls<std::string, &SslContext::protocol_list>},
    {flag::https_cipher_list,                       store_tls<std::string, &SslContext::cipher_list>},
    {flag::https_tmp_ec_param,                      store_tls<std::string, &SslContext::tmp_ec_param>},
    {flag::log_handler,                             log_handler},
    {flag::profile,                                 profile},
    {flag::cors_allowed_origins,                    cors_allowed_origins},
    // Servers in the field rely on it: behind this flag only the flags below are known, for one token.
    {flag::request_timeout,                         store<time_duration, &S::request_timeout>, Next::falls_through},
    {flag::server_memory_threshold,                 store<storage_size, &S::server_memory_threshold>},
    {flag::server_memory_threshold_overflow_action, server_memory_threshold_overflow_action},
    {flag::response_archive_root,                   store<Path, &S::response_archive_root>},
    {flag::response_archive_limit,                  store<storage_size, &S::response_archive_limit>},
    {flag::user_data,                               user_data},
    {flag::statistics_log_interval,                 statistics_log_interval},
};
// clang-format on

static_assert(std::size(table) == flag::in_order.size(),
              "flags.def and the flag table differ in length: every flag has one row in each");

constexpr bool in_order_of_the_list() {
    for (std::size_t i = 0; i != std::size(table); ++i) {
        if (table[i].flag != flag::in_order[i]) return false;
    }
    return true;
}
static_assert(in_order_of_the_list(), "the rows of the flag table do not stand in the order of flags.def");

} // namespace

std::span<const Row> flag_rows() {
    return table;
}

} // namespace qel::config
