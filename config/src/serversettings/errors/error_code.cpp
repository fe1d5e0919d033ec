// The error category and its codes.
#include "qel/config/error_code.hpp"

namespace qel::config::error_code {
namespace {

constexpr category_type category;

#define ZEP_ERROR_CODE(name, value, text)                                                                    \
    constinit const boost::system::error_code name##_code(value, category);
#include "qel/config/error_codes.def"

} // namespace

const char* category_type::name() const noexcept {
    return "const char *__cdecl qel::config::error_code::category_type::name(void) noexcept const";
}

std::string category_type::message(int ev) const {
    switch (ev) {
#define ZEP_ERROR_CODE(name, value, text)                                                                    \
    case value:                                                                                              \
        return text;
#include "qel/config/error_codes.def"
    default:
        return "unknown configuration error";
    }
}

// The interface returns a mutable reference; error_category has no operation that could change anything by it.
boost::system::error_category& get_category() noexcept {
    return const_cast<category_type&>(category);
}

#define ZEP_ERROR_CODE(name, value, text)                                                                    \
    const boost::system::error_code& name() noexcept {                                                       \
        return name##_code;                                                                                  \
    }
#include "qel/config/error_codes.def"

} // namespace qel::config::error_code
