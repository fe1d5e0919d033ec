// The server's certificates: what today's clients make of each, and who issued them.
#include "preflight/tls/certificate_facts.hpp"

#include "reference/flag_texts.hpp"
#include "text/lists.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <array>
#include <span>

namespace orvane::preflight {
namespace {

/// "2026-11-22 08:00 UTC"
std::string utc(std::time_t time) {
    std::array<char, 40> text{};
    const std::tm* const parts = std::gmtime(&time);
    if (parts == nullptr) return "an invalid time";
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M UTC", parts)};
}

/// The host names in the certificate, as far as they can be shown in a line.
std::string shown_hosts(const std::vector<std::string>& hosts) {
    constexpr std::size_t most = 5;
    if (hosts.size() <= most) return joined(hosts);
    return joined(std::span(hosts).first(most)) + " and " + std::to_string(hosts.size() - most) + " more";
}

/// No name of a host is made of digits and dots only.
bool is_address(const std::string& host) {
    return host.find(':') != host.npos || host.find_first_not_of("0123456789.") == host.npos;
}

/// Clients may use other names than the one that the server listens on, but seldom where it is a name.
void look_at_host(const TlsCheck& check, const ChainFacts& chain) {
    const auto& host = check.https.http().host();
    const std::string name = host ? qel::i18n::ustring_to_utf8(*host) : "";
    if (name.empty() || name.front() == '[' || is_address(name) || chain.is_for_host(name)) return;
    const std::string names = shown_hosts(chain.certificates.front().hosts);
    check.findings.add(Kind::certificate_host, flag::https,
                       names.empty() ? "the certificate has no host names (subjectAltName)"
                                     : "the certificate is not for this host, but for " + names,
                       "Request a certificate for the name that clients use.");
}

void look_at_use(const TlsCheck& check, const std::vector<CertificateFacts>& certificates) {
    if (!certificates.front().is_for_servers)
        check.findings.add(Kind::certificate_use, flag::https_cert_chain_file,
                           "the first certificate is not for use by a TLS server",
                           "Request one with the extended key usage serverAuth.");
    for (std::size_t i = 1; i < certificates.size(); ++i)
        if (!certificates[i].is_for_issuing)
            check.findings.add(Kind::certificate_use, flag::https_cert_chain_file,
                               "certificate " + std::to_string(i + 1) + " is not for issuing certificates",
                               "After the server's certificate, put only those of its issuers.");
}

void look_at_times(const TlsCheck& check, const Validity& validity, const std::string& which) {
    constexpr auto flag = flag::https_cert_chain_file;
    const std::time_t now = std::time(nullptr), later = now + std::time_t{check.days} * 24 * 60 * 60;
    const auto& [begin, end] = validity;
    if (begin && *begin > now)
        check.findings.add(Kind::certificate_not_yet_valid, flag,
                           which + " is not valid before " + utc(*begin),
                           "Check the clock of this machine. Times are in UTC.");
    if (end && *end <= now)
        check.findings.add(Kind::certificate_expired, flag, which + " expired at " + utc(*end), "Renew it.");
    else if (end && *end <= later)
        check.findings.add(Kind::certificate_expires_soon, flag, which + " expires at " + utc(*end),
                           "Renew it.");
}

void look_at_strength(const TlsCheck& check, const CertificateFacts& facts, const std::string& which) {
    constexpr auto flag = flag::https_cert_chain_file;
    const std::string use_another = "Use an RSA key of 2048 bits or more, or a key on prime256v1.";
    if (facts.has_weak_key)
        check.findings.add(Kind::weak_key, flag,
                           which + " has a key of only " + std::to_string(facts.key_bits) + " bits",
                           use_another);
    else if (!facts.uncommon_key.empty())
        check.findings.add(Kind::uncommon_key, flag, which + " has a key " + facts.uncommon_key,
                           "Browsers need another. " + use_another);
    // Nobody checks what a root says about itself.
    if (!facts.is_self_signed && !facts.weak_digest.empty())
        check.findings.add(Kind::weak_signature, flag, which + " is signed with " + facts.weak_digest,
                           "Have it issued with a SHA-256 signature.");
}

using Numbers = std::vector<std::size_t>;

/// The certificates from the first to the last issuer that is in the file, counted from 0.
Numbers issuers_in(const ChainFacts& chain) {
    Numbers path{0};
    while (!chain.certificates[path.back()].is_self_signed) {
        std::size_t next = 0;
        while (next < chain.certificates.size() &&
               (contains(path, next) || !chain.is_issued_by(path.back(), next)))
            ++next;
        if (next == chain.certificates.size()) break;
        path.push_back(next);
    }
    return path;
}

std::string listed(const Numbers& numbers) {
    return joined(numbers, ", ", [](std::size_t number) { return std::to_string(number + 1); });
}

void look_at_order(const TlsCheck& check, const Numbers& path, std::size_t count) {
    if (!std::is_sorted(path.begin(), path.end()))
        check.findings.add(Kind::chain_order, flag::https_cert_chain_file,
                           "the certificates are out of order",
                           "Put them in this order: " + listed(path) + ".");
    Numbers others;
    for (std::size_t one = 0; one < count; ++one)
        if (!contains(path, one)) others.push_back(one);
    if (!others.empty())
        check.findings.add(Kind::chain_order, flag::https_cert_chain_file,
                           "the issuers of the first certificate do not include certificate " +
                               listed(others),
                           "Remove what does not belong here, or insert the missing issuer.");
}

} // namespace

std::string cut_name(const std::string& name) {
    constexpr std::size_t longest = 100;
    if (name.empty()) return "(no name)";
    return name.size() > longest ? name.substr(0, longest) + "..." : name;
}

void look_at_certificates(const TlsCheck& check, const ChainFacts& chain) {
    look_at_host(check, chain);
    look_at_use(check, chain.certificates);
    for (std::size_t i = 0; i < chain.certificates.size(); ++i) {
        const std::string which = "certificate " + std::to_string(i + 1);
        look_at_times(check, chain.certificates[i].validity, which);
        look_at_strength(check, chain.certificates[i], which);
    }
}

void look_at_issuers(const TlsCheck& check, const ChainFacts& chain) {
    const Numbers path = issuers_in(chain);
    look_at_order(check, path, chain.certificates.size());
    const CertificateFacts& last = chain.certificates[path.back()];
    if (last.is_self_signed) {
        if (path.size() == 1)
            check.findings.add(
                Kind::certificate_self_signed, flag::https_cert_chain_file,
                "the server's certificate is its own issuer",
                "For clients that are not configured to trust it, get one from a certificate authority.");
        return;
    }
    if (chain.is_issuer_known(path.back())) return;
    check.findings.add(
        Kind::chain_incomplete, flag::https_cert_chain_file,
        "the issuer of certificate " + std::to_string(path.back() + 1) + ", " + last.issuer +
            ", is neither in the file nor trusted by this system",
        "Append the issuer's certificate to the file." +
            (last.issuer_address.empty() ? "" : " The issuer offers it at " + last.issuer_address + "."));
}

bool key_matches(const TlsCheck& check, std::size_t owner, std::size_t count) {
    if (owner == 0) return true;
    if (owner == count)
        check.findings.add(
            Kind::key_mismatch, flag::https_private_key_file, "the key belongs to none of the certificates",
            "Find the key that the certificate was requested with, or request a certificate for this key.");
    else
        check.findings.add(Kind::key_mismatch, flag::https_cert_chain_file,
                           "the key belongs to certificate " + std::to_string(owner + 1) +
                               " of the file, but the server uses the first",
                           "Put the server's certificate first, and its issuers after it.");
    return false;
}

bool is_valid_now(const Validity& validity) {
    const std::time_t now = std::time(nullptr);
    return validity.begin && *validity.begin <= now && validity.end && *validity.end > now;
}

void look_at_ca_times(const TlsCheck& check, std::size_t valid, std::size_t count) {
    constexpr auto flag = flag::https_ca_file;
    const std::string replace = "Replace them with the authorities' new certificates.";
    if (valid == count) return;
    if (valid == 0)
        check.findings.add(Kind::certificate_expired, flag, "no certificate in the file is valid now",
                           replace);
    else
        check.findings.add(Kind::ca_expired, flag,
                           "of the " + std::to_string(count) + " certificates in the file, " +
                               std::to_string(count - valid) + (count - valid == 1 ? " is" : " are") +
                               " not valid now",
                           replace);
}

} // namespace orvane::preflight
