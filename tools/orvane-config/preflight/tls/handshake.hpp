// A TLS connection within this process, to see whether one comes about.
#pragma once

#include "preflight/tls/openssl.hpp"

namespace orvane::preflight {

struct Handshake {
    bool done = false;
    std::string text{};  ///< protocol and cipher; else the reason
    std::string suite{}; ///< when it is done
};

/// Connects a client with usual settings to a server with these. Nothing leaves the process.
Handshake try_handshake(SSL_CTX* server);
Handshake try_handshake(SSL_CTX* server, SSL_CTX* client);

} // namespace orvane::preflight
