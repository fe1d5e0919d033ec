// Hazards: what the HTTPS listener offers. Names in a list count even where this build's OpenSSL does not have them: the
// server's may. What names stand for, as ALL does, is judged by OpenSSL.
#include "explaining/hazard_rules.hpp"
#include "preflight/tls/offered.hpp"
#include "preflight/tls/protocols.hpp"
#include "reference/flag_texts.hpp"
#include "text/lists.hpp"
#include "text/spelling.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace orvane::hazards {
namespace {

using preflight::OfferedSuite;

/// Parts of the names that mean one thing; with ^ in front: beginnings.
using Marks = std::string_view;
constexpr Marks without_authentication = "anull adh aecdh ^adh- ^aecdh-";
constexpr Marks without_encryption = "enull null complementofall ^null- -null-";
constexpr Marks broken_ones =
    "rc4 des low exp export export40 export56 ^rc4- -rc4- ^des-cbc-sha ^edh-rsa-des-cbc-sha ^exp-";
constexpr Marks triple = "3des -3des- ^des-cbc3 -des-cbc3";

bool matches(const std::string& name, Marks marks) {
    return std::ranges::any_of(split(marks, " "), [&](std::string_view mark) {
        if (mark.starts_with('^')) return name.starts_with(mark.substr(1));
        return mark.starts_with('-') ? name.find(mark) != name.npos : name == mark;
    });
}

/// Whether an item adds what the marks mean, and none takes it away for good.
bool names(const std::string& list, Marks marks) {
    bool found = false;
    for (const std::string_view item : split(list, ":, ;")) {
        if (item.empty() || item.front() == '@') continue;
        const auto words =
            qel::i18n::ustring_to_utf8(lower(qel::i18n::utf8_to_ustring(preflight::name_in(item))));
        for (const std::string_view word : split(words, "+")) {
            if (!matches(std::string(word), marks)) continue;
            if (item.front() == '!') return false;
            if (item.front() != '-' && item.front() != '+') found = true;
        }
    }
    return found;
}

const qel::config::SslContext& offer_of(const AcceptedLine& accepted) {
    return accepted.settings.https()->ssl_context();
}

std::string list_of(const AcceptedLine& accepted) {
    return offer_of(accepted).cipher_list().value_or("ALL");
}

/// About the list where it was given, else about the listener that has the default.
void about_ciphers(const AcceptedLine& accepted, WarningCollector& warnings, const std::string& text) {
    const Occurrence* const given = accepted.last(flag::https_cipher_list);
    warnings.about_value(given == nullptr ? accepted.last(flag::https) : given, text);
}

template <class Wanted>
void find_suites(const AcceptedLine& accepted, WarningCollector& warnings, Marks marks, const char* what,
                 Wanted wanted) {
    if (!marks.empty() && names(list_of(accepted), marks))
        return about_ciphers(accepted, warnings, std::string(": the list names suites ") + what);
    const auto offered = preflight::offered_by(offer_of(accepted)).suites;
    const auto first = std::ranges::find_if(offered, wanted);
    if (first != offered.end())
        about_ciphers(accepted, warnings,
                      ": " + first->name + " is offered, and " +
                          std::to_string(std::ranges::count_if(offered, wanted) - 1) + " more suites " +
                          what);
}

unsigned protocols_in(const AcceptedLine& accepted) {
    return preflight::read_protocols(*offer_of(accepted).protocol_list()).offered;
}

} // namespace

void anonymous_suites(const AcceptedLine& accepted, WarningCollector& warnings) {
    find_suites(accepted, warnings, without_authentication, "without authentication",
                [](const OfferedSuite& one) { return !one.authenticated; });
}

void null_suites(const AcceptedLine& accepted, WarningCollector& warnings) {
    find_suites(accepted, warnings, without_encryption, "without encryption",
                [](const OfferedSuite& one) { return !one.encrypted; });
}

void broken_cipher(const AcceptedLine& accepted, WarningCollector& warnings) {
    find_suites(accepted, warnings, broken_ones, "with RC4, single DES or export keys",
                &OfferedSuite::broken);
}

void triple_des(const AcceptedLine& accepted, WarningCollector& warnings) {
    find_suites(accepted, warnings, triple, "with triple DES", &OfferedSuite::triple_des);
}

void no_forward_secrecy(const AcceptedLine& accepted, WarningCollector& warnings) {
    find_suites(accepted, warnings, {}, "without forward secrecy",
                [](const OfferedSuite& one) { return !one.forward_secret; });
}

void default_ciphers(const AcceptedLine& accepted, WarningCollector& warnings) {
    if (list_of(accepted) == "ALL") about_ciphers(accepted, warnings, ": the list of ciphers is ALL");
}

void security_level(const AcceptedLine& accepted, WarningCollector& warnings) {
    if (preflight::offered_by(offer_of(accepted)).security_level == 0 ||
        list_of(accepted).find("@SECLEVEL=0") != std::string::npos)
        about_ciphers(accepted, warnings, ": OpenSSL's security level is 0");
}

void ssl_protocol(const AcceptedLine& accepted, WarningCollector& warnings) {
    if ((protocols_in(accepted) & (preflight::ssl2 | preflight::ssl3)) != 0)
        warnings.about_value(accepted.last(flag::https_protocol_list), ": SSLv2 and SSLv3 are broken");
}

void old_tls(const AcceptedLine& accepted, WarningCollector& warnings) {
    if ((protocols_in(accepted) & (preflight::tls1_0 | preflight::tls1_1)) != 0)
        warnings.about_value(accepted.last(flag::https_protocol_list), ": TLS 1.0 and 1.1 are outdated");
}

void small_curve(const AcceptedLine& accepted, WarningCollector& warnings) {
    const int bits = preflight::bits_of_curve(*offer_of(accepted).tmp_ec_param());
    if (bits != 0 && bits < 224)
        warnings.about_value(accepted.last(flag::https_tmp_ec_param),
                             ": this curve has only " + std::to_string(bits) + " bits");
}

} // namespace orvane::hazards
