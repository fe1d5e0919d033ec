// The library's verdict on a command line, and all that can be said about it.
#include "explaining/verdict.hpp"

#include "printing/escape.hpp"
#include "printing/quoting.hpp"
#include "system/terminal.hpp"

#include "qel/config/error_code.hpp"
#include "qel/config/report.hpp"
#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <cstdlib>
#include <ostream>

namespace orvane {
namespace {

/// Looking for occurrences without effect parses the line once for each occurrence. Nobody waits for that on a line as long as this.
constexpr std::size_t most_steps = 2000;

/// The occurrence and its neighbours; on a terminal a second line marks the occurrence.
void show_place(const Fault& fault, std::ostream& err) {
    const bool terminal = is_terminal(Stream::err);
    const char* const no_color = std::getenv("NO_COLOR");
    const bool colour = terminal && (no_color == nullptr || *no_color == '\0');

    std::string before = "  " + numbers_of(fault.occurrence) + ": " + (fault.more_before ? "... " : "");
    if (!fault.before.empty()) before += shown(fault.before) + " ";
    const std::string refused = shown(fault.occurrence);
    err << before << (colour ? "\033[1;31m" : "") << refused << (colour ? "\033[0m" : "");
    if (!fault.after.empty()) err << " " << shown(fault.after);
    err << (fault.more_after ? " ...\n" : "\n");

    if (!terminal) return;
    const auto columns = [](const std::string& text) { return qel::i18n::utf8_to_ustring(text).size(); };
    err << std::string(columns(before), ' ') << '^' << std::string(columns(refused) - 1, '~') << '\n';
}

void show_fault(const Fault& fault, const Advice& advice, std::ostream& err) {
    if (!fault.occurrence.empty()) show_place(fault, err);
    for (const std::string& sentence : advice.sentences)
        err << "    " << sentence << '\n';
}

/// The library's text with its last line ended; most of its texts do not end theirs.
std::string ended(const std::string& text) {
    return text.empty() || text.back() == '\n' ? text : text + '\n';
}

/// Where the flags stand that the problems are about.
void show_involved(const Verdict& verdict, std::ostream& err) {
    const auto is_named = [&](const Occurrence& occurrence) {
        const auto& problems = verdict.diagnosis.problems;
        return std::any_of(problems.begin(), problems.end(), [&](const std::u16string& problem) {
            return (problem + u" ").find(occurrence[0].text + u" ") != problem.npos;
        });
    };
    for (const Occurrence& occurrence : verdict.line)
        if (verdict.diagnosis.involved.contains(occurrence[0].text) || is_named(occurrence))
            err << "  " << numbers_of(occurrence) << ": " << shown(occurrence) << '\n';
}

void show_further(const Verdict& verdict, std::ostream& err) {
    const Diagnosis& diagnosis = verdict.diagnosis;
    for (std::size_t i = 1; i != diagnosis.faults.size(); ++i) {
        const Fault& fault = diagnosis.faults[i];
        err << "once this is mended: " << ended(fault.text.empty() ? fault.code.message() : fault.text);
        show_fault(diagnosis.faults[i], verdict.advice[i], err);
    }
    for (const std::u16string& problem : diagnosis.problems)
        err << "once this is mended: " << escape(qel::i18n::ustring_to_utf8(problem)) << '\n';
}

} // namespace

bool Verdict::accepted() const {
    return !code();
}

boost::system::error_code Verdict::code() const {
    if (answer.code || diagnosis.problems.empty()) return answer.code;
    return qel::config::error_code::incompatible_flags();
}

Verdict judge(const Tokens& tokens, bool with_origins, const WarningIds& ignored) {
    Verdict verdict{occurrences_of(tokens), ask(tokens), {}, {}, {}, {}, false};
    verdict.diagnosis =
        diagnose(tokens, [&](const Fault& fault, const CommandLine& line, std::size_t position) {
            return verdict.advice.emplace_back(advise(fault, line, position)).repair;
        });
    if (!verdict.accepted()) return verdict;
    verdict.effects_known = verdict.line.size() <= most_steps;
    if (verdict.effects_known) verdict.effects = effects_of(verdict.line, verdict.answer, with_origins);
    verdict.warnings = warnings_of(verdict.line, verdict.answer, verdict.effects, ignored);
    return verdict;
}

void explain(const Verdict& verdict, std::ostream& err) {
    err << ended(verdict.answer.text);
    const Diagnosis& diagnosis = verdict.diagnosis;
    if (!verdict.answer.code && !diagnosis.problems.empty())
        qel::config::report_problems(diagnosis.problems, diagnosis.involved, err);
    if (!verdict.accepted())
        err << "orvane-config: configuration refused: " << verdict.code().message() << '\n';
    if (verdict.answer.code) {
        show_fault(diagnosis.faults[0], verdict.advice[0], err);
        show_further(verdict, err);
    } else if (!verdict.accepted()) {
        show_involved(verdict, err);
    }
    if (verdict.accepted() && !verdict.effects_known)
        err << "orvane-config: the line has more than " << most_steps
            << " flags: which have no effect, and where values come from, was not looked for\n";
    for (const Warning& warning : verdict.warnings)
        err << "orvane-config: warning: "
            << (warning.token == 0 ? "" : "token " + std::to_string(warning.token) + ": ") << warning.text
            << " [" << warning.id << "]\n";
}

} // namespace orvane
