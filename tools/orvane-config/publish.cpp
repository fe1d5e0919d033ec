// The verb `publish`: the runtime files of a server, for as long as it or a stand-in runs.
#include "host.hpp"
#include "parse_flags.hpp"
#include "runtime_state.hpp"

#include "qel/config/endpoint_files.hpp"
#include "qel/config/exceptions.hpp"
#include "qel/config/parse_settings.hpp"
#include "qel/config/pid_files.hpp"
#include "qel/i18n/convert.hpp"

#include <boost/asio/ip/tcp.hpp>
#include <boost/throw_exception.hpp>

#include <algorithm>
#include <memory>
#include <optional>
#include <ostream>
#include <sstream>

namespace orvane {
namespace {

using namespace qel::config;

/// The position of the "--" that ends the flags, or the end. One that is the value of a flag does not: that
/// is the case when the flags before it do not parse.
Tokens::const_iterator end_of_flags(const Tokens& args) {
    for (auto at = args.begin(); (at = std::find(at, args.end(), u"--")) != args.end(); ++at) {
        ServerSettings settings;
        std::ostringstream text;
        const auto verdict = qel::config::parse_settings(settings, Tokens(args.begin(), at), text);
        if (verdict != error_code::parse_error()) return at;
    }
    return args.end();
}

/// The files of one server, published in order and withdrawn in the reverse order.
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

/// Why the files cannot be published whatever the file system says; empty when they can.
std::string obstacle(const ServerSettings& settings) {
    if (settings.control_port() && (*settings.control_port() == 0 || *settings.control_port() > 65535)) {
        return "the control port " + std::to_string(*settings.control_port()) + " is no TCP port";
    }
    if ((settings.http() && settings.http()->port() == 0) ||
        (settings.https() && settings.https()->http().port() == 0)) {
        return "a listener's port 0 is chosen when it listens, and not known here";
    }
    return {};
}

} // namespace

ExitCode publish(const Tokens& args, std::ostream&, std::ostream& err) {
    const auto flags_end = end_of_flags(args);
    const Tokens command(flags_end == args.end() ? flags_end : flags_end + 1, args.end());
    if (flags_end != args.end() && command.empty()) {
        err << "orvane-config: no command behind '--'\n";
        return ExitCode::misused;
    }
    ServerSettings settings;
    if (parse_and_validate(Tokens(args.begin(), flags_end), settings, err)) return ExitCode::refused;
    if (const std::string why = obstacle(settings); !why.empty()) {
        err << "orvane-config: " << why << '\n';
        return ExitCode::refused;
    }
    try {
        if (!settings.pid_root()) BOOST_THROW_EXCEPTION(bad_config("no pid root"));
        Holder holder(command);
        std::unique_ptr<Published> published;
        {
            const DirectoryLock lock(*settings.pid_root());
            const auto files = inspect_runtime_files(settings);
            if (files.front().state == FileState::alive) {
                err << "orvane-config: process " << files.front().pid << " runs, and owns "
                    << qel::i18n::ustring_to_term(files.front().path.text()) << '\n';
                return ExitCode::refused;
            }
            published = std::make_unique<Published>(settings, holder.pid());
        }
        const int code = holder.run();
        const DirectoryLock lock(*settings.pid_root());
        // Once the command had ended, another publisher may have taken the place: then the files are its own,
        // and stay.
        if (read_master_pid(settings) == holder.pid()) published.reset();
        static_cast<void>(published.release());
        return static_cast<ExitCode>(code);
    } catch (const bad_config& failure) {
        err << "orvane-config: " << failure.what() << '\n';
        return ExitCode::refused;
    } catch (const std::exception& failure) {
        err << "orvane-config: " << failure.what() << '\n';
        return ExitCode::failed_io;
    }
}

} // namespace orvane
