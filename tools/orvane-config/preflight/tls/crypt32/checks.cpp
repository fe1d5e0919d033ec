// What preflight finds in the TLS files, in order, where Windows reads them.
#include "preflight/tls/crypt32/certificates.hpp"
#include "preflight/tls/crypt32/decrypt.hpp"
#include "preflight/tls/crypt32/der.hpp"
#include "preflight/tls/key_rules.hpp"
#include "preflight/tls/offered.hpp"
#include "preflight/tls/pem.hpp"

#include "preflight/time_limit.hpp"
#include "reference/flag_texts.hpp"
#include "text/lists.hpp"
#include "text/quoting.hpp"

#include <algorithm>
#include <optional>

namespace orvane::preflight {
namespace {

Certificates certificates_in(const PemFile& pem, std::u16string_view flag, Findings& findings) {
    Certificates certificates;
    for (const PemBlock& block : pem.blocks) {
        if (block.content != Content::certificate) continue;
        Certificate one = certificate_in(block.der);
        if (!one) {
            findings.add(Kind::tls_file_content, flag,
                         "certificate " + std::to_string(certificates.size() + 1) +
                             " is damaged: the system cannot read it",
                         "Copy the file again from its source.");
            break;
        }
        certificates.push_back(std::move(one));
    }
    return certificates;
}

/// The certificates of a file that was read.
Certificates read_certificates(const TlsCheck& check, const std::optional<std::string>& text,
                               std::u16string_view flag,
                               const qel::config::optional<qel::config::Path>& path) {
    if (!text) return {};
    const PemFile pem = read_pem(*text);
    if (!has_what_is_wanted(pem, Content::certificate, *text, flag, *path, check.findings)) return {};
    return certificates_in(pem, flag, check.findings);
}

/// A key that is not encrypted; none: it is damaged, which is a finding.
std::optional<PrivateKey> opened(const TlsCheck& check, const std::string& der) {
    std::optional<PrivateKey> key = private_key_in(der);
    if (key)
        report_unused_passphrase(check);
    else
        report_damaged_key(check, "it does not have the form of a key");
    return key;
}

/// With each pass phrase, until one opens it.
Decrypted decrypted_with_any(const std::string& der, const std::string& phrase_file) {
    Decrypted key;
    for (const std::string& phrase : phrases_in(phrase_file))
        if (key = decrypted(der, phrase); !key.key.empty()) break;
    return key;
}

/// None: no pass phrase opens it, or this build does not know how, which is a finding.
std::optional<PrivateKey> unlocked(const TlsCheck& check, const std::string& der) {
    if (!check.files.passphrase) {
        report_locked_key(check);
        return std::nullopt;
    }
    const auto key = within(
        opening_limit, [der, phrase = *check.files.passphrase] { return decrypted_with_any(der, phrase); });
    if (!key)
        report_slow_key(check);
    else if (!key->supported)
        check.findings.add(Kind::not_looked_at, flag::https_private_key_file,
                           "the key is encrypted in a way that this build does not open",
                           "To see whether the pass phrase opens it, run: openssl pkey -noout -in " +
                               shown(check.settings().private_key_file()->text()) +
                               " -passin file:" + shown(check.settings().key_passphrase_file()->text()));
    else if (key->key.empty())
        report_locked_key(check);
    return key && !key->key.empty() ? private_key_in(key->key) : std::nullopt;
}

/// The server's key; none: it cannot be opened, which is a finding.
std::optional<PrivateKey> read_key(const TlsCheck& check) {
    constexpr auto flag = flag::https_private_key_file;
    if (!check.files.key) return std::nullopt;
    const PemFile pem = read_pem(*check.files.key);
    const auto& path = *check.settings().private_key_file();
    if (!has_what_is_wanted(pem, Content::private_key, *check.files.key, flag, path, check.findings))
        return std::nullopt;
    const auto key = std::ranges::find(pem.blocks, Content::private_key, &PemBlock::content);
    return key->is_encrypted ? unlocked(check, key->der) : opened(check, key->der);
}

void look_at_owner(const TlsCheck& check, const PrivateKey& key, const Certificates& chain) {
    if (!key.public_part)
        return check.findings.add(
            Kind::not_looked_at, flag::https_private_key_file,
            "this build cannot tell whether a key of this type belongs to the certificate");
    const auto owner = std::ranges::find_if(
        chain, [&key](const Certificate& one) { return public_part(one.get()) == *key.public_part; });
    key_matches(check, static_cast<std::size_t>(owner - chain.begin()), chain.size());
}

} // namespace

bool can_look_at(std::u16string_view flag) {
    constexpr std::u16string_view files[] = {flag::https_private_key_file, flag::https_key_passphrase_file,
                                             flag::https_cert_chain_file, flag::https_ca_file};
    return contains(files, flag);
}

void look_at_tls_contents(const TlsCheck& check) {
    const std::optional<PrivateKey> key = read_key(check);
    const Certificates chain = read_certificates(check, check.files.chain, flag::https_cert_chain_file,
                                                 check.settings().cert_chain_file());
    const Certificates ca =
        read_certificates(check, check.files.ca, flag::https_ca_file, check.settings().ca_file());
    const auto valid = std::ranges::count_if(
        ca, [](const Certificate& one) { return is_valid_now(validity_of(one.get())); });
    look_at_ca_times(check, static_cast<std::size_t>(valid), ca.size());
    if (!chain.empty()) {
        const ChainFacts facts = facts_of(chain, ca);
        look_at_certificates(check, facts);
        look_at_issuers(check, facts);
    }
    if (key && !chain.empty()) look_at_owner(check, *key, chain);
}

// Windows has no names for what OpenSSL offers.
Offered offered_by(const qel::config::SslContext&) {
    return {};
}

int bits_of_curve(const std::string&) {
    return 0;
}

} // namespace orvane::preflight
