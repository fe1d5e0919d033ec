// What a listener offers, given to OpenSSL.
#pragma once

#include "preflight/tls/offered.hpp"
#include "preflight/tls/openssl.hpp"

namespace orvane::preflight {

/// Switches the other protocols off; `bits` are those of protocols.hpp. False when OpenSSL knows none of them.
bool offer_only(SSL_CTX* tls, unsigned bits);

OfferedSuite judge_suite(const SSL_CIPHER* suite);

} // namespace orvane::preflight
