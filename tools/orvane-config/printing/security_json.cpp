// Warnings, and what an attacker would gain, for programs.
#include "printing/json_parts.hpp"
#include "printing/security_text.hpp"
#include "reference/reference.hpp"

namespace orvane {

namespace json = boost::json;

json::array warnings_json(const std::vector<Warning>& warnings, const SourcePlaces& places) {
    json::array all;
    for (const Warning& warning : warnings) {
        json::object object{{"id", warning.id}, {"text", json_text(warning.text)}};
        if (warning.token != 0) object["token"] = warning.token;
        if (!warning.meant.empty())
            object["fix"] = {{"tokens", {warning.token}}, {"replacement", {json_text(warning.meant)}}};
        add_places(object, places, {warning.token});
        all.push_back(std::move(object));
    }
    return all;
}

json::object security_json(const std::vector<HazardLook>& looks, const SourcePlaces& places) {
    constexpr std::string_view states[] = {"found", "safe", "not configured", "not looked at"};
    json::array all;
    for (const auto& [hazard, state, warnings, missing] : looks)
        all.push_back({{"id", hazard->kind.id},
                       {"level", to_text(hazard->level)},
                       {"state", states[static_cast<std::size_t>(state)]},
                       {"gain", with_flags(hazard->gain)},
                       {"instead", with_flags(hazard->instead)},
                       {"found", warnings_json(warnings, places)}});
    return {{"list", hazards_version}, {"level", worst_of(looks)}, {"hazards", std::move(all)}};
}

} // namespace orvane
