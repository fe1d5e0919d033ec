// What a server does with its configuration, from start to end: parse the flags, validate them, publish files, serve,
// remove the files.
//
// It serves little: an HTTP or HTTPS listener answers every request with one line (without TLS, which is not the
// subject here), and a connection to the control listener stops the server.
#include "server_startup.hpp"

#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read_until.hpp>
#include <boost/asio/redirect_error.hpp>
#include <boost/asio/signal_set.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <boost/asio/write.hpp>

#include <qel/config/config.hpp>
#include <qel/i18n/convert.hpp>
#include <qel/util/bare_host.hpp>
#include <qel/util/canonicalize.hpp>
#include <qel/util/command_line.hpp>

#include <chrono>
#include <csignal>
#include <deque>
#include <iostream>
#include <limits>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>

namespace server_startup {
namespace {

namespace asio = boost::asio;
namespace config = qel::config;
using asio::ip::tcp;

/// Turns the tokens into valid settings. Returns false on failure, with the reason on the standard error stream.
bool configure(config::ServerSettings& settings, const std::deque<std::u16string>& tokens) {
    std::ostringstream reason;
    if (const auto failure = config::parse_settings(settings, tokens, reason)) {
        // The newline at its end may be missing.
        const bool complete = reason.view().empty() || reason.view().ends_with('\n');
        std::cerr << reason.view() << (complete ? "" : "\n");
        // Nothing says that the required flag is missing: there may be no text, or only warnings.
        if (failure == config::error_code::missing_required_flag())
            std::cerr << failure.message() << ": "
                      << qel::i18n::ustring_to_utf8(config::option::auto_deploy_root()) << '\n';
        config::usage(u"server_startup", std::cerr);
        return false;
    }
    // No flag sets this field.
    settings.qel_root(qel::util::filesystem::canonicalize(config::Path(u".")));

    config::ProblemList problems;
    config::FlagSet flags;
    if (config::validate_settings(settings, problems, flags)) {
        config::report_problems(problems, flags, std::cerr);
        return false;
    }
    return true;
}

/// A pid file has one owner: a second server would overwrite the file of a live one, and remove it at its own end.
void refuse_second_server(const config::ServerSettings& settings) {
    unsigned other = 0;
    try {
        other = config::read_master_pid(settings);
    } catch (const config::config_io_error&) {
        return; // no file: no server is running here
    }
    // In a container, every server has the number 1: a file with the own number is from a killed one.
    if (other != own_process_id() && is_running(other)) {
        throw std::runtime_error("process " + std::to_string(other) + " is running and owns main.pid");
    }
}

// --- listeners

/// What `attempt` returns. The exceptions of Asio would name places in Boost's sources; these say what was tried.
template <class Attempt>
auto trying(const std::string& what, Attempt attempt) {
    try {
        return attempt();
    } catch (const boost::system::system_error& failure) {
        throw std::runtime_error(what + ": " + failure.code().message());
    }
}

std::string text_of(const tcp::endpoint& endpoint) {
    std::ostringstream text;
    text << endpoint;
    return text.str();
}

/// A client that disconnects early gets no answer, but it counts as a connection: on the control listener it stops the
/// server.
asio::awaitable<void> answer(tcp::socket connection, std::string body, bool then_stop) {
    std::string request;
    boost::system::error_code failure;
    auto token = asio::redirect_error(asio::use_awaitable, failure);
    co_await asio::async_read_until(connection, asio::dynamic_buffer(request, 8192), "\r\n\r\n", token);
    const std::string reply =
        "HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: " + std::to_string(body.size()) +
        "\r\n\r\n" + body;
    if (!failure) co_await asio::async_write(connection, asio::buffer(reply), token);
    connection.shutdown(tcp::socket::shutdown_both, failure);
    if (then_stop) static_cast<asio::io_context&>(connection.get_executor().context()).stop();
}

/// Accepts connections as soon as it is constructed.
class Listener {
public:
    Listener(asio::io_context& context, const tcp::endpoint& where, const std::string& body, bool then_stop)
        : acceptor_(
              trying("cannot listen on " + text_of(where), [&] { return tcp::acceptor(context, where); })) {
        asio::co_spawn(context, accept(acceptor_, body, then_stop), asio::detached);
    }

    /// With the port that the system chose, if the settings say 0.
    tcp::endpoint endpoint() const { return acceptor_.local_endpoint(); }

private:
    static asio::awaitable<void> accept(tcp::acceptor& acceptor, std::string body, bool then_stop) {
        while (acceptor.is_open()) {
            boost::system::error_code failure;
            tcp::socket connection =
                co_await acceptor.async_accept(asio::redirect_error(asio::use_awaitable, failure));
            if (!failure) {
                asio::co_spawn(acceptor.get_executor(), answer(std::move(connection), body, then_stop),
                               asio::detached);
            } else {
                // The client is already gone, or there are too many clients: go on with the next one.
                asio::steady_timer pause(acceptor.get_executor(), std::chrono::milliseconds(100));
                co_await pause.async_wait(asio::use_awaitable);
            }
        }
    }

