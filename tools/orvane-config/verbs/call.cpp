// How the tool's own options are read.
#include "verbs/call.hpp"

#include "explaining/flag_like.hpp"
#include "probing/probing.hpp"
#include "reference/flag_texts.hpp"
#include "reference/reference.hpp"
#include "system/entry.hpp"
#include "text/lists.hpp"
#include "text/spelling.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <ostream>

namespace orvane {
namespace {

/// "a, b or c"
std::string one_of(const std::vector<std::string_view>& words) {
    return joined(words, ", ", std::identity(), " or ");
}

/// The name in --name=value, without its hyphens; empty when the token is not spelt as an option.
std::string name_in(const std::string& token) {
    if (token == "-h") return "help";
    return token.starts_with("--") ? token.substr(2, token.find('=') - 2) : "";
}

/// The options of the verb that may have been meant; none when a flag of the server is as likely.
std::vector<std::string> similar_options(const Verb& verb, const std::u16string& token) {
    std::vector<std::string> options;
    for (const OwnOption& option : own_options)
        if (takes(verb, option)) options.push_back(spelled(option));
    for (const OtherWords& row : words_of_others)
        if (row.words == "--json" && contains(options, "--format")) options.emplace_back(row.words);
    std::vector<std::string> known = options;
    if (may_have_flags(verb))
        for (const Reference& one : references())
            if (!contains(options, std::string(one.flag))) known.emplace_back(one.flag);
    const auto similar = most_like(normalized(token.substr(0, token.find(u'='))), known);
    const bool all_own = std::all_of(similar.begin(), similar.end(),
                                     [&](const std::string& text) { return contains(options, text); });
    return all_own ? similar : std::vector<std::string>();
}

/// Refuses a token that is no option of the verb, where it cannot be anything else.
void refuse_if_option(const Verb& verb, const std::u16string& token) {
    // A file, the name of a flag, or another word.
    if (!begins_as_flag(token) && (takes_files(verb) || !takes_flags(verb))) return;
    if (may_have_flags(verb) && kind_of(token.substr(0, token.find(u'='))) != FlagKind::no_flag) return;
    const std::string text = qel::i18n::ustring_to_term(token);
    if (verb.name == "preflight" && name_in(text) == "user")
        throw MisusedInPublic(
            "preflight checks as the user who runs it; on Linux, run it as another one with "
            "sudo -u USER orvane-config preflight");
    if (const OwnOption* others = own_option_called(name_in(text))) {
        throw MisusedInPublic(
            spelled(*others) + " works only with " + one_of(verbs_with(others->name)) +
            (others->name == "redact" ? ": what the others say of this machine is not redacted" : ""));
    }
    if (const auto similar = similar_options(verb, token); !similar.empty())
        throw Misused("there is no option '" + text.substr(0, text.find('=')) + "'; did you mean " +
                      one_of({similar.begin(), similar.end()}) + "?");
    if (!may_have_flags(verb) && begins_as_flag(token)) throw Misused("there is no option '" + text + "'");
}

/// The word of the option that may have been meant, as a question.
std::string nearest(const std::vector<std::string_view>& words, const std::string& value) {
    if (contains(words, format_named("nul").name))
        for (const OtherFormat& row : formats_of_others)
            if (contains(words, row.meant) && contains(split(row.words, " "), value))
                return "; did you mean " + std::string(row.meant) +
                       (row.meant == "json" ? ", the list for CMD, args: and command:?" : "?");
    const auto similar = most_like(qel::i18n::utf8_to_ustring(value), {words.begin(), words.end()});
    return similar.empty() ? "" : "; did you mean " + similar[0] + "?";
}

/// The option at `at`, which is moved on to its last token.
void read_option(Call& call, const OwnOption& option, Tokens::const_iterator& at,
                 Tokens::const_iterator end) {
    const std::string token = qel::i18n::ustring_to_utf8(*at);
    const auto equals = token.find('=');
    std::string& value = call.options.emplace_back(&option, "").second;
    if (option.argument == Argument::none) {
        if (equals != token.npos) throw MisusedInPublic(spelled(option) + " takes no value");
        return;
    }
    if (equals == token.npos && at + 1 == end)
        throw MisusedInPublic(spelled(option) + " needs a value: " + std::string(option.value));
    value = equals != token.npos ? token.substr(equals + 1) : qel::i18n::ustring_to_utf8(*++at);
    const auto words = split(option.value, "|");
    if (option.argument == Argument::a_word && !contains(words, value))
        throw Misused(spelled(option) + " is " + one_of(words) + ", not '" + value + "'" +
                      nearest(words, value));
}

/// Whether it is a flag of the server that only looks like the option: what follows cannot be the option's value.
bool is_given_back(const Verb& verb, const OwnOption& option, Tokens::const_iterator at,
                   Tokens::const_iterator end) {
    const bool may_be_flag =
        takes_flags(verb) && option.argument != Argument::none && kind_of(*at) != FlagKind::no_flag;
    return may_be_flag && (at + 1 == end || at[1].starts_with(u"--"));
}

/// Whether a word in front of the flags, of which the server has none, is a file of flags. A name that is not there may be
/// that of a program, unless nothing follows, or of a flag.
bool names_a_file(const Verb& verb, const std::u16string& word, bool is_last) {
    if (word == u"-" || (word.size() > 1 && word.starts_with(u'@'))) return true;
    if (word.empty() || begins_as_flag(word)) return false;
    const Entry::State state = entry_at(qel::util::filesystem::Path(word)).state;
    if (state == Entry::State::absent)
        return is_last && word[0] > u' ' && word[0] < u'\x7F' && kind_of(u"--" + word) == FlagKind::no_flag;
    return state != Entry::State::directory || takes_configurations(verb);
}

/// Takes a word in front of the flags for a file of them.
void read_file_name(Call& call, const std::u16string& word) {
    const std::size_t mark = word.starts_with(u'@') ? 1 : 0;
    call.files.push_back(qel::i18n::ustring_to_utf8(word.substr(mark)));
    const bool too_many = call.files.size() > 1 && !takes_configurations(call.verb);
    if (too_many || call.has(own("from")))
        throw MisusedInPublic("to join files, name each with " + spelled(own("from")));
}

/// Holds the words against the form of the verb's arguments.
void check_words(const Call& call) {
    const std::string_view form = call.verb.arguments;
    if (form.ends_with("...")) return;
    if (form.empty() && !call.words.empty()) throw Misused("unexpected argument: it takes none");
    if (form.starts_with('[') && call.words.size() > 1)
        throw Misused("it takes one " + std::string(form.substr(1, form.size() - 2)) + " at most");
    const auto given = [&](std::string_view word) {
        return call.words == Tokens{{word.begin(), word.end()}};
    };
    const auto words = split(form, "|");
    if (call.verb.argument == Argument::a_word && std::none_of(words.begin(), words.end(), given))
        throw Misused("it takes one argument: " + one_of(words));
}

/// The words with their first one as this tool calls it, and a note of that.
Tokens replaced(const Tokens& words, std::string_view meant, std::ostream& err) {
    err << "orvane-config: '" << qel::i18n::ustring_to_utf8(words.front()) << "' is '" << meant << "' here\n";
    Tokens own;
    for (const std::string_view one : split(meant, " "))
        own.emplace_back(one.begin(), one.end());
    own.insert(own.end(), words.begin() + 1, words.end());
    return own;
}

/// Takes a word that other tools have for an option, and its value; `at` is moved on to the last token.
bool read_other_word(Call& call, Tokens::const_iterator& at, Tokens::const_iterator end) {
    const std::size_t equals = at->find(u'=');
    Tokens words{at->substr(0, equals)};
    if (equals != at->npos) words.push_back(at->substr(equals + 1));
    const bool is_servers = words[0] == flag::wait; // unless a number follows
    const std::string_view meant = is_servers ? "--timeout" : meant_by(qel::i18n::ustring_to_utf8(words[0]));
    const OwnOption* const option =
        option_of(name_in(std::string(meant.substr(0, meant.find(' ')))), &call.verb);
    if (option == nullptr) return false;
    const bool needs_value = option->argument != Argument::none && split(meant, " ").size() == 1;
    if (words.size() > 1 && !needs_value) return false;
    const bool takes_next = needs_value && words.size() == 1 && at + 1 != end;
    if (takes_next) words.push_back(at[1]);
    if (is_servers && (words.size() == 1 || words[1].empty() || words[1][0] < u'0' || words[1][0] > u'9'))
        return false;
    words = replaced(words, meant, call.err);
    auto word = words.cbegin();
    read_option(call, *option, word, words.cend());
    if (takes_next) ++at;
    return true;
}

} // namespace

Tokens in_own_words(const Tokens& words, std::ostream& err) {
    const std::string_view meant = meant_by(qel::i18n::ustring_to_utf8(words.front()));
    // An option has no verb before it here.
    return meant.empty() || meant.starts_with('-') ? words : replaced(words, meant, err);
}

Call read_call(const Verb& verb, const Tokens& args, std::ostream& out, std::ostream& err) {
    Call call{verb, out, err};
    auto at = args.begin();
    for (; at != args.end(); ++at) {
        call.ended = *at == u"--";
        if (call.ended) {
            ++at;
            break;
        }
        const OwnOption* const option = option_of(name_in(qel::i18n::ustring_to_utf8(*at)), &verb);
        if (option != nullptr) {
            if (is_given_back(verb, *option, at, args.end())) break;
            read_option(call, *option, at, args.end());
            continue;
        }
        if (read_other_word(call, at, args.end())) continue;
        if (takes_flags(verb) && !takes_files(verb) &&
            names_a_file(verb, *at, at + 1 == args.end() || !call.files.empty())) {
            read_file_name(call, *at);
            continue;
        }
        refuse_if_option(verb, *at);
        if (takes_flags(verb)) break;
        call.words.push_back(*at);
    }
    call.words.insert(call.words.end(), at, args.end());
    if (!call.files.empty() && call.has(own("from")))
        throw MisusedInPublic("to join files, name each with " + spelled(own("from")));
    if (!takes_flags(verb) && !call.has(own("help"))) check_words(call);
    return call;
}

} // namespace orvane
