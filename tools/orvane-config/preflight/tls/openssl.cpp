// OpenSSL's reasons and names as text.
#include "preflight/tls/openssl.hpp"

#include "preflight/tls/certificate_facts.hpp"

#include <openssl/err.h>

namespace orvane::preflight {

std::string openssl_reason() {
    const char* const reason = ERR_reason_error_string(ERR_peek_error());
    ERR_clear_error();
    return reason == nullptr ? "no reason given" : reason;
}

std::string text_of(const X509_NAME* name) {
    const Bio out(BIO_new(BIO_s_mem()));
    X509_NAME_print_ex(out.get(), name, 0, XN_FLAG_RFC2253);
    char* text = nullptr;
    const long size = BIO_get_mem_data(out.get(), &text);
    return cut_name({text, static_cast<std::size_t>(size > 0 ? size : 0)});
}

} // namespace orvane::preflight
