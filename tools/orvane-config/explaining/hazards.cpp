// What an attacker would gain from the settings of an accepted line.
#include "explaining/hazards.hpp"

#include "explaining/hazard_rules.hpp"
#include "preflight/tls/tls_check.hpp"
#include "reference/flag_texts.hpp"

#include <algorithm>

namespace orvane {
namespace {

using State = HazardLook::State;
using qel::config::ServerSettings;
using qel::util::ssl::SslVerifyPeerMode;

constexpr Hazard hazard_rows[] = {
#define ZEP_HAZARD(rule, level, subject, id, summary, gain, instead, example, fix)                           \
    {{id, summary, gain " " instead, example, fix}, Level::level, gain, instead},
#include "explaining/hazards.def"
};

/// The settings that a hazard is about.
struct Subject {
    bool (*configured)(const ServerSettings& settings);
    std::string_view words;     ///< what is missing where they are not configured
    bool of_https = false;      ///< without HTTPS, it is HTTPS that is missing
    bool needs_openssl = false; ///< only OpenSSL knows that there is no hazard
};

bool has_https(const ServerSettings& settings) {
    return settings.https().has_value();
}
bool has_named_ciphers(const ServerSettings& settings) {
    return has_https(settings) && settings.https()->ssl_context().cipher_list().value_or("ALL") != "ALL";
}
bool has_protocols(const ServerSettings& settings) {
    return has_https(settings) && settings.https()->ssl_context().protocol_list();
}
bool has_curve(const ServerSettings& settings) {
    return has_https(settings) && settings.https()->ssl_context().tmp_ec_param();
}
bool verifies_clients(const ServerSettings& settings) {
    return has_https(settings) && settings.https()->ssl_context().verify_peer_mode() ==
                                      SslVerifyPeerMode::verify_peer_require_peer_cert;
}
bool has_own_clients(const ServerSettings& settings) {
    return verifies_clients(settings) && !settings.https()->ssl_context().use_system_store();
}
bool has_passphrase(const ServerSettings& settings) {
    return has_https(settings) && settings.https()->ssl_context().key_passphrase_file();
}
bool has_origins(const ServerSettings& settings) {
    return !settings.cors_allowed_origins().empty();
}
bool has_http(const ServerSettings& settings) {
    return settings.http().has_value();
}
bool has_plain_interfaces(const ServerSettings& settings) {
    return has_http(settings) && !settings.enabled_apis().empty();
}
bool has_listener(const ServerSettings& settings) {
    return has_http(settings) || has_https(settings);
}
bool has_caches(const ServerSettings& settings) {
    return settings.cache_list().has_value();
}
bool has_user_data(const ServerSettings& settings) {
    return !settings.user_data().empty();
}
bool has_logs(const ServerSettings& settings) {
    return settings.log_root().has_value();
}
bool has_archive(const ServerSettings& settings) {
    return settings.response_archive_root().has_value();
}

namespace subjects {
constexpr Subject ciphers{has_https, "HTTPS", true, true};
constexpr Subject default_or_named_ciphers{has_https, "HTTPS", true};
constexpr Subject named_ciphers{has_named_ciphers, "a list of ciphers", true, true};
constexpr Subject protocols{has_protocols, "a list of protocols", true};
constexpr Subject curve{has_curve, "a curve", true, true};
constexpr Subject verified_clients{verifies_clients, "clients' certificates", true};
constexpr Subject own_clients{has_own_clients, "an authority of your own for clients", true};
constexpr Subject passphrase{has_passphrase, "a pass phrase", true};
constexpr Subject origins{has_origins, "origins of other sites"};
constexpr Subject plain_listener{has_http, "HTTP"};
constexpr Subject plain_interfaces{has_plain_interfaces, "statistics or discovery over HTTP"};
constexpr Subject listeners{has_listener, "a listener"};
constexpr Subject caches{has_caches, "caches"};
constexpr Subject user_data{has_user_data, "user data"};
constexpr Subject logs{has_logs, "logs"};
constexpr Subject archived_responses{has_archive, "archived responses"};
} // namespace subjects

struct HazardRule {
    const Subject* subject;
    LineRule* find;
};

constexpr HazardRule hazard_rules[] = {
#define ZEP_HAZARD(rule, level, subject, ...) {&subjects::subject, hazards::rule},
#include "explaining/hazards.def"
};

HazardLook look_at(std::size_t row, const AcceptedLine& accepted) {
    const auto& [subject, find] = hazard_rules[row];
    HazardLook look{&hazard_rows[row], State::not_configured};
    if (!subject->configured(accepted.settings)) {
        look.missing = subject->of_https && !accepted.settings.https() ? "HTTPS" : subject->words;
        return look;
    }
    WarningCollector collector(look.hazard->kind.id, look.warnings);
    find(accepted, collector);
    const bool looked = !subject->needs_openssl || preflight::can_look_at(flag::https);
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
