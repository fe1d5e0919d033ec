// Error codes, exceptions, build information and http_endpoint.
#include "support.hpp"

#include <boost/exception/all.hpp>
#include <boost/throw_exception.hpp>

#include <concepts>
#include <cstdio>

namespace qel::config::test {
namespace {

// Copied while static objects are still being initialised.
const boost::system::error_code copied_early = error_code::success();

TEST(ErrorCode, values_and_messages_are_fixed) {
    const std::pair<const boost::system::error_code& (*)(), std::string> rows[] = {
        {error_code::success, "success"},
        {error_code::incompatible_flags, "incompatible flags"},
        {error_code::unrecognized_flag, "unrecognized flag"},
        {error_code::missing_required_flag, "missing required flag"},
        {error_code::parse_error, "parse error"},
        {error_code::out_of_range, "the specified value is outside the allowed range"},
    };
    int value = 0;
    for (const auto& [code, message] : rows) {
        EXPECT_EQ(code().message(), message);
        EXPECT_EQ(code(), boost::system::error_code(value, error_code::get_category()));
        EXPECT_EQ(code().failed(), value != 0);
        const std::error_code standard = code();
        EXPECT_EQ(standard.message() + standard.category().name(), message + code().category().name());
        EXPECT_TRUE(standard.value() == value && standard == std::error_code(code()));
        // A code equals the condition with its number in its own category, and none of the system's conditions.
        EXPECT_TRUE(code() == code().default_error_condition() &&
                    standard == standard.default_error_condition());
        EXPECT_FALSE(code() == boost::system::errc::make_error_condition(boost::system::errc::errc_t(value)));
        EXPECT_FALSE(standard == std::make_error_condition(std::errc(value)));
        ++value;
        EXPECT_EQ(&code(), &code()) << "each call refers to the same object";
    }
    for (const int other : {-1, 6, 1 << 30, -2147483647 - 1})
        EXPECT_EQ(error_code::get_category().message(other), "unknown configuration error") << other;
    EXPECT_STREQ(error_code::get_category().name(),
                 "const char *__cdecl qel::config::error_code::category_type::name(void) noexcept const");
}

TEST(ErrorCode, success_exists_early_and_is_not_the_default_code) {
    EXPECT_EQ(copied_early, error_code::success());
    EXPECT_NE(copied_early, boost::system::error_code());
}

template <class E>
class Exceptions : public testing::Test {};
using AllExceptions = testing::Types<bad_config, config_io_error, config_state_error>;
TYPED_TEST_SUITE(Exceptions, AllExceptions);

TYPED_TEST(Exceptions, are_caught_and_cloned_under_every_base_with_the_place_of_the_throw) {
    boost::exception_ptr clone;
    const int line = __LINE__ + 2;
    try {
        BOOST_THROW_EXCEPTION(TypeParam("no pid root"));
    } catch (const boost::exception& failure) {
        ASSERT_NE(boost::get_error_info<boost::throw_function>(failure), nullptr);
        EXPECT_TRUE(
            std::string(*boost::get_error_info<boost::throw_file>(failure)).ends_with("error_test.cpp"));
        EXPECT_EQ(*boost::get_error_info<boost::throw_line>(failure), line);
        clone = boost::current_exception();
    }
    try {
        boost::rethrow_exception(clone);
    } catch (const std::runtime_error& failure) {
        EXPECT_NE(dynamic_cast<const TypeParam*>(&failure), nullptr);
        EXPECT_STREQ(failure.what(), "no pid root");
        EXPECT_EQ(*boost::get_error_info<boost::throw_line>(failure), line);
    }
}

TYPED_TEST(Exceptions, copies_share_the_attached_information) {
    using Note = boost::error_info<struct NoteTag, int>;
    static_assert(std::is_nothrow_copy_constructible_v<TypeParam> &&
                  std::is_nothrow_copy_assignable_v<TypeParam>);
    TypeParam original("a"), assigned("b"), moved("c");
    original << Note(7);
    assigned = original;
    moved = TypeParam(assigned);
    const TypeParam last(std::move(moved));
    for (const TypeParam& one : {TypeParam(original), assigned, last}) {
        EXPECT_STREQ(one.what(), "a");
        EXPECT_EQ(boost::get_error_info<Note>(one), boost::get_error_info<Note>(original));
    }
}

static_assert(noexcept(product_name()) && noexcept(error_code::get_category()));

TEST(BuildInfo, strings_have_their_forms) {
    EXPECT_STREQ(product_name(), "Orvane");
    EXPECT_STREQ(zep_config_relative_path, "bin\\win64\\zep_config.dll");

    unsigned part[3];
    int start = 0, end = 0;
    ASSERT_EQ(
        std::sscanf(zep_config_version, "%u.%u.%u.%n%*6[0-9]%n", part, part + 1, part + 2, &start, &end), 3);
    EXPECT_EQ(std::pair(start + 6, '\0'), std::pair(end, zep_config_version[end])) << zep_config_version;
    constexpr int x = ZEP_CONFIG_VERSION_MAJOR, y = ZEP_CONFIG_VERSION_MINOR, z = ZEP_CONFIG_VERSION_PATCH;
    EXPECT_TRUE(part[0] == x && part[1] == y && part[2] == z) << "the headers' version is the library's";
    static_assert(ZEP_CONFIG_VERSION_AT_LEAST(x, y, z) && ZEP_CONFIG_VERSION_AT_LEAST(x, y, z - 1) &&
                  ZEP_CONFIG_VERSION_AT_LEAST(x, y - 1, z + 1) &&
                  ZEP_CONFIG_VERSION_AT_LEAST(x - 1, y + 1, z + 1));
    static_assert(!ZEP_CONFIG_VERSION_AT_LEAST(x, y, z + 1) && !ZEP_CONFIG_VERSION_AT_LEAST(x, y + 1, 0) &&
                  !ZEP_CONFIG_VERSION_AT_LEAST(x + 1, 0, 0));

    const std::string date = zep_config_build_date;
    EXPECT_EQ("Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec "s.find(date.substr(0, 4)) % 4, 0u) << date;
    char rest[12];
    std::snprintf(rest, sizeof rest, "%2d %4d", std::stoi(date.substr(4, 2)), std::stoi(date.substr(7)));
    EXPECT_EQ(date.substr(4), rest);
}

// Read-only: each name has only one accessor, and there are no comparisons.
static_assert(
    std::is_same_v<decltype(&http_endpoint::port), unsigned short (http_endpoint::*)() const noexcept>);
static_assert(std::is_const_v<std::remove_reference_t<decltype(std::declval<http_endpoint>().host_name())>>);
static_assert(!std::equality_comparable<http_endpoint>);

TEST(HttpEndpoint, keeps_the_given_host_to_the_letter_and_else_has_this_machines_name) {
    for (const auto& host : {u"Some Host\xD800"s, u""s, u"[::1]"s})
        EXPECT_EQ(http_endpoint(host, 1).host_name(), host);
    http_endpoint here(boost::none, 65535), copy(here), assigned;
    EXPECT_EQ(std::pair(assigned.host_name(), assigned.port()), std::pair(u""s, std::uint16_t(0)));
    assigned = std::move(copy);
    http_endpoint moved(std::move(assigned));
    assigned = moved;
    EXPECT_EQ(std::pair(assigned.host_name(), int(assigned.port())), std::pair(here.host_name(), 65535));
    EXPECT_NE(here.host_name(), u"");
}

} // namespace
} // namespace qel::config::test
