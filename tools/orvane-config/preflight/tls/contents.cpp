// What preflight finds in the TLS files, in order.
#include "preflight/tls/contents.hpp"

#include "reference/flag_texts.hpp"

namespace orvane::readiness {

bool look_at_tls_contents(const TlsLook& look) {
    // A look that was given up may still run when the process ends.
    OPENSSL_init_ssl(OPENSSL_INIT_NO_ATEXIT, nullptr);
    const Key key = open_key(look);
    const Certificates chain = read_chain(look), ca = read_ca(look);
    const CertificateStore store = system_store(look, look.settings().use_system_store());
    look_at_revocation_lists(look, ca);
    for (const Certificate& one : ca)
        X509_STORE_add_cert(store.get(), one.get());
    if (!chain.empty()) {
        look_at_certificates(look, chain);
        look_at_issuers(look, chain, store.get());
    }
    const bool usable = key && !chain.empty() && key_matches(look, key.get(), chain);
    look_at_offer(look, usable ? key.get() : nullptr, chain);
    return true;
}

} // namespace orvane::readiness
