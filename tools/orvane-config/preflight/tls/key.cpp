// The server's private key.
#include "preflight/tls/tls_checks.hpp"

#include "preflight/time_limit.hpp"
#include "preflight/tls/key_rules.hpp"
#include "preflight/tls/pem.hpp"
#include "reference/flag_texts.hpp"
#include "text/quoting.hpp"

#include <algorithm>

#include <openssl/err.h>
#include <openssl/pem.h>

namespace orvane::preflight {
namespace {

struct Opened {
    Key key{};
    bool encrypted = false; ///< a pass phrase was asked for
    bool unsupported = false;
    std::string reason{};
};

struct Question {
    const std::string* phrase; ///< null: not known
    bool asked = false;
};

int answer(char* buffer, int size, int, void* data) {
    auto& question = *static_cast<Question*>(data);
    question.asked = true;
    if (question.phrase == nullptr || question.phrase->size() > static_cast<std::size_t>(size)) return -1;
    std::copy(question.phrase->begin(), question.phrase->end(), buffer);
    return static_cast<int>(question.phrase->size());
}

/// OpenSSL has several reasons; that it does not support a cipher is not always the first. It also does not support what a
/// wrong pass phrase makes of a key, once in a while.
bool takes_unsupported_out_of_the_queue() {
    bool unsupported = false;
    for (unsigned long error = ERR_get_error(); error != 0; error = ERR_get_error())
        unsupported =
            unsupported || (ERR_GET_LIB(error) == ERR_LIB_EVP && ERR_GET_REASON(error) == ERR_R_UNSUPPORTED);
    return unsupported;
}

Opened open_with(const std::string& text, const std::string* phrase) {
    Question question{phrase};
    ERR_clear_error();
    Opened opened;
    opened.key.reset(PEM_read_bio_PrivateKey(reader_of(text).get(), nullptr, answer, &question));
    opened.encrypted = question.asked;
    return opened;
}

Opened open_any(const std::string& text, const std::optional<std::string>& phrase_file) {
    Opened opened = open_with(text, nullptr);
    if (opened.key || !opened.encrypted || !phrase_file) {
        opened.reason = openssl_reason();
        return opened;
    }
    for (const std::string& phrase : phrases_in(*phrase_file)) {
        opened = open_with(text, &phrase);
        opened.encrypted = true;
        opened.unsupported = takes_unsupported_out_of_the_queue();
        if (opened.key) break;
    }
    return opened;
}

void report_closed(const TlsCheck& check, const Opened& opened) {
    if (!opened.encrypted) return report_damaged_key(check, opened.reason);
    if (!opened.unsupported) return report_locked_key(check);
    const std::string file = shown(check.settings().private_key_file()->text());
    check.findings.add(Kind::tls_file_content, flag::https_private_key_file,
                       "the key is encrypted in a way that OpenSSL no longer supports",
                       "Encrypt it again: openssl pkey -provider legacy -provider default -aes256 -in " +
                           file + " -out " + file + ".pem");
}

} // namespace

Key open_key(const TlsCheck& check) {
    constexpr auto flag = flag::https_private_key_file;
    if (!check.files.key) return nullptr;
    const std::string& text = *check.files.key;
    const PemFile pem = read_pem(text);
    if (!has_what_is_wanted(pem, Content::private_key, text, flag, *check.settings().private_key_file(),
                            check.findings))
        return nullptr;
    auto opened =
        within(opening_limit, [text, phrase = check.files.passphrase] { return open_any(text, phrase); });
    if (!opened) {
        report_slow_key(check);
        return nullptr;
    }
    if (!opened->key)
        report_closed(check, *opened);
    else if (!opened->encrypted)
        report_unused_passphrase(check);
    return std::move(opened->key);
}

} // namespace orvane::preflight
