// The rules, in their order, and the texts of their problems.
#include "qel/config/validate_settings.hpp"

#include "overflow_actions.hpp"
#include "parsing/flag_texts.hpp"

#include "qel/util/canonicalize.hpp"

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <string_view>
#include <unordered_set>

namespace qel::config {
namespace {

using Texts = std::initializer_list<std::u16string_view>;

/// The state of one call.
struct Validation {
    const ServerSettings& settings;
    ProblemList& problems;
    FlagSet& flags;
    /// Shared by all rules, because they look at the same directories.
    util::filesystem::Canonicalizer canonical{};

    /// `parts` are joined to the text of the problem.
    void add(Texts involved, Texts parts) {
        std::u16string problem;
        for (const auto part : parts)
            problem += part;
        flags.insert(involved.begin(), involved.end());
        problems.push_back(std::move(problem));
    }
};

// --- rules with a common form

/// `dir` must be neither `root` nor anywhere below it.
void check_not_nested(Validation& v, const Path& dir, std::u16string_view dir_flag, const Path& root,
                      std::u16string_view root_flag) {
    if (!v.canonical.is_same_or_below(dir, root)) return;
    v.add({dir_flag, root_flag},
          {dir_flag, u" can not be the same as, nor a direct or indirect child of, ", root_flag});
}

/// The first setting needs the second.
void require_pair(Validation& v, std::u16string_view a_flag, bool a_given, std::u16string_view b_flag,
                  bool b_given) {
    if (!a_given || b_given) return;
    v.add({a_flag, b_flag}, {a_flag, u" requires ", b_flag, u" to be set."});
}

// --- the rules

void auto_deploy_outside_extract(Validation& v) {
    check_not_nested(v, v.settings.auto_deploy_root(), flag::auto_deploy_root, v.settings.extract_root(),
                     flag::extract_root);
}

// Deliberately, no other directory has such a rule.
void log_outside_extract(Validation& v) {
    if (!v.settings.log_root()) return;
    check_not_nested(v, *v.settings.log_root(), flag::log_root, v.settings.extract_root(),
                     flag::extract_root);
}

void workers_or_wait(Validation& v) {
    if (!v.settings.wait_mode() || !v.settings.num_workers()) return;
    v.add({flag::num_workers, flag::wait}, {u"Incompatible options specified: ", flag::num_workers, u" and ",
                                            flag::wait, u"; please choose one or the other."});
}

void control_needs_endpoint_root(Validation& v) {
    if (!v.settings.control_port() || v.settings.endpoint_root()) return;
    v.add({flag::control_port, flag::endpoint_root},
          {u"Use of control interface (enabled by specifying ", flag::control_port, u") requires ",
           flag::endpoint_root, u" to be specified"});
}

// Roots are compared as typed: two spellings of one directory are not duplicates. A root given three times is
// two problems.
void distinct_runtime_roots(Validation& v) {
    std::unordered_set<std::u16string_view> seen;
    std::vector<std::reference_wrapper<const Path>> duplicates;
    for (const Path& root : v.settings.lumo_root())
        if (!seen.insert(root.text()).second) duplicates.push_back(root);

    // By elements, then by text.
    std::sort(duplicates.begin(), duplicates.end(), [](const Path& a, const Path& b) {
        if (a < b) return true;
        if (b < a) return false;
        return a.text() < b.text();
    });
    for (const Path& root : duplicates)
        v.add({flag::lumo_root}, {u"Duplicate options specified: ", flag::lumo_root, u" ", root.text()});
}

// With port 0 the system chooses the port, and a host on only one side makes the addresses different.
void distinct_listeners(Validation& v) {
    if (!v.settings.http() || !v.settings.https()) return;
    const HttpSettings& http = *v.settings.http();
    const HttpSettings& https = v.settings.https()->http();
    if (http.port() != https.port() || http.port() == 0 || http.host() != https.host()) return;
    v.add({flag::http, flag::https},
          {flag::http, u" and ", flag::https, u" cannot bind to the same address"});
}

void validate_https(Validation& v) {
    if (!v.settings.https()) return;
    const SslContext& tls = v.settings.https()->ssl_context();
    const bool verifies = tls.verify_peer_mode() == SslVerifyPeerMode::verify_peer_require_peer_cert;

    // The flags named are the two ways to supply a store, not the mode.
    if (verifies && !tls.ca_file() && !tls.use_system_store()) {
        v.add({flag::https_ca_file, flag::https_use_system_store},
              {flag::https_verify_peer_mode, u" requires trusted certificate store"});
    }
    if (!tls.private_key_file() && tls.cert_chain_file()) {
        v.add({flag::https_private_key_file},
              {flag::https_cert_chain_file, u" requires the private key, which should be specified by ",
               flag::https_private_key_file});
    }
    if (!tls.allowed_clients().empty() && !verifies) {
        v.add({flag::https_verify_peer_mode}, {flag::https_allowed_client, u" requires verify SSL client"});
    }
    if (tls.ca_file() && tls.use_system_store()) {
        v.add({flag::https_ca_file, flag::https_use_system_store},
              {flag::https_use_system_store, u" and ", flag::https_ca_file, u" are mutually exclusive"});
    }
}

void restart_interval_needs_limit(Validation& v) {
    require_pair(v, flag::worker_restart_memory_limit_interval,
                 v.settings.worker_restart_memory_limit_interval().has_value(),
                 flag::worker_restart_memory_limit, v.settings.worker_restart_memory_limit().has_value());
}

void pool_targets_need_triggers(Validation& v) {
    if (!v.settings.worker_pool_settings()) return;
    if (const auto& memory = v.settings.worker_pool_settings()->memory_limit()) {
        require_pair(v, flag::worker_memory_target, memory->target().has_value(), flag::worker_memory_trigger,
                     memory->trigger().has_value());
    }
    if (const auto& time = v.settings.worker_pool_settings()->queue_time()) {
        require_pair(v, flag::queue_time_target, time->target().has_value(), flag::queue_time_trigger,
                     time->trigger().has_value());
    }
}

void threshold_needs_action(Validation& v) {
    require_pair(v, flag::server_memory_threshold, v.settings.server_memory_threshold().has_value(),
                 flag::server_memory_threshold_overflow_action,
                 v.settings.server_memory_threshold_overflow_action().has_value());
}

void archiving_needs_archive_root(Validation& v) {
    const auto& action = v.settings.server_memory_threshold_overflow_action();
    require_pair(v, flag::server_memory_threshold_overflow_action,
                 action && *action == overflow_action::archive_responses, flag::response_archive_root,
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
