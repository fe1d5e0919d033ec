// http_endpoint, with the look-up of the machine's name.
#include "qel/config/http_endpoint.hpp"

#include "qel/i18n/convert.hpp"

#include <boost/asio/ip/host_name.hpp>
#include <boost/system/system_error.hpp>
#include <boost/throw_exception.hpp>

namespace qel::config {
namespace {

std::u16string local_host_name() {
    boost::system::error_code failure;
    const std::string name = boost::asio::ip::host_name(failure);
    if (failure) BOOST_THROW_EXCEPTION(boost::system::system_error(failure));
    return i18n::utf8_to_ustring(name);
}

} // namespace

http_endpoint::http_endpoint() noexcept = default;

// The name is looked up even if it is not used, so that a machine without one fails in both cases.
http_endpoint::http_endpoint(const optional<std::u16string>& host, unsigned short port)
    : host_name_(local_host_name()), port_(port) {
    if (host) host_name_ = *host;
}

http_endpoint::http_endpoint(const http_endpoint&) = default;
http_endpoint::http_endpoint(http_endpoint&&) noexcept = default;
http_endpoint& http_endpoint::operator=(const http_endpoint&) = default;
http_endpoint& http_endpoint::operator=(http_endpoint&&) noexcept = default;
http_endpoint::~http_endpoint() = default;

const std::u16string& http_endpoint::host_name() const noexcept {
    return host_name_;
}
unsigned short http_endpoint::port() const noexcept {
    return port_;
}

} // namespace qel::config
