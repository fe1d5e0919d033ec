// Encrypted keys, opened by the system.
#pragma once

#include <string>
#include <string_view>

namespace orvane::preflight {

struct Decrypted {
    bool supported =
        false;         ///< PKCS #8 with a key that is derived (PBKDF2) and a cipher (AES) that the system has
    std::string key{}; ///< in DER; empty: the pass phrase does not open it
};

Decrypted decrypted(std::string_view der, const std::string& phrase);

} // namespace orvane::preflight
