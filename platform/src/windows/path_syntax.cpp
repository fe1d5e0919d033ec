// Windows paths: two separators; drive, share and device roots.
#include "path_syntax.hpp"

namespace qel::util::filesystem {

constinit const std::u16string_view separators = u"\\/";

namespace {

bool separator_at(std::u16string_view text, std::size_t at) noexcept {
    return at < text.size() && is_separator(text[at]);
}

/// `<letter>:` at the beginning
bool begins_with_drive(std::u16string_view text) noexcept {
    if (text.size() < 2 || text[1] != u':') return false;
    const char16_t letter = text[0] | 0x20;
    return letter >= u'a' && letter <= u'z';
}

/// <server>\<share>, without the separator after it: the share itself is a directory.
std::size_t share_length(std::u16string_view text) noexcept {
    const std::size_t server = std::min(text.find_first_of(separators), text.size());
    const std::size_t share = std::min(text.find_first_not_of(separators, server), text.size());
    // A server alone is a root too, so that steps upward end there.
    if (share == text.size()) return server;
    return std::min(text.find_first_of(separators, share), text.size());
}

/// UNC\<server>\<share>, or <drive>:\, or another device with the separator after it
std::size_t device_length(std::u16string_view text) noexcept {
    const std::u16string_view unc = u"unc";
    const bool is_share = separator_at(text, unc.size()) &&
                          std::equal(unc.begin(), unc.end(), text.begin(),
                                     [](char16_t lower, char16_t unit) { return lower == (unit | 0x20); });
    if (is_share) return unc.size() + 1 + share_length(text.substr(unc.size() + 1));
    const std::size_t device = std::min(text.find_first_of(separators), text.size());
    return device + (separator_at(text, device) ? 1 : 0);
}

} // namespace

std::size_t root_length(std::u16string_view text) noexcept {
    if (begins_with_drive(text)) return separator_at(text, 2) ? 3 : 2;
    if (!separator_at(text, 0)) return 0;
    if (!separator_at(text, 1) || text.size() == 2 || separator_at(text, 2)) return 1;
    // \\?\ and \\.\ lead to devices
    const bool is_device = (text[2] == u'?' || text[2] == u'.') && separator_at(text, 3);
    return is_device ? 4 + device_length(text.substr(4)) : 2 + share_length(text.substr(2));
}

bool is_bare_drive(std::u16string_view text) noexcept {
    return text.size() == 2 && begins_with_drive(text);
}

} // namespace qel::util::filesystem
