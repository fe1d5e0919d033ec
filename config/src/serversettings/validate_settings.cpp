// The rules, in their order, and the texts of their problems.
#include "qel/config/validate_settings.hpp"

#include "qel/config/option.hpp"
#include "qel/i18n/convert.hpp"
#include "qel/util/canonicalize.hpp"

#include <algorithm>
#include <functional>
#include <initializer_list>

namespace qel::config {
namespace {

using i18n::ascii_to_ustring;

/// What one call works on.
struct Validation {
    const ServerSettings& settings;
    ProblemList& problems;
    FlagSet& flags;
    /// One for all rules: they walk the same directories again and again.
    util::filesystem::Canonicalizer canonical{};

    void add(std::initializer_list<std::u16string> involved, std::u16string problem) {
        flags.insert(involved);
        problems.push_back(std::move(problem));
    }
};

// --- rules of one shape

/// `dir` must not be `root` itself, nor lie anywhere below it.
void check_not_nested(Validation& v, const Path& dir, const std::u16string& dir_flag, const Path& root,
                      const std::u16string& root_flag) {
    if (!v.canonical.is_same_or_below(dir, root)) return;
    v.add({dir_flag, root_flag},
          dir_flag + ascii_to_ustring(" can not be the same as, nor a direct or indirect child of, ") +
              root_flag);
}

/// The first setting needs the second.
void require_pair(Validation& v, const std::u16string& a_flag, bool a_given, const std::u16string& b_flag,
                  bool b_given) {
    if (!a_given || b_given) return;
    v.add({a_flag, b_flag},
          a_flag + ascii_to_ustring(" requires ") + b_flag + ascii_to_ustring(" to be set."));
}

// --- the rules

void auto_deploy_outside_extract(Validation& v) {
    check_not_nested(v, v.settings.auto_deploy_root(), option::auto_deploy_root(), v.settings.extract_root(),
                     option::extract_root());
}

// No other directory has such a rule.
void log_outside_extract(Validation& v) {
    if (!v.settings.log_root()) return;
    check_not_nested(v, *v.settings.log_root(), option::log_root(), v.settings.extract_root(),
                     option::extract_root());
}

void workers_or_wait(Validation& v) {
    if (!v.settings.wait_mode() || !v.settings.num_workers()) return;
    v.add({option::num_workers(), option::wait()}, ascii_to_ustring("Incompatible options specified: ") +
                                                       option::num_workers() + ascii_to_ustring(" and ") +
                                                       option::wait() +
                                                       ascii_to_ustring("; please choose one or the other."));
}

void control_needs_endpoint_root(Validation& v) {
    if (!v.settings.control_port() || v.settings.endpoint_root()) return;
    v.add({option::control_port(), option::endpoint_root()},
          ascii_to_ustring("Use of control interface (enabled by specifying ") + option::control_port() +
              ascii_to_ustring(") requires ") + option::endpoint_root() +
              ascii_to_ustring(" to be specified"));
}

// Roots are compared as they stand: two spellings of one directory are no duplicates. A root given three
// times is two problems.
void distinct_runtime_roots(Validation& v) {
    std::vector<std::reference_wrapper<const Path>> roots(v.settings.lumo_root().begin(),
                                                          v.settings.lumo_root().end());
    // By elements, then by text: otherwise a//b could come between two a/b.
    std::sort(roots.begin(), roots.end(), [](const Path& a, const Path& b) {
        if (a < b) return true;
        if (b < a) return false;
        return a.text() < b.text();
    });
    for (auto at = roots.begin();
         (at = std::adjacent_find(at, roots.end(), std::equal_to<Path>())) != roots.end(); ++at) {
        v.add({option::lumo_root()}, ascii_to_ustring("Duplicate options specified: ") + option::lumo_root() +
                                         ascii_to_ustring(" ") + at->get().text());
    }
}

// Port 0 is a port of the system's choice, and a host on one side only is another address.
void distinct_listeners(Validation& v) {
    if (!v.settings.http() || !v.settings.https()) return;
    const HttpSettings& http = *v.settings.http();
    const HttpSettings& https = v.settings.https()->http();
    if (http.port() != https.port() || http.port() == 0 || http.host() != https.host()) return;
    v.add({option::http(), option::https()}, option::http() + ascii_to_ustring(" and ") + option::https() +
                                                 ascii_to_ustring(" cannot bind to the same address"));
}

void validate_https(Validation& v) {
    if (!v.settings.https()) return;
    const SslContext& tls = v.settings.https()->ssl_context();
    const bool verifies = tls.verify_peer_mode() == SslVerifyPeerMode::verify_peer_require_peer_cert;

    // The flags named are the two ways to supply a store, not the mode.
    if (verifies && !tls.ca_file() && !tls.use_system_store()) {
        v.add({option::https_ca_file(), option::https_use_system_store()},
              option::https_verify_peer_mode() + ascii_to_ustring(" requires trusted certificate store"));
    }
    if (!tls.private_key_file() && tls.cert_chain_file()) {
        v.add({option::https_private_key_file()},
              option::https_cert_chain_file() +
                  ascii_to_ustring(" requires the private key, which should be specified by ") +
                  option::https_private_key_file());
    }
    if (!tls.allowed_clients().empty() && !verifies) {
        v.add({option::https_verify_peer_mode()},
              option::https_allowed_client() + ascii_to_ustring(" requires verify SSL client"));
    }
    if (tls.ca_file() && tls.use_system_store()) {
        v.add({option::https_ca_file(), option::https_use_system_store()},
              option::https_use_system_store() + ascii_to_ustring(" and ") + option::https_ca_file() +
                  ascii_to_ustring(" are mutually exclusive"));
    }
}

void restart_interval_needs_limit(Validation& v) {
    require_pair(v, option::worker_restart_memory_limit_interval(),
                 v.settings.worker_restart_memory_limit_interval().has_value(),
                 option::worker_restart_memory_limit(), v.settings.worker_restart_memory_limit().has_value());
}

void pool_targets_need_triggers(Validation& v) {
    if (!v.settings.worker_pool_settings()) return;
    if (const auto& memory = v.settings.worker_pool_settings()->memory_limit()) {
        require_pair(v, option::worker_memory_target(), memory->target().has_value(),
                     option::worker_memory_trigger(), memory->trigger().has_value());
    }
    if (const auto& time = v.settings.worker_pool_settings()->queue_time()) {
        require_pair(v, option::queue_time_target(), time->target().has_value(), option::queue_time_trigger(),
                     time->trigger().has_value());
    }
}

void threshold_needs_action(Validation& v) {
    require_pair(v, option::server_memory_threshold(), v.settings.server_memory_threshold().has_value(),
                 option::server_memory_threshold_overflow_action(),
                 v.settings.server_memory_threshold_overflow_action().has_value());
}

void archiving_needs_archive_root(Validation& v) {
    const auto& action = v.settings.server_memory_threshold_overflow_action();
    require_pair(v, option::server_memory_threshold_overflow_action(),
                 action && *action == u"archive_responses", option::response_archive_root(),
                 v.settings.response_archive_root().has_value());
}

/// In the order in which their problems are listed.
constexpr void (*rules[])(Validation&) = {
    auto_deploy_outside_extract,
    log_outside_extract,
    workers_or_wait,
    control_needs_endpoint_root,
    distinct_runtime_roots,
    distinct_listeners,
    validate_https,
    restart_interval_needs_limit,
    pool_targets_need_triggers,
    threshold_needs_action,
    archiving_needs_archive_root,
};

} // namespace

boost::system::error_code validate_settings(const ServerSettings& settings, ProblemList& problems,
                                            FlagSet& flags) {
    problems.clear();
    flags.clear();
    Validation validation{settings, problems, flags};
    for (const auto rule : rules)
        rule(validation);
    return problems.empty() ? error_code::success() : error_code::incompatible_flags();
}

} // namespace qel::config
