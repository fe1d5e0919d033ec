// What differs between two lines, for programs.
#include "printing/json.hpp"
#include "printing/json_parts.hpp"
#include "text/lists.hpp"

namespace orvane {
namespace {

namespace json = boost::json;

/// The value of a setting that is named as by `check --all`; null when it is not set.
json::value value_of(const json::value& settings, const Setting& setting) {
    if (setting.lines.empty()) return nullptr;
    const json::value* at = &settings;
    for (const std::string_view name : split(setting.name, "."))
        at = &at->as_object().at({name.data(), name.size()});
    return *at;
}

/// One side of a difference.
json::object side_json(const Setting& setting, const Verdict& verdict, const json::value& settings) {
    json::array tokens;
    for (const Occurrence& occurrence : verdict.effects.origins_of(setting))
        for (const json::value& number : numbers_of_tokens(occurrence))
            tokens.push_back(number);
    json::object side{{"value", value_of(settings, setting)},
                      {"completed", verdict.effects.completed.contains(setting.name)}};
    add_places(side, verdict.places, tokens);
    side["tokens"] = std::move(tokens);
    return side;
}

} // namespace

std::string diff_json(const Verdict& before, const Verdict& after, const std::vector<Difference>& found,
                      bool same_tokens) {
    const json::value old_settings = json_of(before.answer.settings),
                      new_settings = json_of(after.answer.settings);
    json::array entries;
    for (const Difference& one : found)
        entries.push_back({{"setting", one.before.name},
                           {"before", side_json(one.before, before, old_settings)},
                           {"after", side_json(one.after, after, new_settings)}});
    return answer_of({{"format", json_format},
                      {"equal", found.empty()},
                      {"same_tokens", same_tokens},
                      {"differences", std::move(entries)}});
}

} // namespace orvane
