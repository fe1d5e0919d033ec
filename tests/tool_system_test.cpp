// What the tool makes of the system's answers, with invented answers: this program replaces two of the system's functions by
// its own.
#include "system/entry.hpp"
#include "system/program_search.hpp"

#include "qel/i18n/convert.hpp"

#include <cstdlib>

#include <gtest/gtest.h>
#include <sys/statvfs.h>
#include <unistd.h>

static struct statvfs file_system;
static uid_t user;

extern "C" [[gnu::visibility("default")]] int statvfs(const char*, struct statvfs* answer) noexcept {
    return *answer = file_system, 0;
}

extern "C" [[gnu::visibility("default")]] uid_t geteuid() noexcept {
    return user;
}

namespace orvane::test {

static const qel::util::filesystem::Path place(u"/x");

TEST(Room, is_what_this_user_may_fill) {
    file_system = {};
    file_system.f_bsize = 4096; // of a transfer, not of what is counted
    file_system.f_frsize = 1024;
    file_system.f_bfree = 7, file_system.f_bavail = 5;
    file_system.f_files = 9, file_system.f_ffree = 4, file_system.f_favail = 3;
    user = 0;
    EXPECT_FALSE(room_in(place)) << "what has no blocks holds nothing";
    file_system.f_blocks = 9;
    EXPECT_EQ(room_in(place)->bytes, 7U * 1024);
    EXPECT_EQ(room_in(place)->files, 4U);
    user = 1000;
    EXPECT_EQ(room_in(place)->bytes, 5U * 1024);
    EXPECT_EQ(room_in(place)->files, 3U);
    file_system.f_files = 0;
    EXPECT_FALSE(room_in(place)->files) << "there is no limit";
}

TEST(User, without_a_name_is_a_number) {
    user = 4'000'000'000;
    EXPECT_EQ(command_to_grant(Right::write, place, false), "sudo chown 4000000000 /x");
}

TEST(Path, is_searched_in_order_and_an_empty_element_is_the_current_directory) {
    for (const auto& [path, expected] : {std::pair("/a:b", "/a|b|"),
                                         {":/a", ".|/a|"},
                                         {"/a::/b", "/a|.|/b|"},
                                         {"/a:", "/a|.|"},
                                         {"", ".|"}}) {
        ::setenv("PATH", path, 1);
        std::string found;
        for (const auto& directory : program_search().directories)
            found += qel::i18n::ustring_to_utf8(directory.text()) + "|";
        EXPECT_EQ(found, expected) << path;
    }
    ::unsetenv("PATH");
    EXPECT_EQ(program_search().directories.size(), 2U);
}

} // namespace orvane::test
