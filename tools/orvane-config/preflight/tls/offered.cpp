// What a listener with these lists of ciphers and protocols offers, as OpenSSL reads them.
#include "preflight/tls/openssl_offer.hpp"
#include "preflight/tls/protocols.hpp"

#include "text/lists.hpp"

#include <utility>

#include <openssl/ec.h>
#include <openssl/err.h>

namespace orvane::preflight {

bool offer_only(SSL_CTX* tls, unsigned bits) {
    constexpr std::pair<unsigned, std::uint64_t> switches[] = {{ssl3, SSL_OP_NO_SSLv3},
                                                               {tls1_0, SSL_OP_NO_TLSv1},
                                                               {tls1_1, SSL_OP_NO_TLSv1_1},
                                                               {tls1_2, SSL_OP_NO_TLSv1_2},
                                                               {tls1_3, SSL_OP_NO_TLSv1_3}};
    std::uint64_t off = SSL_OP_NO_SSL_MASK;
    for (const auto& [bit, option] : switches)
        if ((bits & bit) != 0) off &= ~option;
    SSL_CTX_clear_options(tls, SSL_OP_NO_SSL_MASK);
    SSL_CTX_set_options(tls, off);
    return off != SSL_OP_NO_SSL_MASK;
}

OfferedSuite judge_suite(const SSL_CIPHER* suite) {
    constexpr int broken[] = {NID_rc4, NID_des_cbc, NID_rc2_cbc};
    constexpr int ephemeral[] = {NID_kx_ecdhe, NID_kx_dhe, NID_kx_ecdhe_psk, NID_kx_dhe_psk, NID_kx_any};
    const int cipher = SSL_CIPHER_get_cipher_nid(suite);
    return {SSL_CIPHER_get_name(suite), SSL_CIPHER_get_auth_nid(suite) != NID_auth_null,
            cipher != NID_undef,        contains(broken, cipher),
            cipher == NID_des_ede3_cbc, contains(ephemeral, SSL_CIPHER_get_kx_nid(suite))};
}

Offered offered_by(const qel::util::ssl::SslContext& settings) {
    OPENSSL_init_ssl(OPENSSL_INIT_NO_LOAD_CONFIG | OPENSSL_INIT_NO_ATEXIT, nullptr);
    const TlsSettings tls(SSL_CTX_new(TLS_server_method()));
    Offered offered;
    if (SSL_CTX_set_cipher_list(tls.get(), settings.cipher_list().value_or("ALL").c_str()) == 1) {
        if (settings.protocol_list())
            offer_only(tls.get(), read_protocols(*settings.protocol_list()).offered);
        const TlsConnection connection(SSL_new(tls.get()));
        STACK_OF(SSL_CIPHER)* const suites = SSL_get1_supported_ciphers(connection.get());
        for (int i = 0; i < sk_SSL_CIPHER_num(suites); ++i)
            offered.suites.push_back(judge_suite(sk_SSL_CIPHER_value(suites, i)));
        sk_SSL_CIPHER_free(suites);
    }
    // Also where the level leaves no suite.
    offered.security_level = SSL_CTX_get_security_level(tls.get());
    ERR_clear_error();
    return offered;
}

int bits_of_curve(const std::string& name) {
    int curve = EC_curve_nist2nid(name.c_str());
    if (curve == NID_undef) curve = OBJ_sn2nid(name.c_str());
    EC_GROUP* const group = EC_GROUP_new_by_curve_name(curve);
    const int bits = group == nullptr ? 0 : EC_GROUP_get_degree(group);
    EC_GROUP_free(group);
    ERR_clear_error();
    return bits;
}

} // namespace orvane::preflight
