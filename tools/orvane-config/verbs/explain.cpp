// The verb `explain`: flags, and what the tool finds; all of it, or what somebody asks about.
#include "explaining/lookup.hpp"
#include "explaining/meant_flags.hpp"
#include "printing/explanations.hpp"
#include "printing/json.hpp"
#include "printing/reference_text.hpp"
#include "printing/wrapping.hpp"
#include "text/lists.hpp"
#include "text/spelling.hpp"
#include "verbs/call.hpp"

#include "qel/config/report.hpp"
#include "qel/i18n/convert.hpp"

#include <functional>
#include <ostream>

namespace orvane {
namespace {

/// Throws Misused with what was perhaps meant.
[[noreturn]] void refuse(const std::string& word) {
    std::vector<std::string> known;
    for (const Explanation& kind : all_kinds())
        known.push_back(kind.id);
    for (const Reference* const flag : flags_like(normalized(qel::i18n::utf8_to_ustring(word))))
        known.emplace_back(flag->flag);
    const auto similar = most_like(normalized(qel::i18n::utf8_to_ustring(word)), known);
    throw Misused("there is no flag, setting or id '" + word + "', and no text has this word" +
                  (similar.empty() ? "; 'orvane-config explain' prints an index"
                                   : "; did you mean " + similar[0] + "?"));
}

/// The whole, or what the words are about. Throws Misused when a word leads to nothing.
Lookup asked_for(std::vector<std::u16string> words) {
    const bool only_flags = !words.empty() && words[0] == u"flags",
               only_ids = !words.empty() && words[0] == u"ids";
    if (only_flags || only_ids) words.erase(words.begin());
    constexpr std::u16string_view in_each[] = {u"default", u"defaults", u"value",
                                               u"values",  u"limit",    u"limits"};
    const bool is_about_default = words.size() == 2 && words[1].starts_with(u"default");
    if (words.size() == 2 && flag_spelled(words[0]) != nullptr && contains(in_each, words[1]))
        words.pop_back();
    Lookup found = words.empty() ? Lookup{all_flags(), all_kinds()} : look_up(words);
    if (is_about_default && words.size() == 1)
        found.advice.emplace_back(
            "without its flag a setting is not set, unless the text has a default for it");
    if (only_flags) found.kinds.clear();
    if (only_ids) found.flags.clear();
    if (!found.unknown.empty()) refuse(found.unknown[0]);
    if (found.flags.empty() && found.kinds.empty() && found.advice.empty())
        refuse(qel::i18n::ustring_to_utf8(words[0]));
    return found;
}

/// A line for each group, with the names of its members.
template <class Members, class Group, class Name>
void write_names(const Members& members, Group group, Name name, std::ostream& out) {
    std::string line;
    const auto end_line = [&] { out << (line.empty() ? "" : wrapped(line, 2, 2) + "\n"); };
    std::string_view last;
    for (const auto& one : members) {
        if (const std::string_view next = std::invoke(group, one); next != last) {
            end_line();
            line = std::string(next) + ":";
            last = next;
        }
        line += (line.ends_with(':') ? " " : ", ") + std::string(std::invoke(name, one));
    }
    end_line();
}

void write_index(std::ostream& out) {
    out << "Flags of the server, by subject; 'explain flags' explains all of them\n";
    write_names(references(), &Reference::subject, &Reference::flag, out);
    out << "\nIds of what the tool finds; 'explain ids' explains all of them\n";
    write_names(all_kinds(), &Explanation::about, &Explanation::id, out);
    out << "\n'explain WORD...' explains some: WORD is one of these, a setting, another\n"
           "server's name for a flag, or a word of a meaning. 'explain usage' prints the\n"
           "server's usage text.\n";
}

} // namespace

ExitCode verb::explain(const Call& call) {
    const std::string format = call.value(own("format"), "text");
    if (!call.words.empty() && call.words[0] == u"usage") {
        if (call.words.size() > 2) throw Misused("'explain usage' takes one NAME at most");
        qel::config::usage(call.words.size() == 1 ? u"orvane" : call.words[1], call.out);
        return ExitCode::done;
    }
    if (call.words.empty() && format == "text") {
        write_index(call.out);
        return ExitCode::done;
    }
    const Lookup found = asked_for({call.words.begin(), call.words.end()});
    for (const std::string& advice : found.advice)
        call.err << "orvane-config: " << advice << '\n';
    if (call.wants_json()) {
        call.out << explain_json(found.flags, found.kinds) << '\n';
        return ExitCode::done;
    }
    if (!found.flags.empty())
        write(found.flags, reference_format(format), found.flags.size() == all_flags().size(), call.out);
    if (!found.kinds.empty()) write(found.kinds, format, found.kinds.size() == all_kinds().size(), call.out);
    return ExitCode::done;
}

} // namespace orvane
