// The verb `fix`: the corrected line.
#include "explaining/mending.hpp"
#include "printing/json.hpp"
#include "printing/verdict_text.hpp"
#include "probing/occurrence_text.hpp"
#include "text/lists.hpp"
#include "verbs/given_ids.hpp"
#include "verbs/in_place.hpp"
#include "verbs/input.hpp"
#include "verbs/refusal.hpp"
#include "verbs/written.hpp"

#include "qel/i18n/convert.hpp"

#include <functional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace orvane {
namespace {

struct Corrected {
    std::vector<Token> tokens;
    Verdict verdict;               ///< of them, once nothing in them is refused
    std::vector<Warning> mended{}; ///< what they were changed for, but for faults
};

Corrected corrected(const Verdict& given, const WarningIds& ignored) {
    if (!given.answer.code) {
        Corrected line{tokens_in(given.line), given};
        if (given.accepted()) line.mended = mend(line.tokens, line.verdict, ignored);
        return line;
    }
    Corrected line{given.diagnosis.fixed, given};
    if (!given.diagnosis.complete || !given.diagnosis.problems.empty()) return line;
    line.verdict = judge(tokens_of({line.tokens}), false, ignored);
    line.mended = mend(line.tokens, line.verdict, ignored);
    return line;
}

/// What has to be replaced in it, in the order of the tokens.
std::vector<std::string> placeholders_in(const std::vector<Token>& tokens) {
    std::vector<std::string> names;
    for (const Token& token : tokens) {
        if (token.sample.empty()) continue;
        const std::string text = shown({token}), name = text.substr(0, text.find('>') + 1);
        if (!contains(names, name)) names.push_back(name);
    }
    return names;
}

void print_line(std::vector<Token> tokens, const std::u16string& program, const Call& call) {
    if (!call.has(own("to"))) {
        call.out << shown(tokens) << '\n';
        return;
    }
    for (Token& token : tokens)
        if (!token.sample.empty()) token.text = qel::i18n::utf8_to_ustring(shown({token}));
    call.out << written(call, occurrences_of(tokens_of({std::move(tokens)})), program);
}

ExitCode code_of(const Corrected& line, const Call& call) {
    if (!line.verdict.accepted()) return ExitCode::negative;
    return placeholders_in(line.tokens).empty() ? verdict_code(call, line.verdict) : ExitCode::warned;
}

void explain(const Verdict& given, const Corrected& line, const Call& call) {
    const bool refused = bool(given.answer.code);
    if (refused) print_fixes(given, call.err, wanted_ids(call));
    print_warnings(line.mended, line.verdict.places, "corrected", call.err);
    const auto placeholders = placeholders_in(line.tokens);
    if (!placeholders.empty())
        call.err << "orvane-config: replace each " << joined(placeholders, ", ", std::identity(), " and ")
                 << " before you use this command line\n";
    else if (!refused || line.verdict.accepted())
        print_verdict(line.verdict, call.err, wanted_ids(call));
}

/// A file gets all that was meant, or nothing.
ExitCode rewrite(const std::string& file, const Verdict& given, const Corrected& line, const Call& call) {
    explain(given, line, call);
    if (line.verdict.accepted() && placeholders_in(line.tokens).empty())
        rewrite(file, tokens_of(given.line), line.tokens, call);
    else
        call.err << "orvane-config: " << file
                 << " was not changed, because not all of it could be corrected\n";
    return code_of(line, call);
}

} // namespace

ExitCode verb::fix(const Call& call) {
    const std::string file = file_to_rewrite(call);
    const WarningIds ignored = ignored_warnings(call);
    const Input input = input_of(call);
    const Verdict given = judge(input, false, ignored);
    if (call.has(own("quiet")) && given.clean()) return ExitCode::done;
    const Corrected line = corrected(given, ignored);
    if (!file.empty()) return rewrite(file, given, line, call);
    if (call.wants_json()) {
        call.out << fix_json(given, line.tokens) << '\n';
        return code_of(line, call);
    }
    explain(given, line, call);
    print_line(line.tokens, input.program, call);
    return code_of(line, call);
}

} // namespace orvane
