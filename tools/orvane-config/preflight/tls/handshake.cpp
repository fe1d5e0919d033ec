// A TLS connection within this process, to see whether one comes about.
#include "preflight/tls/handshake.hpp"

#include <openssl/err.h>

namespace orvane::preflight {
namespace {

/// One step; whether the connection can still come about.
bool goes_on(SSL* side) {
    const int result = SSL_do_handshake(side);
    return result == 1 || SSL_get_error(side, result) == SSL_ERROR_WANT_READ;
}

} // namespace

Handshake try_handshake(SSL_CTX* server_settings) {
    const TlsSettings client(SSL_CTX_new(TLS_client_method()));
    SSL_CTX_set_min_proto_version(client.get(), TLS1_2_VERSION);
    return try_handshake(server_settings, client.get());
}

Handshake try_handshake(SSL_CTX* server_settings, SSL_CTX* client_settings) {
    const TlsConnection server(SSL_new(server_settings)), client(SSL_new(client_settings));
    BIO *at_server = nullptr, *at_client = nullptr;
    // Large enough for a chain of any length that was read.
    constexpr std::size_t room = std::size_t{4} * 1024 * 1024;
    BIO_new_bio_pair(&at_server, room, &at_client, room);
    SSL_set_bio(server.get(), at_server, at_server);
    SSL_set_bio(client.get(), at_client, at_client);
    SSL_set_accept_state(server.get());
    SSL_set_connect_state(client.get());
    ERR_clear_error();
    // A handshake takes two turns of each side; with retries, three.
    for (int turn = 0; turn < 6; ++turn) {
        // The server's reason comes first: the client would only repeat its alert.
        if (!goes_on(client.get()) || !goes_on(server.get())) return {false, openssl_reason()};
        if (SSL_is_init_finished(client.get()) == 1 && SSL_is_init_finished(server.get()) == 1)
            return {true,
                    std::string(SSL_get_version(client.get())) + ", " + SSL_get_cipher_name(client.get()),
                    SSL_get_cipher_name(client.get())};
    }
    return {false, "the handshake does not finish"};
}

} // namespace orvane::preflight
