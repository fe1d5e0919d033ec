// What operators are told about each flag.
#include "reference/reference.hpp"

#include "qel/config/option.hpp"
#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

namespace orvane {
namespace {

enum class Flag {
#define ZEP_FLAG(name, text) name,
#include "qel/config/flags.def"
};

constexpr const char* names[] = {
#define ZEP_FLAG(name, text) #name,
#include "qel/config/flags.def"
};

constexpr std::array described = {
#define ZEP_SUBJECT(title)
#define ZEP_REFERENCE(name, ...) Flag::name,
#include "reference/reference.def"
};

constexpr bool each_flag_once() {
    auto sorted = described;
    std::sort(sorted.begin(), sorted.end());
    return sorted.size() == std::size(names) &&
           std::adjacent_find(sorted.begin(), sorted.end()) == sorted.end();
}
static_assert(each_flag_once(), "a flag of flags.def has no row in reference.def, or two: give it one");

std::string text_of(Flag flag) {
    std::u16string (*const texts[])() = {
#define ZEP_FLAG(name, text) qel::config::option::name,
#include "qel/config/flags.def"
    };
    return qel::i18n::ustring_to_utf8(texts[static_cast<std::size_t>(flag)]());
}

/// `text` with each {name} replaced by the flag of that name.
std::string with_flags(std::string text) {
    for (std::size_t open = 0; (open = text.find('{', open)) != text.npos;) {
        const std::size_t close = text.find('}', open);
        const auto name =
            std::find(std::begin(names), std::end(names), text.substr(open + 1, close - open - 1));
        text.replace(open, close - open + 1, text_of(static_cast<Flag>(name - std::begin(names))));
    }
    return text;
}

/// The first word of a text in a shell's notation.
std::string first_word(std::string_view text) {
    if (text.starts_with('\'')) return std::string(text.substr(1, text.find('\'', 1) - 1));
    return std::string(text.substr(0, text.find(' ')));
}

Reference make_reference(Flag flag, const std::string& subject, const char* value, const char* meaning,
                         const char* repeated, const char* relations, const char* example) {
    const std::string text = text_of(flag);
    std::string line = with_flags(example);
    std::size_t own = line.find(text + " ");
    if (own == line.npos) {
        line = text + (line.empty() ? "" : " ") + line;
        own = 0;
    }
    const std::string sample = *value ? first_word(std::string_view(line).substr(own + text.size() + 1)) : "";
    return {text, subject, value, with_flags(meaning), with_flags(repeated), with_flags(relations),
            line, sample};
}

std::vector<Reference> make_references() {
    constexpr auto last = "the last one counts";
    constexpr auto adds = "adds to the list";
    constexpr auto same = "says the same again";
    std::string subject;
    std::vector<Reference> all;
#define ZEP_SUBJECT(title) subject = title;
#define ZEP_REFERENCE(name, value, meaning, repeated, relations, example)                                    \
    all.push_back(make_reference(Flag::name, subject, value, meaning, repeated, relations, example));
#include "reference/reference.def"
    return all;
}

} // namespace

const std::vector<Reference>& references() {
    static const std::vector<Reference> all = make_references();
    return all;
}

const Reference* reference_of(std::string_view flag) {
    const auto& all = references();
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const Reference& one) { return one.flag == flag; });
    return found == all.end() ? nullptr : &*found;
}

std::vector<std::string> keywords(const Reference& reference) {
    std::vector<std::string> words;
    const std::string_view form = reference.value;
    if (form.find('|') == form.npos || form.find_first_of("<[") != form.npos) return words;
    for (std::size_t begin = 0; begin <= form.size();) {
        const std::size_t end = std::min(form.find('|', begin), form.size());
        words.emplace_back(form.substr(begin, end - begin));
        begin = end + 1;
    }
    return words;
}

} // namespace orvane
