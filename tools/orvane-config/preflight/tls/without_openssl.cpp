// A build without OpenSSL does not look at what is in the TLS files.
#include "preflight/tls/tls_check.hpp"

namespace orvane::preflight {

bool look_at_tls_contents(const TlsCheck&) {
    return false;
}

} // namespace orvane::preflight
