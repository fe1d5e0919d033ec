// The flag table: which flag stores what.
#include "parsing/flag_table.hpp"

#include "parsing/flag_texts.hpp"
#include "parsing/irregular_flags.hpp"
#include "parsing/regular_flags.hpp"

#include <cstddef>
#include <iterator>

namespace qel::config {
namespace {

using S = ServerSettings;
using std::u16string;

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
    {flag::enable_discovery,                        irregular::enable_discovery},
    {flag::enable_statistics,                       irregular::enable_statistics},
    {flag::extract_root,                            irregular::extract_root},
    {flag::auto_deploy_root,                        irregular::auto_deploy_root},
    {flag::lumo_root,                               irregular::lumo_root},
    {flag::log_root,                                store<Path, &S::log_root>},
    {flag::pid_root,                                store<Path, &S::pid_root>},
    {flag::endpoint_root,                           store<Path, &S::endpoint_root>},
    {flag::log_archive_root,                        store<Path, &S::log_archive_root>},
    {flag::files_root,                              store<Path, &S::files_root>},
    {flag::start_cache,                             irregular::start_cache},
    {flag::attach_cache,                            irregular::attach_cache},
    {flag::http,                                    irregular::http},
    {flag::socket_root,                             store<u16string, &S::socket_root>},
    {flag::num_workers,                             store<unsigned int, &S::num_workers>},
    {flag::num_threads,                             irregular::num_threads},
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
    {flag::request_size_limit,                      irregular::request_size_limit},
    {flag::http_linger_threshold,                   irregular::http_linger_threshold},
    {flag::queue_time_trigger,                      store_queue_time<&RequestQueueTime::trigger>},
    {flag::queue_time_target,                       store_queue_time<&RequestQueueTime::target>},
    {flag::driver,                                  store<u16string, &S::driver>},
    {flag::log_severity,                            store<severity_level, &S::log_severity>},
    {flag::https,                                   irregular::https},
    {flag::https_private_key_file,                  store_tls<Path, &SslContext::private_key_file>},
    {flag::https_key_passphrase_file,               store_tls<Path, &SslContext::key_passphrase_file>},
    {flag::https_cert_chain_file,                   store_tls<Path, &SslContext::cert_chain_file>},
    {flag::https_ca_file,                           store_tls<Path, &SslContext::ca_file>},
    {flag::https_tmp_dh_param_file,                 store_tls<Path, &SslContext::tmp_dh_param_file>},
    {flag::https_use_crl,                           set_tls<&SslContext::use_crl>},
    {flag::https_use_system_store,                  set_tls<&SslContext::use_system_store>},
    {flag::https_allow_all_clients,                 set_tls<&SslContext::allow_all_clients>},
    {flag::https_verify_peer_mode,                  irregular::https_verify_peer_mode},
    {flag::https_allowed_client,                    irregular::https_allowed_client},
    {flag::https_protocol_list,                     store_tls<std::string, &SslContext::protocol_list>},
    {flag::https_cipher_list,                       store_tls<std::string, &SslContext::cipher_list>},
    {flag::https_tmp_ec_param,                      store_tls<std::string, &SslContext::tmp_ec_param>},
    {flag::log_handler,                             irregular::log_handler},
    {flag::profile,                                 irregular::profile},
    {flag::cors_allowed_origins,                    irregular::cors_allowed_origins},
    // Existing command lines rely on this: right after this flag, only the flags below are known, for one token.
    {flag::request_timeout,                         store<time_duration, &S::request_timeout>, Next::falls_through},
    {flag::server_memory_threshold,                 store<storage_size, &S::server_memory_threshold>},
    {flag::server_memory_threshold_overflow_action, irregular::server_memory_threshold_overflow_action},
    {flag::response_archive_root,                   store<Path, &S::response_archive_root>},
    {flag::response_archive_limit,                  store<storage_size, &S::response_archive_limit>},
    {flag::user_data,                               irregular::user_data},
    {flag::statistics_log_interval,                 irregular::statistics_log_interval},
};
// clang-format on

static_assert(std::size(table) == flag::in_order.size(),
              "flags.def and the flag table differ in length: every flag has one row in each");

consteval bool in_order_of_the_list() {
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
