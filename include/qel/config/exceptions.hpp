// class bad_config, class config_io_error, class config_state_error: what the library throws if an operation on a
// runtime file fails.
//
// They are thrown with BOOST_THROW_EXCEPTION: each carries the function, file and line of the throw, and
// boost::current_exception() can clone it.
#pragma once

#include "qel/config/detail/same_boost.hpp"
#include "qel/config/export.hpp"

#include <boost/exception/exception.hpp>

#include <stdexcept>
#include <string>

namespace qel::config {

ZEP_CONFIG_QUIET_BEGIN

// All exception types have one shape.
#define ZEP_EXCEPTION(name)                                                                                  \
public:                                                                                                      \
    /** Throws std::bad_alloc. */                                                                            \
    explicit name(const std::string& what);                                                                  \
    /**@{*/                                                                                                  \
    /** Copies share their text and the boost::exception part. */                                            \
    name(const name&) noexcept;                                                                              \
    name(name&&) noexcept;                                                                                   \
    name& operator=(const name&) noexcept;                                                                   \
    name& operator=(name&&) noexcept;                                                                        \
    /**@}*/                                                                                                  \
    ~name() noexcept override;

/// Thrown if a directory that an operation needs is not configured.
class ZEP_CONFIG_API bad_config : public std::runtime_error, public virtual boost::exception {
    ZEP_EXCEPTION(bad_config)
};

/// Thrown if a runtime file cannot be opened, read or written. what() names the file.
class ZEP_CONFIG_API config_io_error : public std::runtime_error, public virtual boost::exception {
    ZEP_EXCEPTION(config_io_error)
};

/// For use by the server; the library never throws it.
class ZEP_CONFIG_API config_state_error : public std::runtime_error, public virtual boost::exception {
    ZEP_EXCEPTION(config_state_error)
};

#undef ZEP_EXCEPTION
ZEP_CONFIG_QUIET_END

} // namespace qel::config
