// class bad_config, class config_io_error, class config_state_error: what the library throws when a runtime file fails.
//
// Thrown with BOOST_THROW_EXCEPTION, so each carries the function, file and line of the throw, and can be cloned by
// boost::current_exception().
#pragma once

#include "qel/config/export.hpp"

#include <boost/exception/exception.hpp>

#include <stdexcept>
#include <string>

namespace qel::config {

// All exception types have one shape.
#define ZEP_EXCEPTION(name)                                                                                  \
public:                                                                                                      \
    /** Throws std::bad_alloc. */                                                                            \
    explicit name(const std::string& what);                                                                  \
    /**@{*/                                                                                                  \
    /** Copies share their text and the boost::exception part. Throws nothing. */                            \
    name(const name&);                                                                                       \
    name(name&&) noexcept;                                                                                   \
    name& operator=(const name&);                                                                            \
    name& operator=(name&&) noexcept;                                                                        \
    /**@}*/                                                                                                  \
    ~name() noexcept override;

/// A directory that an operation needs is not configured.
class ZEP_CONFIG_API bad_config : public std::runtime_error, public virtual boost::exception {
    ZEP_EXCEPTION(bad_config)
};

/// A runtime file could not be opened, read or written. what() names the file.
class ZEP_CONFIG_API config_io_error : public std::runtime_error, public virtual boost::exception {
    ZEP_EXCEPTION(config_io_error)
};

/// For the server's own use; the library never throws it.
class ZEP_CONFIG_API config_state_error : public std::runtime_error, public virtual boost::exception {
    ZEP_EXCEPTION(config_state_error)
};

#undef ZEP_EXCEPTION

} // namespace qel::config
