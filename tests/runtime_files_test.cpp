// The runtime files on a real file system: their content, how long they exist, what is read back, and what fails.
#include <boost/asio/ip/tcp.hpp>

#include "support.hpp"

#include <boost/exception/diagnostic_information.hpp>

#include <filesystem>
#include <memory>
#include <optional>
#include <random>
#include <set>
#include <thread>

namespace disk = std::filesystem;
using qel::i18n::operator/;

namespace qel::config::test {
namespace {

using disk::path;
using Name = std::u16string;
constexpr bool posix = path::preferred_separator == '/';

struct Grouping : std::numpunct<char> {
    std::string do_grouping() const override { return "\3"; }
};
const std::locale before = std::locale::global(std::locale(std::locale::classic(), new Grouping));

/// While this object exists, a file stream with the global locale replaces each character by the next one.
struct Shifting : std::codecvt<char, char, std::mbstate_t> {
    const std::locale before = std::locale::global(std::locale(std::locale(), this));
    Shifting() : codecvt(1) {}
    ~Shifting() override { std::locale::global(before); }
    bool do_always_noconv() const noexcept override { return false; }
    int do_encoding() const noexcept override { return 1; }
    result do_in(state_type&, const char* from, const char* end, const char*& next, char* to, char* to_end,
                 char*& to_next) const override {
        for (; from != end && to != to_end; ++from, ++to)
            *to = static_cast<char>(*from + 1);
        return next = from, to_next = to, ok;
    }
    result do_out(state_type& state, const char* from, const char* end, const char*& next, char* to,
                  char* to_end, char*& to_next) const override {
        return do_in(state, from, end, next, to, to_end, to_next);
    }
};

/// Settings with both roots set to the path; with neither for an empty path.
S in(const path& root) {
    S settings;
    if (!root.empty()) settings.pid_root() = settings.endpoint_root() = Path(root.u16string());
    return settings;
}

/// An owner that announced its file three times, the last time in an optional, and was moved and moved back.
template <class Announce>
std::shared_ptr<void> owner(Announce announce) {
    using T = decltype(announce());
    static_assert(!std::is_copy_constructible_v<T> && !std::is_copy_assignable_v<T>);
    T first = announce();
    first = announce();
    optional<T> second(std::move(first));
    second = announce();
    first = std::move(*second);
    return std::make_shared<T>(std::move(first));
}

std::shared_ptr<void> publish(const Name& file, const path& root, const Name& host, std::uint32_t number) {
    const auto port = static_cast<unsigned short>(number);
    const HTTPProtocol protocol{file == u"http" ? 0 : -1};
    if (file == u"any.pid")
        return owner([&] { return scoped_pid_file(Path((root / file).u16string()), number); });
    if (file == u"main.pid") return owner([&] { return scoped_master_pid_file(in(root), number); });
    if (file != u"control")
        return owner([&] { return scoped_http_endpoint_file(in(root), {host, port}, protocol); });
    const auto address = boost::asio::ip::make_address(ustring_to_utf8(host));
    return owner([&] { return scoped_control_endpoint_file(in(root), {address, port}); });
}

/// Type and text of the current exception, which must say where it was thrown. FILE replaces the file's path.
std::string failure_of(const Name& file, const path& root) {
    const std::string all = boost::current_exception_diagnostic_information();
    EXPECT_NE(all.find("): Throw in function "), all.npos) << all;
    const auto end = all.find(">\n"), start = all.rfind(':', end) + 1, text = all.find("what: ", end);
    const std::string what = all.substr(text + 4, all.find('\n', text) - text - 4);
    const std::string in_full = ustring_to_utf8((Path(root.u16string()) / file).text());
    const std::string type = all.substr(start, end - start),
                      ours = boost::replace_last_copy(what, in_full, "FILE");
    if (type != "system_error") return type + ours;
    // The rest is the resolver's text. It differs between systems, but names no place in the sources.
    const auto resolver = std::min(ours.rfind("FILE:") + 5, ours.size());
    EXPECT_EQ(ours.find_first_of("/\\", resolver), std::string::npos) << all;
    return type + ours.substr(0, resolver);
}

std::string published(const Name& file, const path& root) try {
    return publish(file, root, u"::1", 1), "published";
} catch (...) {
    return failure_of(file, root);
}

std::string read(const Name& file, const path& root) try {
    if (file == u"main.pid") return std::to_string(read_master_pid(in(root)));
    if (file == u"control") return (std::ostringstream() << read_control_endpoint(in(root))).str();
    const http_endpoint endpoint = read_http_endpoint(in(root), HTTPProtocol{file != u"http"});
    return ustring_to_utf8(endpoint.host_name()) + ':' + std::to_string(endpoint.port());
} catch (...) {
    return failure_of(file, root);
}

/// Every test has its own directory, whose name has letters outside ASCII; the global locale groups digits.
struct RuntimeFiles : testing::Test {
    path root = disk::temp_directory_path() / u"zep_\u00FC\U0001F600";
    RuntimeFiles() { disk::create_directory(root += std::to_string(std::random_device()())); }
    ~RuntimeFiles() override { disk::remove_all(root); }
};

TEST_F(RuntimeFiles, hold_their_value_while_their_owner_lives_and_then_are_removed_if_they_can_be) {
    for (const auto& [tokens, expected, where] : read_cases("runtime_files.txt")) {
        const path file = root / tokens[0];
        std::ofstream(file) << "longer than any value, and overwritten";
        const auto number = static_cast<std::uint32_t>(std::stoul(ustring_to_utf8(tokens[2])));
        std::optional<Shifting> converting(std::in_place);
        auto removed = publish(tokens[0], root, tokens[1], number);
        Lines got(1);
        if (expected.size() == 2) got.push_back(read(tokens[0], root));
        converting.reset();
        std::getline(std::ifstream(file, std::ios_base::binary), got[0], '\0');
        EXPECT_EQ(got, expected) << where;
        removed.reset();
        EXPECT_FALSE(disk::exists(file)) << where;
    }
    auto replaced = publish(u"any.pid", root, u"", 1), late = publish(u"control", root, u"::1", 1);
    EXPECT_TRUE(disk::remove(root / "any.pid") && disk::create_directory(root / "any.pid"));
    replaced.reset();
    EXPECT_TRUE(disk::exists(root / "any.pid")) << "a directory is not the owner's to remove";
    disk::remove_all(root);
}

TEST_F(RuntimeFiles, are_read_as_documented) {
    for (const auto& [tokens, expected, where] : read_cases("runtime_read.txt")) {
        std::ofstream(root / tokens[0]) << ustring_to_utf8(tokens[1]);
        const Shifting converting;
        EXPECT_EQ(Lines{read(tokens[0], root)}, expected) << where;
    }
    std::ofstream(root / "control") << "";
    EXPECT_TRUE(read_control_endpoint(in(root)).address().is_loopback());
    // Too long to be read at once.
    for (const auto& [file, expected] : {std::pair(u"control", "127.0.0.1:80"), {u"main.pid", "127"}}) {
        std::ofstream(root / file) << std::string(20'000, ' ') << "127.0.0.1:80";
        EXPECT_EQ(read(file, root), expected);
    }
}

TEST_F(RuntimeFiles, fail_with_texts_that_name_the_file_and_leave_the_cause_as_it_was) {
    const auto put = [](const Name& what, const path& place) {
        if (what == u"directory") disk::create_directory(place);
        if (what == u"file") std::ofstream(place) << "text";
        if (what.starts_with('/')) disk::create_symlink(what, place);
    };
    for (const Name file : {u"control", u"http", u"https", u"main.pid"}) {
        for (const auto& [tokens, expected, where] : read_cases("runtime_places.txt")) {
            if (tokens.size() == 3 && tokens[2] != (posix ? u"posix" : u"windows")) continue;
            const path place = root / std::to_string(std::random_device()());
            put(tokens[0], place);
            put(tokens[1], place / file);
            // Twice, because a failure removes nothing.
            Lines got = {published(file, place), published(file, place)};
            if (expected.size() == 3) got.push_back(read(file, place));
            EXPECT_EQ(got, expected) << where;
        }
        const char* text = file == u"main.pid" ? "bad_config: no pid root" : "bad_config: no endpoint root";
        EXPECT_EQ(Lines({published(file, path()), read(file, path())}), Lines(2, text));
    }
}

TEST_F(RuntimeFiles, are_read_whole_or_empty_or_not_at_all_while_they_are_rewritten) {
    std::jthread writer([&](const std::stop_token& stop) {
        std::vector<std::shared_ptr<void>> owners;
        for (std::uint32_t i = 0; !stop.stop_requested(); ++i) {
            // Written as a new file, and then a few times over the existing one.
            if (i % 8 == 0) owners.clear();
            owners.push_back(publish(u"main.pid", root, u"", i % 2 == 0 ? 1 : 4'294'967'295));
        }
    });
    std::set<std::string> seen;
    for (int i = 0; i != 100'000; ++i)
        seen.insert(read(u"main.pid", root));
    // Except for a value, which of them are seen is a matter of chance.
    EXPECT_GT(seen.erase("1") + seen.erase("4294967295"), 0u);
    seen.erase("0"), seen.erase("config_io_error: error opening FILE");
    // The C runtime of Windows reads until the end of the file, and a writer can come in between.
    if (!posix) seen.erase("1294967295");
    EXPECT_EQ(seen, std::set<std::string>()) << "neither whole, nor empty, nor absent";
}

} // namespace
} // namespace qel::config::test
