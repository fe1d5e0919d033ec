// What the listener offers its clients, and whether a client takes it.
#include "preflight/tls/handshake.hpp"
#include "preflight/tls/openssl_offer.hpp"
#include "preflight/tls/pem.hpp"
#include "preflight/tls/protocols.hpp"
#include "preflight/tls/tls_checks.hpp"

#include "reference/flag_texts.hpp"
#include "text/lists.hpp"
#include "text/quoting.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <array>
#include <chrono>
#include <memory>

#include <openssl/bn.h>
#include <openssl/core_names.h>
#include <openssl/dh.h>
#include <openssl/ec.h>
#include <openssl/err.h>
#include <openssl/pem.h>

namespace orvane::preflight {
namespace {

std::string quoted(const std::string& name) {
    return shown(qel::i18n::utf8_to_ustring(name));
}

void ignored(const TlsCheck& check, std::u16string_view flag, const std::string& what) {
    check.findings.add(Kind::tls_name_unknown, flag, what, "Correct the name, or leave it out.");
}

void look_at_cipher(const TlsCheck& check, SSL_CTX* scratch, const std::string& name) {
    constexpr auto flag = flag::https_cipher_list;
    if (name.starts_with('@') || SSL_CTX_set_cipher_list(scratch, name.c_str()) == 1) return;
    if (SSL_CTX_set_ciphersuites(scratch, name.c_str()) == 1)
        ignored(check, flag, quoted(name) + " is a TLS 1.3 cipher, which this list does not control");
    else
        ignored(check, flag, "no cipher is called " + quoted(name));
}

bool offer_ciphers(const TlsCheck& check, SSL_CTX* tls) {
    const auto& list = check.settings().cipher_list();
    if (!list) return true;
    const TlsSettings scratch(SSL_CTX_new(TLS_method()));
    for (const std::string_view item : split(*list, ":, ;"))
        if (!item.empty()) look_at_cipher(check, scratch.get(), name_in(item));
    const bool offered = SSL_CTX_set_cipher_list(tls, list->c_str()) == 1;
    if (!offered)
        check.findings.add(Kind::tls_nothing_offered, flag::https_cipher_list, "the list names no cipher",
                           "See the ciphers of this system: openssl ciphers -v ALL");
    ERR_clear_error();
    return offered;
}

bool offer_protocols(const TlsCheck& check, SSL_CTX* tls) {
    const auto& list = check.settings().protocol_list();
    if (!list) return true;
    const ProtocolList read = read_protocols(*list);
    for (const std::string& item : read.unknown)
        ignored(check, flag::https_protocol_list, "no protocol is called " + quoted(item));
    if (offer_only(tls, read.offered)) return true;
    check.findings.add(Kind::tls_nothing_offered, flag::https_protocol_list,
                       "the list names no protocol that is still in use", "Name TLSv1.2, TLSv1.3 or both.");
    return false;
}

bool offer_curve(const TlsCheck& check, SSL_CTX* tls) {
    const auto& curve = check.settings().tmp_ec_param();
    if (!curve || SSL_CTX_set1_groups_list(tls, curve->c_str()) == 1) return true;
    ERR_clear_error();
    const bool known = OBJ_sn2nid(curve->c_str()) != NID_undef;
    check.findings.add(
        Kind::tls_nothing_offered, flag::https_tmp_ec_param,
        known ? "TLS does not use this curve" : "no curve has this name",
        "Name prime256v1, secp384r1 or X25519. See the curves of this system: openssl ecparam -list_curves");
    return false;
}

/// Each round shows three composite numbers of four or more, so what passes 16, or those of a second, is prime. The number
/// that OpenSSL has by itself would take seconds.
bool is_composite(const BIGNUM* number) {
    auto end = std::chrono::steady_clock::now() + std::chrono::seconds(1);
    const std::unique_ptr<BN_GENCB, Releases<BN_GENCB_free>> rounds(BN_GENCB_new());
    const auto goes_on = [](int, int round, BN_GENCB* one) {
        const bool in_time =
            std::chrono::steady_clock::now() < *static_cast<const decltype(end)*>(BN_GENCB_get_arg(one));
        return int{round < 16 && in_time};
    };
    BN_GENCB_set(rounds.get(), goes_on, &end);
    return BN_check_prime(number, nullptr, rounds.get()) == 0;
}

/// OpenSSL uses no larger ones, and knows those that have a name.
bool has_composite_modulus(EVP_PKEY* parameters) {
    char name[80] = "";
    BIGNUM* modulus = nullptr;
    if (EVP_PKEY_get_group_name(parameters, name, sizeof name, nullptr) == 1 ||
        EVP_PKEY_get_bits(parameters) > OPENSSL_DH_MAX_MODULUS_BITS ||
        EVP_PKEY_get_bn_param(parameters, OSSL_PKEY_PARAM_FFC_P, &modulus) != 1)
        return false;
    const std::unique_ptr<BIGNUM, Releases<BN_free>> owner(modulus);
    return is_composite(modulus);
}

bool offer_dh_parameters(const TlsCheck& check, SSL_CTX* tls) {
    constexpr auto flag = flag::https_tmp_dh_param_file;
    if (!check.files.dh_parameters) return !check.settings().tmp_dh_param_file();
    const std::string& text = *check.files.dh_parameters;
    const auto& path = *check.settings().tmp_dh_param_file();
    if (!has_what_is_wanted(read_pem(text), Content::dh_parameters, text, flag, path, check.findings))
        return false;
    Key parameters(PEM_read_bio_Parameters(reader_of(text).get(), nullptr));
    const std::string make_new =
        "Generate new ones: openssl genpkey -genparam -algorithm DH -pkeyopt group:ffdhe3072 -out " +
        shown(path.text());
    if (!parameters) {
        check.findings.add(Kind::tls_file_content, flag, "the parameters are damaged: " + openssl_reason(),
                           make_new);
        return false;
    }
    const int bits = EVP_PKEY_get_bits(parameters.get());
    if (bits < 2048)
        check.findings.add(Kind::weak_key, flag, "the parameters have only " + std::to_string(bits) + " bits",
                           make_new);
    else if (has_composite_modulus(parameters.get()))
        check.findings.add(Kind::weak_key, flag,
                           "the modulus is not prime, so whoever knows its factors reads everything",
                           make_new);
    if (SSL_CTX_set0_tmp_dh_pkey(tls, parameters.get()) == 1) (void)parameters.release();
    ERR_clear_error();
    return true;
}

} // namespace

void look_at_offer(const TlsCheck& check, EVP_PKEY* key, const Certificates& chain) {
    const TlsSettings tls(SSL_CTX_new(TLS_server_method()));
    // What is too weak is a finding already, and may be allowed where the server runs.
    SSL_CTX_set_security_level(tls.get(), 0);
    const std::array offered{offer_ciphers(check, tls.get()), offer_protocols(check, tls.get()),
                             offer_curve(check, tls.get()), offer_dh_parameters(check, tls.get())};
    if (key == nullptr || std::count(offered.begin(), offered.end(), false) != 0) return;
    SSL_CTX_use_certificate(tls.get(), chain.front().get());
    SSL_CTX_use_PrivateKey(tls.get(), key);
    for (std::size_t i = 1; i < chain.size(); ++i)
        SSL_CTX_add1_chain_cert(tls.get(), chain[i].get());
    const Handshake handshake = try_handshake(tls.get());
    if (!handshake.done)
        check.findings.add(Kind::handshake_failed, flag::https,
                           "a current TLS client cannot connect: " + handshake.text,
                           "Check that key, ciphers, protocols and curve work together.");
    else
        check.findings.add(Kind::handshake_done, flag::https,
                           "key, ciphers, protocols and curve work together: " + handshake.text);
    if (check.security) show_client_view(check, tls.get());
}

} // namespace orvane::preflight
