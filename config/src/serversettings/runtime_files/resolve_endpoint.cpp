// Resolves a host and a service to an address and a port.
#include "runtime_files/resolve_endpoint.hpp"

#include <boost/asio/io_context.hpp>
#include <boost/throw_exception.hpp>

#include <iterator>
#include <stdexcept>

namespace qel::config {

using boost::asio::ip::tcp;

tcp::endpoint resolve_endpoint(const std::string& host, const std::string& service, std::size_t index) {
    boost::asio::io_context context;
    const auto results = tcp::resolver(context).resolve(host, service);
    if (results.empty()) BOOST_THROW_EXCEPTION(std::runtime_error("endpoint not found"));
    if (index >= results.size())
        BOOST_THROW_EXCEPTION(std::out_of_range("resolve_endpoint index out of bounds"));
    return std::next(results.begin(), static_cast<std::ptrdiff_t>(index))->endpoint();
}

} // namespace qel::config
