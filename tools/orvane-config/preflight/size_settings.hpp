// The settings that are sizes, and what of this machine they are compared with, a row each.
#pragma once

#include "reference/flag_forms.hpp"

#include "qel/config/server_settings.hpp"

namespace orvane::preflight {

using Bytes = boost::optional<std::uint64_t>;

struct SizeSetting {
    std::u16string_view flag;
    Bytes (*bytes)(const qel::config::ServerSettings&) = nullptr; ///< null: no comparison
    /// Where the files are that the size limits; null: it is about memory.
    boost::optional<qel::config::Path> (*directory)(const qel::config::ServerSettings&) = nullptr;
    bool counts_files = false; ///< what is in the directory already is part of it
};

inline Bytes worker_trigger(const qel::config::ServerSettings& settings) {
    const auto& pool = settings.worker_pool_settings();
    return pool && pool->memory_limit() ? pool->memory_limit()->trigger() : Bytes();
}

#define ZEP_VALUE(setting) [](const qel::config::ServerSettings& settings) { return settings.setting(); }

inline constexpr SizeSetting size_settings[] = {
    {flag::worker_restart_memory_limit, ZEP_VALUE(worker_restart_memory_limit)},
    {flag::worker_memory_trigger, worker_trigger},
    {flag::server_memory_threshold, ZEP_VALUE(server_memory_threshold)},
    {flag::log_rotation_size, ZEP_VALUE(log_rotation_size), ZEP_VALUE(log_root)},
    {flag::log_archive_max_size, ZEP_VALUE(log_archive_max_size), ZEP_VALUE(log_archive_root), true},
    {flag::response_archive_limit, ZEP_VALUE(response_archive_limit), ZEP_VALUE(response_archive_root), true},
    {flag::worker_memory_target},  // the server aims for it only above the trigger
    {flag::request_size_limit},    // of one request
    {flag::http_linger_threshold}, // of one connection
};

#undef ZEP_VALUE

static_assert(name_all(size_settings, Form::size), "a flag that takes a size has no row here");

} // namespace orvane::preflight
