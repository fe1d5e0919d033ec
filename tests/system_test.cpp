// Tests with invented answers of the system: this program replaces some of the system's functions by its own. Also
// tests the mode that the system gives a file.
#include <boost/asio/ip/tcp.hpp>

#include "support.hpp"

#include <boost/system/system_error.hpp>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <thread>

#include <fcntl.h>
#include <netdb.h>
#include <sys/stat.h>
#include <unistd.h>

static const char* machine_name; // null: the look-up fails with `failure`
static int failure;

extern "C" [[gnu::visibility("default")]] int gethostname(char* name, std::size_t size) noexcept {
    if (machine_name != nullptr) return std::strncpy(name, machine_name, size), 0;
    errno = failure;
    return -1;
}

static std::string asked;

// No failure and no address, unless a code is set.
static int no_address;
extern "C" [[gnu::visibility("default")]] int getaddrinfo(const char* host, const char*, const addrinfo*,
                                                          addrinfo** result) {
    asked = host == nullptr ? "" : host;
    return *result = nullptr, no_address;
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

TEST(RuntimeFiles, have_the_mode_of_any_new_file_and_no_endpoint_where_the_resolver_knows_none) {
    const auto root = std::filesystem::temp_directory_path() / ("zep_" + std::to_string(::getpid()));
    std::filesystem::create_directory(root);
    S settings;
    settings.pid_root() = settings.endpoint_root() = Path(root.u16string());
    for (const unsigned mask : {0000u, 0022u, 0137u}) {
        const mode_t before = ::umask(mask);
        const scoped_master_pid_file pid(settings, 1);
        const scoped_control_endpoint_file control(settings, {});
        ::umask(before);
        for (const char* name : {"main.pid", "control"}) {
            struct stat file {};
            EXPECT_EQ(::stat((root / name).c_str(), &file), 0);
            EXPECT_EQ(file.st_mode & 07777, 0666 & ~mask) << name;
        }
    }
    // Only a pair of brackets around the whole host is not part of it.
    for (const auto& [text, host] :
         {std::pair("[::1]:1", "::1"), {"[]:1", ""}, {"[a:1", "[a"}, {"a]:1", "a]"}}) {
        std::ofstream(root / "control") << text;
        try {
            FAIL() << read_control_endpoint(settings);
        } catch (const std::runtime_error& thrown) {
            EXPECT_EQ(dynamic_cast<const boost::system::system_error*>(&thrown), nullptr) << thrown.what();
            EXPECT_NE(std::string(thrown.what()).find("endpoint not found"), std::string::npos);
            EXPECT_EQ(asked, host);
        }
    }
    for (const auto error :
         {boost::asio::error::host_not_found, boost::asio::error::host_not_found_try_again}) {
        no_address = error == boost::asio::error::host_not_found ? EAI_NONAME : EAI_AGAIN;
        try {
            FAIL() << read_control_endpoint(settings);
        } catch (const boost::system::system_error& thrown) {
            EXPECT_EQ(thrown.code().message(), make_error_code(error).message());
        }
    }
    no_address = 0;
    // What is not a file is read to the end of the value, even if it comes in pieces.
    std::filesystem::remove(root / "main.pid");
    EXPECT_EQ(::mkfifo((root / "main.pid").c_str(), 0600), 0);
    const int pipe = ::open((root / "main.pid").c_str(), O_RDWR);
    {
        EXPECT_EQ(::write(pipe, "1", 1), 1);
        const std::jthread later([pipe] {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            EXPECT_EQ(::write(pipe, "2\n", 2), 2);
        });
        EXPECT_EQ(read_master_pid(settings), 12U);
    }
    ::close(pipe);
    std::filesystem::remove_all(root);
}

} // namespace qel::config::test
