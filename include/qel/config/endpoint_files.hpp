// The files by which clients find a running server's endpoints.
//
// They are in `endpoint_root`. None ends with a newline:
//
// | file    | content                                | for example          |
// |---------|----------------------------------------|----------------------|
// | control | ADDRESS:PORT, an IPv6 one in brackets  | 127.0.0.1:9920       |
// | http    | HOST:PORT, the host name as UTF-8      | www.example.org:9910 |
// | https   | the same                               | www.example.org:9943 |
//
// Publish the pid file first (pid_files.hpp), and these when the listeners accept; remove them in reverse order. A file
// has one writer. Readers may run at any time, and may find a file empty while it is being written.
//
// The umask sets the permissions, links are followed, and a forked child that returns from main removes its parent's
// files: docs/runtime-files.md says what a server should do about this, and what may be called from several threads.
#pragma once

#include "qel/config/export.hpp"
#include "qel/config/http_endpoint.hpp"
#include "qel/config/http_protocol.hpp"
#include "qel/config/server_settings.hpp"
#include "qel/util/scoped_file.hpp"

// Declared, not included: Asio's header must come before <windows.h>, and only the program can ensure that.
namespace boost::asio::ip {
class tcp;
template <typename InternetProtocol>
class basic_endpoint;
} // namespace boost::asio::ip

namespace qel::config {

/// boost::asio::ip::tcp::endpoint. To create or use one, include <boost/asio/ip/tcp.hpp>.
using tcp_endpoint = boost::asio::ip::basic_endpoint<boost::asio::ip::tcp>;

/// Announces the control endpoint for its lifetime: writes the file "control" on construction, replacing an
/// existing one, and removes it on destruction. A moved-from object removes nothing.
///
/// The endpoint root is used as given, both times. After the process has changed its current directory, a
/// relative one names another place: a file of that name there is removed, if there is one, and the one
/// written stays.
class ZEP_CONFIG_API scoped_control_endpoint_file {
public:
    /// Throws bad_config if the settings have no endpoint root, config_io_error if the file cannot be opened
    /// or written, std::bad_alloc. On failure nothing is removed: a file that was opened but not written
    /// remains.
    [[nodiscard]] scoped_control_endpoint_file(const ServerSettings& settings, const tcp_endpoint& endpoint);
    scoped_control_endpoint_file(const scoped_control_endpoint_file&) = delete;
    ///@{
    /// The moved-from object removes nothing. An assignment removes the file owned so far, unless the other object owns
    /// the same path: a file that is announced again stays.
    scoped_control_endpoint_file(scoped_control_endpoint_file&&) noexcept;
    scoped_control_endpoint_file& operator=(scoped_control_endpoint_file&&) noexcept;
    ///@}
    scoped_control_endpoint_file& operator=(const scoped_control_endpoint_file&) = delete;
    /// A file that cannot be removed remains; nothing is thrown.
    ~scoped_control_endpoint_file();

private:
    util::filesystem::scoped_file file_;
};

/// The same for the HTTP endpoint, file "http", or the HTTPS endpoint, file "https".
class ZEP_CONFIG_API scoped_http_endpoint_file {
public:
    /// Throws like scoped_control_endpoint_file.
    [[nodiscard]] scoped_http_endpoint_file(const ServerSettings& settings, const http_endpoint& endpoint,
                                            HTTPProtocol protocol);
    scoped_http_endpoint_file(const scoped_http_endpoint_file&) = delete;
    ///@{
    /// The moved-from object removes nothing. An assignment removes the file owned so far, unless the other object owns
    /// the same path: a file that is announced again stays.
    scoped_http_endpoint_file(scoped_http_endpoint_file&&) noexcept;
    scoped_http_endpoint_file& operator=(scoped_http_endpoint_file&&) noexcept;
    ///@}
    scoped_http_endpoint_file& operator=(const scoped_http_endpoint_file&) = delete;
    ~scoped_http_endpoint_file();

private:
    util::filesystem::scoped_file file_;
};

/// The endpoint in the file "control". White space around it is ignored. A host name is looked up, and the first
/// result is used. Without a colon the port is 0.
///
/// Reads back what scoped_control_endpoint_file wrote, IPv4 and IPv6. A file that is empty because its writer has
/// only just opened it gives the loopback address and port 0. The port may be the name of a service; the resolver
/// decides what a number above 65535 gives.
///
/// Throws bad_config (no endpoint root); config_io_error (no such file, or it cannot be read);
/// boost::system::system_error if the look-up fails, with the resolver's code and a text that begins with what was
/// looked up and the file it came from; std::runtime_error "endpoint not found" if the look-up finds nothing;
/// std::bad_alloc. Reads the file to its end, however long it is.
[[nodiscard]] ZEP_CONFIG_API tcp_endpoint read_control_endpoint(const ServerSettings& settings);

/// The endpoint in the file "http" or "https".
///
/// Not everything is read back as it was written. The host name ends at the first colon, so one that contains a
/// colon (an IPv6 address) is cut there and has port 0. Every byte becomes one code unit, so a letter outside ASCII
/// comes back as two or more other letters. A port that is not a number reads as 0, one that is too large as 65535,
/// and a negative one wraps around, all without an error.
///
/// Throws bad_config (no endpoint root), config_io_error (no such file, it cannot be read, or it contains no colon),
/// std::bad_alloc. Reads up to the first colon, however far that is.
[[nodiscard]] ZEP_CONFIG_API http_endpoint read_http_endpoint(const ServerSettings& settings,
                                                              HTTPProtocol protocol);

} // namespace qel::config
