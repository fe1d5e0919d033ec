// OpenSSL's reasons, names and times as text.
#include "preflight/tls/openssl.hpp"

#include <array>
#include <ctime>

#include <openssl/err.h>

namespace orvane::preflight {

std::string openssl_reason() {
    const char* const reason = ERR_reason_error_string(ERR_peek_error());
    ERR_clear_error();
    return reason == nullptr ? "no reason given" : reason;
}

std::string text_of(const X509_NAME* name) {
    constexpr std::size_t longest = 100;
    const Bio out(BIO_new(BIO_s_mem()));
    X509_NAME_print_ex(out.get(), name, 0, XN_FLAG_RFC2253);
    char* text = nullptr;
    const long size = BIO_get_mem_data(out.get(), &text);
    const std::string whole(text, static_cast<std::size_t>(size > 0 ? size : 0));
    if (whole.empty()) return "(no name)";
    return whole.size() > longest ? whole.substr(0, longest) + "..." : whole;
}

std::string text_of(const ASN1_TIME* time) {
    std::tm parts{};
    std::array<char, 40> text{};
    if (ASN1_TIME_to_tm(time, &parts) != 1) return "an invalid time";
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M UTC", &parts)};
}

} // namespace orvane::preflight
