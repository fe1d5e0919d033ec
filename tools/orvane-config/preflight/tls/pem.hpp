// PEM files, and what they hold.
#pragma once

#include "preflight/tls/tls_check.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace orvane::preflight {

enum class Content {
    certificate,
    private_key,
    dh_parameters,
    revocation_list,
    request,
    public_key,
    ssh_key,
    pkcs7,
    other
};

struct PemBlock {
    Content content;
    bool is_encrypted; ///< by its label or its first lines
    std::string der;
};

/// By the label of a block: "CERTIFICATE".
Content content_of(std::string_view label);

struct PemFile {
    std::vector<PemBlock> blocks;
    std::string damage{}; ///< why the block after the last one cannot be read; empty: there is none

    bool has(Content content) const;
};

PemFile read_pem(std::string_view text);

/// Whether the file is whole and has something of the wanted kind. Else says what is wrong, and how to convert it.
bool has_what_is_wanted(const PemFile& pem, Content wanted, const std::string& text, std::u16string_view flag,
                        const qel::config::Path& path, Findings& findings);

/// What a file that is not PEM can be, whole, in DER.
enum class Der { none, certificate, key, pkcs12 };
Der der_in(const std::string& text);

} // namespace orvane::preflight
