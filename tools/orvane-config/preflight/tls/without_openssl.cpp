// A build without OpenSSL does not look at what is in the TLS files.
#include "preflight/tls/look.hpp"

namespace orvane::readiness {

bool look_at_tls_contents(const TlsLook&) {
    return false;
}

} // namespace orvane::readiness
