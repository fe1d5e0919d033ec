// The problem report and the usage text, byte for byte.
#include "support.hpp"

namespace qel::config::test {
namespace {

std::string report(const ProblemList& problems, const FlagSet& flags) {
    Recorder out;
    report_problems(problems, flags, out);
    return out.str();
}

TEST(Report, lists_the_problems_and_then_the_flags) {
    const std::string first = "One or more configuration problem(s) detected: \n\f";
    const std::string second = "\n\fPlease fix the following flag(s) before restarting: \n\f";
    EXPECT_EQ(report({u"second: \u00e4\xD83D\xDE00", u"a\xD800z"}, {u"--b", u"--a", u"--\xDC00"}),
              first + "second: \xc3\xa4\xf0\x9f\x98\x80\n\fa\xef\xbf\xbdz\n\f" + second +
                  "--a\n\f--b\n\f--\xef\xbf\xbd\n\f");
    EXPECT_EQ(report({}, {}), first + second);
}

TEST(Usage, indents_every_line_to_the_first_flag_by_the_bytes_of_the_name) {
    std::ifstream file(table("usage.txt"));
    const std::string synopsis{std::istreambuf_iterator<char>(file), {}};
    ASSERT_NE(synopsis, "") << "usage.txt has no rows";
    for (const std::u16string program : {u"abc", u"", u"s\u00e4\xD83D\xDE00", u"\xD800"}) {
        const std::string name = ustring_to_utf8(program);
        std::string expected = "Usage: " + name + " " + synopsis;
        for (std::size_t end = 0; (end = expected.find("\n[", end)) != std::string::npos;)
            expected.insert(end + 1, name.size() + 8, ' ');
        Recorder out;
        EXPECT_EQ(&usage(program, out), &out);
        EXPECT_EQ(out.str(), expected);
    }
}

} // namespace
} // namespace qel::config::test
