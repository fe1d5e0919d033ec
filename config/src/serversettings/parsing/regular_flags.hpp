// What regular flags do: take a value of a kind, and store it in a field.
#pragma once

#include "parsing/parse_flag.hpp"

namespace qel::config {

template <class T>
T& engaged(optional<T>& value) {
    if (!value) value.emplace();
    return *value;
}

/// A switch of the record.
template <bool& (ServerSettings::*field)() noexcept>
void set(Walk& walk) {
    (walk.settings.*field)() = parse_flag<bool>(walk);
}

/// An optional field of the record; the last value wins.
template <class T, optional<Stored<T>>& (ServerSettings::*field)() noexcept>
void store(Walk& walk) {
    (walk.settings.*field)() = parse_flag<T>(walk);
}

/// One limit of the worker pool. The records around it are created if necessary; the other limit is not changed.
template <class T, class Limits, optional<Limits>& (WorkerPoolSettings::*limits)() noexcept,
          optional<Stored<T>>& (Limits::*field)() noexcept>
void store_limit(Walk& walk) {
    const Stored<T> value = parse_flag<T>(walk);
    WorkerPoolSettings& pool = engaged(walk.settings.worker_pool_settings());
    (engaged((pool.*limits)()).*field)() = value;
}

template <optional<std::uint64_t>& (WorkerMemoryLimit::*field)() noexcept>
inline constexpr auto store_memory =
    store_limit<storage_size, WorkerMemoryLimit, &WorkerPoolSettings::memory_limit, field>;

template <optional<time_duration>& (RequestQueueTime::*field)() noexcept>
inline constexpr auto store_queue_time =
    store_limit<time_duration, RequestQueueTime, &WorkerPoolSettings::queue_time, field>;

/// A value of the TLS context, which is stored in the record at the end of the walk if --https is given.
template <class T, void (SslContext::*setter)(optional<T>) noexcept>
void store_tls(Walk& walk) {
    (walk.ssl_context.*setter)(parse_flag<T>(walk));
}

template <void (SslContext::*setter)(bool) noexcept>
void set_tls(Walk& walk) {
    (walk.ssl_context.*setter)(parse_flag<bool>(walk));
}

} // namespace qel::config
