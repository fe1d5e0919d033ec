// What can follow what on a command line, for the shells' completions.
#include "completing/choices.hpp"

#include "explaining/hazards.hpp"
#include "explaining/kinds.hpp"
#include "preflight/groups.hpp"
#include "probing/settings.hpp"
#include "reference/reference.hpp"

#include <boost/algorithm/string/replace.hpp>

#include <algorithm>
#include <cctype>

namespace orvane::completing {
namespace {

// What a form can have in its column.
constexpr std::string_view nothing, anything = "-", directories = "-d", files = "-f", its_words = "|";

constexpr std::string_view completions[] = {
#define ZEP_FORM(form, conversion, reader, fault, redaction, completion, ...) completion,
#define ZEP_FOREIGN_FORM(...)
#include "reference/forms.def"
};

/// The words that a form begins with, alone and with each ending in the brackets after them: "a|b[;c|;d]".
Values leading_words(std::string_view form) {
    const std::size_t open = form.find('[');
    const auto words = split(form.substr(0, open), "|");
    std::string_view rest = open == form.npos ? std::string_view() : form.substr(open + 1);
    rest = rest.substr(0, rest.find(']'));
    std::vector<std::string> all(words.begin(), words.end());
    if (rest.starts_with(';'))
        for (const std::string_view word : words)
            for (const std::string_view ending : split(rest, "|"))
                all.push_back(std::string(word) + std::string(ending));
    return joined(all, " ");
}

Values values_of(const Reference& one) {
    const std::string_view completion = completions[place_of(one.form)];
    return completion == its_words ? leading_words(one.value) : Values(completion);
}

/// What an argument with this text in the help can be.
Values values_of(Argument argument, std::string_view text) {
    // clang-format off
    switch (argument) {
    case Argument::none:          return "";
    case Argument::file:          return "-f";
    case Argument::setting:       return joined(settings_of({}), " ", &Setting::name);
    case Argument::warnings:      return joined(warning_kinds(), " ", &ExplainedKind::id) + " " +
                                        joined(all_hazards(), " ", [](const Hazard& one) { return std::string(one.kind.id); });
    case Argument::groups:        return joined(preflight::groups, " ", &preflight::Group::name);
    case Argument::a_subject:
        return "flags ids usage " + joined(references(), " ", &Reference::flag) + " " +
               joined(all_kinds(), " ", &Explanation::id);
    case Argument::a_word:        return boost::replace_all_copy(std::string(text), "|", " ");
    case Argument::flags:
    case Argument::two_lines:     return "FLAGS";
    case Argument::flags_command: return "COMMAND";
    case Argument::anything:      break;
    }
    // clang-format on
    return "-";
}

} // namespace

std::vector<Choice> flag_choices() {
    std::vector<Choice> choices;
    for (const Reference& one : references())
        choices.push_back({std::string(one.flag), one.meaning(), values_of(one)});
    return choices;
}

std::vector<Choice> verb_choices() {
    std::vector<Choice> choices;
    for (const Verb& verb : verbs)
        choices.push_back({std::string(verb.name), std::string(verb.summary)});
    return choices;
}

std::vector<Choice> option_choices(const Verb& verb) {
    std::vector<Choice> choices;
    for (const OwnOption& option : own_options)
        if (takes(verb, option))
            choices.push_back(
                {spelled(option), std::string(option.meaning), values_of(option.argument, option.value)});
    return choices;
}

Values what_follows(const Verb& verb) {
    return verb.argument == Argument::none ? "-" : values_of(verb.argument, verb.arguments);
}

std::string table(const std::vector<Choice>& choices) {
    return joined(choices, " ", [](const Choice& choice) {
        return "[" + choice.text + "]=" + quoted(choice.values, "'\\''");
    });
}

std::string function_name(std::string_view program) {
    std::string name(program);
    std::replace_if(
        name.begin(), name.end(), [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; },
        '_');
    return "_" + name;
}

std::string quoted(std::string_view text, std::string_view escaped) {
    return "'" + boost::replace_all_copy(std::string(text), "'", escaped) + "'";
}

std::string filled(std::string script, const std::vector<std::pair<std::string, std::string>>& parts) {
    for (const auto& [name, text] : parts)
        boost::replace_all(script, "@" + name + "@", text);
    return script;
}

} // namespace orvane::completing
