// PEM files, and what they hold.
#include "preflight/tls/pem.hpp"

#include "preflight/tls/not_pem.hpp"

#include <algorithm>

#include <openssl/err.h>
#include <openssl/pem.h>

namespace orvane::preflight {
namespace {

struct Label {
    std::string_view text;
    Content content;
};

// clang-format off
constexpr Label labels[] = {
    {PEM_STRING_X509,         Content::certificate},
    {PEM_STRING_X509_OLD,     Content::certificate},
    {PEM_STRING_X509_TRUSTED, Content::certificate},
    {PEM_STRING_PKCS8INF,     Content::private_key},
    {PEM_STRING_PKCS8,        Content::private_key},
    {PEM_STRING_RSA,          Content::private_key},
    {PEM_STRING_ECPRIVATEKEY, Content::private_key},
    {PEM_STRING_DSA,          Content::private_key},
    {PEM_STRING_DHPARAMS,     Content::dh_parameters},
    {PEM_STRING_DHXPARAMS,    Content::dh_parameters},
    {PEM_STRING_X509_CRL,     Content::revocation_list},
    {PEM_STRING_X509_REQ,     Content::request},
    {PEM_STRING_X509_REQ_OLD, Content::request},
    {PEM_STRING_PUBLIC,       Content::public_key},
    {PEM_STRING_RSA_PUBLIC,   Content::public_key},
    {"OPENSSH PRIVATE KEY",   Content::ssh_key},
    {PEM_STRING_PKCS7,        Content::pkcs7},
};
// clang-format on

Content content_of(std::string_view label) {
    const auto* const found = std::ranges::find(labels, label, &Label::text);
    return found == std::end(labels) ? Content::other : found->content;
}

struct ReleasesMemory {
    void operator()(void* memory) const { OPENSSL_free(memory); }
};

template <class T>
using Allocated = std::unique_ptr<T, ReleasesMemory>;

} // namespace

bool PemFile::has(Content content) const {
    return std::any_of(blocks.begin(), blocks.end(),
                       [content](const PemBlock& block) { return block.content == content; });
}

PemFile read_pem(std::string_view text) {
    PemFile pem;
    const Bio in = reader_of(text);
    char *label = nullptr, *header = nullptr;
    unsigned char* data = nullptr;
    long size = 0;
    while (PEM_read_bio(in.get(), &label, &header, &data, &size) == 1) {
        const Allocated<char> owned_label(label), owned_header(header);
        const Allocated<unsigned char> owned_data(data);
        pem.blocks.push_back({content_of(label), {data, data + size}});
    }
    const bool at_the_end = ERR_GET_REASON(ERR_peek_last_error()) == PEM_R_NO_START_LINE;
    const std::string reason = openssl_reason();
    if (!at_the_end) pem.damage = reason;
    return pem;
}

bool has_what_is_wanted(const PemFile& pem, Content wanted, const std::string& text, std::u16string_view flag,
                        const qel::config::Path& path, Findings& findings) {
    if (pem.has(wanted) && pem.damage.empty()) return true;
    const Mistake mistake = mistake_in(pem, wanted, text, path);
    findings.add(Kind::tls_file_content, flag, mistake.what, mistake.advice);
    return false;
}

Certificates certificates_in(const PemFile& pem, std::u16string_view flag, Findings& findings) {
    Certificates certificates;
    for (const PemBlock& block : pem.blocks) {
        if (block.content != Content::certificate) continue;
        const auto* data = reinterpret_cast<const unsigned char*>(block.der.data());
        // Settings of trust may follow the certificate.
        Certificate certificate(d2i_X509_AUX(nullptr, &data, static_cast<long>(block.der.size())));
        if (!certificate) {
            findings.add(Kind::tls_file_content, flag,
                         "certificate " + std::to_string(certificates.size() + 1) +
                             " is damaged: " + openssl_reason(),
                         "Copy the file again from its source.");
            break;
        }
        certificates.push_back(std::move(certificate));
    }
    return certificates;
}

} // namespace orvane::preflight
