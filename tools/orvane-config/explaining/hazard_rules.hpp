// What hazards.def names: the settings that a hazard is about, and the rules that find it in them.
#pragma once

#include "explaining/warning_rules.hpp"

namespace orvane::hazards {

/// Whether there is something to look at.
using Subject = bool(const qel::config::ServerSettings& settings);
Subject ciphers, named_ciphers, default_or_named_ciphers, protocols, curve, verified_clients, own_clients,
    origins, plain_listener, plain_interfaces, listeners, caches, user_data, passphrase, logs,
    archived_responses;

// What the HTTPS listener offers (weak_tls.cpp). The first four and triple_des need OpenSSL to be sure that there is none.
LineRule no_authentication, no_encryption, broken_cipher, security_level, ssl_protocol, triple_des,
    no_forward_secrecy, default_ciphers, old_tls, small_curve;

// Who reaches what (exposed_settings.cpp).
LineRule any_customer, every_client, no_revocation, any_site, http_origin, plain_http, shown_interfaces,
    error_stack, remote_cache, no_timeout, no_request_limit, no_log_limit, no_archive_limit;

// What stands in the command line (secrets.cpp).
LineRule secret_in_data, secret_for_file;

} // namespace orvane::hazards
