// What a listener with these lists of ciphers and protocols offers, as OpenSSL reads them.
#pragma once

#include "qel/util/ssl_context.hpp"

#include <string>
#include <vector>

namespace orvane::preflight {

struct OfferedSuite {
    std::string name;
    bool authenticated = true, encrypted = true, broken = false, triple_des = false, forward_secret = true;
};

struct Offered {
    int security_level = 2;
    std::vector<OfferedSuite> suites{}; ///< in the server's order, whatever its key
};

/// In memory, without files. A build without OpenSSL finds nothing: see can_look_at().
Offered offered_by(const qel::util::ssl::SslContext& settings);

/// 0: it is not known.
int bits_of_curve(const std::string& name);

} // namespace orvane::preflight
