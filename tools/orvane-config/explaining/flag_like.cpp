// Whether a token looks like a flag.
#include "explaining/flag_like.hpp"

#include "explaining/meant_flags.hpp"
#include "reference/reference.hpp"
#include "text/spelling.hpp"

#include <algorithm>

namespace orvane {

NameAndValue split_token(std::u16string_view token) {
    // A plain word with a colon is rather an address or a path.
    const bool flag_like = is_flag_like(token);
    // "-Dserver.port=80" sets a property.
    if (token.starts_with(u"-D") && is_alphanumeric(token.substr(2, 1).empty() ? u'-' : token[2]))
        token.remove_prefix(2);
    const std::u16string_view separators = flag_like ? u"= \t\u00A0:" : u"= \t\u00A0";
    const std::size_t begin = std::min(token.find_first_not_of(u" \t\u00A0-/\"'"), token.size());
    const std::size_t at = token.find_first_of(separators, begin);
    if (at != token.npos) {
        const bool colon = at != 0 && token[at - 1] == u':';
        return {token.substr(0, colon ? at - 1 : at), token[at], token.substr(at + 1)};
    }
    if (const auto colon = token.find(u"\":", begin); colon != token.npos)
        return {token.substr(0, colon), u':', token.substr(colon + 2)};
    return {token};
}

bool begins_as_flag(std::u16string_view text) {
    const std::u16string outer = trimmed(trimmed(folded(text.substr(0, 200)), u" "), quotes);
    return !outer.empty() && outer[0] == u'-';
}

bool is_flag_like(std::u16string_view text) {
    return begins_as_flag(text) || (text.size() > 1 && text[0] == u'/' &&
                                    text.substr(1, text.find_first_of(u"=:") - 1).find(u'/') == text.npos);
}

bool resembles_a_flag(std::u16string_view text) {
    const std::size_t equals = text.find(u'=');
    const std::u16string_view name = text.substr(0, equals);
    if (!begins_as_flag(text))
        return equals != text.npos && split_words(normalized(name)).size() > 1 && flag_spelled(name);
    // A command's own options may be short, and of one hyphen.
    return normalized(name).size() > 2 &&
           (flag_spelled(name) != nullptr || (folded(text).starts_with(u"--") && !flags_like(name).empty()));
}

bool is_meant_as_flag(const std::u16string& text) {
    return reference_of(text) != nullptr || resembles_a_flag(text);
}

const OwnOption* own_option_called(std::string_view name) {
    if (verbs_with(name).size() == 1) {
        const auto synonym = synonym_of(name);
        if (synonym && synonym->reference != nullptr) return nullptr;
    }
    return option_of(name);
}

} // namespace orvane
