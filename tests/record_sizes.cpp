// The size of every other class whose layout is compiled into callers' programs; those of the records are in
// data/fields.txt. Another size breaks those programs. The numbers hold for both 64-bit Linux and 64-bit Windows, with the
// C++ library of g++.
#include "qel/config/config.hpp"

#if defined(__GLIBCXX__) && __SIZEOF_POINTER__ == 8
namespace qel::config {

// A template, so that the message of the compiler shows both numbers.
template <class T, std::size_t expected, std::size_t actual = sizeof(T)>
constexpr bool has_size() {
    static_assert(actual == expected, "a class has changed its size: that needs a new major version");
    return actual == expected;
}

// clang-format off
static_assert(has_size<http_endpoint,                  40>());
static_assert(has_size<scoped_pid_file,                32>());
static_assert(has_size<scoped_master_pid_file,         32>());
static_assert(has_size<scoped_http_endpoint_file,      32>());
static_assert(has_size<scoped_control_endpoint_file,   32>());
static_assert(has_size<config_state_error,             56>());
static_assert(has_size<bad_config,                     56>());
static_assert(has_size<config_io_error,                56>());
static_assert(has_size<Path,                           32>());
static_assert(has_size<util::ssl::SslContext,         376>());
// clang-format on

} // namespace qel::config
#endif
