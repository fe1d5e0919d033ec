// What is known of flags and findings, for other programs.
#include "explaining/hazards.hpp"
#include "explaining/kinds.hpp"
#include "printing/json.hpp"
#include "printing/json_parts.hpp"
#include "probing/settings_of_flag.hpp"
#include "reference/reference.hpp"

#include <boost/json.hpp>

namespace orvane {
namespace {

namespace json = boost::json;

json::array synonyms(const Reference& one) {
    json::array array;
    for (const Synonym& synonym : synonyms_of(one)) {
        json::object object{{"name", json::string(synonym.name)}};
        if (synonym.kind != Form::none) object["value"] = json::string(row_of(synonym.kind).written);
        if (!synonym.value.empty()) object["means"] = synonym.value;
        array.push_back(std::move(object));
    }
    return array;
}

json::object entry(const Reference& one) {
    constexpr const char* repetitions[] = {"nothing", "replaces", "adds"};
    json::object object{{"flag", json::string(one.flag)},
                        {"subject", json::string(one.subject)},
                        {"kind", json::string(row_of(one.form).kind)},
                        {"meaning", one.meaning()},
                        {"repetition", repetitions[static_cast<std::size_t>(one.repeats)]},
                        {"repeated", one.repeated()},
                        {"relations", one.relations()},
                        {"required", one.trait == Trait::required},
                        {"needs", json::array()},
                        {"settings", json::value_from(settings_of_flag(one))},
                        {"synonyms", synonyms(one)},
                        {"example", json::value_from(one.example_words())},
                        {"platforms", json::array{"linux", "windows"}}};
    if (!one.is_switch()) object["value"] = json::string(one.value);
    if (const auto words = keywords(one); !words.empty()) object["choices"] = json::value_from(words);
    if (const std::string text = one.by_default(); !text.empty()) object["default"] = text;
    if (one.trait == Trait::needs_https)
        object["needs"].as_array().emplace_back(json::string(flag_with(Trait::starts_https).flag));
    return object;
}

json::object entry(const Explanation& kind) {
    json::object object{{"id", kind.id}, {"about", kind.about}, {"summary", kind.summary}};
    if (!kind.cause.empty())
        object.insert({{"cause", kind.cause}, {"example", kind.example}, {"fix", kind.fix}});
    if (const Hazard* const hazard = hazard_of(kind.id))
        object.insert({{"level", to_text(hazard->level)},
                       {"gain", with_flags(hazard->gain)},
                       {"instead", with_flags(hazard->instead)}});
    return object;
}

} // namespace

std::string explain_json(const std::vector<const Reference*>& flags, const std::vector<Explanation>& kinds) {
    json::object object{{"format", json_format}};
    json::array entries, explanations;
    for (const Reference* const one : flags)
        entries.push_back(entry(*one));
    for (const Explanation& one : kinds)
        explanations.push_back(entry(one));
    if (!flags.empty()) object["flags"] = std::move(entries);
    if (!kinds.empty()) object["kinds"] = std::move(explanations);
    return answer_of(object);
}

} // namespace orvane
