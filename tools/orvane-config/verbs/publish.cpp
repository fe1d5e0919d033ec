// The verb `publish`: the runtime files of a server, for as long as it or a stand-in runs.
#include "reference/reference.hpp"
#include "runtime/endpoint.hpp"
#include "runtime/occupant.hpp"
#include "system/child_process.hpp"
#include "system/network.hpp"
#include "text/quoting.hpp"
#include "verbs/given_ids.hpp"
#include "verbs/input.hpp"
#include "verbs/refusal.hpp"
#include "verbs/seconds.hpp"

#include "qel/config/endpoint_files.hpp"
#include "qel/config/exceptions.hpp"
#include "qel/config/pid_files.hpp"
#include "qel/i18n/convert.hpp"
#include "qel/util/native_path.hpp"

#include <boost/asio/ip/tcp.hpp>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <system_error>
#include <utility>
#include <vector>

namespace orvane {
namespace {

using namespace qel::config;

/// The files of one server, published in order and removed in the reverse order.
class Published {
public:
    Published(const ServerSettings& settings, unsigned pid) {
        if (!settings.pid_root()) return;
        using qel::i18n::operator/;
        answer_ = answer_for(*settings.pid_root() / u"main.pid", pid);
        pid_.emplace(settings, pid);
    }

    void announce_endpoints(const ServerSettings& settings) {
        if (!settings.endpoint_root()) return;
        using boost::asio::ip::address_v4;
        if (settings.control_port()) {
            const tcp_endpoint control(address_v4::loopback(),
                                       static_cast<unsigned short>(*settings.control_port()));
            control_.emplace(settings, control);
        }
        if (settings.http()) publish(http_, settings, *settings.http(), HTTPProtocol::http);
        if (settings.https()) publish(https_, settings, settings.https()->http(), HTTPProtocol::https);
    }

private:
    using HttpFile = std::optional<scoped_http_endpoint_file>;

    static void publish(HttpFile& file, const ServerSettings& settings, const HttpSettings& listener,
                        HTTPProtocol protocol) {
        file.emplace(settings, http_endpoint(listener.host(), listener.port()), protocol);
    }

