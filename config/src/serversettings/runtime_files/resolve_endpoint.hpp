// From a host and a service to an address and a port.
#pragma once

#include <boost/asio/ip/tcp.hpp>

#include <cstddef>
#include <string>

namespace qel::config {

/// The result number `index` of looking up `host` and `service`. Throws boost::system::system_error when the
/// look-up fails, std::runtime_error when it finds nothing, std::out_of_range when it finds fewer than index
/// + 1.
boost::asio::ip::tcp::endpoint resolve_endpoint(const std::string& host, const std::string& service,
                                                std::size_t index);

} // namespace qel::config
