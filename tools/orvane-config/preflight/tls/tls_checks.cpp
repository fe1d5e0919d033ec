// What preflight finds in the TLS files, in order.
#include "preflight/tls/tls_checks.hpp"

#include "reference/flag_texts.hpp"

namespace orvane::preflight {

bool can_look_at_tls_contents() {
    return true;
}

void look_at_tls_contents(const TlsCheck& check) {
    // A check that was given up may still run when the process ends.
    OPENSSL_init_ssl(OPENSSL_INIT_NO_ATEXIT, nullptr);
    const Key key = open_key(check);
    const Certificates chain = read_chain(check), ca = read_ca(check);
    const CertificateStore store = system_store(check, chain, check.settings().use_system_store());
    look_at_revocation_lists(check, ca);
    add_issuers(store.get(), ca, chain);
    if (!chain.empty()) {
        look_at_certificates(check, chain);
        look_at_issuers(check, chain, store.get());
    }
    const bool usable = key && !chain.empty() && key_matches(check, key.get(), chain);
    look_at_offer(check, usable ? key.get() : nullptr, chain);
}

} // namespace orvane::preflight
