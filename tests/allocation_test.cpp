// Makes memory run out at every place where it can. What the headers say about that must hold, and nothing may leak:
// the sanitizer checks that.
#include <boost/asio/ip/tcp.hpp>

#include "replaced_new.hpp"
#include "support.hpp"

#include "qel/util/canonicalize.hpp"

#include <filesystem>
#include <functional>
#include <random>

namespace qel::config::test {
namespace {

/// While this object exists, allocations succeed.
struct Calm {
    long before = std::exchange(failing, 0);
    ~Calm() { failing = before; }
};

/// A stream that allocates nothing.
struct Fixed : std::streambuf, std::ostream {
    char buffer[8192];
    Fixed() : std::ostream(this) { setp(buffer, std::end(buffer)); }
    std::string text() const { return {pbase(), pptr()}; }
};

/// How many allocations were made to fail, by operation.
std::map<std::string, int> points;

/// Fails the n-th allocation, alone and then together with all later ones, for n = 1, 2, ... until `work` makes fewer.
/// `work` must give the same result each time, or throw; a reader or writer of files may report the file instead.
void starve(const std::string& name, const std::function<std::string()>& work) {
    const std::string unhindered = work();
    const int before = points[name];
    for (const bool all : {false, true}) {
        for (int n = failed = true; failed; points[name] += failed, ++n) {
            all_behind_fail = all;
            failed = false;
            failing = n;
            try {
                const std::string got = work();
                const Calm calm;
                EXPECT_EQ(got, unhindered) << name << ", allocation " << n;
            } catch (const std::bad_alloc&) {
            } catch (const config_io_error&) {
            }
            failing = 0;
        }
    }
    EXPECT_GT(points[name], before) << name << " took no memory that could be refused";
}

/// Code, text and record if no allocation failed. Inside the walk a failure is a parse error, and elsewhere it throws.
std::string parsed(const Tokens& tokens) {
    S record;
    Fixed out;
    boost::system::error_code code;
    try {
        code = parse_settings(record, tokens, out);
    } catch (const std::bad_alloc&) {
        EXPECT_TRUE(all_behind_fail || record.no_banner()) << "thrown before the last flag is read";
        throw;
    }
    const Calm calm;
    if (!failed || code != error_code::parse_error()) return code.message() + out.text() + as_text(record);
    EXPECT_NE(out.text().find(" (at option '--"), std::string::npos) << out.text();
    throw std::bad_alloc();
}

TEST(Allocation, that_fails_while_a_value_is_converted_is_told_with_the_flag_and_the_value) {
    const Tokens tokens = {u"--log-root", u"a root whose name takes memory"};
    S record;
    Fixed out;
    all_behind_fail = false;
    failing = 1;
    const auto code = parse_settings(record, tokens, out);
    const Calm calm;
    EXPECT_EQ(code, error_code::parse_error());
    EXPECT_EQ(out.text(),
              "invalid option '--log-root a root whose name takes memory', std::bad_alloc (at option "
              "'--log-root')");
}

TEST(Allocation, may_fail_anywhere) {
    Tokens tokens = {u"--user-data", u"k again",    u"--user-data",    u"k 2",
                     u"--wait",      u"--log-root", u"D/.zep_deployed"};
    for (const Case& line : read_cases("full.txt"))
        tokens = tokens + line.tokens;
    tokens.push_back(u"--no-banner");
    starve("parse_settings", [&] { return parsed(tokens); });
    for (const char* file :
         {"flags_accepted.txt", "flags_refused.txt", "values_accepted.txt", "values_refused.txt"})
        for (const Case& one : read_cases(file))
            starve("parse_settings", [&] {
                return parsed(Tokens{u"--auto-deploy-root", u"D", u"--no-banner"} + one.tokens);
            });

    S settings = parse(tokens).settings;
    settings.lumo_root().resize(3, Path(u"a root whose name takes memory"));
    ProblemList problems, found;
    FlagSet flags, involved;
    EXPECT_TRUE(validate_settings(settings, problems, flags) && problems.size() >= 3);
    starve("validate_settings", [&] {
        try {
            return validate_settings(settings, found, involved).message();
        } catch (const std::bad_alloc&) {
            EXPECT_TRUE(std::equal(found.begin(), found.end(), problems.begin())) << "what was found so far";
            throw;
        }
    });
    EXPECT_TRUE(found == problems && involved == flags);
    starve("Canonicalizer", [&] {
        const auto canonical = [](auto& by) {
            return ustring_to_utf8(by.canonicalize(Path(u"/dev/fd")).text());
        };
        util::filesystem::Canonicalizer asked, fresh;
        try {
            return canonical(asked);
        } catch (const std::bad_alloc&) {
            const Calm calm;
            EXPECT_EQ(canonical(asked), canonical(fresh)) << "remembers what it was not told";
            throw;
        }
    });
    starve("report_problems, usage", [&] {
        Fixed out;
        report_problems(problems, flags, out);
        usage(u"a name that takes memory", out);
        return out.text();
    });
    starve("records, option, exceptions", [&] {
        S copy(settings), assigned = sample<S>(2);
        assigned = copy;
#define ZEP_FLAG(name, text) EXPECT_EQ(option::name(), text);
#include "qel/config/flags.def"
        return bad_config(bad_config("a text that takes memory")).what() +
               std::to_string(assigned == settings);
    });

    const auto root =
        std::filesystem::temp_directory_path() / ("zep_" + std::to_string(std::random_device()()));
    std::filesystem::create_directory(root);
    settings.pid_root() = settings.endpoint_root() = Path(root.u16string());
    const auto file = [&](const std::string& name, auto publish, auto read) {
        const auto content = [&](const auto& owner) {
            const Calm calm;
            static_cast<void>(owner);
            return (std::ostringstream() << std::ifstream(root / name).rdbuf()).str();
        };
        starve("owner of " + name, [&] { return content(publish()); });
        const auto owner = publish();
        starve("reader of " + name, [&] { return read(settings); });
    };
    const tcp_endpoint endpoint(boost::asio::ip::make_address("2001:db8::1234:5678"), 65535);
    const http_endpoint host(u"www.a-long-name.example"s, 1);
    using std::to_string;
    file(
        "main.pid", [&] { return scoped_master_pid_file(settings, 4'000'000'000); },
        [](const S& s) { return to_string(read_master_pid(s)); });
    file(
        "control", [&] { return scoped_control_endpoint_file(settings, endpoint); },
        [&](const S& s) { return to_string(read_control_endpoint(s) == endpoint); });
    file(
        "http", [&] { return scoped_http_endpoint_file(settings, host, HTTPProtocol::http); },
        [](const S& s) { return ustring_to_utf8(read_http_endpoint(s, HTTPProtocol::http).host_name()); });
    std::filesystem::remove_all(root);
    for (const auto& [name, count] : points)
        std::cout << name << ": " << count << " failed allocations\n";
}

} // namespace
} // namespace qel::config::test
