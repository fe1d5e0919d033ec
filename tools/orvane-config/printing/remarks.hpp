// What editors and CI systems read: a list of remarks, each with its place, in the formats of compilers, SARIF and JUnit.
#pragma once

#include "explaining/verdict.hpp"
#include "preflight/report.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace orvane {

struct Remark {
    SourcePlace place;      ///< of a token that was read from a file
    std::string elsewhere;  ///< where it is if not in a file, such as "argument 3"
    std::string_view level; ///< error, warning or note
    std::string text;       ///< one line
    std::string_view id;    ///< empty: the tool could not look

    std::string where() const { return place.file.empty() ? elsewhere : place.text(); }
};

/// What was looked at as one: a configuration, or a group of preflight.
struct Case {
    std::string name;
    std::vector<Remark> remarks{};
    bool looked_at = true;
};

inline constexpr const char* command_line = "command line";

/// The name is that of a file, or command_line.
Case case_of(const std::string& name, const Verdict& verdict);
/// Of each group; only its problems.
std::vector<Case> cases_of(const preflight::Report& report);
/// Of a file that cannot be read.
Case unread(const std::string& name, const std::string& why);

/// FILE:LINE:COLUMN: error: TEXT [id], a line for each remark, and one for what was not looked at.
std::string to_gcc(const std::vector<Case>& cases);

/// A document of SARIF 2.1.0, where columns are counted in characters; what the tool could not look at is a notification.
std::string to_sarif(const std::vector<Case>& cases);

/// A test for each case, as JUnit reports them. A warning is a failure only if it is `strict`.
std::string to_junit(const std::string& suite, const std::vector<Case>& cases, bool strict);

} // namespace orvane
