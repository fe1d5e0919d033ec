// The library's error codes and their category.
#pragma once

#include "qel/config/detail/same_boost.hpp"
#include "qel/config/export.hpp"

#include <boost/system/error_category.hpp>
#include <boost/system/error_code.hpp>

#include <string>

namespace qel::config::error_code {

ZEP_CONFIG_QUIET_BEGIN
/// The category of the six codes.
class ZEP_CONFIG_API category_type : public boost::system::error_category {
public:
    constexpr category_type() noexcept = default;
    // Not defaulted: g++ 12 does not treat a defaulted virtual destructor as constexpr.
    constexpr virtual ~category_type() {}

    /// The full signature of this function as text, which code that prints error codes shows as the category. It is
    /// kept although it is not a short word: logs and tools match it.
    const char* name() const noexcept override;

    /// The text of a code. A value that is none of the six gets a text that says so. Throws std::bad_alloc.
    std::string message(int ev) const override;

    /// True for every code but success. (constexpr, so that the codes can be constant-initialised.)
    constexpr bool failed(int ev) const noexcept override { return ev != 0; }
};
ZEP_CONFIG_QUIET_END

/// The one category object.
ZEP_CONFIG_API boost::system::error_category& get_category() noexcept;

// The six codes; their values and texts are in error_codes.def. Each is a reference to one immutable object that exists
// before any dynamic initialisation. success() belongs to this category too, so it is unequal to a default-constructed
// boost::system::error_code.

#define ZEP_ERROR_CODE(name, ...)                                                                            \
    /** One object, which exists before any dynamic initialisation. */                                       \
    ZEP_CONFIG_API const boost::system::error_code& name() noexcept;
#include "qel/config/error_codes.def"

} // namespace qel::config::error_code
