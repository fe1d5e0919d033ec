// The C++ of the documents, compiled from the documents themselves.
#include <boost/asio/ip/tcp.hpp>

#include "snippets/README.inc"
#include "snippets/embedding.inc"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include <signal.h>
#include <unistd.h>

// What the servers of the documents leave to others.
std::vector<qel::config::ServerSettings> applied;
void apply(const qel::config::ServerSettings& settings) {
    applied.push_back(settings);
}
unsigned own_process_id() {
    return 4711;
}

namespace qel::config::test {
namespace {

TEST(Snippets, configure_accepts_valid_settings_only_and_says_what_is_wrong_with_others) {
    const struct {
        std::deque<std::u16string> tokens;
        bool accepted;
        std::string said;
    } cases[] = {
        {{u"--auto-deploy-root", u"D"}, true, ""},
        {{}, false, "\nmissing required flag: --auto-deploy-root\nUsage: orvane --auto-deploy-root"},
        {{u"--nonsense"}, false, "unrecognized option: --nonsense\n\nunrecognized flag\nUsage: orvane"},
        {{u"--auto-deploy-root", u"D", u"--wait", u"--num-workers", u"1"},
         false,
         "One or more configuration"},
    };
    for (const auto& one : cases) {
        testing::internal::CaptureStderr();
        ServerSettings settings;
        EXPECT_EQ(::configure(settings, one.tokens), one.accepted);
        const std::string said = testing::internal::GetCapturedStderr();
        EXPECT_EQ(said.substr(0, one.said.size()), one.said);
        EXPECT_EQ(said.empty(), one.said.empty());
    }
}

std::string content(const char* file) {
    std::ifstream in(file);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// An empty current directory, removed at the end.
struct Place {
    std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("snippets" + std::to_string(getpid()));
    Place() {
        std::filesystem::create_directory(path);
        std::filesystem::current_path(path);
    }
    ~Place() {
        std::filesystem::current_path(path.parent_path());
        std::filesystem::remove_all(path);
    }
};

TEST(Snippets, publish_has_the_files_in_place_until_its_end) {
    const Place place;
    ServerSettings settings;
    settings.pid_root(Path(u"."));
    settings.endpoint_root(Path(u"."));
    settings.control_port(80u);
    const unsigned own_process_id = 4711;
    const std::u16string host = u"b\u00fccher.de";
    const unsigned short port = 80;
    const boost::asio::ip::tcp::endpoint control_endpoint(boost::asio::ip::make_address("::1"), 80);
    {
#include "snippets/runtime-files.inc"
        EXPECT_EQ(content("main.pid") + " " + content("control") + " " + content("http"),
                  "4711 [::1]:80 b\u00fccher.de:80");
    }
    EXPECT_TRUE(std::filesystem::is_empty("."));
}

TEST(Snippets, a_reload_takes_over_what_is_accepted_and_keeps_the_old_settings_otherwise) {
    const Place place;
    std::filesystem::create_directory("one");
    std::filesystem::create_directory("two");
    // The flags that are read, and the directory that has the pid file afterwards.
    const struct {
        std::string flags, files;
        bool accepted;
    } reloads[] = {
        {"--pid-root one --user-data a%1 --http 80", "one", true},
        {"--pid-root ./one// --user-data a%1", "one", true},
        {"--pid-root one --user-data a%1 --num-threads 0", "one", false},
        {"--pid-root none --user-data a%1", "one", false},
        {"--pid-root two --user-data a%1", "two", true},
        {"--user-data a%1", "", true},
    };
    const auto tokens_of = [](const std::string& flags) {
        Tokens tokens = {u"--auto-deploy-root", u"D"};
        std::istringstream words(flags);
        for (std::string word; words >> word;) {
            std::ranges::replace(word, '%', ' ');
            tokens.push_back(i18n::utf8_to_ustring(word));
        }
        return tokens;
    };
    const auto files = [] {
        std::string found;
        for (const char* directory : {"one", "two"})
            if (content((std::string(directory) + "/main.pid").c_str()) == "4711") found += directory;
        return found;
    };
    sigset_t signals, before;
    sigemptyset(&signals);
    for (const int number : {SIGHUP, SIGTERM})
        sigaddset(&signals, number);
    pthread_sigmask(SIG_BLOCK, &signals, &before);

    // A reload begins when the one before has ended: then its files and settings can be looked at.
    std::size_t next = 0, accepted = 0;
    const auto look = [&] {
        accepted += reloads[next].accepted;
        EXPECT_EQ(files(), reloads[next].files) << reloads[next].flags;
        ASSERT_EQ(applied.size(), accepted) << reloads[next].flags;
        EXPECT_EQ(applied.back().user_data().size(), 1u);
        EXPECT_EQ(applied.back().http().has_value(), next == 0);
    };
    const auto read_tokens = [&] {
        look();
        kill(getpid(), ++next + 1 < std::size(reloads) ? SIGHUP : SIGTERM);
        return tokens_of(reloads[next].flags);
    };
    ServerSettings first;
    testing::internal::CaptureStderr();
    EXPECT_TRUE(::configure(first, tokens_of(reloads[0].flags)));
    kill(getpid(), SIGHUP);
    ::serve(first, read_tokens, signals);
    const std::string said = testing::internal::GetCapturedStderr();
    look();
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    EXPECT_EQ(next + 1, std::size(reloads));
    EXPECT_TRUE(said.starts_with("--num-threads must be") && said.find("none") != said.npos) << said;
}

} // namespace
} // namespace qel::config::test
