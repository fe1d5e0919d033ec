// The library's verdict on a command line.
#include "explaining/verdict.hpp"

#include "qel/config/error_code.hpp"

namespace orvane {

bool Verdict::accepted() const {
    return !code();
}

boost::system::error_code Verdict::code() const {
    if (answer.code || diagnosis.problems.empty()) return answer.code;
    return qel::config::error_code::incompatible_flags();
}

Verdict judge(const Tokens& tokens, bool with_origins, const WarningIds& ignored) {
    Verdict verdict{occurrences_of(tokens), {}, ask(tokens), {}, {}, {}, {}};
    verdict.diagnosis = diagnose(tokens, verdict.answer, [&](const FaultInLine& fault) {
        return verdict.advice.emplace_back(advise(fault)).edit;
    });
    if (!verdict.accepted()) return verdict;
    verdict.effects = effects_of(verdict.line, verdict.answer, with_origins);
    verdict.warnings = warnings_of(verdict.line, verdict.answer, verdict.effects, ignored);
    return verdict;
}

} // namespace orvane
