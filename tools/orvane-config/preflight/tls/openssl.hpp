// OpenSSL's objects with owners, and its reasons without its data.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <openssl/bio.h>
#include <openssl/evp.h>
#include <openssl/ssl.h>
#include <openssl/x509.h>

namespace orvane::preflight {

template <auto release>
struct Releases {
    template <class T>
    void operator()(T* object) const {
        release(object);
    }
};

using Bio = std::unique_ptr<BIO, Releases<BIO_free_all>>;
using Key = std::unique_ptr<EVP_PKEY, Releases<EVP_PKEY_free>>;
using Certificate = std::unique_ptr<X509, Releases<X509_free>>;
using RevocationList = std::unique_ptr<X509_CRL, Releases<X509_CRL_free>>;
using CertificateStore = std::unique_ptr<X509_STORE, Releases<X509_STORE_free>>;
using StoreContext = std::unique_ptr<X509_STORE_CTX, Releases<X509_STORE_CTX_free>>;
using TlsSettings = std::unique_ptr<SSL_CTX, Releases<SSL_CTX_free>>;
using TlsConnection = std::unique_ptr<SSL, Releases<SSL_free>>;

using Certificates = std::vector<Certificate>;

/// To be read by OpenSSL; the text has to outlive it.
inline Bio reader_of(std::string_view text) {
    return Bio(BIO_new_mem_buf(text.data(), static_cast<int>(text.size())));
}

/// Why OpenSSL's last call failed, of all its reasons the first. Forgets them. Only the reason is taken: data that
/// comes with it may be from a file.
std::string openssl_reason();

/// The name as one line of ASCII, cut where it gets too long to read.
std::string text_of(const X509_NAME* name);

} // namespace orvane::preflight
