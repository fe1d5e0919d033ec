// What clients are verified against: certificates of authorities, the system's store, revocation lists.
#include "preflight/tls/pem.hpp"
#include "preflight/tls/tls_checks.hpp"

#include "reference/flag_texts.hpp"
#include "system/bounded_file.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <filesystem>

#include <openssl/err.h>

namespace orvane::preflight {
namespace {

using qel::config::Path;

const char* from_environment(const char* variable, const char* otherwise) {
    const char* const value = std::getenv(variable);
    return value == nullptr ? otherwise : value;
}

/// Adds the certificates of a file that may have issued one of the chain; the number of all that are there.
std::size_t add_file(X509_STORE* store, const std::string& name, const Certificates& chain,
                     Findings& findings) {
    constexpr std::size_t limit = std::size_t{16} * 1024 * 1024;
    const BoundedFile file = read_bounded(Path(qel::i18n::utf8_to_ustring(name)), limit);
    if (file.outcome != BoundedFile::Outcome::read) return 0;
    const Certificates certificates =
        certificates_in(read_pem(file.text), flag::https_use_system_store, findings);
    add_issuers(store, certificates, chain);
    return certificates.size();
}

/// OpenSSL finds certificates in a directory by names like 5ed36f99.0, revocation lists by 5ed36f99.r0.
bool has_hashed_names(const std::string& directory, std::string_view mark) {
    constexpr int most = 100'000;
    std::error_code error;
    int seen = 0;
    for (std::filesystem::directory_iterator entry(directory, error), end;
         !error && entry != end && seen < most; entry.increment(error), ++seen) {
        const std::string name = entry->path().filename().string();
        if (name.find_first_not_of("0123456789abcdef") == 8 && name.substr(8, mark.size()) == mark &&
            name.find_first_not_of("0123456789", 8 + mark.size()) == name.npos)
            return true;
    }
    return false;
}

std::string store_directory() {
    return from_environment(X509_get_default_cert_dir_env(), X509_get_default_cert_dir());
}

std::vector<RevocationList> revocation_lists_in(const PemFile& pem) {
    std::vector<RevocationList> lists;
    for (const PemBlock& block : pem.blocks) {
        const auto* data = reinterpret_cast<const unsigned char*>(block.der.data());
        if (block.content == Content::revocation_list)
            lists.emplace_back(d2i_X509_CRL(nullptr, &data, static_cast<long>(block.der.size())));
    }
    std::erase(lists, nullptr);
    return lists;
}

/// Whether one of the lists is this issuer's and not out of date.
bool has_current_list(X509* issuer, const std::vector<RevocationList>& lists) {
    return std::any_of(lists.begin(), lists.end(), [issuer](const RevocationList& list) {
        const ASN1_TIME* const end = X509_CRL_get0_nextUpdate(list.get());
        return X509_NAME_cmp(X509_CRL_get_issuer(list.get()), X509_get_subject_name(issuer)) == 0 &&
               (end == nullptr || X509_cmp_current_time(end) > 0);
    });
}

void look_at_lists_in(const TlsCheck& check, const std::string& file, const Certificates& ca) {
    const auto lists = revocation_lists_in(read_pem(file));
    const auto lacks = [&](const Certificate& one) { return !has_current_list(one.get(), lists); };
    const auto first = std::find_if(ca.begin(), ca.end(), lacks);
    if (first == ca.end()) return;
    const auto more = std::count_if(first, ca.end(), lacks) - 1;
    check.findings.add(Kind::revocation_list, flag::https_use_crl,
                       "the file of the authorities has no current revocation list of " +
                           text_of(X509_get_subject_name(first->get())) +
                           (more == 0 ? "" : " and of " + std::to_string(more) + " more"),
                       "Clients with certificates of such an issuer may be refused. Append the issuer's list "
                       "to the file, in PEM format.");
}

} // namespace

Certificates read_ca(const TlsCheck& check) {
    if (!check.files.ca) return {};
    const PemFile pem = read_pem(*check.files.ca);
    if (!has_what_is_wanted(pem, Content::certificate, *check.files.ca, flag::https_ca_file,
                            *check.settings().ca_file(), check.findings))
        return {};
    Certificates ca = certificates_in(pem, flag::https_ca_file, check.findings);
    const auto valid = std::ranges::count_if(
        ca, [](const Certificate& one) { return is_valid_now(validity_of(one.get())); });
    look_at_ca_times(check, static_cast<std::size_t>(valid), ca.size());
    return ca;
}

void look_at_revocation_lists(const TlsCheck& check, const Certificates& ca) {
    if (!check.settings().use_crl()) return;
    if (check.settings().verify_peer_mode() == qel::config::SslVerifyPeerMode::no_verify_peer) {
        check.findings.add(Kind::revocation_list, flag::https_use_crl,
                           "no client is verified, so no list is used",
                           "Leave the flag out, or verify the clients.");
        return;
    }
    if (check.settings().use_system_store() && !has_hashed_names(store_directory(), ".r"))
        check.findings.add(
            Kind::revocation_list, flag::https_use_crl,
            "the system's store has no revocation lists in " + store_directory(),
            "Verified clients may be refused. Put the lists there, or use a file that contains "
            "the authorities and the lists.");
    if (check.files.ca) look_at_lists_in(check, *check.files.ca, ca);
}

void add_issuers(X509_STORE* store, const Certificates& certificates, const Certificates& chain) {
    for (const Certificate& one : certificates) {
        X509_NAME* const name = X509_get_subject_name(one.get());
        if (std::ranges::any_of(chain, [name](const Certificate& issued) {
                return X509_NAME_cmp(X509_get_issuer_name(issued.get()), name) == 0;
            }))
            X509_STORE_add_cert(store, one.get());
    }
}

CertificateStore system_store(const TlsCheck& check, const Certificates& chain, bool required) {
    CertificateStore store(X509_STORE_new());
    const std::string file = from_environment(X509_get_default_cert_file_env(), X509_get_default_cert_file());
    const std::string directory = store_directory();
    const bool in_directory = has_hashed_names(directory, ".");
    if (in_directory) X509_STORE_load_path(store.get(), directory.c_str());
    const bool in_file = add_file(store.get(), file, chain, check.findings) != 0;
    ERR_clear_error();
    if (required && !in_directory && !in_file)
        check.findings.add(Kind::system_store_missing, flag::https_use_system_store,
                           "there are no certificates in " + file + " or " + directory,
                           "On Debian, run: apt-get install ca-certificates");
    return store;
}

} // namespace orvane::preflight
