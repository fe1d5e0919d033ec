// PEM files, and what they hold.
#pragma once

#include "preflight/tls/openssl.hpp"
#include "preflight/tls/tls_check.hpp"

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
    std::string der;
};

struct PemFile {
    std::vector<PemBlock> blocks;
    std::string damage{}; ///< why the block after the last one cannot be read; empty: there is none

    bool has(Content content) const;
};

PemFile read_pem(std::string_view text);

/// Whether the file is whole and has something of the wanted kind. Else says what is wrong, and how to convert it.
bool has_what_is_wanted(const PemFile& pem, Content wanted, const std::string& text, std::u16string_view flag,
                        const qel::config::Path& path, Findings& findings);

/// The certificates of a file, up to the first that is damaged, which is a finding.
Certificates certificates_in(const PemFile& pem, std::u16string_view flag, Findings& findings);

} // namespace orvane::preflight
