// Resolves a host and a service to an address and a port.
#pragma once

#include <boost/asio/ip/tcp.hpp>

#include <cstddef>
#include <string>

namespace qel::config {

/// Result number `index`, from 0, of looking up `host` and `service`. Throws boost::system::system_error if the look-up
/// fails, std::runtime_error if it finds nothing, std::out_of_range if it finds too few.
boost::asio::ip::tcp::endpoint resolve_endpoint(const std::string& host, const std::string& service,
                                                std::size_t index);

} // namespace qel::config
