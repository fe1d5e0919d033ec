// What Windows says about certificates.
#include "preflight/tls/crypt32/certificates.hpp"

#include "preflight/tls/crypt32/der.hpp"
#include "text/spelling.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace orvane::preflight {
namespace {

using namespace std::string_view_literals;

struct ReleasesLocal {
    void operator()(void* memory) const { LocalFree(memory); }
};
template <class T>
using Local = std::unique_ptr<T, ReleasesLocal>;

struct ClosesStore {
    void operator()(void* store) const { CertCloseStore(store, 0); }
};
using Store = std::unique_ptr<void, ClosesStore>;

std::string bytes_of(const CRYPT_DATA_BLOB& blob) {
    return {reinterpret_cast<const char*>(blob.pbData), blob.cbData};
}

std::string bytes_of(const CRYPT_BIT_BLOB& blob) {
    return {reinterpret_cast<const char*>(blob.pbData), blob.cbData};
}

std::string utf8(const wchar_t* text) {
    const std::wstring_view whole(text);
    return qel::i18n::ustring_to_utf8(std::u16string(whole.begin(), whole.end()));
}

/// An extension, decoded; null: it is not there, or cannot be read.
template <class T>
Local<T> extension(const CERT_CONTEXT* certificate, const char* oid, const char* type) {
    const CERT_INFO& info = *certificate->pCertInfo;
    const CERT_EXTENSION* const found = CertFindExtension(oid, info.cExtension, info.rgExtension);
    T* decoded = nullptr;
    DWORD size = 0;
    if (found == nullptr ||
        !CryptDecodeObjectEx(X509_ASN_ENCODING, type, found->Value.pbData, found->Value.cbData,
                             CRYPT_DECODE_ALLOC_FLAG, nullptr, &decoded, &size))
        return nullptr;
    return Local<T>(decoded);
}

std::time_t time_of(const FILETIME& time) {
    constexpr std::int64_t to_1970 = 11'644'473'600, per_second = 10'000'000;
    const auto ticks =
        static_cast<std::int64_t>(std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime);
    return static_cast<std::time_t>(ticks / per_second - to_1970);
}

std::vector<std::string> hosts_in(const CERT_CONTEXT* certificate) {
    const auto names =
        extension<CERT_ALT_NAME_INFO>(certificate, szOID_SUBJECT_ALT_NAME2, X509_ALTERNATE_NAME);
    std::vector<std::string> hosts;
    if (names)
        for (const CERT_ALT_NAME_ENTRY& one : std::span(names->rgAltEntry, names->cAltEntry))
            if (one.dwAltNameChoice == CERT_ALT_NAME_DNS_NAME) hosts.push_back(utf8(one.pwszDNSName));
    return hosts;
}

std::string address_of_issuer(const CERT_CONTEXT* certificate) {
    const auto access = extension<CERT_AUTHORITY_INFO_ACCESS>(certificate, szOID_AUTHORITY_INFO_ACCESS,
                                                              X509_AUTHORITY_INFO_ACCESS);
    if (access)
        for (const CERT_ACCESS_DESCRIPTION& one : std::span(access->rgAccDescr, access->cAccDescr))
            if (std::string_view(one.pszAccessMethod) == szOID_PKIX_CA_ISSUERS &&
                one.AccessLocation.dwAltNameChoice == CERT_ALT_NAME_URL)
                return utf8(one.AccessLocation.pwszURL);
    return {};
}

std::string text_of(CERT_NAME_BLOB name) {
    constexpr DWORD form = CERT_X500_NAME_STR | CERT_NAME_STR_REVERSE_FLAG;
    std::array<wchar_t, 1000> text{};
    CertNameToStrW(X509_ASN_ENCODING, &name, form, text.data(), static_cast<DWORD>(text.size()));
    std::string found = utf8(text.data());
    for (std::size_t at = 0; (at = found.find(", ", at)) != found.npos;)
        found.erase(at + 1, 1);
    return cut_name(found);
}

/// The uses that the certificate is limited to; -1: it has no such limit.
int uses_of(const CERT_CONTEXT* certificate) {
    BYTE uses = 0;
    const bool limited =
        CertGetIntendedKeyUsage(X509_ASN_ENCODING, certificate->pCertInfo, &uses, sizeof uses) != 0;
    return limited ? uses : -1;
}

bool is_for_servers(const CERT_CONTEXT* certificate) {
    constexpr int any =
        CERT_DIGITAL_SIGNATURE_KEY_USAGE | CERT_KEY_ENCIPHERMENT_KEY_USAGE | CERT_KEY_AGREEMENT_KEY_USAGE;
    if ((uses_of(certificate) & any) == 0) return false;
    const auto extended =
        extension<CERT_ENHKEY_USAGE>(certificate, szOID_ENHANCED_KEY_USAGE, X509_ENHANCED_KEY_USAGE);
    if (!extended) return true;
    const std::span uses(extended->rgpszUsageIdentifier, extended->cUsageIdentifier);
    return std::ranges::any_of(
        uses, [](const char* use) { return std::string_view(use) == szOID_PKIX_KP_SERVER_AUTH; });
}

bool is_self_signed(const CERT_CONTEXT* certificate) {
    const CERT_INFO& info = *certificate->pCertInfo;
    return bytes_of(info.Issuer) == bytes_of(info.Subject);
}

bool is_for_issuing(const CERT_CONTEXT* certificate) {
    const int uses = uses_of(certificate);
    const auto constraints = extension<CERT_BASIC_CONSTRAINTS2_INFO>(certificate, szOID_BASIC_CONSTRAINTS2,
                                                                     X509_BASIC_CONSTRAINTS2);
    if ((uses & CERT_KEY_CERT_SIGN_KEY_USAGE) == 0) return false;
    if (constraints) return constraints->fCA != 0;
    // Before there were extensions, a root was an authority.
    const bool is_old = certificate->pCertInfo->dwVersion == CERT_V1;
    return uses != -1 || (is_old && is_self_signed(certificate));
}

struct Named {
    std::string_view id, name;
    int bits = 0;
};

// clang-format off
constexpr Named digests[] = {
    {"1.2.840.113549.1.1.4", "md5"}, {"1.2.840.113549.1.1.5", "sha1"}, {"1.3.14.3.2.29", "sha1"}, {"1.2.840.10045.4.1", "sha1"},
};
constexpr Named key_types[] = {
    {"1.3.101.112", "ED25519"}, {"1.3.101.113", "ED448"}, {"1.2.840.10040.4.1", "DSA"}, {"1.2.840.113549.1.1.10", "RSA-PSS"},
};
/// By the contents of their identifiers in DER.
constexpr Named curves[] = {
    {"\x2a\x86\x48\xce\x3d\x03\x01\x07", "prime256v1", 256}, {"\x2b\x81\x04\x00\x22"sv, "secp384r1", 384},
    {"\x2b\x81\x04\x00\x23"sv, "secp521r1", 521}, {"\x2b\x81\x04\x00\x0a"sv, "secp256k1", 256},
    {"\x2b\x81\x04\x00\x21"sv, "secp224r1", 224}, {"\x2a\x86\x48\xce\x3d\x03\x01\x01", "prime192v1", 192},
};
// clang-format on
constexpr std::size_t common_curves = 3;

const Named* found(std::span<const Named> rows, std::string_view id) {
    const auto row = std::ranges::find(rows, id, &Named::id);
    return row == rows.end() ? nullptr : &*row;
}

void add_rsa_key(CertificateFacts& facts, const std::string& bits) {
    std::string_view numbers = bits;
    const auto both = take_der(numbers, der_sequence);
    std::string_view rest = both.value_or("");
    const std::string_view modulus = take_der(rest, der_integer).value_or("");
    facts.key_bits = bits_of_number(modulus);
    facts.has_weak_key = facts.key_bits < 2048;
}

void add_curve_key(CertificateFacts& facts, const std::string& parameters) {
    std::string_view rest = parameters;
    const Named* const curve = found(curves, take_der(rest, der_identifier).value_or(""));
    facts.key_bits = curve == nullptr ? 0 : curve->bits;
    facts.has_weak_key = curve != nullptr && curve->bits < 224;
    if (curve == nullptr || curve >= curves + common_curves)
        facts.uncommon_key = "on the curve " + std::string(curve == nullptr ? "(unnamed)" : curve->name);
}

void add_key(CertificateFacts& facts, const CERT_PUBLIC_KEY_INFO& key) {
    const std::string_view type = key.Algorithm.pszObjId;
    if (type == szOID_RSA_RSA) return add_rsa_key(facts, bytes_of(key.PublicKey));
    if (type == szOID_ECC_PUBLIC_KEY) return add_curve_key(facts, bytes_of(key.Algorithm.Parameters));
    const Named* const known = found(key_types, type);
    facts.uncommon_key = "of the type " + std::string(known == nullptr ? type : known->name);
}

CertificateFacts facts_of(const Certificate& one) {
    const CERT_CONTEXT* const certificate = one.get();
    const CERT_INFO& info = *certificate->pCertInfo;
    CertificateFacts facts;
    facts.validity = validity_of(certificate);
    facts.hosts = hosts_in(certificate);
    facts.is_self_signed = is_self_signed(certificate);
    facts.is_for_servers = is_for_servers(certificate);
    facts.is_for_issuing = is_for_issuing(certificate);
    facts.issuer = text_of(info.Issuer);
    facts.issuer_address = address_of_issuer(certificate);
    const Named* const digest = found(digests, info.SignatureAlgorithm.pszObjId);
    facts.weak_digest = digest == nullptr ? "" : digest->name;
    add_key(facts, info.SubjectPublicKeyInfo);
    return facts;
}

/// An algorithm that the system does not know leaves the names to go by.
bool is_issued_by(const CERT_CONTEXT* one, const CERT_CONTEXT* issuer) {
    if (bytes_of(one->pCertInfo->Issuer) != bytes_of(issuer->pCertInfo->Subject)) return false;
    if (CryptVerifyCertificateSignatureEx(0, X509_ASN_ENCODING, CRYPT_VERIFY_CERT_SIGN_SUBJECT_CERT,
                                          const_cast<CERT_CONTEXT*>(one), CRYPT_VERIFY_CERT_SIGN_ISSUER_CERT,
                                          const_cast<CERT_CONTEXT*>(issuer), 0, nullptr))
        return true;
    const auto error = static_cast<HRESULT>(GetLastError());
    return error == NTE_BAD_ALGID || error == CRYPT_E_UNKNOWN_ALGO;
}

bool system_knows_issuer(const CERT_CONTEXT* certificate) {
    for (const wchar_t* name : {L"ROOT", L"CA"}) {
        const Store store(CertOpenSystemStoreW(0, name));
        if (store &&
            Certificate(CertFindCertificateInStore(store.get(), X509_ASN_ENCODING, 0, CERT_FIND_SUBJECT_NAME,
                                                   &certificate->pCertInfo->Issuer, nullptr)))
            return true;
    }
    return false;
}

/// As clients compare: a * stands for the first label.
bool is_for(const std::string& host, const std::string& pattern) {
    const std::u16string name = lower(qel::i18n::utf8_to_ustring(host)),
                         allowed = lower(qel::i18n::utf8_to_ustring(pattern));
    if (!allowed.starts_with(u"*.")) return name == allowed;
    const std::size_t dot = name.find(u'.');
    return dot != 0 && dot != name.npos && name.substr(dot) == allowed.substr(1);
}

} // namespace

