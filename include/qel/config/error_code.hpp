// The library's error codes and their category.
#pragma once

#include "qel/config/export.hpp"

#include <boost/system/error_category.hpp>
#include <boost/system/error_code.hpp>

#include <string>

namespace qel::config::error_code {

/// The category of the six codes.
class ZEP_CONFIG_API category_type : public boost::system::error_category {
public:
    constexpr category_type() noexcept = default;
    // A body of its own: g++ 12 does not take a defaulted virtual destructor for a constant one.
    constexpr virtual ~category_type() {}

    /// The full signature text of this function itself, which is what code that prints error codes shows as
    /// the category. Not a short word, and kept that way: logs and tools match it.
    const char* name() const noexcept override;

    /// The text of a code; for a value that is none of the six, a text that says so. Throws std::bad_alloc.
    std::string message(int ev) const override;

    /// Every code but success. (Constant, so that the codes can be constant-initialised.)
    constexpr bool failed(int ev) const noexcept override { return ev != 0; }
};

/// The one category object. Throws nothing.
ZEP_CONFIG_API boost::system::error_category& get_category();

// The six codes, with values and texts in error_codes.def: each a reference to one immutable object that exists before
// any dynamic initialisation. Note that success() belongs to this category too: it is unequal to a default-constructed
// boost::system::error_code.

#define ZEP_ERROR_CODE(name, ...)                                                                            \
    /** One object, there before any dynamic initialisation. */                                              \
    ZEP_CONFIG_API const boost::system::error_code& name() noexcept;
#include "qel/config/error_codes.def"

} // namespace qel::config::error_code