    std::shared_ptr<void> answer_;
    std::optional<scoped_master_pid_file> pid_;
    std::optional<scoped_control_endpoint_file> control_;
    HttpFile http_;
    HttpFile https_;
};

/// Why a listener could not be found by its file; empty when it can.
std::string obstacle(const HttpSettings& listener) {
    if (listener.port() == 0)
        return "a listener on port 0 gets its port only when it starts, so its port is not known here";
    if (listener.host() && listener.host()->empty())
        return "a listener with an empty host name could not be found";
    if (listener.host() && listener.host()->find(u':') != std::u16string::npos) {
        return "a host with a colon cannot be read back from its file: '" +
               qel::i18n::ustring_to_term(*listener.host()) + "'";
    }
    return {};
}

/// Why the files cannot be published whatever the file system says; empty when they can.
std::string obstacle(const ServerSettings& settings) {
    if (inspect_runtime_files(settings).empty())
        return with_flags("nothing to publish: give {pid_root}, or {endpoint_root} and a port");
    if (settings.control_port() && (*settings.control_port() == 0 || *settings.control_port() > 65535)) {
        return "the control port " + std::to_string(*settings.control_port()) + " is not a TCP port";
    }
    if (settings.http()) {
        if (std::string why = obstacle(*settings.http()); !why.empty()) return why;
    }
    return settings.https() ? obstacle(settings.https()->http()) : std::string();
}

/// Owners cannot release their files. Those whose files now belong to another are kept here, never destroyed.
std::vector<std::unique_ptr<Published>>& abandoned() {
    static auto* const all = new std::vector<std::unique_ptr<Published>>;
    return *all;
}

/// Removes the files, unless a server that takes no lock has written them since the command ended, and names those that stay.
void withdraw(std::unique_ptr<Published> published, const ServerSettings& settings, unsigned pid,
              std::ostream& err) {
    const auto is_anothers = [&] {
        const FileReport now = inspect_runtime_files(settings).front();
        return now.pid != 0 && now.pid != pid;
    };
    if (is_anothers()) return abandoned().push_back(std::move(published));
    published.reset();
    if (is_anothers()) return;
    for (const FileReport& file : inspect_runtime_files(settings))
        if (file.state != FileState::not_published)
            err << "orvane-config: cannot remove " << shown(file.path.text())
                << ": does another program have it open?\n";
}

/// Where the command accepts connections when it is ready.
struct Listener {
    std::vector<std::string> addresses;
    unsigned short port;
};

Listener listener_in(const std::string& text) {
    const auto endpoint = endpoint_in(text);
    if (!endpoint)
        throw Misused(spelled(own("ready")) + " takes a host and a port, such as localhost:8080, not '" +
                      text + "'");
    LookUp found = look_up(qel::i18n::utf8_to_ustring(endpoint->host));
    if (found.addresses.empty())
        throw std::runtime_error("cannot look up " + endpoint->host + ": " + found.why);
    return {std::move(found.addresses), endpoint->port};
}

/// Removes what a killed server left: its endpoints would pass for those of the next one as soon as its pid is published,
/// and somebody may hold its pid file.
void remove_leftovers(const ServerSettings& settings) {
    for (const FileReport& file : inspect_runtime_files(settings))
        std::filesystem::remove(qel::util::filesystem::native(file.path));
}

/// What `--ready`, `--kill-after` and the words after the flags say.
struct Plan {
    Tokens command;
    std::optional<Listener> awaited;
    double patience; ///< of a command that has to end, in seconds
};

/// Whether the endpoints are published now. The system's reason for a failure is not in the library's text.
bool try_to_announce(Published& published, const ServerSettings& settings, const Plan& plan) try {
    constexpr std::chrono::milliseconds patience(200);
    if (plan.awaited && !accepts_connections(plan.awaited->addresses, plan.awaited->port, patience).empty())
        return false;
    errno = 0;
    published.announce_endpoints(settings);
    return true;
} catch (const config_io_error& failure) {
    const int error = errno;
    throw std::runtime_error(failure.what() +
                             (error == 0 ? "" : ": " + std::generic_category().message(error)));
}

/// Publishes the files and runs the command, or waits. The locks are ours.
int publish(const ServerSettings& settings, const Plan& plan, const Call& call) {
    std::unique_ptr<Published> published;
    // Until here, signals end this process as they end any other.
    ChildProcess holder(plan.command);
    remove_leftovers(settings);
    published = std::make_unique<Published>(settings, holder.pid());
    bool is_announced = !plan.awaited && try_to_announce(*published, settings, plan);
    int result = static_cast<int>(ExitCode::failed_io);
    try {
        result = holder.run([&] {
            is_announced = is_announced || try_to_announce(*published, settings, plan);
            return is_announced;
        });
        if (!is_announced)
            call.err << "orvane-config: the end came before " << call.value(own("ready"))
                     << " accepted connections: the endpoints were not published\n";
    } catch (const NotStarted&) {
        throw;
    } catch (const std::exception& failure) {
        call.err << "orvane-config: " << failure.what() << "\norvane-config: ending process " << holder.pid()
                 << "; it is killed after " << plan.patience << " s, or at a signal\n";
        call.tell();
        holder.end(std::chrono::milliseconds(static_cast<long long>(plan.patience * 1000)));
    }
    withdraw(std::move(published), settings, holder.pid(), call.err);
    return result;
}

} // namespace

ExitCode verb::publish(const Call& call) {
    Plan plan{{}, {}, seconds_in(call, own("kill-after"), "10")};
    if (call.has(own("ready"))) plan.awaited = listener_in(call.value(own("ready")));
    const Input input = input_of(call);
    const Verdict verdict = judge(input, false, ignored_warnings(call));
    if (const auto end = refusal(call, verdict)) return *end;
    const ServerSettings& settings = verdict.answer.settings;
    RootLocks locks;
    std::string why = obstacle(settings);
    if (why.empty()) why = other_publisher(settings, locks);
    if (why.empty()) why = occupant(settings);
    if (!why.empty()) {
        call.err << "orvane-config: " << why << '\n';
        return ExitCode::negative;
    }
    if (settings.pid_root() && !settings.endpoint_root() && (settings.http() || settings.https()))
        call.err << "orvane-config: "
                 << with_flags("only main.pid is published: endpoints need {endpoint_root}") << '\n';
    call.tell();
    plan.command = input.command.value_or(Tokens());
    try {
        return static_cast<ExitCode>(publish(settings, plan, call));
    } catch (const NotStarted& failure) {
        call.err << "orvane-config: " << failure.what() << '\n';
        return static_cast<ExitCode>(failure.exit_code);
    }
}

} // namespace orvane
