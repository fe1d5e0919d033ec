// The C++ of the documents, compiled from the documents themselves.
#include <boost/asio/ip/tcp.hpp>

#include "snippets/README.inc"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

int serve(const qel::config::ServerSettings&) {
    return 42;
}

namespace qel::config::test {
namespace {

TEST(Snippets, start_serves_with_valid_settings_only_and_says_what_is_wrong_with_others) {
    const struct {
        std::deque<std::u16string> tokens;
        int result;
        std::string said;
    } cases[] = {
        {{u"--auto-deploy-root", u"D"}, 42, ""},
        {{}, 1, "\nmissing required flag\nUsage: orvane --auto-deploy-root"},
        {{u"--nonsense"}, 1, "unrecognized option: --nonsense\n\nunrecognized flag\nUsage: orvane"},
        {{u"--auto-deploy-root", u"D", u"--wait", u"--num-workers", u"1"}, 1, "One or more configuration"},
    };
    for (const auto& one : cases) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(start(one.tokens), one.result);
        const std::string said = testing::internal::GetCapturedStderr();
        EXPECT_EQ(said.substr(0, one.said.size()), one.said);
        EXPECT_EQ(said.empty(), one.said.empty());
    }
}

std::string content(const char* file) {
    std::ifstream in(file);
    return {std::istreambuf_iterator<char>(in), {}};
}

TEST(Snippets, publish_has_the_files_in_place_until_its_end) {
    const auto place = std::filesystem::temp_directory_path() / ("snippets" + std::to_string(std::rand()));
    std::filesystem::create_directory(place);
    std::filesystem::current_path(place);
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
    std::filesystem::current_path(place.parent_path());
    std::filesystem::remove_all(place);
}

} // namespace
} // namespace qel::config::test
