// The files that the TLS flags name.
#include "preflight/tls/files.hpp"

#include "reference/flag_forms.hpp"
#include "system/bounded_file.hpp"
#include "text/path_anchor.hpp"
#include "text/quoting.hpp"

#include "qel/util/native_path.hpp"

#include <filesystem>
#include <system_error>

namespace orvane::preflight {
namespace {

using qel::config::Path;
using qel::config::SslContext;
using FileOutcome = BoundedFile::Outcome;

using OptionalPath = qel::config::optional<Path>;

struct FileRow {
    std::u16string_view flag;
    const OptionalPath& (*path)(const SslContext& settings);
    std::optional<std::string> TlsFiles::*content;
    bool secret;
    std::size_t limit;
};

constexpr std::size_t kib = 1024, mib = 1024 * kib;

// Functions that call the getters: their addresses are no constants where they come from a DLL.
// clang-format off
constexpr FileRow file_rows[] = {
    {flag::https_private_key_file,    [](const SslContext& tls) -> const OptionalPath& { return tls.private_key_file(); },    &TlsFiles::key,           true,  mib},
    {flag::https_key_passphrase_file, [](const SslContext& tls) -> const OptionalPath& { return tls.key_passphrase_file(); }, &TlsFiles::passphrase,    true,  64 * kib},
    {flag::https_cert_chain_file,     [](const SslContext& tls) -> const OptionalPath& { return tls.cert_chain_file(); },     &TlsFiles::chain,         false, mib},
    {flag::https_ca_file,             [](const SslContext& tls) -> const OptionalPath& { return tls.ca_file(); },             &TlsFiles::ca,            false, 16 * mib},
    {flag::https_tmp_dh_param_file,   [](const SslContext& tls) -> const OptionalPath& { return tls.tmp_dh_param_file(); },   &TlsFiles::dh_parameters, false, mib},
};
// clang-format on
static_assert(name_all(file_rows, Form::file), "a flag that takes a file has no row here");

/// Which file a name means, where that is not plain.
std::string missing(const Path& path) {
    const auto name = qel::util::filesystem::native(path);
    std::error_code error;
    if (std::filesystem::is_symlink(name, error))
        return "this is a symbolic link to a file that does not exist";
    if (anchor_of(path.text()) == PathAnchor::full) return "the file does not exist";
    return "the file does not exist in " + orvane::shown(std::filesystem::current_path(error).u16string()) +
           ", where relative paths start";
}

/// Of a file whose name may be the pass phrase itself, which is not repeated.
void report_no_passphrase_file(const FileRow& row, Findings& findings) {
    findings.add(
        {Kind::tls_file_missing, row.flag, "there is no file of this name",
         "This flag takes the name of a file that contains the pass phrase, not the pass phrase itself. If "
         "it was the pass phrase, change it: every user of this machine can read command lines.",
         last_given, true});
}

bool may_be_the_phrase(const FileRow& row, const BoundedFile& file) {
    const bool names_nothing = file.outcome == FileOutcome::missing || file.outcome == FileOutcome::failed;
    return names_nothing && row.content == &TlsFiles::passphrase;
}

void report_file(const FileRow& row, const Path& path, const BoundedFile& file, Findings& findings) {
    if (may_be_the_phrase(row, file)) return report_no_passphrase_file(row, findings);
    switch (file.outcome) {
    case FileOutcome::read:
        break;
    case FileOutcome::missing:
        findings.add(Kind::tls_file_missing, row.flag, missing(path),
                     "Create the file, or correct its name.");
        break;
    case FileOutcome::no_access:
        findings.add(
            Kind::tls_file_unreadable, row.flag, "this user cannot read the file: " + file.text,
            "Give the server's user the right to read it and to enter its directories. If the server runs "
            "as another user, run preflight as that user.");
        break;
    case FileOutcome::not_a_file:
        findings.add(Kind::tls_file_unreadable, row.flag, "this is " + file.text + ", not a file",
                     "Name the file itself.");
        break;
    case FileOutcome::too_large:
        findings.add(Kind::size_limit, row.flag,
                     "the file has more than " + std::to_string(row.limit / kib) + " KiB and was not read",
                     "Check that this is the right file.");
        break;
    case FileOutcome::failed:
        findings.add(Kind::tls_file_unreadable, row.flag, "the file cannot be read: " + file.text, {});
        break;
    }
}

/// A key can also be in the file of the certificates, and a certificate where the key should be.
bool is_secret(const FileRow& row, const BoundedFile& file) {
    if (file.outcome == FileOutcome::missing || file.outcome == FileOutcome::no_access)
        return row.secret && !may_be_the_phrase(row, file);
    if (file.outcome != FileOutcome::read) return false;
    if (file.text.find(" PRIVATE KEY-----") != file.text.npos) return true;
    return row.secret && file.text.find("-----BEGIN ") == file.text.npos;
}

} // namespace

TlsFiles read_tls_files(const SslContext& settings, Findings& findings) {
    TlsFiles files;
    for (const FileRow& row : file_rows) {
        const auto& path = row.path(settings);
        if (!path) continue;
        BoundedFile file = read_bounded(*path, row.limit);
        report_file(row, *path, file, findings);
        if (file.outcome != FileOutcome::read) continue;
        files.*row.content = std::move(file.text);
    }
    return files;
}

std::vector<SecretFile> secret_files(const SslContext& settings) {
    std::vector<SecretFile> secrets;
    for (const FileRow& row : file_rows) {
        const auto& path = row.path(settings);
        if (!path) continue;
        if (is_secret(row, read_bounded(*path, row.limit))) secrets.push_back({row.flag, *path});
    }
    return secrets;
}

} // namespace orvane::preflight