    tcp::acceptor acceptor_;
};

/// The address to bind to: that of the given name, or all interfaces.
tcp::endpoint address_of(asio::io_context& context, const config::HttpSettings& http) {
    if (!http.host()) return {tcp::v4(), http.port()};
    tcp::resolver resolver(context);
    const std::string host = qel::i18n::ustring_to_utf8(qel::util::bare_host(*http.host()));
    const auto found = trying("cannot find the host " + qel::i18n::ustring_to_term(*http.host()),
                              [&] { return resolver.resolve(host, std::to_string(unsigned{http.port()})); });
    return *found.begin();
}

/// The control interface is only for this machine.
tcp::endpoint control_address(unsigned port) {
    if (port > std::numeric_limits<unsigned short>::max()) {
        throw std::runtime_error("the control port " + std::to_string(port) + " is not a TCP port");
    }
    return {asio::ip::address_v4::loopback(), static_cast<unsigned short>(port)};
}

// --- publishing

/// An HTTP or HTTPS listener with the file by which it is found.
class WebService {
public:
    WebService(asio::io_context& context, const config::ServerSettings& settings,
               const config::HttpSettings& http, config::HTTPProtocol protocol)
        : listener_(context, address_of(context, http), "running\n", false) {
        if (!settings.endpoint_root()) return;
        // Write the file after opening the listener: readers connect at once.
        const config::http_endpoint published(http.host(), listener_.endpoint().port());
        file_.emplace(settings, published, protocol);
        if (config::read_http_endpoint(settings, protocol).port() != published.port()) {
            throw std::runtime_error("another server uses this endpoint root");
        }
        std::clog << "listening on " << qel::i18n::ustring_to_term(published.host_name()) << ':'
                  << published.port() << '\n';
    }

private:
    // Members are destroyed from the last to the first: the file is removed while the listener still accepts.
    Listener listener_;
    std::optional<config::scoped_http_endpoint_file> file_{};
};

/// The same for the control interface. It always has a file, because validation requires the endpoint root.
class ControlService {
public:
    ControlService(asio::io_context& context, const config::ServerSettings& settings)
        : listener_(context, control_address(*settings.control_port()), "stopping\n", true),
          file_(settings, listener_.endpoint()) {
        if (config::read_control_endpoint(settings) != listener_.endpoint()) {
            throw std::runtime_error("another server uses this endpoint root");
        }
        std::clog << "controlled on " << listener_.endpoint() << '\n';
    }

private:
    Listener listener_;
    config::scoped_control_endpoint_file file_;
};

/// Publishes what the settings name, serves until it is told to stop, and removes everything. The order of the
/// declarations gives both orders: the pid file is published first and removed last.
void serve(const config::ServerSettings& settings) {
    // Handle signals before any file exists: a signal that ends the process leaves the files.
    asio::io_context context;
    asio::signal_set signals(context);
    if (settings.disable_control_c()) std::signal(SIGINT, SIG_IGN);
    for (const int number : ending_signals())
        signals.add(number);
    signals.async_wait([&](const auto&, int) { context.stop(); });

    std::optional<config::scoped_master_pid_file> pid_file;
    if (settings.pid_root()) {
        refuse_second_server(settings);
        pid_file.emplace(settings, own_process_id());
        // Read the file as others do: a second server may have written it between the check and the writing.
        if (config::read_master_pid(settings) != own_process_id()) {
            throw std::runtime_error("another server has started here at the same time");
        }
        std::clog << "process " << own_process_id() << '\n';
    }

    std::optional<WebService> http;
    std::optional<WebService> https;
    std::optional<ControlService> control;
    if (settings.http()) http.emplace(context, settings, *settings.http(), config::HTTPProtocol::http);
    if (settings.https()) {
        https.emplace(context, settings, settings.https()->http(), config::HTTPProtocol::https);
    }
    if (settings.control_port()) control.emplace(context, settings);

    context.run();
}

/// Runs the server to its end; `tokens` are its flags without the program's name. Returns the exit code: 0, or 1 if
/// it could not start, with the reason on the standard error stream.
int run(const std::deque<std::u16string>& tokens) {
    config::ServerSettings settings;
    if (!configure(settings, tokens)) return 1;
    try {
        serve(settings);
    } catch (const std::exception& failure) {
        std::cerr << "server_startup: " << failure.what() << '\n';
        return 1;
    }
    std::clog << "stopped\n";
    return 0;
}

} // namespace
} // namespace server_startup

// This works on Windows too: there the tokens come from the system's UTF-16 command line, not from argv.
int main(int argc, char** argv) {
    return server_startup::run(qel::util::command_line_tokens(argc, argv));
}
