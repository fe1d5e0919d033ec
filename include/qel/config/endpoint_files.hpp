// The files through which a running server's endpoints are found.
//
// In `endpoint_root`, each without a line end:
//
// | file    | content                                | for example          |
// |---------|----------------------------------------|----------------------|
// | control | ADDRESS:PORT, an IPv6 one in brackets  | 127.0.0.1:9920       |
// | http    | HOST:PORT, the host name as UTF-8      | www.example.org:9910 |
// | https   | the same                               | www.example.org:9943 |
//
// Order: the pid file first (pid_files.hpp), these once the listeners accept; at the end the reverse. A file
// has one writer. Readers may run at any time, and may meet an empty file while it is being written.
//
// Permissions are the umask's affair, links are followed, and a forked child that leaves main removes its parent's files:
// docs/runtime-files.md says what a server does about these, and what may be called from several threads.
#pragma once

#include "qel/config/export.hpp"
#include "qel/config/http_endpoint.hpp"
#include "qel/config/http_protocol.hpp"
#include "qel/config/server_settings.hpp"
#include "qel/util/scoped_file.hpp"

// Declared, not included: Asio's header wants to come before <windows.h>, which is not ours to decide.
namespace boost::asio::ip {
class tcp;
template <typename InternetProtocol>
class basic_endpoint;
} // namespace boost::asio::ip

namespace qel::config {

/// boost::asio::ip::tcp::endpoint; who makes or uses one includes <boost/asio/ip/tcp.hpp>.
using tcp_endpoint = boost::asio::ip::basic_endpoint<boost::asio::ip::tcp>;

/// Announces the control endpoint while it lives: writes the file "control" on construction, replacing one
/// that is there, and removes it on destruction. A moved-from object removes nothing.
///
/// The endpoint root is used as given, both times. After the process has changed its current directory a
/// relative one names another place: a file of that name there is removed, if there is one, and the one
/// written stays.
class ZEP_CONFIG_API scoped_control_endpoint_file {
public:
    /// Throws bad_config when the settings have no endpoint root, config_io_error when the file cannot be
    /// opened or written, std::bad_alloc. Nothing is removed then: a file that was opened but not written
    /// stays behind.
    scoped_control_endpoint_file(const ServerSettings& settings, const tcp_endpoint& endpoint);
    scoped_control_endpoint_file(const scoped_control_endpoint_file&) = delete;
    ///@{
    /// Moves throw nothing; the moved-from object removes nothing. An assignment removes the file owned so far, unless
    /// the other object owns the same path: a file that is announced again stays.
    scoped_control_endpoint_file(scoped_control_endpoint_file&&) noexcept;
    scoped_control_endpoint_file& operator=(scoped_control_endpoint_file&&) noexcept;
    ///@}
    scoped_control_endpoint_file& operator=(const scoped_control_endpoint_file&) = delete;
    /// A file that cannot be removed is left, without an exception.
    ~scoped_control_endpoint_file();

private:
    util::filesystem::scoped_file file_;
};

/// The same for the HTTP endpoint, file "http", or the HTTPS endpoint, file "https".
class ZEP_CONFIG_API scoped_http_endpoint_file {
public:
    /// Throws like scoped_control_endpoint_file.
    scoped_http_endpoint_file(const ServerSettings& settings, const http_endpoint& endpoint,
                              HTTPProtocol protocol);
    scoped_http_endpoint_file(const scoped_http_endpoint_file&) = delete;
    ///@{
    /// Moves throw nothing; the moved-from object removes nothing. An assignment removes the file owned so far, unless
    /// the other object owns the same path: a file that is announced again stays.
    scoped_http_endpoint_file(scoped_http_endpoint_file&&) noexcept;
    scoped_http_endpoint_file& operator=(scoped_http_endpoint_file&&) noexcept;
    ///@}
    scoped_http_endpoint_file& operator=(const scoped_http_endpoint_file&) = delete;
    ~scoped_http_endpoint_file();

private:
    util::filesystem::scoped_file file_;
};

/// The endpoint in the file "control". White space around it is ignored; a host name is looked up, and the
/// first result taken; without a colon the port is 0.
///
/// Reads back what scoped_control_endpoint_file wrote, IPv4 and IPv6. A file that is empty because its writer
/// has only just opened it gives the loopback address and port 0. The port may be a service's name; what a
/// number beyond 65535 gives is the resolver's affair.
///
/// Throws bad_config (no endpoint root), config_io_error (no such file, or it cannot be read), and when the
/// look-up fails boost::system::system_error with the resolver's code and a text that begins with what was looked up and
/// the file that says so, or std::runtime_error "endpoint not found" when it finds nothing; std::bad_alloc. Reads the file to its end, however long it is.
ZEP_CONFIG_API tcp_endpoint read_control_endpoint(const ServerSettings& settings);

/// The endpoint in the file "http" or "https".
///
/// Not everything comes back as it was written: the host name ends at the first colon, so one with a colon in
/// it (an IPv6 address) is cut there and has port 0; and every byte becomes one code unit, so letters outside
/// ASCII come back as two or more others. A port that is no number reads as 0, a number too large as 65535, a
/// negative one as its complement, all without an error.
///
/// Throws bad_config (no endpoint root), and config_io_error when there is no such file, it cannot be read, or
/// it holds no colon; std::bad_alloc. Reads up to the first colon, however far that is.
ZEP_CONFIG_API http_endpoint read_http_endpoint(const ServerSettings& settings, HTTPProtocol protocol);

} // namespace qel::config
