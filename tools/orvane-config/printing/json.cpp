// Answers for programs.
#include "printing/json.hpp"

#include "explaining/kinds.hpp"
#include "printing/json_parts.hpp"
#include "probing/record_fields.hpp"
#include "text/invisible.hpp"

#include "qel/i18n/convert.hpp"

#include <boost/date_time/posix_time/time_formatters.hpp>
#include <boost/json/src.hpp> // the library itself, for the whole tool

#include <concepts>
#include <ranges>

namespace orvane {
namespace {

namespace json = boost::json;
using namespace qel::config;
using qel::i18n::ustring_to_utf8;

// --- records

json::value to_json(bool value) {
    return value;
}
json::value to_json(std::unsigned_integral auto value) {
    return static_cast<std::uint64_t>(value);
}
json::value to_json(const std::string& value) {
    // Not all bytes on a command line are text.
    return json::string(ustring_to_utf8(qel::i18n::utf8_to_ustring(value)));
}
json::value to_json(const std::u16string& value) {
    return json::string(ustring_to_utf8(value));
}
json::value to_json(const Path& value) {
    return to_json(value.text());
}
json::value to_json(const time_duration& value) {
    json::object object;
    if (!value.is_special()) object["microseconds"] = value.total_microseconds();
    object["text"] = boost::posix_time::to_simple_string(value);
    return object;
}
template <class T>
requires std::is_enum_v<T> json::value to_json(T value) {
    return json::string(to_text(value));
}
json::value to_json(const std::pair<std::u16string, std::u16string>& entry) {
    return {{"key", to_json(entry.first)}, {"value", to_json(entry.second)}};
}

template <class T>
json::value json_of(const T& value);

template <class Elements>
json::value array_of(const Elements& values) {
    json::array array;
    for (const auto& value : values)
        array.push_back(json_of(value));
    return array;
}

/// A field has a type without JSON if this does not compile: add a to_json above; a record has to be in each_record.inl.
template <class T>
json::value json_of(const T& value) {
    if constexpr (Record<T>) {
        json::object object;
        for_each_field(value, [&](const char* name, const auto& field) { object[name] = json_of(field); });
        return object;
    } else if constexpr (requires { to_json(value); }) {
        return to_json(value);
    } else if constexpr (std::same_as<T, AccessMap::value_type>) {
        return {{"name", to_json(value.first)}, {"archives", array_of(value.second)}};
    } else if constexpr (std::ranges::range<T>) {
        return array_of(value);
    } else {
        return value ? json_of(*value) : json::value();
    }
}

// --- verdicts

json::object to_json(const boost::system::error_code& code) {
    return {{"value", code.value()}, {"message", code.message()}};
}

/// Adds tokens; a placeholder appears as the example from the reference.
template <class Words>
void add_tokens(json::object& object, const char* name, const Words& words) {
    json::array array;
    bool has_placeholder = false;
    for (const Token& token : words) {
        has_placeholder = has_placeholder || !token.sample.empty();
        array.push_back(to_json(token.sample.empty() || token.asks_for_a_part() ? token.text : token.sample));
    }
    object[name] = std::move(array);
    if (has_placeholder) object["placeholder"] = true;
}

json::value to_json(const Fix& fix) {
    json::object object{{"tokens", json::array(fix.tokens.begin(), fix.tokens.end())}};
    add_tokens(object, "replacement", fix.replacement);
    return object;
}

void add_occurrence(json::object& object, const Occurrence& occurrence, const SourcePlaces& places) {
    json::array numbers = numbers_of_tokens(occurrence);
    add_places(object, places, numbers);
    object["tokens"] = std::move(numbers);
    object["flag"] = to_json(occurrence[0].text);
    if (occurrence.size() == 2) object["value"] = to_json(occurrence[1].text);
}

json::value to_json(const Fault& fault, const SourcePlaces& places, const Advice& advice) {
    json::object object{{"id", id_of(fault)}, {"code", to_json(fault.code)}, {"text", to_json(fault.text)}};
    if (!fault.occurrence.empty()) add_occurrence(object, fault.occurrence, places);
    object["advice"] = array_of(advice.sentences);
    object["suggestions"] = array_of(advice.suggestions);
    if (fault.fix) object["fix"] = to_json(*fault.fix);
    return object;
}

} // namespace

json::value json_text(const std::string& text) {
    return to_json(text);
}
json::value json_text(const std::u16string& text) {
    return to_json(text);
}

std::string answer_of(const json::object& object) {
    return with_json_codes(json::serialize(object));
}

json::array numbers_of_tokens(const Occurrence& occurrence) {
    std::set<std::size_t> numbers; // flag and value may have been one token
    for (const Token& word : occurrence)
        numbers.insert(word.number);
    return json::array(numbers.begin(), numbers.end());
}

void add_places(json::object& object, const SourcePlaces& places, const json::array& tokens) {
    json::array array;
    for (const json::value& token : tokens) {
        const SourcePlace* const place = place_of(places, token.to_number<std::size_t>());
        if (place == nullptr) continue;
        json::object entry{{"token", token}, {"file", to_json(place->file)}};
        if (place->spot.line != 0) {
            entry["line"] = place->spot.line;
            entry["column"] = place->spot.column;
        }
        array.push_back(std::move(entry));
    }
    if (!array.empty()) object["places"] = std::move(array);
}

json::value json_of(const qel::config::ServerSettings& settings) {
    return json_of<ServerSettings>(settings);
}

json::object head_of(const Verdict& verdict) {
    return {{"format", json_format},
            {"accepted", verdict.accepted()},
            {"code", to_json(verdict.code())},
            {"text", to_json(verdict.answer.text)},
            {"effects_known", verdict.accepted()},
            {"warnings", warnings_json(verdict.warnings, verdict.places)}};
}

namespace {

json::object origins_of(const Verdict& verdict) {
    json::object origins;
    for (const Setting& setting : settings_of(verdict.answer.settings)) {
        if (setting.lines.empty()) continue;
        json::array tokens;
        for (const Token& word : tokens_in(verdict.effects.origins_of(setting)))
            tokens.push_back(word.number);
        origins[setting.name] = {{"tokens", std::move(tokens)},
                                 {"completed", verdict.effects.completed.contains(setting.name)}};
    }
    return origins;
}

json::array line_of(const Verdict& verdict) {
    json::array line;
    for (const Occurrence& occurrence : verdict.line)
        add_occurrence(line.emplace_back(json::object()).as_object(), occurrence, verdict.places);
    return line;
}

json::object verdict_json(const Verdict& verdict) {
    json::object object = head_of(verdict);
    json::array faults;
    for (std::size_t i = 0; i != verdict.advice.size(); ++i)
        faults.push_back(to_json(verdict.diagnosis.faults[i], verdict.places, verdict.advice[i]));
    object["faults"] = std::move(faults);
    object["problems"] = array_of(verdict.diagnosis.problems);
    json::array ids;
    for (const std::u16string& problem : verdict.diagnosis.problems)
        ids.emplace_back(id_of(problem));
    object["problem_ids"] = std::move(ids);
    object["involved"] = array_of(verdict.diagnosis.involved);
    if (verdict.accepted()) object["settings"] = orvane::json_of(verdict.answer.settings);
    return object;
}

} // namespace

std::string check_json(const Verdict& verdict, bool with_origins, const std::vector<HazardLook>& looks) {
    json::object object = verdict_json(verdict);
    if (with_origins) object["line"] = line_of(verdict);
    if (with_origins && verdict.accepted()) object["origins"] = origins_of(verdict);
    if (!looks.empty()) object["security"] = security_json(looks, verdict.places);
    return answer_of(object);
}

std::string checks_json(const std::vector<CheckedFile>& files) {
    json::array array;
    bool accepted = true;
    for (const CheckedFile& file : files) {
        json::object entry{{"file", to_json(file.name)}};
        if (file.answer.empty()) {
            entry["error"] = to_json(file.details);
            accepted = false;
        } else {
            const json::value answer = json::parse(file.answer);
            accepted = accepted && answer.at("accepted").as_bool();
            entry["answer"] = answer;
        }
        array.push_back(std::move(entry));
    }
    return answer_of({{"format", json_format}, {"accepted", accepted}, {"files", std::move(array)}});
}

std::string fix_json(const Verdict& verdict, const std::vector<Token>& corrected) {
    json::object object = verdict_json(verdict);
    const bool refused = bool(verdict.answer.code);
    add_tokens(object, "corrected", corrected);
    object["complete"] =
        refused ? verdict.diagnosis.complete && verdict.diagnosis.problems.empty() : verdict.accepted();
    return answer_of(object);
}

} // namespace orvane
