// Shared by the tests: parsing a list of tokens, and cases read from files under data/.
#pragma once

#include "qel/config/config.hpp"
#include "samples.hpp"

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/split.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <deque>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace qel::config::test {

using namespace std::string_literals;
using i18n::ustring_to_utf8;
using Tokens = std::deque<std::u16string>;
using Lines = std::vector<std::string>;
using S = ServerSettings;

/// A stream that keeps its text, in which each flush is a form feed.
struct Recorder : std::stringbuf, std::ostream {
    Recorder() : std::ostream(this) {}
    int sync() override { return sputc('\f'), 0; }
};

/// The result of one call of parse_settings.
struct Parsed {
    ServerSettings settings;
    boost::system::error_code code;
    std::string text;
};

inline Parsed parse(const Tokens& tokens, ServerSettings before = {}) {
    Recorder out;
    Parsed result{std::move(before), {}, {}};
    result.code = parse_settings(result.settings, tokens, out);
    result.text = out.str();
    return result;
}

inline Tokens operator+(Tokens left, const Tokens& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

/// The same with the required flag before the tokens.
inline Parsed parse_with_root(const Tokens& tokens, ServerSettings before = {}) {
    return parse(Tokens{u"--auto-deploy-root", u"D"} + tokens, std::move(before));
}

/// A file under data/, or in the directory that empty_tables_test.py names.
inline std::string table(const std::string& name) {
    const char* const other = std::getenv("ZEP_TEST_DATA");
    return (other != nullptr ? other : ZEP_TEST_DATA) + ("/" + name);
}

/// A line of a file under data/ cut at every '|', and the indented lines below it. In both, {hex} is one
/// UTF-16 code unit. Lines that begin with '#' are comments.
struct Case {
    Tokens tokens;
    Lines expected;
    std::string where;
};

inline std::vector<Case> read_cases(const std::string& file_name) {
    const auto decode = [](const std::string& line) {
        std::u16string text = i18n::utf8_to_ustring(line);
        for (std::size_t open = 0; (open = text.find(u'{', open)) != text.npos; ++open) {
            const std::size_t length = text.find(u'}', open) + 1 - open;
            const int unit = std::stoi(ustring_to_utf8(text.substr(open + 1, length - 2)), nullptr, 16);
            text.replace(open, length, 1, static_cast<char16_t>(unit));
        }
        return text;
    };
    std::ifstream file(table(file_name));
    std::vector<Case> cases;
    std::string line;
    for (int number = 1; std::getline(file, line); ++number) {
        if (line.starts_with("  ")) {
            cases.at(cases.size() - 1).expected.push_back(ustring_to_utf8(decode(line.substr(2))));
        } else if (!line.empty() && line[0] != '#') {
            cases.push_back({{}, {}, file_name + ":" + std::to_string(number)});
            Lines tokens;
            for (const std::string& token : boost::split(tokens, line, boost::is_any_of("|")))
                cases.back().tokens.push_back(decode(token));
        }
    }
    if (cases.empty()) throw std::logic_error(file_name + " has no rows");
    return cases;
}

/// Names what only one of the lists has; if they differ in nothing else, what is at another place.
inline void expect_same_lists(const Lines& listed, const Lines& golden, const std::string& file_name) {
    const auto only = [](const Lines& here, const Lines& there) {
        Lines found;
        std::ranges::copy_if(here, std::back_inserter(found),
                             [&](const auto& one) { return std::ranges::count(there, one) == 0; });
        return found;
    };
    for (const std::string& one : only(listed, golden))
        ADD_FAILURE() << "not in tests/data/" << file_name << ": " << one;
    for (const std::string& one : only(golden, listed))
        ADD_FAILURE() << "only in tests/data/" << file_name << ": " << one;
    if (testing::Test::HasFailure()) return;
    EXPECT_EQ(listed.size(), golden.size());
    for (std::size_t i = 0; i < std::min(listed.size(), golden.size()); ++i)
        ASSERT_EQ(listed[i], golden[i]) << "at another place in tests/data/" << file_name;
}

/// Code and text, unless the parse succeeded silently; then each field that differs from `base`, in the form of the
/// files.
inline Lines outcome(const Parsed& got, const S& base) {
    Lines lines;
    if (got.code != error_code::success() || !got.text.empty())
        lines.push_back(got.code.message() + ": " + got.text);
    each_field<S>([&](const auto& field) {
        const auto& value = (got.settings.*field.read)();
        if (!(value == (base.*field.read)())) lines.push_back(field.name + " = "s + as_text(value));
    });
    return lines;
}

inline void expect_cases(const std::string& file_name, const Tokens& prefix, const S& before = {}) {
    const S base = parse(prefix, before).settings;
    for (const Case& one : read_cases(file_name))
        EXPECT_EQ(outcome(parse(prefix + one.tokens, before), base), one.expected) << one.where;
}

} // namespace qel::config::test
