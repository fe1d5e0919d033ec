// Answers for programs. docs/tool-json.md describes them; their "format" number changes when they do.
#pragma once

#include "explaining/hazards.hpp"
#include "explaining/verdict.hpp"
#include "probing/settings.hpp"

#include <string>
#include <vector>

namespace orvane {

struct FileReport;
struct Reference;
struct Explanation;

inline constexpr int json_format = 1;

/// With `looks`, what an attacker would gain.
std::string check_json(const Verdict& verdict, bool with_origins = false,
                       const std::vector<HazardLook>& looks = {});
/// The same, and the corrected line.
std::string fix_json(const Verdict& verdict, const std::vector<Token>& corrected);
struct CheckedFile {
    std::string name;
    std::string answer;  ///< of check_json; empty if the file cannot be read
    std::string details; ///< then the reason
};
std::string checks_json(const std::vector<CheckedFile>& files);
std::string diff_json(const Verdict& before, const Verdict& after, const std::vector<Difference>& found,
                      bool same_tokens);
std::string status_json(const std::vector<FileReport>& files);
/// Flags and kinds of findings, where there are any.
std::string explain_json(const std::vector<const Reference*>& flags, const std::vector<Explanation>& kinds);

/// Instead of an answer: what went wrong, and the exit code.
std::string error_json(int code, const std::string& text);

} // namespace orvane
