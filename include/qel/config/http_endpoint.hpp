// Host name and port of a listening HTTP or HTTPS endpoint.
#pragma once

#include "qel/config/export.hpp"
#include "qel/config/types.hpp"

#include <string>

namespace qel::config {

namespace detail {
template <class T>
struct FileFormat;
}

ZEP_CONFIG_QUIET_BEGIN
/// The address of a listener, as written to and read from the endpoint files. Only assignment changes it.
class ZEP_CONFIG_API http_endpoint {
public:
    /// An empty host name and port 0.
    http_endpoint() noexcept;

    /// `host` unchanged, or this machine's name if `host` is not set.
    ///
    /// The machine's name is looked up in both cases. Throws boost::system::system_error with the operating
    /// system's code if the look-up fails, and std::bad_alloc. A look-up that fails without a code gives an empty name.
    http_endpoint(const optional<std::u16string>& host, unsigned short port);

    ///@{
    /// Copies throw std::bad_alloc.
    http_endpoint(const http_endpoint&);
    http_endpoint(http_endpoint&&) noexcept;
    http_endpoint& operator=(const http_endpoint&);
    http_endpoint& operator=(http_endpoint&&) noexcept;
    ///@}
    ~http_endpoint();

    /// The host name as given or read.
    const std::u16string& host_name() const noexcept;
    /// The port as given or read.
    unsigned short port() const noexcept;

private:
    /// Fills an endpoint from a file without looking up the machine's name.
    friend struct detail::FileFormat<http_endpoint>;

    std::u16string host_name_{};
    unsigned short port_ = 0;
};
ZEP_CONFIG_QUIET_END

} // namespace qel::config
