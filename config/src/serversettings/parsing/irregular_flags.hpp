// The flags that do more than store a value.
#pragma once

namespace qel::config {

struct Walk;

/// Each takes the flag at the cursor and its value, and stores and checks the value.
namespace irregular {

void enable_discovery(Walk& walk);
void enable_statistics(Walk& walk);
void extract_root(Walk& walk);
void auto_deploy_root(Walk& walk);
void lumo_root(Walk& walk);
void start_cache(Walk& walk);
void attach_cache(Walk& walk);
void http(Walk& walk);
void num_threads(Walk& walk);
void request_size_limit(Walk& walk);
void http_linger_threshold(Walk& walk);
void https(Walk& walk);
void https_verify_peer_mode(Walk& walk);
void https_allowed_client(Walk& walk);
void log_handler(Walk& walk);
void profile(Walk& walk);
void cors_allowed_origins(Walk& walk);
void server_memory_threshold_overflow_action(Walk& walk);
void user_data(Walk& walk);
void statistics_log_interval(Walk& walk);

} // namespace irregular
} // namespace qel::config
