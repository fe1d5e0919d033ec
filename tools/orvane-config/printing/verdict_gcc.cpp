// A verdict for editors and other programs that read what compilers print.
#include "explaining/kinds.hpp"
#include "printing/verdict_text.hpp"
#include "text/escape.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <ostream>

namespace orvane {
namespace {

std::string start(const SourcePlaces& places, std::size_t number, std::string_view level) {
    const SourcePlace* const place = place_of(places, number);
    const std::string where = place != nullptr ? escape(place->text())
                              : number == 0    ? "command line"
                                               : "argument " + std::to_string(number);
    return where + ": " + std::string(level) + ": ";
}

/// The first flag that a problem names.
std::size_t number_named_in(const std::u16string& problem, const CommandLine& line) {
    const auto is_named = [&](const Occurrence& occurrence) {
        return (problem + u" ").find(occurrence[0].text + u" ") != problem.npos;
    };
    const auto named = std::ranges::find_if(line, is_named);
    if (named != line.end()) return (*named)[0].number;
    return line.empty() ? 0 : line.front()[0].number;
}

std::string one_line(std::string text) {
    while (!text.empty() && text.back() == '\n')
        text.pop_back();
    return escape(text);
}

} // namespace

void print_as_compilers_do(const Verdict& verdict, std::ostream& out) {
    const Diagnosis& diagnosis = verdict.diagnosis;
    for (std::size_t i = 0; i != diagnosis.faults.size(); ++i) {
        const Fault& fault = diagnosis.faults[i];
        out << start(verdict.places, fault.occurrence.empty() ? 0 : fault.occurrence[0].number, "error")
            << one_line(fault.text.empty() ? fault.code.message() : fault.text);
        for (const std::string& sentence : verdict.advice[i].sentences)
            out << "; " << one_line(sentence);
        out << " [" << id_of(fault) << "]\n";
    }
    for (const std::u16string& problem : diagnosis.problems)
        out << start(verdict.places, number_named_in(problem, verdict.line), "error")
            << one_line(qel::i18n::ustring_to_utf8(problem)) << " [" << id_of(problem) << "]\n";
    for (const Warning& warning : verdict.warnings)
        out << start(verdict.places, warning.token, "warning") << one_line(warning.text) << " [" << warning.id
            << "]\n";
}

} // namespace orvane
