// What people have instead of PEM, and how to convert it.
#include "preflight/tls/not_pem.hpp"

#include "text/path_anchor.hpp"
#include "text/quoting.hpp"

#include <algorithm>

namespace orvane::preflight {
namespace {

bool is_blank(const std::string& text) {
    return text.find_first_not_of(" \t\r\n") == text.npos;
}

bool is_utf16(const std::string& text) {
    return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF");
}

bool has_escaped_line_ends(const std::string& text) {
    return text.find("-----\\n") != text.npos;
}

bool is_indented(const std::string& text) {
    return text.find(" -----BEGIN ") != text.npos || text.find("\t-----BEGIN ") != text.npos;
}

bool is_java_keystore(const std::string& text) {
    return text.starts_with("\xFE\xED\xFE\xED") || text.starts_with("\xCE\xCE\xCE\xCE");
}

bool is_putty_key(const std::string& text) {
    return text.starts_with("PuTTY-User-Key-File-");
}

template <Der kind>
bool is_der(const std::string& text) {
    return der_in(text) == kind;
}

/// What a file can be instead; in the command, {} is its name.
struct Form {
    bool (*applies)(const std::string& text);
    std::string_view what, advice, command;
};

// clang-format off
constexpr Form forms[] = {
    {is_blank, "the file is empty", "", ""},
    {is_java_keystore, "this is a Java keystore, not PEM", "Export the key and the certificates as PEM.", ""},
    {is_putty_key, "this is a key in PuTTY's format, not PEM", "A TLS key comes with a certificate; look for that key.", ""},
    {is_utf16, "the text is in UTF-16", "Convert it:", "iconv -f UTF-16 -t ASCII {} >{}.pem"},
    {has_escaped_line_ends, "the line breaks are written as \\n", "Convert them:", "sed -i 's/\\\\n/\\n/g' {}"},
    {is_indented, "the lines are indented, so none begins with -----BEGIN", "Remove the spaces:", "sed -i 's/^[[:blank:]]*//' {}"},
    {is_der<Der::certificate>, "this is a certificate in DER format, not PEM", "Convert it:", "openssl x509 -inform DER -in {} -out {}.pem"},
    {is_der<Der::key>, "this is a key in DER format, not PEM", "Convert it:", "openssl pkey -inform DER -in {} -out {}.pem"},
    {is_der<Der::pkcs12>, "this is a PKCS#12 file, not PEM", "Convert it:", "openssl pkcs12 -in {} -out {}.pem"},
};
// clang-format on

constexpr std::string_view content_names[] = {
    "a certificate",     "a private key",         "Diffie-Hellman parameters",
    "a revocation list", "a certificate request", "a public key",
    "a key for SSH",     "a PKCS#7 bundle",       "something unknown"};

std::string_view name_of(Content content) {
    return content_names[static_cast<std::size_t>(content)];
}

std::string for_file(std::string_view command, const qel::config::Path& path) {
    std::string text(command);
    const std::string name = shown(path.text());
    for (std::size_t at = 0; (at = text.find("{}", at)) != text.npos; at += name.size())
        text.replace(at, 2, name);
    return text;
}

Mistake as_advised(std::string what, std::string_view advice, std::string_view command,
                   const qel::config::Path& path) {
    const bool is_for_unix = command.starts_with("iconv") || command.starts_with("sed");
    if (is_for_unix && backslash_separates())
        return {std::move(what), "Correct the file in an editor, and save it as plain text."};
    std::string text(advice);
    if (!command.empty()) text += " " + for_file(command, path);
    return {std::move(what), text};
}

/// Of a file that holds something else.
Mistake wrong_content(const PemBlock& first, Content wanted, const qel::config::Path& path) {
    const std::string what =
        "the file holds " + std::string(name_of(first.content)) + ", not " + std::string(name_of(wanted));
    if (first.content == Content::ssh_key)
        return as_advised(what, "If it belongs to the certificate, convert a copy of it:",
                          "ssh-keygen -p -m PEM -f {}", path);
    if (first.content == Content::pkcs7 && wanted == Content::certificate)
        return as_advised(what, "Take the certificates out:", "openssl pkcs7 -print_certs -in {} -out {}.pem",
                          path);
    if (first.content == Content::request)
        return {what, "Send it to the certificate authority; the answer is the certificate."};
    return {what, "Check that the names of the files are not mixed up."};
}

} // namespace

Mistake mistake_in(const PemFile& pem, Content wanted, const std::string& text,
                   const qel::config::Path& path) {
    if (!pem.damage.empty())
        return {"block " + std::to_string(pem.blocks.size() + 1) + " of the file is damaged: " + pem.damage,
                "Copy the file again from its source."};
    if (!pem.blocks.empty()) return wrong_content(pem.blocks.front(), wanted, path);
    const auto* const form = std::ranges::find_if(forms, [&](const Form& one) { return one.applies(text); });
    if (form != std::end(forms))
        return as_advised(std::string(form->what), form->advice, form->command, path);
    return {"the file is not PEM: no line begins with -----BEGIN", "Check that this is the right file."};
}

} // namespace orvane::preflight
