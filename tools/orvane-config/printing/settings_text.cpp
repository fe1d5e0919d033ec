// Settings and where they come from, for people.
#include "printing/settings_text.hpp"

#include "probing/occurrence_text.hpp"
#include "probing/settings_of_flag.hpp"
#include "text/escape.hpp"
#include "text/lists.hpp"

#include "qel/i18n/convert.hpp"

#include <ostream>

namespace orvane {
namespace {

/// The flag that would set what the library completed.
std::string default_of(const Setting& setting) {
    for (const Reference& one : references()) {
        const auto names = settings_of_flag(one);
        if (contains(names, setting.name)) return "default of " + std::string(one.flag);
    }
    return "completed by the library";
}

std::string origin_of(const Setting& setting, const Verdict& verdict) {
    const Effects& effects = verdict.effects;
    std::string text = joined(effects.origins_of(setting), ", ", [&](const Occurrence& one) {
        return qel::i18n::ustring_to_utf8(one[0].text) + " (" + numbers_of(one) +
               at_place(verdict.places, one[0].number) + ")";
    });
    if (!effects.completed.contains(setting.name)) return text;
    return text.empty() ? default_of(setting) : text + ", completed by the library";
}

} // namespace

void print(const std::pair<std::string, std::string>& line, std::ostream& out) {
    out << line.first << " = " << escape(line.second);
}

void print_with_origin(std::string_view mark, const Setting& setting, const Verdict& verdict,
                       std::ostream& out) {
    if (setting.lines.empty()) out << mark << setting.name << "  # not set\n";
    for (const auto& line : setting.lines) {
        out << mark;
        print(line, out);
        out << (&line == &setting.lines.back() ? "  # " + origin_of(setting, verdict) : "") << '\n';
    }
}

} // namespace orvane
