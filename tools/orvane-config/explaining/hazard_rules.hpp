// The rules of hazards.def: each finds one hazard in an accepted line.
#pragma once

#include "explaining/warning_rules.hpp"

namespace orvane::hazards {

// What the HTTPS listener offers (weak_tls.cpp).
LineRule anonymous_suites, null_suites, broken_cipher, security_level, ssl_protocol, triple_des,
    no_forward_secrecy, default_ciphers, old_tls, small_curve;

// Who reaches what (exposed_settings.cpp).
LineRule any_customer, every_client, no_revocation, any_site, http_origin, plain_http, shown_interfaces,
    error_stack, remote_cache, no_timeout, no_request_limit, no_log_limit, no_archive_limit;

// What stands in the command line (secrets.cpp).
LineRule secret_in_data, secret_for_file;

} // namespace orvane::hazards
