// The error category and its codes.
#include "qel/config/error_code.hpp"

#include <array>
#include <cstddef>
#include <string_view>

namespace qel::config::error_code {
namespace {

constexpr std::array<std::string_view, 6> messages = {
    "success",           "incompatible flags",
    "unrecognized flag", "missing required flag",
    "parse error",       "the specified value is outside the allowed range",
};

constexpr category_type category;

constinit const boost::system::error_code success_code(0, category);
constinit const boost::system::error_code incompatible_flags_code(1, category);
constinit const boost::system::error_code unrecognized_flag_code(2, category);
constinit const boost::system::error_code missing_required_flag_code(3, category);
constinit const boost::system::error_code parse_error_code(4, category);
constinit const boost::system::error_code out_of_range_code(5, category);

} // namespace

const char* category_type::name() const noexcept {
    return "const char *__cdecl qel::config::error_code::category_type::name(void) noexcept const";
}

std::string category_type::message(int ev) const {
    const auto position = static_cast<std::size_t>(ev);
    return std::string(position < messages.size() ? messages[position] : "unknown configuration error");
}

// The interface hands out a mutable reference; error_category has no operation that could use it to change
// anything.
boost::system::error_category& get_category() {
    return const_cast<category_type&>(category);
}

const boost::system::error_code& success() noexcept {
    return success_code;
}
const boost::system::error_code& incompatible_flags() noexcept {
    return incompatible_flags_code;
}
const boost::system::error_code& unrecognized_flag() noexcept {
    return unrecognized_flag_code;
}
const boost::system::error_code& missing_required_flag() noexcept {
    return missing_required_flag_code;
}
const boost::system::error_code& parse_error() noexcept {
    return parse_error_code;
}
const boost::system::error_code& out_of_range() noexcept {
    return out_of_range_code;
}

} // namespace qel::config::error_code
