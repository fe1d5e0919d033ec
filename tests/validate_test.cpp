// The checks of settings against each other.
#include "support.hpp"

#include <boost/algorithm/string/join.hpp>

#include <filesystem>
#include <random>

namespace qel::config::test {
namespace {

/// The problems, each after a dash, then the flags in one line, in the form of validate.txt.
Lines validate(const S& settings) {
    ProblemList problems = {u"left over"};
    FlagSet flags = {u"--left-over"};
    const auto code = validate_settings(settings, problems, flags);
    EXPECT_EQ(code, problems.empty() ? error_code::success() : error_code::incompatible_flags());
    Lines lines;
    for (const auto& problem : problems)
        lines.push_back("- " + ustring_to_utf8(problem));
    if (!flags.empty()) lines.push_back(ustring_to_utf8(boost::join(flags, u" ")));
    return lines;
}

TEST(Validate, lists_problems_in_the_order_of_the_rules_and_the_flags_involved) {
    for (const Case& one : read_cases("validate.txt")) {
        const Parsed parsed = parse_with_root(Tokens{u"--extract-root", u"E"} + one.tokens);
        EXPECT_EQ(parsed.code, error_code::success()) << one.where;
        EXPECT_EQ(validate(parsed.settings), one.expected) << one.where;
    }
}

TEST(Validate, takes_records_that_no_flags_give) {
    S settings = parse_with_root({u"--extract-root", u"E"}).settings;
    settings.server_memory_threshold(1);
    settings.server_memory_threshold_overflow_action(u"Archive_responses"s);
    settings.worker_pool_settings(WorkerPoolSettings(WorkerMemoryLimit(), RequestQueueTime()));
    EXPECT_EQ(validate(settings), Lines());
}

TEST(Validate, finds_nested_directories_whatever_their_spelling) {
    namespace fs = std::filesystem;
    const std::string name = "zep_nesting_" + std::to_string(std::random_device()());
    const fs::path before = fs::current_path(), root = fs::canonical(fs::temp_directory_path()) / name;
    for (const char* directory : {"extract/in", "deploy", "other"})
        fs::create_directories(root / directory);
    std::error_code no_links; // some systems have no links, or allow them only for some users
    fs::create_directory_symlink(root / "extract", root / "to_extract", no_links);
    fs::create_directory_symlink(root / "extract/in", root / "to_in", no_links);
    fs::create_directory_symlink(root / "other", root / "extract/to_other", no_links);
    fs::current_path(root);

    const auto rest = "-root can not be the same as, nor a direct or indirect child of, --extract-root"s;
    for (const Case& one : read_cases("nesting.txt")) {
        const auto path = [&](std::u16string text) {
            return Path(text.starts_with(u'%') ? root.u16string() + text.substr(1) : text);
        };
        if (no_links && (one.tokens[0] + one.tokens[1]).find(u"to_") != std::u16string::npos) continue;
        const bool nested = !one.expected.empty();
        S settings;
        settings.extract_root(path(one.tokens[1]));
        settings.endpoint_root(settings.extract_root()); // no rule for any other directory
        settings.auto_deploy_root(path(one.tokens[0]));
        const Lines deploy = {"- --auto-deploy" + rest, "--auto-deploy-root --extract-root"};
        const Lines log = {"- --log" + rest, "--extract-root --log-root"};
        EXPECT_EQ(validate(settings), nested ? deploy : Lines()) << one.where;
        settings.log_root(settings.auto_deploy_root());
        settings.auto_deploy_root(Path(u"one element"));
        EXPECT_EQ(validate(settings), nested ? log : Lines()) << one.where;
    }
    fs::current_path(before);
    fs::remove_all(root);
}

} // namespace
} // namespace qel::config::test
