// PEM files, and what they hold.
#include "preflight/tls/pem.hpp"

#include "preflight/tls/not_pem.hpp"

#include <algorithm>

namespace orvane::preflight {
namespace {

struct Label {
    std::string_view text;
    Content content;
};

// clang-format off
constexpr Label labels[] = {
    {"CERTIFICATE",             Content::certificate},
    {"X509 CERTIFICATE",        Content::certificate},
    {"TRUSTED CERTIFICATE",     Content::certificate},
    {"PRIVATE KEY",             Content::private_key},
    {"ENCRYPTED PRIVATE KEY",   Content::private_key},
    {"RSA PRIVATE KEY",         Content::private_key},
    {"EC PRIVATE KEY",          Content::private_key},
    {"DSA PRIVATE KEY",         Content::private_key},
    {"DH PARAMETERS",           Content::dh_parameters},
    {"X9.42 DH PARAMETERS",     Content::dh_parameters},
    {"X509 CRL",                Content::revocation_list},
    {"CERTIFICATE REQUEST",     Content::request},
    {"NEW CERTIFICATE REQUEST", Content::request},
    {"PUBLIC KEY",              Content::public_key},
    {"RSA PUBLIC KEY",          Content::public_key},
    {"OPENSSH PRIVATE KEY",     Content::ssh_key},
    {"PKCS7",                   Content::pkcs7},
};
// clang-format on

} // namespace

Content content_of(std::string_view label) {
    const auto* const found = std::ranges::find(labels, label, &Label::text);
    return found == std::end(labels) ? Content::other : found->content;
}

bool PemFile::has(Content content) const {
    return std::any_of(blocks.begin(), blocks.end(),
                       [content](const PemBlock& block) { return block.content == content; });
}

bool has_what_is_wanted(const PemFile& pem, Content wanted, const std::string& text, std::u16string_view flag,
                        const qel::config::Path& path, Findings& findings) {
    if (pem.has(wanted) && pem.damage.empty()) return true;
    const Mistake mistake = mistake_in(pem, wanted, text, path);
    findings.add(Kind::tls_file_content, flag, mistake.what, mistake.advice);
    return false;
}

} // namespace orvane::preflight
