// Settings that a file expects.
#include "verbs/expectation.hpp"

#include "formats/content.hpp"
#include "text/escape.hpp"
#include "text/lists.hpp"
#include "verbs/input.hpp"

#include <algorithm>
#include <ostream>
#include <sstream>

namespace orvane {
namespace {

constexpr std::string_view origin_mark = "  # ", not_set = "  # not set";

struct Expected {
    std::string name, value;
    bool is_set = true;
};

/// Of a line; without a name if it is a comment, blank or the first line of an answer.
Expected expected_in(const std::string& line) {
    if (line.empty() || line[0] == '#' || line == "configuration accepted") return {};
    if (line.ends_with(not_set)) return {line.substr(0, line.size() - not_set.size()), "not set", false};
    const auto equals = line.find(" = ");
    if (equals == line.npos) throw Misused("--expect: no setting and value: '" + escape(line) + "'");
    return {line.substr(0, equals), line.substr(equals + 3)};
}

/// Whether what the line says is the value, perhaps followed by the flags that it comes from.
bool says(const std::string& text, const std::string& value) {
    return text == value || text.starts_with(value + std::string(origin_mark));
}

const std::string* value_of(const std::string& name, const std::vector<Setting>& settings) {
    for (const Setting& setting : settings)
        for (const auto& line : setting.lines)
            if (line.first == name) return &line.second;
    return nullptr;
}

/// An element of a list, or a part of one, is not there in every record.
bool may_be_set(const std::string& name, const std::vector<Setting>& settings) {
    const std::string head = name.substr(0, name.find('['));
    return std::ranges::any_of(settings, [&](const Setting& setting) {
        return setting.name == head || head.starts_with(setting.name + ".");
    });
}

} // namespace

bool is_as_expected(const Call& call, const std::vector<Setting>& settings) {
    const std::string file = call.value(own("expect")), name = shown_name(call, file);
    std::istringstream lines(content_of(file, name));
    std::string text;
    std::size_t number = 0, compared = 0, unequal = 0;
    while (std::getline(lines, text)) {
        ++number;
        if (text.ends_with('\r')) text.pop_back();
        const Expected expected = expected_in(text);
        if (expected.name.empty()) continue;
        if (!may_be_set(expected.name, settings))
            throw Misused("--expect: there is no setting '" + escape(expected.name) + "'");
        ++compared;
        const std::string* const value = value_of(expected.name, settings);
        const std::string is = value == nullptr ? "not set" : escape(*value);
        if (expected.is_set ? value != nullptr && says(expected.value, is) : value == nullptr) continue;
        ++unequal;
        call.err << name << ':' << number << ": " << expected.name << " is " << is << "; expected "
                 << expected.value.substr(0, expected.value.rfind(origin_mark)) << '\n';
    }
    if (compared == 0) throw Misused("--expect: " + name + " names no setting");
    return unequal == 0;
}

} // namespace orvane
