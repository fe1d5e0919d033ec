// What operators are told about each flag.
#include "reference/reference.hpp"

#include "reference/flag_forms.hpp"
#include "text/lists.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

namespace orvane {
namespace {

constexpr std::string_view flag_names[] = {
#define ZEP_FLAG(name, text) #name,
#include "qel/config/flags.def"
};

/// The flags are ASCII.
template <std::size_t size>
constexpr std::array<char, size> narrowed(const char16_t (&text)[size]) {
    std::array<char, size> narrow{};
    std::transform(text, text + size, narrow.begin(), [](char16_t c) { return static_cast<char>(c); });
    return narrow;
}

#define ZEP_FLAG(name, text) constexpr auto narrow_##name = narrowed(text);
#include "qel/config/flags.def"

constexpr std::string_view narrow_texts[] = {
#define ZEP_FLAG(name, text) narrow_##name.data(),
#include "qel/config/flags.def"
};

constexpr Reference rows[] = {
#define ZEP_SUBJECT(title)
#define ZEP_REFERENCE(name, a_form, a_trait, meaning, again, relations, example, others, ...)                \
    {.wide = flag::name,                                                                                     \
     .flag = narrow_##name.data(),                                                                           \
     .value = row_of(Form::a_form).written,                                                                  \
     .form = Form::a_form,                                                                                   \
     .trait = Trait::a_trait,                                                                                \
     .repeats = Repeats::again,                                                                              \
     .synonyms = others,                                                                                     \
     .raw_meaning = meaning,                                                                                 \
     .raw_relations = relations,                                                                             \
     .raw_example = example,                                                                                 \
     __VA_ARGS__},
#define ZEP_SWITCH(name, a_way, a_trait, words, what, meaning, relations, example, others)                   \
    {.wide = flag::name,                                                                                     \
     .flag = narrow_##name.data(),                                                                           \
     .trait = Trait::a_trait,                                                                                \
     .way = Way::a_way,                                                                                      \
     .core = words,                                                                                          \
     .thing = what,                                                                                          \
     .synonyms = others,                                                                                     \
     .raw_meaning = meaning,                                                                                 \
     .raw_relations = relations,                                                                             \
     .raw_example = example},
#include "reference/reference.def"
};

constexpr auto with_subjects() {
    auto all = std::to_array(rows);
    std::size_t count = 0;
    std::string_view subject;
#define ZEP_SUBJECT(title) subject = title;
#define ZEP_REFERENCE(...) all[count++].subject = subject;
#define ZEP_SWITCH(...) all[count++].subject = subject;
#include "reference/reference.def"
    return all;
}

constexpr bool is_listed_once(const FlagForm& row) {
    return std::ranges::count(flag_forms, row.flag, &FlagForm::flag) == 1;
}
static_assert(std::size(flag_forms) == std::size(flag_names) &&
                  std::ranges::all_of(flag_forms, is_listed_once),
              "a flag of flags.def has no row in reference.def, or two: give it one");

constexpr auto all_references = with_subjects();

/// Whether its form is one of this server's, and those of its synonyms have rows in forms.def.
constexpr bool has_forms(const Reference& one) {
    const std::string_view list = one.synonyms;
    for (std::size_t at = 0; (at = list.find("=<", at)) != list.npos; ++at)
        if (form_of(list.substr(at + 1, list.find('>', at) - at)) == Form::none) return false;
    return !row_of(one.form).kind.empty();
}
static_assert(std::ranges::all_of(all_references, has_forms),
              "reference.def has a form that forms.def lacks");

} // namespace

std::string with_flags(std::string_view raw) {
    std::string text(raw);
    for (std::size_t open = 0; (open = text.find('{', open)) != text.npos; ++open) {
        const std::size_t close = text.find('}', open);
        const std::string inside = text.substr(open + 1, close - open - 1);
        const std::size_t dot = inside.find(".largest");
        const auto name = std::find(std::begin(flag_names), std::end(flag_names), inside.substr(0, dot));
        if (name == std::end(flag_names)) continue;
        const std::string flag(narrow_texts[name - std::begin(flag_names)]);
        const std::string_view largest =
            dot == inside.npos ? "" : reference_of(std::string_view(flag))->largest;
        text.replace(open, close - open + 1, largest.empty() ? flag : std::string(largest));
    }
    return text;
}

std::string Reference::meaning() const {
    return with_flags(raw_meaning) + (trait == Trait::required ? "; required" : "") +
           (largest.empty() ? "" : ", at most ") + std::string(largest) +
           (raw_default.empty() ? "" : "; by default ") + by_default();
}
std::string Reference::repeated() const {
    const std::string how = with_flags(raw_repetition);
    if (repeats == Repeats::nothing) return "changes nothing";
    if (repeats == Repeats::adds) return "adds " + (how.empty() ? "to the list" : how);
    return "the last one counts" + (how.empty() ? "" : "; " + how);
}
std::string Reference::relations() const {
    return with_flags(raw_relations);
}

std::string Reference::whole_example() const {
    const std::string text(flag);
    std::string line = with_flags(raw_example);
    if (line.find(text + " ") != line.npos) return line;
    return text + (line.empty() ? "" : " ") + line;
}

std::string Reference::example() const {
    return example_of(whole_example());
}

std::string Reference::sample() const {
    if (is_switch()) return {};
    const std::vector<std::string> words = example_words();
    return *(std::find(words.begin(), words.end(), flag) + 1);
}

std::vector<std::string> Reference::example_words() const {
    return words_of_example(whole_example());
}

std::string Reference::by_default() const {
    return with_flags(raw_default);
}

std::span<const Reference> references() {
    return all_references;
}

const Reference* reference_of(std::u16string_view flag) {
    const auto found = std::ranges::find(all_references, flag, &Reference::wide);
    return found == all_references.end() ? nullptr : &*found;
}

const Reference* reference_of(std::string_view flag) {
    const auto found = std::ranges::find(all_references, flag, &Reference::flag);
    return found == all_references.end() ? nullptr : &*found;
}

const Reference& flag_with(Trait trait) {
    return *std::ranges::find(all_references, trait, &Reference::trait);
}

std::vector<std::string> keywords(const Reference& reference) {
    std::vector<std::string> words;
    if (!reference.holds(Holds::words)) return words;
    for (const std::string_view word : split(reference.value, "|"))
        words.emplace_back(word);
    return words;
}

} // namespace orvane
