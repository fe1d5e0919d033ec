// Choice of the verb, and what every verb has in common.
#include "verbs/tool.hpp"

#include "explaining/flag_like.hpp"
#include "manuals/help.hpp"
#include "printing/json.hpp"
#include "system/become.hpp"
#include "system/terminal.hpp"
#include "text/escape.hpp"
#include "text/lists.hpp"
#include "text/spelling.hpp"
#include "verbs/call.hpp"

#include "qel/config/build_info.hpp"
#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <cerrno>
#include <exception>
#include <ostream>
#include <sstream>
#include <system_error>

namespace orvane {
namespace {

constexpr struct {
    std::string_view name;
    verb::Run* run;
} runs[] = {
#define ZEP_RUN(name)                                                                                        \
    { #name, verb::name }
    ZEP_RUN(check),  ZEP_RUN(fix),  ZEP_RUN(diff),    ZEP_RUN(convert), ZEP_RUN(preflight),
    ZEP_RUN(status), ZEP_RUN(exec), ZEP_RUN(publish), ZEP_RUN(explain), ZEP_RUN(completions),
#undef ZEP_RUN
};
static_assert(std::ranges::equal(verbs, runs, {}, &Verb::name, [](const auto& one) { return one.name; }),
              "the functions are not those of the table of verbs, in its order");

/// Why a word is no verb.
std::string no_verb(const std::u16string& word) {
    std::string text = "there is no verb '" + qel::i18n::ustring_to_term(word) + "'";
    if (begins_as_flag(word)) return text + "; the verb comes first: orvane-config check FLAGS...";
    std::vector<std::string> known;
    for (const Verb& verb : verbs)
        known.emplace_back(verb.name);
    for (const OtherWords& row : words_of_others)
        for (const std::string_view other : split(row.words, " "))
            known.emplace_back(other);
    const auto similar = most_like(normalized(word), known);
    if (similar.empty()) return text + "; the verbs are " + joined(verbs, ", ", &Verb::name);
    const std::string_view meant = meant_by(similar[0]);
    return text + "; did you mean '" + (meant.empty() ? similar[0] : std::string(meant)) + "'?";
}

const Verb& verb_in(const std::u16string& word) {
    const Verb* const verb = verb_of(qel::i18n::ustring_to_utf8(word));
    if (verb == nullptr) throw Misused(no_verb(word));
    return *verb;
}

/// Whether the call asks about the tool itself, and is answered.
bool tells_of_itself(const Tokens& args, std::ostream& out, std::ostream& err) {
    constexpr std::u16string_view help[] = {u"--help", u"-h", u"help"},
                                  version[] = {u"--version", u"-V", u"version"};
    if (contains(version, args.front()))
        out << "orvane-config " << zep_config_version << " (" << zep_config_build_date << ")\n";
    else if (contains(help, args.front()))
        out << (args.size() == 1 ? help_text() : help_text(verb_in(in_own_words({args[1]}, err).front())));
    else
        return false;
    return true;
}

ExitCode run_verb(const Tokens& args, std::ostream& out, std::ostream& err, const std::function<void()>& tell,
                  Tokens& successor) {
    std::string name = "orvane-config";
    try {
        if (tells_of_itself(args, out, err)) return ExitCode::done;
        const Tokens words = in_own_words(args, err);
        const Verb& verb = verb_in(words.front());
        name += " " + std::string(verb.name);
        Call call = read_call(verb, Tokens(words.begin() + 1, words.end()), out, err);
        call.tell = tell;
        if (call.has(own("help"))) {
            out << help_text(verb);
            return ExitCode::done;
        }
        const ExitCode code = runs[&verb - verbs].run(call);
        successor = call.successor;
        return code;
    } catch (const Misused& fault) {
        const bool is_public =
            dynamic_cast<const MisusedInPublic*>(&fault) != nullptr || !contains(args, u"--redact");
        err << name << ": "
            << (is_public ? fault.what()
                          : "a word of this call is wrong; without --redact the tool says which")
            << "\nsee '" << name << " " << (name.ends_with("-config") ? "help" : "--help") << "'\n";
        return ExitCode::misused;
    } catch (const std::exception& failure) {
        err << "orvane-config: " << failure.what() << '\n';
        return ExitCode::failed_io;
    }
}

/// Whether JSON was asked for; also where the call is wrong.
bool asks_for_json(const Tokens& args) {
    const auto end = std::ranges::find(args, u"--");
    const auto has = [&](std::u16string_view word) { return std::find(args.begin(), end, word) != end; };
    const auto format = std::find(args.begin(), end, u"--format");
    return has(u"--json") || has(u"--format=json") ||
           (format != end && format + 1 != end && format[1] == u"json");
}

/// In one piece, and unchanged unless it goes to a terminal.
bool write(const std::string& text, Stream stream, std::ostream& to) {
    if (text.empty()) return true;
    return bool(to << (is_terminal(stream) ? escape_for_terminal(text) : text) << std::flush);
}

} // namespace

ExitCode run(const Tokens& args, std::ostream& out, std::ostream& err) {
    if (args.empty()) {
        err << short_help();
        return ExitCode::misused;
    }
    std::ostringstream answer, complaint;
    Tokens successor;
    const auto tell = [&] {
        write(complaint.str(), Stream::err, err);
        complaint.str({});
    };
    const ExitCode code = run_verb(args, answer, complaint, tell, successor);
    const std::string wrong = complaint.str();
    if (code != ExitCode::done && answer.view().empty() && !wrong.empty() && asks_for_json(args)) {
        answer << error_json(static_cast<int>(code), wrong.substr(0, wrong.find_last_not_of('\n') + 1))
               << '\n';
        complaint.str({});
    }
    tell();
    errno = 0;
    if (!write(answer.str(), Stream::out, out)) {
        const int error = errno;
        err << "orvane-config: the answer could not be written: " << std::generic_category().message(error)
            << '\n';
        return ExitCode::failed_io;
    }
    return successor.empty() ? code : static_cast<ExitCode>(become(successor, err));
}

} // namespace orvane
