// The verb `publish`: the runtime files of a server, for as long as it or a stand-in runs.
#include "runtime/runtime_state.hpp"
#include "system/child_process.hpp"
#include "system/directory_lock.hpp"
#include "verbs/accepted.hpp"
#include "verbs/input.hpp"

#include "qel/config/endpoint_files.hpp"
#include "qel/config/pid_files.hpp"
#include "qel/i18n/convert.hpp"

#include <boost/asio/ip/tcp.hpp>

#include <chrono>
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
    Published(const ServerSettings& settings, unsigned pid) : pid_(settings, pid) {
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
    if (!settings.pid_root()) return "there is no pid root to publish in";
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
    for (const FileReport& file : files)
        if (file.state == FileState::malformed) return name_of(file) + " is in the way: " + file.text;
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

} // namespace

ExitCode publish(const Call& call) {
    const Input input = input_of(call);
    const auto settings = accepted(input, call.err);
    if (!settings) return ExitCode::refused;
    std::string why = obstacle(*settings);
    if (why.empty()) {
        DirectoryLock lock(*settings->pid_root());
        why = other_publisher(*settings, lock);
        if (why.empty()) why = occupant(*settings);
        if (why.empty()) {
            // Until here, signals end this process as they end any other.
            ChildProcess holder(input.command.value_or(Tokens()));
            lock.answer_for(holder.pid());
            auto published = std::make_unique<Published>(*settings, holder.pid());
            call.tell();
            const int result = holder.run();
            withdraw(std::move(published), *settings, holder.pid());
            return static_cast<ExitCode>(result);
        }
    }
    call.err << "orvane-config: " << why << '\n';
    return ExitCode::refused;
}

} // namespace orvane
