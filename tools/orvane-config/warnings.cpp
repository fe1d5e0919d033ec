// What is accepted and yet probably not meant.
#include "warnings.hpp"

#include "quoting.hpp"
#include "spelling.hpp"

#include "qel/config/option.hpp"
#include "qel/i18n/convert.hpp"

#include <algorithm>

namespace orvane {
namespace {

namespace option = qel::config::option;

std::string without_effect(const Redundant& redundant) {
    const std::string step = shown(redundant.step);
    if (redundant.needs_https) return step + " has no effect without " + shown(option::https());
    if (!redundant.replaced_by) return step + " has no effect: what follows replaces it";
    const Step& other = *redundant.replaced_by;
    const std::string where = shown(other) + " (" + numbers_of(other) + ")";
    if (other[0].text == redundant.step[0].text && other.back().text == redundant.step.back().text)
        return step + " is repeated by " + where;
    if (other[0].text != redundant.step[0].text)
        return step + " is lost: " + where + " begins anew; give it behind that";
    return step + " has no effect: " + where + " replaces it";
}

/// The lines that the step alone adds to a record.
std::vector<std::pair<std::string, std::string>> lines_of(const Step& step) {
    // No listener's flag can stand for the required one: the record is looked at before its completion.
    std::vector<std::pair<std::string, std::string>> lines;
    for (const Setting& setting : settings_of(ask(Line{step}).settings))
        lines.insert(lines.end(), setting.lines.begin(), setting.lines.end());
    return lines;
}

bool is_number(const std::string& text) {
    return !text.empty() && text.find_first_not_of("0123456789") == text.npos;
}

std::string form_of(const Step& step) {
    return reference_of(qel::i18n::ustring_to_utf8(step[0].text))->value;
}

/// A minus sign that came out as a large number.
std::string wrapped(const Step& step) {
    const std::u16string& value = step[1].text;
    const std::string form = form_of(step);
    const bool port = form.ends_with("<port>");
    const auto number = port ? value.find_last_of(u":@") + 1 : 0;
    if (!(port || form == "<number>") || value[number] != u'-' ||
        !is_number(qel::i18n::ustring_to_utf8(value.substr(number + 1))))
        return {};
    Step measured = step;
    if (step[0].text == option::https())
        measured[0].text = option::http(); // read the same way, and seen at once
    for (const auto& [name, text] : lines_of(measured))
        if (is_number(text) && text != "0" && (!port || name.ends_with("port")))
            return shown(step) + " is negative, and taken for " + text;
    return {};
}

std::string port_too_large(const Step& step) {
    if (step[0].text != option::control_port()) return {};
    for (const auto& [name, text] : lines_of(step))
        if (is_number(text) && std::stoull(text) > 65535 && step[1].text[0] != u'-')
            return shown(step) + " is above 65535, the largest port";
    return {};
}

/// A duration that another flag takes as it stands.
std::string clamped(const Step& step) {
    if (step[0].text != option::statistics_log_interval()) return {};
    const auto as_taken = lines_of(step);
    const auto as_given = lines_of(step_of(option::queue_time_trigger(), step[1].text));
    if (as_taken.empty() || as_given.empty() || as_taken[0].second == as_given[0].second) return {};
    return shown(step) + " is taken for " + as_taken[0].second;
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
std::string hours(const Step& step) {
    if (form_of(step) != "<duration>") return {};
    if (step[1].text == u"0" || has_the_form_of_a_duration(qel::i18n::ustring_to_utf8(step[1].text)))
        return {};
    const auto as_taken = lines_of(step_of(option::queue_time_trigger(), step[1].text));
    if (as_taken.empty()) return {};
    return shown(step) + " is taken for " + as_taken[0].second + ": hours come first";
}

std::string odd_path(const Step& step) {
    if (form_of(step) != "<directory>" && form_of(step) != "<file>") return {};
    const std::u16string& path = step[1].text;
    if (path.empty()) return shown(step) + " names nothing: was a variable not set?";
    const auto at_an_end = [&path](std::u16string_view set) {
        return set.find(path.front()) != set.npos || set.find(path.back()) != set.npos;
    };
    if (at_an_end(blanks)) return shown(step) + " has a blank at its beginning or end";
    if (at_an_end(quotes)) return shown(step) + " has a quote at its beginning or end";
    if (path.front() == u'~') return shown(step) + ": nobody has put a home directory in the place of ~";
    if (path.front() == u'$' || path.find(u"${") != path.npos || path.find(u"$(") != path.npos)
        return shown(step) + ": nobody has put a value in the place of the variable";
    return {};
}

std::string neither_on_nor_off(const Step& step) {
    if (step[0].text != option::profile()) return {};
    const std::u16string word = step[1].text.substr(0, step[1].text.find(u' '));
    if (word == u"on" || word == u"off") return {};
    return shown(step) + " switches off: it does not begin with on";
}

std::string a_flag_for_a_value(const Step& step) {
    if (shape_of(step[1].text) == Shape::no_flag && !resembles_a_flag(step[1].text)) return {};
    return shown(step[0].text) + " has taken the flag " + shown(step[1].text) + " for its value";
}

} // namespace

std::vector<Warning> warnings_of(const Line& line, const Effects& effects) {
    std::vector<Warning> warnings;
    for (const Redundant& redundant : effects.redundant)
        warnings.push_back({redundant.step[0].number, without_effect(redundant)});
    const auto gives = [](const std::u16string& flag) {
        return [flag](const Step& step) { return step[0].text == flag; };
    };
    const auto linger = std::find_if(line.begin(), line.end(), gives(option::http_linger_threshold()));
    if (linger != line.end() && std::none_of(line.begin(), line.end(), gives(option::http())))
        warnings.push_back({(*linger)[0].number,
                            shown(*linger) + " gives a listener on port 0 without " + shown(option::http())});
    for (const Step& step : line) {
        if (step.size() != 2) continue;
        for (const auto rule :
             {wrapped, port_too_large, clamped, hours, odd_path, neither_on_nor_off, a_flag_for_a_value})
            if (std::string text = rule(step); !text.empty())
                warnings.push_back({step[1].number, std::move(text)});
    }
    std::stable_sort(warnings.begin(), warnings.end(),
                     [](const Warning& a, const Warning& b) { return a.token < b.token; });
    return warnings;
}

} // namespace orvane
