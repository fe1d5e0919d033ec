// Endpoint files: their formats, places, owners and readers.
#include "qel/config/endpoint_files.hpp"

#include "runtime_files/resolve_endpoint.hpp"
#include "runtime_files/runtime_file.hpp"

#include <boost/algorithm/string/trim.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/system/system_error.hpp>

#include <array>
#include <istream>
#include <ostream>
#include <string>

namespace qel::config {

// --- formats

namespace {

/// The content of the control file, before the look-up.
struct Announced {
    std::string text;
    std::string host;
    std::string service = "0";
};

} // namespace

template <>
struct detail::FileFormat<tcp_endpoint> {
    // Not `out << endpoint`: Boost formats that in another stream, which silently cuts it short if memory runs out.
    static void put(std::ostream& out, const tcp_endpoint& endpoint) {
        const std::string address = endpoint.address().to_string();
        out << (endpoint.address().is_v6() ? '[' + address + ']' : address) << ':' << endpoint.port();
    }
};

template <>
struct detail::FileFormat<Announced> {
    static void get(std::istream& in, Announced& announced) {
        std::string& text = announced.text;
        std::array<char, 256> buffer;
        while (in.read(buffer.data(), buffer.size()) || in.gcount() != 0)
            text.append(buffer.data(), static_cast<std::size_t>(in.gcount()));
        if (in.bad()) return;

        boost::trim(text, std::locale::classic());
        const auto colon = text.rfind(':');
        std::string& host = announced.host;
        host = text.substr(0, colon);
        if (colon != std::string::npos) announced.service = text.substr(colon + 1);
        // An IPv6 address is written in brackets, which the resolver does not accept.
        if (host.size() >= 2 && host.front() == '[' && host.back() == ']')
            host = host.substr(1, host.size() - 2);
    }
};

template <>
struct detail::FileFormat<http_endpoint> {
    static void put(std::ostream& out, const http_endpoint& endpoint) {
        out << i18n::ustring_to_utf8(endpoint.host_name()) << ':' << endpoint.port();
    }

    // Each byte becomes one code unit, and the first colon ends the name: existing readers depend on both.
    static void get(std::istream& in, http_endpoint& endpoint) {
        endpoint.host_name_.clear();
        char byte = 0;
        while (in.get(byte) && byte != ':')
            endpoint.host_name_.push_back(static_cast<unsigned char>(byte));
        if (in) {
            in >> endpoint.port_;
        } else {
            in.setstate(std::ios_base::badbit);
        }
    }
};

namespace {

// --- places

Path endpoint_file_path(const ServerSettings& settings, const std::u16string& name) {
    using i18n::operator/;
    if (!settings.endpoint_root()) BOOST_THROW_EXCEPTION(bad_config("no endpoint root"));
    return *settings.endpoint_root() / name;
}

Path control_endpoint_file_path(const ServerSettings& settings) {
    return endpoint_file_path(settings, u"control");
}

Path http_endpoint_file_path(const ServerSettings& settings, HTTPProtocol protocol) {
    return endpoint_file_path(settings, protocol == HTTPProtocol::http ? u"http" : u"https");
}

} // namespace

// --- owners

scoped_control_endpoint_file::scoped_control_endpoint_file(const ServerSettings& settings,
                                                           const tcp_endpoint& endpoint)
    : file_(write_file(control_endpoint_file_path(settings), endpoint)) {}
scoped_control_endpoint_file::scoped_control_endpoint_file(scoped_control_endpoint_file&&) noexcept = default;
scoped_control_endpoint_file&
scoped_control_endpoint_file::operator=(scoped_control_endpoint_file&&) noexcept = default;
scoped_control_endpoint_file::~scoped_control_endpoint_file() = default;

scoped_http_endpoint_file::scoped_http_endpoint_file(const ServerSettings& settings,
                                                     const http_endpoint& endpoint, HTTPProtocol protocol)
    : file_(write_file(http_endpoint_file_path(settings, protocol), endpoint)) {}
scoped_http_endpoint_file::scoped_http_endpoint_file(scoped_http_endpoint_file&&) noexcept = default;
scoped_http_endpoint_file&
scoped_http_endpoint_file::operator=(scoped_http_endpoint_file&&) noexcept = default;
scoped_http_endpoint_file::~scoped_http_endpoint_file() = default;

// --- readers

tcp_endpoint read_control_endpoint(const ServerSettings& settings) {
    const Path file = control_endpoint_file_path(settings);
    const Announced announced = read_file<Announced>(file);
    try {
        return resolve_endpoint(announced.host, announced.service, 0);
    } catch (const boost::system::system_error& failure) {
        // Without the source location that Asio's code carries: that is a path of the machine that built the library.
        const boost::system::error_code code(failure.code().value(), failure.code().category());
        BOOST_THROW_EXCEPTION(boost::system::system_error(code, '"' + announced.text + "\", read from " +
                                                                    i18n::ustring_to_utf8(file.text())));
    }
}

http_endpoint read_http_endpoint(const ServerSettings& settings, HTTPProtocol protocol) {
    return read_file<http_endpoint>(http_endpoint_file_path(settings, protocol));
}

} // namespace qel::config
