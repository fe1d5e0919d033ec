// What is accepted and yet probably not meant.
#include "explaining/warnings.hpp"

#include "explaining/spelling.hpp"
#include "printing/quoting.hpp"

#include "qel/config/option.hpp"
#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace orvane {
namespace {

namespace option = qel::config::option;

std::string without_effect(const Redundant& redundant) {
    const std::string occurrence = shown(redundant.occurrence);
    if (redundant.needs_https) return occurrence + " has no effect without " + shown(option::https());
    if (!redundant.replaced_by) return occurrence + " has no effect: what follows replaces it";
    const Occurrence& other = *redundant.replaced_by;
    const std::string where = shown(other) + " (" + numbers_of(other) + ")";
    if (other[0].text == redundant.occurrence[0].text &&
        other.back().text == redundant.occurrence.back().text)
        return occurrence + " is repeated by " + where;
    if (other[0].text != redundant.occurrence[0].text)
        return occurrence + " is lost: " + where + " begins anew; give it behind that";
    return occurrence + " has no effect: " + where + " replaces it";
}

/// The lines that the occurrence alone adds to a record.
std::vector<std::pair<std::string, std::string>> lines_of(const Occurrence& occurrence) {
    // No listener's flag can stand for the required one: the record is looked at before its completion.
    std::vector<std::pair<std::string, std::string>> lines;
    for (const Setting& setting : settings_of(ask(CommandLine{occurrence}).settings))
        lines.insert(lines.end(), setting.lines.begin(), setting.lines.end());
    return lines;
}

bool is_number(const std::string& text) {
    return !text.empty() && text.find_first_not_of("0123456789") == text.npos;
}

std::string_view form_of(const Occurrence& occurrence) {
    return reference_of(occurrence[0].text)->value;
}

/// A minus sign that came out as a large number.
std::string wrapped(const Occurrence& occurrence) {
    const std::u16string& value = occurrence[1].text;
    const std::string_view form = form_of(occurrence);
    const bool port = form.ends_with("<port>");
    const auto number = port ? value.find_last_of(u":@") + 1 : 0;
    if (!(port || form == "<number>") || value[number] != u'-' ||
        !is_number(qel::i18n::ustring_to_utf8(value.substr(number + 1))))
        return {};
    Occurrence measured = occurrence;
    if (occurrence[0].text == option::https())
        measured[0].text = option::http(); // read the same way, and seen at once
    for (const auto& [name, text] : lines_of(measured))
        if (is_number(text) && text != "0" && (!port || name.ends_with("port")))
            return shown(occurrence) + " is negative, and taken for " + text;
    return {};
}

std::string port_too_large(const Occurrence& occurrence) {
    if (occurrence[0].text != option::control_port()) return {};
    for (const auto& [name, text] : lines_of(occurrence))
        if (is_number(text) && std::stoull(text) > 65535 && occurrence[1].text[0] != u'-')
            return shown(occurrence) + " is above 65535, the largest port";
    return {};
}

/// A duration that another flag takes as it stands.
std::string clamped(const Occurrence& occurrence) {
    if (occurrence[0].text != option::statistics_log_interval()) return {};
    const auto as_taken = lines_of(occurrence);
    const auto as_given = lines_of(occurrence_of(option::queue_time_trigger(), occurrence[1].text));
    if (as_taken.empty() || as_given.empty() || as_taken[0].second == as_given[0].second) return {};
    return shown(occurrence) + " is taken for " + as_taken[0].second;
}

/// H...H:MM[:SS[.f...f]]
bool has_the_form_of_a_duration(std::string text) {
    for (char& c : text)
        if (is_number({c})) c = '0';
    const std::string rest = text.substr(std::min(text.find_first_not_of('0'), text.size()));
    if (rest.starts_with(":00:00.0")) return rest.find_first_not_of('0', 7) == rest.npos;
    return rest.size() != text.size() && (rest == ":00" || rest == ":00:00");
}

/// Whoever means seconds gets hours, "30s" included.
std::string hours(const Occurrence& occurrence) {
    if (form_of(occurrence) != "<duration>") return {};
    if (occurrence[1].text == u"0" ||
        has_the_form_of_a_duration(qel::i18n::ustring_to_utf8(occurrence[1].text)))
        return {};
    const auto as_taken = lines_of(occurrence_of(option::queue_time_trigger(), occurrence[1].text));
    if (as_taken.empty()) return {};
    return shown(occurrence) + " is taken for " + as_taken[0].second + ": hours come first";
}

std::string odd_path(const Occurrence& occurrence) {
    if (form_of(occurrence) != "<directory>" && form_of(occurrence) != "<file>") return {};
    const std::u16string& path = occurrence[1].text;
    if (path.empty()) return shown(occurrence) + " names nothing: was a variable not set?";
    const auto at_an_end = [&path](std::u16string_view set) {
        return set.find(path.front()) != set.npos || set.find(path.back()) != set.npos;
    };
    if (at_an_end(blanks)) return shown(occurrence) + " has a blank at its beginning or end";
    if (at_an_end(quotes)) return shown(occurrence) + " has a quote at its beginning or end";
    if (path.front() == u'~')
        return shown(occurrence) + ": nobody has put a home directory in the place of ~";
    if (path.front() == u'$' || path.find(u"${") != path.npos || path.find(u"$(") != path.npos)
        return shown(occurrence) + ": nobody has put a value in the place of the variable";
    return {};
}

std::string neither_on_nor_off(const Occurrence& occurrence) {
    if (occurrence[0].text != option::profile()) return {};
    const std::u16string word = occurrence[1].text.substr(0, occurrence[1].text.find(u' '));
    if (word == u"on" || word == u"off") return {};
    return shown(occurrence) + " switches off: it does not begin with on";
}

std::string a_flag_for_a_value(const Occurrence& occurrence) {
    if (kind_of(occurrence[1].text) == FlagKind::no_flag && !resembles_a_flag(occurrence[1].text)) return {};
    return shown(occurrence[0].text) + " has taken the flag " + shown(occurrence[1].text) + " for its value";
}

} // namespace

std::vector<Warning> warnings_of(const CommandLine& line, const Effects& effects) {
    std::vector<Warning> warnings;
    for (const Redundant& redundant : effects.redundant)
        warnings.push_back({redundant.occurrence[0].number, without_effect(redundant)});
    const auto gives = [](const std::u16string& flag) {
        return [flag](const Occurrence& occurrence) { return occurrence[0].text == flag; };
    };
    const auto linger = std::find_if(line.begin(), line.end(), gives(option::http_linger_threshold()));
    if (linger != line.end() && std::none_of(line.begin(), line.end(), gives(option::http())))
        warnings.push_back({(*linger)[0].number,
                            shown(*linger) + " gives a listener on port 0 without " + shown(option::http())});
    for (const Occurrence& occurrence : line) {
        if (occurrence.size() != 2) continue;
        for (const auto rule :
             {wrapped, port_too_large, clamped, hours, odd_path, neither_on_nor_off, a_flag_for_a_value})
            if (std::string text = rule(occurrence); !text.empty())
                warnings.push_back({occurrence[1].number, std::move(text)});
    }
    std::stable_sort(warnings.begin(), warnings.end(),
                     [](const Warning& a, const Warning& b) { return a.token < b.token; });
    return warnings;
}

} // namespace orvane
