// Choice of the verb, and what every verb has in common.
#include "verbs/tool.hpp"

#include "explaining/flag_like.hpp"
#include "manuals/help.hpp"
#include "system/become.hpp"
#include "system/terminal.hpp"
#include "text/escape.hpp"
#include "text/lists.hpp"
#include "text/spelling.hpp"
#include "verbs/call.hpp"

#include "qel/config/build_info.hpp"
#include "qel/config/report.hpp"
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
    ZEP_RUN(check),   ZEP_RUN(show),        ZEP_RUN(fix),     ZEP_RUN(convert),
    ZEP_RUN(diff),    ZEP_RUN(preflight),   ZEP_RUN(locate),  ZEP_RUN(exec),
    ZEP_RUN(publish), ZEP_RUN(flags),       ZEP_RUN(explain), ZEP_RUN(manual),
    ZEP_RUN(usage),   ZEP_RUN(completions), ZEP_RUN(help),    ZEP_RUN(version),
#undef ZEP_RUN
};
static_assert(std::ranges::equal(verbs, runs, {}, &Verb::name, [](const auto& one) { return one.name; }),
              "the functions are not those of the table of verbs, in its order");

/// What other programs call the verbs.
std::u16string verb_meant(const std::u16string& word) {
    if (word == u"--help" || word == u"-h") return u"help";
    return word == u"--version" ? u"version" : word;
}

/// Why a word is no verb.
std::string no_verb(const std::u16string& word) {
    std::string text = "there is no verb '" + qel::i18n::ustring_to_term(word) + "'";
    std::vector<std::string> names;
    for (const Verb& verb : verbs)
        names.emplace_back(verb.name);
    if (const auto similar = most_like(normalized(word), names); !similar.empty())
        text += "; did you mean '" + similar[0] + "'?";
    else if (begins_as_flag(word))
        text += "; the verb comes first: orvane-config check FLAGS...";
    return text;
}

ExitCode run_verb(const Tokens& args, std::ostream& out, std::ostream& err, const std::function<void()>& tell,
                  Tokens& successor) {
    const std::u16string word = verb_meant(args.front());
    std::string name = "orvane-config";
    try {
        const Verb* const verb = verb_of(qel::i18n::ustring_to_utf8(word));
        if (verb == nullptr) throw Misused(no_verb(word));
        name += " " + std::string(verb->name);
        Call call = read_call(*verb, Tokens(args.begin() + 1, args.end()), out, err);
        call.tell = tell;
        if (call.has(own("help"))) {
            out << help_text(*verb);
            return ExitCode::done;
        }
        const ExitCode code = runs[verb - verbs].run(call);
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

/// In one piece, and unchanged unless it goes to a terminal.
bool write(const std::string& text, Stream stream, std::ostream& to) {
    if (text.empty()) return true;
    return bool(to << (is_terminal(stream) ? escape_for_terminal(text) : text) << std::flush);
}

} // namespace

ExitCode verb::usage(const Call& call) {
    qel::config::usage(call.words.empty() ? u"orvane" : call.words.front(), call.out);
    return ExitCode::done;
}

ExitCode verb::version(const Call& call) {
    call.out << "orvane-config " << zep_config_version << " (" << zep_config_build_date << ")\n";
    return ExitCode::done;
}

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
