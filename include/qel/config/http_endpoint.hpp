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

/// Where a listener is to be found, as written to and read from the endpoint files. Read-only after
/// construction.
class ZEP_CONFIG_API http_endpoint {
public:
    /// An empty host name and port 0.
    http_endpoint() noexcept;

    /// `host` as it stands, or this machine's name when it is not set.
    ///
    /// The machine's name is looked up in both cases. Throws boost::system::system_error with the operating
    /// system's code when the look-up fails; a look-up that fails without a code gives an empty name. Throws
    /// std::bad_alloc.
    http_endpoint(const optional<std::u16string>& host, unsigned short port);

    ///@{
    /// Copies throw std::bad_alloc. Moves throw nothing.
    http_endpoint(const http_endpoint&);
    http_endpoint(http_endpoint&&) noexcept;
    http_endpoint& operator=(const http_endpoint&);
    http_endpoint& operator=(http_endpoint&&) noexcept;
    ///@}
    ~http_endpoint();

    /// As it was given, or read.
    const std::u16string& host_name() const noexcept;
    /// As it was given, or read.
    unsigned short port() const noexcept;

private:
    /// Fills it from a file without looking up the machine's name.
    friend struct detail::FileFormat<http_endpoint>;

    std::u16string host_name_;
    unsigned short port_ = 0;
};

} // namespace qel::config
