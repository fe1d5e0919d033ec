// The exception types.
#include "qel/config/exceptions.hpp"

namespace qel::config {

#define ZEP_EXCEPTION(name)                                                                                  \
    name::name(const std::string& what) : std::runtime_error(what) {}                                        \
    name::name(const name&) noexcept = default;                                                              \
    name::name(name&&) noexcept = default;                                                                   \
    name& name::operator=(const name&) noexcept = default;                                                   \
    name& name::operator=(name&&) noexcept = default;                                                        \
    name::~name() noexcept = default;

ZEP_EXCEPTION(bad_config)
ZEP_EXCEPTION(config_io_error)
ZEP_EXCEPTION(config_state_error)

#undef ZEP_EXCEPTION

} // namespace qel::config
