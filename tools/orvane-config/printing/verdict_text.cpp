// A verdict for people.
#include "printing/verdict_text.hpp"

#include "explaining/kinds.hpp"
#include "probing/occurrence_text.hpp"
#include "system/terminal.hpp"
#include "text/escape.hpp"

#include "qel/config/report.hpp"
#include "qel/i18n/convert.hpp"

#include <boost/algorithm/string/replace.hpp>

#include <algorithm>
#include <cstdlib>
#include <ostream>

namespace orvane {
namespace {

/// Nobody reads more at once.
constexpr std::size_t most_faults = 20;

bool is_set_to(const char* variable, bool (*wanted)(std::string_view)) {
    const char* const value = std::getenv(variable);
    return value != nullptr && wanted(value);
}

/// Whether diagnostics are coloured: on a terminal that can, unless the user has asked for no colour.
bool errors_in_colour() {
    return is_terminal(Stream::err) &&
           !is_set_to("NO_COLOR", [](std::string_view value) { return !value.empty(); }) &&
           !is_set_to("TERM", [](std::string_view value) { return value == "dumb"; });
}

/// The occurrence and its neighbours; on a terminal a second line marks the occurrence.
void show_place(const Fault& fault, const SourcePlaces& places, std::ostream& err) {
    const bool terminal = is_terminal(Stream::err);
    const bool colour = errors_in_colour();

    std::string before = "  " + numbers_of(fault.occurrence) + at_place(places, fault.occurrence[0].number) +
                         ": " + (fault.more_before ? "... " : "");
    if (!fault.before.empty()) before += shown(fault.before) + " ";
    const std::string refused = shown(fault.occurrence);
    err << before << (colour ? mark_begin : "") << refused << (colour ? mark_end : "");
    if (!fault.after.empty()) err << " " << shown(fault.after);
    err << (fault.more_after ? " ...\n" : "\n");

    if (!terminal) return;
    const auto columns = [](const std::string& text) { return qel::i18n::utf8_to_ustring(text).size(); };
    err << std::string(columns(before), ' ') << '^' << std::string(columns(refused) - 1, '~') << '\n';
}

void show_fault(const Fault& fault, const SourcePlaces& places, const Advice& advice, std::ostream& err) {
    if (!fault.occurrence.empty()) show_place(fault, places, err);
    for (const std::string& sentence : advice.sentences)
        err << "    " << sentence << '\n';
}

/// The library's text with its last line ended; most of its texts do not end theirs.
std::string ended(const std::string& text) {
    return text.empty() || text.back() == '\n' ? text : text + '\n';
}

/// The library's text, unchanged unless it goes to a terminal: there a line end inside a token does not end the line.
std::string library_text(const Verdict& verdict) {
    std::string text = ended(verdict.answer.text);
    if (!is_terminal(Stream::err)) return text;
    for (const Occurrence& occurrence : verdict.line)
        for (const Token& token : occurrence)
            if (token.text.find(u'\n') != token.text.npos)
                boost::replace_all(text, qel::i18n::ustring_to_utf8(token.text),
                                   escape(qel::i18n::ustring_to_utf8(token.text)));
    return text;
}

/// Where the flags are that the problems are about.
void show_involved(const Verdict& verdict, std::ostream& err) {
    const auto is_named = [&](const Occurrence& occurrence) {
        const auto& problems = verdict.diagnosis.problems;
        return std::any_of(problems.begin(), problems.end(), [&](const std::u16string& problem) {
            return (problem + u" ").find(occurrence[0].text + u" ") != problem.npos;
        });
    };
    for (const Occurrence& occurrence : verdict.line)
        if (verdict.diagnosis.involved.contains(occurrence[0].text) || is_named(occurrence))
            err << "  " << numbers_of(occurrence) << at_place(verdict.places, occurrence[0].number) << ": "
                << shown(occurrence) << '\n';
}

/// The library's text on lines that end, with the id where it was asked for.
std::string with_id(std::string text, std::string_view id, Ids ids) {
    text = ended(text);
    if (ids == Ids::everywhere) text.insert(text.size() - 1, " [" + std::string(id) + "]");
    return text;
}

std::string text_of(const Fault& fault, Ids ids) {
    return with_id(fault.text.empty() ? fault.code.message() : fault.text, id_of(fault), ids);
}

/// The ids of the first fault or of the problems: what the library says about them stays as it is.
std::string ids_of(const Verdict& verdict, Ids ids) {
    std::string text;
    if (ids == Ids::of_warnings) return text;
    const Diagnosis& diagnosis = verdict.diagnosis;
    if (!diagnosis.faults.empty()) return " [" + std::string(id_of(diagnosis.faults[0])) + "]";
    for (const std::u16string& problem : diagnosis.problems)
        text += " [" + std::string(id_of(problem)) + "]";
    return text;
}

/// The faults from the first to show on, each with the library's text, except that of the first, which is there already.
void show_faults(const Verdict& verdict, Ids ids, std::ostream& err) {
    const Diagnosis& diagnosis = verdict.diagnosis;
    const std::size_t shown = std::min(diagnosis.faults.size(), most_faults);
    for (std::size_t i = 0; i != shown; ++i) {
        const Fault& fault = diagnosis.faults[i];
        if (i != 0) err << "after fixing that: " << text_of(fault, ids);
        show_fault(fault, verdict.places, verdict.advice[i], err);
    }
    if (const std::size_t more = diagnosis.faults.size() - shown; more != 0)
        err << "and " << more << " more\n";
    for (const std::u16string& problem : diagnosis.problems)
        err << "after fixing that: "
            << with_id(escape(qel::i18n::ustring_to_utf8(problem)), id_of(problem), ids);
}

} // namespace

void print_verdict(const Verdict& verdict, std::ostream& err, Ids ids) {
    err << library_text(verdict);
    const Diagnosis& diagnosis = verdict.diagnosis;
    if (!verdict.answer.code && !diagnosis.problems.empty())
        qel::config::report_problems(diagnosis.problems, diagnosis.involved, err);
    if (!verdict.accepted())
        err << "orvane-config: configuration refused: " << verdict.code().message() << ids_of(verdict, ids)
            << '\n';
    if (verdict.answer.code)
        show_faults(verdict, ids, err);
    else if (!verdict.accepted())
        show_involved(verdict, err);
    print_warnings(verdict, err);
}

void print_warnings(const Verdict& verdict, std::ostream& err) {
    print_warnings(verdict.warnings, verdict.places, "warning", err);
}

void print_warnings(const std::vector<Warning>& warnings, const SourcePlaces& places, const char* what,
                    std::ostream& err) {
    for (const Warning& warning : warnings)
        err << "orvane-config: " << what << ": " << at_token(warning.token, places) << warning.text << " ["
            << warning.id << "]\n";
}

void print_fixes(const Verdict& verdict, std::ostream& err, Ids ids) {
    err << text_of(verdict.diagnosis.faults[0], ids);
    show_faults(verdict, ids, err);
}

} // namespace orvane
