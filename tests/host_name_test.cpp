// http_endpoint on a machine whose name this program makes up: it puts its own gethostname before the
// system's.
#include "support.hpp"

#include <boost/system/system_error.hpp>

#include <cerrno>
#include <cstring>

#include <unistd.h>

static const char* machine_name; // none: the look-up fails with `failure`
static int failure;

extern "C" [[gnu::visibility("default")]] int gethostname(char* name, std::size_t size) noexcept {
    if (machine_name != nullptr) return std::strncpy(name, machine_name, size), 0;
    errno = failure;
    return -1;
}

namespace qel::config::test {

TEST(HostName, is_the_machines_as_utf_8_or_empty_unless_one_is_given) {
    failure = 0; // a failure without a code
    for (const char* name : {"m\xc3\xa4gde.example", static_cast<const char*>(nullptr)}) {
        machine_name = name;
        EXPECT_EQ(http_endpoint(boost::none, 1).host_name(),
                  i18n::utf8_to_ustring(name == nullptr ? "" : name));
        EXPECT_EQ(http_endpoint(u"given"s, 1).host_name(), u"given");
    }
}

TEST(HostName, that_cannot_be_looked_up_throws_its_code_even_when_a_host_is_given) {
    machine_name = nullptr;
    failure = ENAMETOOLONG;
    for (const auto& host : {optional<std::u16string>(), optional<std::u16string>(u"given"s)}) {
        try {
            FAIL() << ustring_to_utf8(http_endpoint(host, 1).host_name());
        } catch (const boost::system::system_error& thrown) {
            EXPECT_EQ(thrown.code(),
                      boost::system::error_code(ENAMETOOLONG, boost::system::system_category()));
        }
    }
}

} // namespace qel::config::test
