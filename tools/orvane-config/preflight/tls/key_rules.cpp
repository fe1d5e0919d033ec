// What is said of a private key, whoever opens it.
#include "preflight/tls/key_rules.hpp"

#include "reference/flag_texts.hpp"

#include "qel/i18n/convert.hpp"

namespace orvane::preflight {
namespace {

constexpr auto key_flag = flag::https_private_key_file, phrase_flag = flag::https_key_passphrase_file;

} // namespace

std::vector<std::string> phrases_in(const std::string& text) {
    const std::string line = text.substr(0, text.find_first_of("\r\n"));
    return line == text ? std::vector{line} : std::vector{line, text};
}

void report_damaged_key(const TlsCheck& check, const std::string& reason) {
    check.findings.add(Kind::tls_file_content, key_flag, "the key is damaged: " + reason,
                       "Copy the file again from its source.");
}

void report_locked_key(const TlsCheck& check) {
    if (!check.settings().key_passphrase_file())
        check.findings.add(Kind::key_needs_passphrase, key_flag,
                           "the key is encrypted, and no pass phrase is given",
                           "Write the pass phrase to a file, and name that file with " +
                               qel::i18n::ustring_to_utf8(phrase_flag) + ".");
    else if (!check.files.passphrase)
        check.findings.add(Kind::cannot_tell, key_flag,
                           "the key is encrypted, and its pass phrase could not be read");
    else
        check.findings.add(
            Kind::passphrase_wrong, phrase_flag, "the pass phrase in this file does not open the key",
            "The first line of the file has to be the pass phrase, without quotes or spaces around it.");
}

void report_slow_key(const TlsCheck& check) {
    check.findings.add(Kind::time_limit, key_flag, "the key could not be decrypted within 3 s",
                       "Encrypt it with fewer rounds.");
}

void report_unused_passphrase(const TlsCheck& check) {
    if (check.files.passphrase)
        check.findings.add(Kind::passphrase_unused, phrase_flag,
                           "the key is not encrypted, so the pass phrase is not used",
                           "Leave the flag out, or encrypt the key.");
}

} // namespace orvane::preflight
