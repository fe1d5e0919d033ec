// What preflight finds in the TLS files, once they are read.
#pragma once

#include "preflight/tls/files.hpp"

#include <string_view>

namespace orvane::preflight {

/// What the checks share.
struct TlsCheck {
    const qel::config::HttpsSettings& https;
    const TlsFiles& files;
    unsigned days; ///< a certificate that expires within them is a warning
    Findings& findings;
    bool security = false; ///< whether to show what clients see

    const qel::config::SslContext& settings() const { return https.ssl_context(); }
};

/// Whether this build can look at what a flag asks for.
bool can_look_at(std::u16string_view flag);
/// Looks at what is in the files, and at what the listener offers its clients.
void look_at_tls_contents(const TlsCheck& check);

} // namespace orvane::preflight
