// The verb `convert`: the same flags in another format.
#include "formats/format_table.hpp"
#include "printing/verdict_text.hpp"
#include "probing/tidying.hpp"
#include "system/exact_bytes.hpp"
#include "verbs/input.hpp"

#include "qel/i18n/convert.hpp"

#include <ostream>

namespace orvane {
namespace {

std::string written(const Call& call, const CommandLine& line) {
    std::vector<Tokens> groups;
    for (const Occurrence& occurrence : line)
        groups.push_back(tokens_of({occurrence}));
    const std::string to = call.value(own("to"));
    return write(format_named(to.empty() ? "flags" : to),
                 qel::i18n::utf8_to_ustring(call.value(own("program"))), groups);
}

} // namespace

ExitCode verb::convert(const Call& call) {
    if (call.has(own("redact")) && call.has(own("program")))
        throw MisusedInPublic("--redact and --program exclude each other");
    const Input input = input_of(call);
    CommandLine line = occurrences_of(input.flags);
    if (call.has(own("tidy"))) {
        const Verdict verdict = judge(input, true);
        if (!verdict.accepted()) {
            print_verdict(verdict, call.err);
            return ExitCode::negative;
        }
        if (auto tidy = tidied(line, verdict.answer, verdict.effects))
            line = std::move(*tidy);
        else
            call.err << "orvane-config: nothing can be moved or left out safely\n";
    }
    call.out << written(call, line);
    keep_bytes(stdout);
    return ExitCode::done;
}

} // namespace orvane
