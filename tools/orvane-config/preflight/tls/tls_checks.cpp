// What preflight finds in the TLS files, in order.
#include "preflight/tls/tls_checks.hpp"

#include "reference/flag_texts.hpp"

#include <openssl/err.h>

namespace orvane::preflight {

bool can_look_at(std::u16string_view) {
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
        const ChainFacts facts = facts_of(chain, store.get());
        look_at_certificates(check, facts);
        look_at_issuers(check, facts);
        ERR_clear_error();
    }
    const bool usable = key && !chain.empty() && key_matches(check, owner_of(key.get(), chain), chain.size());
    look_at_offer(check, usable ? key.get() : nullptr, chain);
}

} // namespace orvane::preflight
