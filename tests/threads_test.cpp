// Threads that share only immutable records and the library do not disturb each other. The thread sanitizer watches,
// and each thread's results are compared with those of a single thread.
#include "support.hpp"

#include <filesystem>
#include <random>
#include <thread>

namespace qel::config::test {
namespace {

/// The results of start-ups: for every line its code, text, record and report, and then the content of the runtime
/// files.
Lines start_up(const std::vector<Case>& lines, const S& shared, const std::filesystem::path& root) {
    Lines results;
    for (const Case& line : lines) {
        const Parsed got = parse(line.tokens, shared);
        ProblemList problems;
        FlagSet flags;
        std::ostringstream out;
        const auto verdict = validate_settings(got.settings, problems, flags);
        report_problems(problems, flags, usage(option::wait(), out));
        results.push_back(got.code.message() + got.text + verdict.message() + as_text(got.settings) +
                          out.str());
    }
    S own(shared);
    own.pid_root() = own.endpoint_root() = Path(root.u16string());
    const scoped_master_pid_file pid(own, 1234);
    const scoped_http_endpoint_file http(own, {boost::none, 80}, HTTPProtocol::http);
    results.push_back(std::to_string(read_master_pid(own)) + as_text(shared));
    results.push_back(std::to_string(read_http_endpoint(own, HTTPProtocol::http).port()));
    return results;
}

TEST(Threads, with_their_own_records_streams_and_files_do_not_meet) {
    std::vector<Case> lines;
    for (const char* name :
         {"flags_accepted.txt", "flags_refused.txt", "caches_refused.txt", "values_refused.txt"})
        for (const Case& one : read_cases(name))
            lines.push_back(one);
    const S shared = sample<S>(2);
    const auto root =
        std::filesystem::temp_directory_path() / ("zep_" + std::to_string(std::random_device()()));
    std::filesystem::create_directories(root / "alone");
    const Lines alone = start_up(lines, shared, root / "alone");
    std::vector<std::jthread> running;
    for (int i = 0; i != 8; ++i)
        running.emplace_back([&, own = root / std::to_string(i)] {
            std::filesystem::create_directory(own);
            for (int round = 0; round != 10; ++round)
                EXPECT_EQ(start_up(lines, shared, own), alone);
        });
    running.clear();
    std::filesystem::remove_all(root);
}

} // namespace
} // namespace qel::config::test
