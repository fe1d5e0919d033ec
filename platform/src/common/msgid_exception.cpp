// Message-ID exceptions: the catalog, and the hook that is called before they are thrown.
#include "qel/msgid/msgid_exception.hpp"

#include "qel/i18n/convert.hpp"

#include <array>
#include <atomic>
#include <cstddef>
#include <string_view>
#include <utility>

namespace qel::msgid {
namespace {

struct Sentence {
    std::string_view catalog;
    std::string_view id;
    std::string_view text; // "%1" is the first argument, and so on up to "%9"
};

// clang-format off
constexpr auto sentences = std::to_array({
    Sentence{"ZEP:server:Config", "CacheProviderBadFormat",
             "the cache definition \"%1\" is malformed: it must have the form <provider>@[<host>:]<port>, "
             "for example provider@localhost:4711"},
    Sentence{"ZEP:server:Config", "StartCacheLocalhost",
             "a cache can not be started on host \"%1\": the host must be 'localhost' or '127.0.0.1'"},
});
// clang-format on

/// Whether every '%' is followed by the number of an argument.
consteval bool have_only_places() {
    for (const Sentence& sentence : sentences)
        for (std::size_t at = 0; (at = sentence.text.find('%', at)) != sentence.text.npos;)
            if (sentence.text.substr(++at, 1).find_first_of("123456789") != 0) return false;
    return true;
}
static_assert(have_only_places(), "a sentence of the catalog has a '%' that is not the place of an argument");

std::string narrow(const Argument& argument) {
    if (const auto* wide = std::get_if<std::u16string>(&argument)) return i18n::ustring_to_term(*wide);
    return std::get<std::string>(argument);
}

/// Replaces in one pass: the text of an argument is not searched again.
std::string filled_in(std::string_view text, const std::vector<Argument>& arguments) {
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '%') {
            result += text[at];
            continue;
        }
        const auto number = static_cast<std::size_t>(text[++at] - '1');
        if (number < arguments.size()) result += narrow(arguments[number]);
    }
    return result;
}

constinit std::atomic<LegacyErrorHook> legacy_error_hook{nullptr};

} // namespace

std::string error_identifier(const MessageID& message) {
    return message.catalog + ':' + message.id;
}

std::string catalog_text(const MessageID& message) {
    for (const Sentence& sentence : sentences) {
        if (sentence.catalog == message.catalog && sentence.id == message.id)
            return filled_in(sentence.text, message.arguments);
    }
    std::string text = error_identifier(message);
    for (const Argument& argument : message.arguments)
        text += " \"" + narrow(argument) + '"';
    return text;
}

IMsgIDException::~IMsgIDException() = default;

struct MsgIDException::Content {
    MessageID message;
    std::string identifier;
};

MsgIDException::MsgIDException(MessageID message)
    : std::runtime_error(catalog_text(message)),
      content_(std::make_shared<Content>(Content{message, error_identifier(message)})) {}
MsgIDException::MsgIDException(const MsgIDException&) noexcept = default;
MsgIDException& MsgIDException::operator=(const MsgIDException&) noexcept = default;
MsgIDException::~MsgIDException() = default;

const std::string& MsgIDException::catalog() const noexcept {
    return content_->message.catalog;
}

const std::string& MsgIDException::message_id() const noexcept {
    return content_->message.id;
}

const std::vector<Argument>& MsgIDException::arguments() const noexcept {
    return content_->message.arguments;
}

const std::string& MsgIDException::identifier() const noexcept {
    return content_->identifier;
}

LegacyErrorHook set_legacy_error_hook(LegacyErrorHook hook) noexcept {
    return legacy_error_hook.exchange(hook);
}

void notify_legacy_error_hook(const IMsgIDException& failure) {
    if (const LegacyErrorHook hook = legacy_error_hook.load()) hook(failure);
}

} // namespace qel::msgid
