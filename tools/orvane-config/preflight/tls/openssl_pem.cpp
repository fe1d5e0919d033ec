// PEM and DER, read by OpenSSL.
#include "preflight/tls/pem.hpp"
#include "preflight/tls/tls_checks.hpp"

#include <openssl/err.h>
#include <openssl/pem.h>
#include <openssl/pkcs12.h>

namespace orvane::preflight {
namespace {

struct ReleasesMemory {
    void operator()(void* memory) const { OPENSSL_free(memory); }
};

template <class T>
using Allocated = std::unique_ptr<T, ReleasesMemory>;

template <auto decode, auto release>
bool is_der(const std::string& text) {
    const auto* data = reinterpret_cast<const unsigned char*>(text.data());
    auto* const object = decode(nullptr, &data, static_cast<long>(text.size()));
    ERR_clear_error();
    if (object == nullptr) return false;
    release(object);
    return true;
}

} // namespace

PemFile read_pem(std::string_view text) {
    PemFile pem;
    const Bio in = reader_of(text);
    char *label = nullptr, *header = nullptr;
    unsigned char* data = nullptr;
    long size = 0;
    while (PEM_read_bio(in.get(), &label, &header, &data, &size) == 1) {
        const Allocated<char> owned_label(label), owned_header(header);
        const Allocated<unsigned char> owned_data(data);
        const bool is_encrypted = std::string_view(label).starts_with("ENCRYPTED") || *header != '\0';
        pem.blocks.push_back({content_of(label), is_encrypted, {data, data + size}});
    }
    const bool at_the_end = ERR_GET_REASON(ERR_peek_last_error()) == PEM_R_NO_START_LINE;
    const std::string reason = openssl_reason();
    if (!at_the_end) pem.damage = reason;
    return pem;
}

Der der_in(const std::string& text) {
    if (is_der<d2i_X509, X509_free>(text)) return Der::certificate;
    if (is_der<d2i_AutoPrivateKey, EVP_PKEY_free>(text)) return Der::key;
    return is_der<d2i_PKCS12, PKCS12_free>(text) ? Der::pkcs12 : Der::none;
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
