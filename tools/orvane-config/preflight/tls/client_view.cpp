// What clients would get from the HTTPS listener: handshakes in memory, each with a client that knows one thing.
#include "preflight/tls/handshake.hpp"
#include "preflight/tls/openssl_offer.hpp"
#include "preflight/tls/tls_checks.hpp"

#include "text/lists.hpp"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <openssl/err.h>

namespace orvane::preflight {
namespace {

struct Version {
    const char* name;
    int number;
};
constexpr Version versions[] = {{"TLSv1.0", TLS1_VERSION},
                                {"TLSv1.1", TLS1_1_VERSION},
                                {"TLSv1.2", TLS1_2_VERSION},
                                {"TLSv1.3", TLS1_3_VERSION}};

constexpr const char* groups_to_try[] = {
    "X25519",          "P-256",           "X448",      "P-521",     "P-384",     "ffdhe2048",
    "ffdhe3072",       "ffdhe4096",       "secp256k1", "P-224",     "P-192",     "brainpoolP256r1",
    "brainpoolP384r1", "brainpoolP512r1", "secp160k1", "secp160r1", "secp160r2", "secp192k1",
    "secp224k1",       "sect163k1",       "sect163r1", "sect163r2", "sect193r1", "sect193r2",
    "sect233k1",       "sect233r1",       "sect239k1", "sect283k1", "sect283r1", "sect409k1",
    "sect409r1",       "sect571k1",       "sect571r1"};

/// As far as this OpenSSL has them.
std::string all_groups() {
    const TlsSettings client(SSL_CTX_new(TLS_client_method()));
    std::vector<std::string> known;
    for (const char* const group : groups_to_try)
        if (SSL_CTX_set1_groups_list(client.get(), group) == 1) known.emplace_back(group);
    return joined(known, ":");
}

/// What it offers, as far as that decides what it gets.
struct KnownClient {
    const char *name, *suites, *suites_13, *groups, *signatures;
};
#define WITHOUT_13                                                                                           \
    "", "P-256:P-521:P-384",                                                                                 \
        "RSA+SHA512:ECDSA+SHA512:RSA+SHA384:ECDSA+SHA384:RSA+SHA256:ECDSA+SHA256:RSA+SHA1:ECDSA+SHA1"
constexpr KnownClient known_clients[] = {
    {"a current browser",
     "ECDHE-ECDSA-AES128-GCM-SHA256:ECDHE-RSA-AES128-GCM-SHA256:ECDHE-ECDSA-AES256-GCM-SHA384:ECDHE-RSA-"
     "AES256-GCM-"
     "SHA384:ECDHE-ECDSA-CHACHA20-POLY1305:ECDHE-RSA-CHACHA20-POLY1305:ECDHE-RSA-AES128-SHA:ECDHE-RSA-AES256-"
     "SHA:"
     "AES128-GCM-SHA256:AES256-GCM-SHA384:AES128-SHA:AES256-SHA",
     "TLS_AES_128_GCM_SHA256:TLS_AES_256_GCM_SHA384:TLS_CHACHA20_POLY1305_SHA256", "X25519:P-256:P-384",
     "ECDSA+SHA256:RSA-PSS+SHA256:RSA+SHA256:ECDSA+SHA384:RSA-PSS+SHA384:RSA+SHA384:RSA-PSS+SHA512:RSA+"
     "SHA512"},
    {"OpenSSL 1.0.2",
     "ECDHE+AESGCM:ECDHE+AES:DHE+AESGCM:DHE+AES:DHE+CAMELLIA:kRSA+AESGCM:kRSA+AES:kRSA+CAMELLIA:!aNULL:!"
     "AESCCM",
     WITHOUT_13},
    {"Java 8",
     "ECDHE-ECDSA-AES256-SHA384:ECDHE-RSA-AES256-SHA384:AES256-SHA256:DHE-RSA-AES256-SHA256:ECDHE-ECDSA-"
     "AES256-SHA:"
     "ECDHE-RSA-AES256-SHA:AES256-SHA:DHE-RSA-AES256-SHA:ECDHE-ECDSA-AES128-SHA256:ECDHE-RSA-AES128-SHA256:"
     "AES128-SHA256:"
     "DHE-RSA-AES128-SHA256:ECDHE-RSA-AES128-SHA:AES128-SHA:ECDHE-ECDSA-AES256-GCM-SHA384:ECDHE-ECDSA-AES128-"
     "GCM-"
     "SHA256:ECDHE-RSA-AES256-GCM-SHA384:AES256-GCM-SHA384:DHE-RSA-AES256-GCM-SHA384:ECDHE-RSA-AES128-GCM-"
     "SHA256:"
     "AES128-GCM-SHA256:DHE-RSA-AES128-GCM-SHA256",
     WITHOUT_13},
};
#undef WITHOUT_13

/// A client that would take everything, in this version.
TlsSettings client_with(int first, int last) {
    TlsSettings client(SSL_CTX_new(TLS_client_method()));
    SSL_CTX_set_security_level(client.get(), 0);
    SSL_CTX_set_min_proto_version(client.get(), first);
    SSL_CTX_set_max_proto_version(client.get(), last);
    SSL_CTX_set_cipher_list(client.get(), "ALL:COMPLEMENTOFALL");
    static const std::string groups = all_groups();
    SSL_CTX_set1_groups_list(client.get(), groups.c_str());
    SSL_CTX_set_options(client.get(), SSL_OP_LEGACY_SERVER_CONNECT);
    return client;
}

std::vector<std::string> all_suites(const Version& version) {
    if (version.number == TLS1_3_VERSION)
        return {"TLS_AES_256_GCM_SHA384", "TLS_CHACHA20_POLY1305_SHA256", "TLS_AES_128_GCM_SHA256",
                "TLS_AES_128_CCM_SHA256", "TLS_AES_128_CCM_8_SHA256"};
    const TlsSettings client = client_with(version.number, version.number);
    std::vector<std::string> names;
    STACK_OF(SSL_CIPHER)* const suites = SSL_CTX_get_ciphers(client.get());
    for (int i = 0; i < sk_SSL_CIPHER_num(suites); ++i)
        if (const std::string name = SSL_CIPHER_get_name(sk_SSL_CIPHER_value(suites, i));
            !name.starts_with("TLS_"))
            names.push_back(name);
    return names;
}

/// Whether an attack is known, or the key that is stolen opens what was recorded.
std::string marked(const std::string& name) {
    const TlsSettings client = client_with(0, 0);
    if (name.starts_with("TLS_") || SSL_CTX_set_cipher_list(client.get(), name.c_str()) != 1) return name;
    // The suites of TLS 1.3 are always in front.
    STACK_OF(SSL_CIPHER)* const suites = SSL_CTX_get_ciphers(client.get());
    const OfferedSuite suite = judge_suite(sk_SSL_CIPHER_value(suites, sk_SSL_CIPHER_num(suites) - 1));
    if (!suite.authenticated || !suite.encrypted || suite.broken) return name + " (open)";
    return suite.forward_secret && !suite.triple_des ? name : name + " (weak)";
}

/// Each that the server takes, from a client that has all others no more.
std::vector<std::string> suites_taken(SSL_CTX* server, const Version& version) {
    const TlsSettings client = client_with(version.number, version.number);
    std::vector<std::string> left = all_suites(version), taken;
    while (!left.empty()) {
        const std::string list = joined(left, ":");
        if (version.number == TLS1_3_VERSION)
            SSL_CTX_set_ciphersuites(client.get(), list.c_str());
        else
            SSL_CTX_set_cipher_list(client.get(), (list + ":@SECLEVEL=0").c_str());
        const Handshake handshake = try_handshake(server, client.get());
        if (!handshake.done || std::erase(left, handshake.suite) == 0) break;
        taken.push_back(handshake.suite);
    }
    return taken;
}

std::string groups_taken(SSL_CTX* server) {
    std::vector<std::string> taken;
    for (const char* const group : groups_to_try)
        for (const int version : {TLS1_3_VERSION, TLS1_2_VERSION}) {
            const TlsSettings client = client_with(version, version);
            if (version == TLS1_2_VERSION) SSL_CTX_set_cipher_list(client.get(), "ECDHE:AECDH:@SECLEVEL=0");
            if (SSL_CTX_set1_groups_list(client.get(), group) != 1 ||
                !try_handshake(server, client.get()).done)
                continue;
            const int bits = bits_of_curve(group);
            taken.push_back(group + std::string(bits != 0 && bits < 224 ? " (weak)" : ""));
            break;
        }
    return joined(taken);
}

std::string got_by(SSL_CTX* server, const KnownClient& known) {
    const bool new_one = *known.suites_13 != '\0';
    const TlsSettings client =
        client_with(new_one ? TLS1_2_VERSION : TLS1_VERSION, new_one ? TLS1_3_VERSION : TLS1_2_VERSION);
    SSL_CTX_set_cipher_list(client.get(), known.suites);
    SSL_CTX_set_ciphersuites(client.get(), known.suites_13);
    SSL_CTX_set1_groups_list(client.get(), known.groups);
    SSL_CTX_set1_sigalgs_list(client.get(), known.signatures);
    const Handshake handshake = try_handshake(server, client.get());
    return std::string(known.name) +
           (handshake.done ? " gets " + handshake.text : " cannot connect: " + handshake.text);
}

} // namespace

void show_client_view(const TlsCheck& check, SSL_CTX* server) {
    SSL_CTX_set_security_level(server, offered_by(check.settings()).security_level);
    const auto show = [&](std::string what) { check.findings.add(Kind::client_view, u"", std::move(what)); };
    for (const Version& version : versions) {
        auto taken = suites_taken(server, version);
        std::ranges::transform(taken, taken.begin(), marked);
        const bool old = version.number < TLS1_2_VERSION;
        if (!taken.empty()) show(std::string(version.name) + (old ? " (weak): " : ": ") + joined(taken));
    }
    if (const std::string groups = groups_taken(server); !groups.empty()) show("groups: " + groups);
    for (const KnownClient& known : known_clients)
        show(got_by(server, known));
    ERR_clear_error();
}

} // namespace orvane::preflight
