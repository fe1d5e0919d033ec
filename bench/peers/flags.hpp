// The server's flags for parsers that know four kinds of them: switches, texts, numbers, and texts that may be
// repeated.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <vector>

namespace qel::config::bench {

enum class Kind { on_off, text, number, repeatable };

constexpr Kind kind_of(std::string_view flag) {
    for (const auto* name :
         {"wait", "halt_on_segv", "no_banner", "disable_control_c", "detach_console", "merge_worker_streams",
          "no_display", "show_server_structure", "hide_telvar_error_stack", "log_stdout",
          "enable_http_pipelining", "use_single_comp_thread", "enable_discovery", "enable_statistics",
          "https_use_crl", "https_use_system_store", "https_allow_all_clients"})
        if (flag == name) return Kind::on_off;
    for (const auto* name :
         {"num_workers", "num_threads", "control_port", "start_listener", "worker_memory_trigger",
          "worker_memory_target", "log_rotation_size", "log_archive_max_size", "worker_restart_memory_limit",
          "request_size_limit", "http_linger_threshold", "server_memory_threshold", "response_archive_limit"})
        if (flag == name) return Kind::number;
    for (const auto* name : {"lumo_root", "start_cache", "attach_cache", "https_allowed_client",
                             "log_handler", "profile", "cors_allowed_origins", "user_data"})
        if (flag == name) return Kind::repeatable;
    return Kind::text;
}

/// In the order of Kind.
using Types = std::tuple<bool, std::string, std::uint64_t, std::vector<std::string>>;

template <Kind kind>
using Stored = std::tuple_element_t<static_cast<std::size_t>(kind), Types>;

/// The values that a parser finds, one member per flag.
struct Values {
#define ZEP_FLAG(name, text) Stored<kind_of(#name)> name{};
#include "qel/config/flags.def"

    bool operator==(const Values&) const = default;
};

/// A flag's text as narrow characters.
template <std::size_t size>
struct Narrow {
    char with_dashes[size];

    explicit constexpr Narrow(const char16_t (&wide)[size]) : with_dashes() {
        for (std::size_t i = 0; i != size; ++i)
            with_dashes[i] = static_cast<char>(wide[i]);
    }
    constexpr const char* bare() const { return with_dashes + 2; }
};

namespace narrow {
#define ZEP_FLAG(name, text) inline constexpr Narrow name(text);
#include "qel/config/flags.def"
} // namespace narrow

} // namespace qel::config::bench
