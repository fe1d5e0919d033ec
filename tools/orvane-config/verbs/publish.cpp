// The verb `publish`: the runtime files of a server, for as long as it or a stand-in runs.
#include "reference/reference.hpp"
#include "runtime/runtime_state.hpp"
#include "system/child_process.hpp"
#include "system/directory_lock.hpp"
#include "system/network.hpp"
#include "verbs/accepted.hpp"
#include "verbs/input.hpp"

#include "qel/config/endpoint_files.hpp"
#include "qel/config/pid_files.hpp"
#include "qel/i18n/convert.hpp"
#include "qel/util/native_path.hpp"

#include <boost/asio/ip/tcp.hpp>

#include <charconv>
#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <thread>
#include <utility>
#include <vector>

namespace orvane {
namespace {

using namespace qel::config;

/// The files of one server, published in order and removed in the reverse order.
class Published {
public:
    Published(const ServerSettings& settings, unsigned pid) : pid_(settings, pid) {}

    void announce_endpoints(const ServerSettings& settings) {
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

    scoped_master_pid_file pid_;
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
    if (!settings.pid_root()) return with_flags("give {pid_root}: main.pid is written there");
    if (settings.control_port() && (*settings.control_port() == 0 || *settings.control_port() > 65535)) {
        return "the control port " + std::to_string(*settings.control_port()) + " is not a TCP port";
    }
    if (settings.http()) {
        if (std::string why = obstacle(*settings.http()); !why.empty()) return why;
    }
    return settings.https() ? obstacle(settings.https()->http()) : std::string();
}

constexpr std::chrono::milliseconds pause(20);

std::string name_of(const FileReport& file) {
    return qel::i18n::ustring_to_term(file.path.text());
}

/// Why the lock is another publisher's; empty when it is ours now. One that is about to leave is waited for.
std::string other_publisher(const ServerSettings& settings, DirectoryLock& lock) {
    for (int pauses = 0; !lock.try_to_lock(); ++pauses) {
        const FileReport pid = inspect_runtime_files(settings).front();
        const bool has_waited = pauses == 100;
        if (pid.state == FileState::alive && (has_waited || !pid.elsewhere))
            return owner_of(pid) + " is running and owns " + name_of(pid);
        if (has_waited) return "another publisher is running and owns " + name_of(pid);
        std::this_thread::sleep_for(pause);
    }
    return {};
}

/// Why another server's files are in the way; empty when none are. The files of a killed server are not.
std::string occupant(const ServerSettings& settings) {
    std::vector<FileReport> files = inspect_runtime_files(settings);
    // An empty file: its writer has opened it and not written yet, or was killed just then.
    for (int pauses = 0; worst_of(files) == FileState::starting && pauses != 50; ++pauses) {
        std::this_thread::sleep_for(pause);
        files = inspect_runtime_files(settings);
    }
    const FileReport& pid = files.front();
    if (pid.state == FileState::alive) return owner_of(pid) + " is running and owns " + name_of(pid);
    for (const FileReport& file : files) {
        if (file.state == FileState::malformed)
            return name_of(file) + " is in the way: " + file.text + "; move or remove it";
        if (file.state == FileState::unreadable) return name_of(file) + " cannot be read: " + file.text;
    }
    return {};
}

/// Owners cannot release their files. Those whose files now belong to another are kept here, never destroyed.
std::vector<std::unique_ptr<Published>>& abandoned() {
    static auto* const all = new std::vector<std::unique_ptr<Published>>;
    return *all;
}

/// Removes the files, unless a server that takes no lock has written them since the command ended.
void withdraw(std::unique_ptr<Published> published, const ServerSettings& settings, unsigned pid) {
    const FileReport now = inspect_runtime_files(settings).front();
    if (now.pid != 0 && now.pid != pid) abandoned().push_back(std::move(published));
}

/// Where the command accepts connections when it is ready.
struct Listener {
    std::vector<std::string> addresses;
    unsigned short port;
};

Listener listener_in(const std::string& text) {
    const std::size_t colon = std::min(text.rfind(':'), text.size());
    std::string host = text.substr(0, colon);
    if (host.starts_with('[') && host.ends_with(']')) host = host.substr(1, host.size() - 2);
    unsigned short port = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data() + std::min(colon + 1, text.size()), end, port);
    if (host.empty() || error != std::errc() || rest != end || port == 0)
        throw Misused(spelled(own("ready")) + " takes a host and a port, such as localhost:8080, not '" +
                      text + "'");
    LookUp found = look_up(qel::i18n::utf8_to_ustring(host));
    if (found.addresses.empty()) throw std::runtime_error("cannot look up " + host + ": " + found.why);
    return {std::move(found.addresses), port};
}

/// Endpoints of a killed server would pass for those of the next one as soon as its pid is published.
void remove_endpoints(const ServerSettings& settings) {
    for (const FileReport& file : inspect_runtime_files(settings))
        if (file.name != "main.pid") std::filesystem::remove(qel::util::filesystem::native(file.path));
}

/// Publishes the files and runs the command, or waits. The lock is ours.
int publish(const ServerSettings& settings, const Tokens& command, const std::optional<Listener>& awaited,
            DirectoryLock& lock) {
    // Until here, signals end this process as they end any other.
    ChildProcess holder(command);
    lock.answer_for(holder.pid());
    if (awaited) remove_endpoints(settings);
    auto published = std::make_unique<Published>(settings, holder.pid());
    if (!awaited) published->announce_endpoints(settings);
    const int result = holder.run([&] {
        if (!awaited) return true;
        constexpr std::chrono::milliseconds patience(200);
        if (!accepts_connections(awaited->addresses, awaited->port, patience).empty()) return false;
        published->announce_endpoints(settings);
        return true;
    });
    withdraw(std::move(published), settings, holder.pid());
    return result;
}

} // namespace

ExitCode verb::publish(const Call& call) {
    std::optional<Listener> awaited;
    if (call.has(own("ready"))) awaited = listener_in(call.value(own("ready")));
    const Input input = input_of(call);
    const auto settings = accepted(input, call.err);
    if (!settings) return ExitCode::negative;
    std::string why = obstacle(*settings);
    if (why.empty()) {
        DirectoryLock lock(*settings->pid_root());
        why = other_publisher(*settings, lock);
        if (why.empty()) why = occupant(*settings);
        if (why.empty()) {
            call.tell();
            try {
                return static_cast<ExitCode>(
                    publish(*settings, input.command.value_or(Tokens()), awaited, lock));
            } catch (const NotStarted& failure) {
                call.err << "orvane-config: " << failure.what() << '\n';
                return static_cast<ExitCode>(failure.exit_code);
            }
        }
    }
    call.err << "orvane-config: " << why << '\n';
    return ExitCode::negative;
}

} // namespace orvane
