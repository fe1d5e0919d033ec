// A build without OpenSSL does not look at what is in the TLS files.
#include "preflight/tls/offered.hpp"
#include "preflight/tls/tls_check.hpp"

namespace orvane::preflight {

bool can_look_at(std::u16string_view) {
    return false;
}

void look_at_tls_contents(const TlsCheck&) {}

Offered offered_by(const qel::config::SslContext&) {
    return {};
}

int bits_of_curve(const std::string&) {
    return 0;
}

} // namespace orvane::preflight
