// A TLS connection within this process, to see whether one comes about.
#pragma once

#include "preflight/tls/openssl.hpp"

namespace orvane::preflight {

struct Handshake {
    bool done = false;
    std::string text{}; ///< protocol and cipher; else the reason
};

/// Connects a client with usual settings to a server with these. Nothing leaves the process.
Handshake try_handshake(SSL_CTX* server);

} // namespace orvane::preflight
