// What an attacker would gain from the settings of an accepted line.
#include "explaining/hazards.hpp"

#include "explaining/hazard_rules.hpp"
#include "preflight/tls/tls_check.hpp"

#include <algorithm>

namespace orvane {
namespace {

using State = HazardLook::State;

constexpr Hazard hazard_rows[] = {
#define ZEP_HAZARD(rule, level, subject, id, summary, gain, instead, example, fix)                           \
    {{id, summary, gain " " instead, example, fix}, Level::level, gain, instead},
#include "explaining/hazards.def"
};

struct HazardRule {
    hazards::Subject* subject;
    LineRule* find;
};

bool needs_openssl(hazards::Subject* subject) {
    return subject == hazards::ciphers || subject == hazards::named_ciphers || subject == hazards::curve;
}

constexpr HazardRule hazard_rules[] = {
#define ZEP_HAZARD(rule, level, subject, ...) {hazards::subject, hazards::rule},
#include "explaining/hazards.def"
};

struct SubjectName {
    hazards::Subject* subject;
    std::string_view words;
    bool of_https = false;
};
constexpr SubjectName names_of_subjects[] = {
    {hazards::ciphers, "HTTPS"},
    {hazards::default_or_named_ciphers, "HTTPS"},
    {hazards::named_ciphers, "a list of ciphers", true},
    {hazards::protocols, "a list of protocols", true},
    {hazards::curve, "a curve", true},
    {hazards::verified_clients, "clients' certificates", true},
    {hazards::own_clients, "an authority of your own for clients", true},
    {hazards::passphrase, "a pass phrase", true},
    {hazards::origins, "origins of other sites"},
    {hazards::plain_listener, "HTTP"},
    {hazards::plain_interfaces, "statistics or discovery over HTTP"},
    {hazards::listeners, "a listener"},
    {hazards::caches, "caches"},
    {hazards::user_data, "user data"},
    {hazards::logs, "logs"},
    {hazards::archived_responses, "archived responses"},
};

static_assert(std::ranges::all_of(hazard_rules,
                                  [](const HazardRule& rule) {
                                      return std::ranges::find(names_of_subjects, rule.subject,
                                                               &SubjectName::subject) !=
                                             std::end(names_of_subjects);
                                  }),
              "a subject has no name here");

/// What there is not, so that a hazard does not count.
std::string_view missing_for(hazards::Subject* subject, bool has_https) {
    const auto name = std::ranges::find(names_of_subjects, subject, &SubjectName::subject);
    return name->of_https && !has_https ? "HTTPS" : name->words;
}

HazardLook look_at(std::size_t row, const AcceptedLine& accepted) {
    const auto& [subject, find] = hazard_rules[row];
    HazardLook look{&hazard_rows[row], State::not_configured};
    if (!subject(accepted.settings)) {
        look.missing = missing_for(subject, accepted.settings.https().has_value());
        return look;
    }
    WarningCollector collector(look.hazard->kind.id, look.warnings);
    find(accepted, collector);
    const bool looked = !needs_openssl(subject) || preflight::can_look_at_tls_contents();
    look.state = !look.warnings.empty() ? State::found : looked ? State::safe : State::not_looked_at;
    return look;
}

} // namespace

std::string_view to_text(Level level) {
    return level == Level::open ? "open" : "weak";
}

std::span<const Hazard> all_hazards() {
    return hazard_rows;
}

const Hazard* hazard_of(std::string_view id) {
    const auto* const found =
        std::ranges::find(hazard_rows, id, [](const Hazard& one) { return one.kind.id; });
    return found == std::end(hazard_rows) ? nullptr : found;
}

std::vector<HazardLook> look_at_hazards(const CommandLine& line, const Answer& answer, const Effects& effects,
                                        const WarningIds& ignored) {
    std::vector<HazardLook> looks;
    for (std::size_t row = 0; row != std::size(hazard_rows); ++row)
        if (!ignored.contains(hazard_rows[row].kind.id))
            looks.push_back(look_at(row, {line, answer.settings, effects}));
    return looks;
}

std::vector<Warning> open_hazards(const CommandLine& line, const Answer& answer, const Effects& effects,
                                  const WarningIds& ignored) {
    std::vector<Warning> warnings;
    for (std::size_t row = 0; row != std::size(hazard_rows); ++row) {
        if (hazard_rows[row].level != Level::open || ignored.contains(hazard_rows[row].kind.id)) continue;
        std::ranges::move(look_at(row, {line, answer.settings, effects}).warnings,
                          std::back_inserter(warnings));
    }
    return warnings;
}

} // namespace orvane