Certificate certificate_in(std::string_view der) {
    // Settings of trust may follow the certificate.
    std::string_view rest = der;
    take_der(rest, der_sequence);
    return Certificate(CertCreateCertificateContext(X509_ASN_ENCODING,
                                                    reinterpret_cast<const BYTE*>(der.data()),
                                                    static_cast<DWORD>(der.size() - rest.size())));
}

Validity validity_of(const CERT_CONTEXT* certificate) {
    return {time_of(certificate->pCertInfo->NotBefore), time_of(certificate->pCertInfo->NotAfter)};
}

/// What a certificate for the key has: the numbers of RSA or the point of a curve.
std::string public_part(const CERT_CONTEXT* certificate) {
    const CERT_PUBLIC_KEY_INFO& key = certificate->pCertInfo->SubjectPublicKeyInfo;
    const std::string bits = bytes_of(key.PublicKey);
    if (std::string_view(key.Algorithm.pszObjId) != szOID_RSA_RSA) return bits;
    std::string_view rest = bits;
    return std::string(take_der(rest, der_sequence).value_or(""));
}

ChainFacts facts_of(const Certificates& chain, const Certificates& ca) {
    ChainFacts facts;
    std::ranges::transform(chain, std::back_inserter(facts.certificates),
                           [](const Certificate& one) { return facts_of(one); });
    facts.is_issued_by = [&chain](std::size_t one, std::size_t issuer) {
        return is_issued_by(chain[one].get(), chain[issuer].get());
    };
    facts.is_issuer_known = [&chain, &ca](std::size_t one) {
        const CERT_CONTEXT* const last = chain[one].get();
        return system_knows_issuer(last) || std::ranges::any_of(ca, [last](const Certificate& authority) {
                   return is_issued_by(last, authority.get());
               });
    };
    facts.is_for_host = [hosts = facts.certificates.front().hosts](const std::string& host) {
        return std::ranges::any_of(hosts,
                                   [&host](const std::string& pattern) { return is_for(host, pattern); });
    };
    return facts;
}

} // namespace orvane::preflight
