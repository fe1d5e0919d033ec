// What each stage of a start-up costs, exactly. bench/measure.py runs it and compares.
#include "corpus.hpp"
#include "count.hpp"

#include "qel/config/config.hpp"
#include "qel/i18n/convert.hpp"

#include <filesystem>
#include <sstream>
#include <stdexcept>

namespace qel::config::bench {
namespace {

ServerSettings parsed(const Corpus& corpus) {
    std::ostringstream out;
    ServerSettings settings;
    if (parse_settings(settings, corpus.wide, out)) throw std::runtime_error(corpus.name + ": " + out.str());
    return settings;
}

void count_parsing(const Corpus& corpus) {
    std::ostringstream out;
    count("parse " + corpus.name, [&] {
        ServerSettings settings;
        parse_settings(settings, corpus.wide, out);
    });
}

void count_validating(const std::string& name, const ServerSettings& settings) {
    ProblemList problems;
    FlagSet flags;
    count("validate " + name, [&] { validate_settings(settings, problems, flags); });
}

/// Settings with 10,000 runtime roots, and directories that really lie `depth` levels below one another.
ServerSettings deep_settings(const std::filesystem::path& top, int depth) {
    std::filesystem::path deep = top;
    for (int i = 0; i != depth; ++i)
        deep /= "directory";
    std::filesystem::create_directories(deep);
    ServerSettings settings;
    settings.auto_deploy_root() = Path(deep.u16string());
    settings.log_root() = Path((deep / "log").u16string());
    settings.extract_root() = Path((top / "extract").u16string());
    for (int i = 0; i != 10'000; ++i)
        settings.lumo_root().emplace_back((deep / std::to_string(i)).u16string());
    return settings;
}

void count_everything() {
    for (const Corpus& corpus : corpora()) {
        count_parsing(corpus);
        const ServerSettings settings = parsed(corpus);
        count("copy " + corpus.name, [&] { ServerSettings copy(settings); });
        count("compare " + corpus.name, [&, other = settings] { static_cast<void>(settings == other); });
        count_validating(corpus.name, settings);
    }
    for (const int flags : {100, 1'000, 10'000, 100'000})
        count_parsing(repeated(flags));

    // A fixed name: its length is part of the work.
    const auto top = std::filesystem::temp_directory_path() / "zep_config_bench";
    count_validating("10,000 roots in a deep tree", deep_settings(top, 20));
    std::filesystem::remove_all(top);

    const ProblemList problems(10, u"a problem of the length that problems commonly have");
    const FlagSet flags = {option::http(), option::https(), option::wait()};
    std::ostringstream out;
    count("report", [&] { report_problems(problems, flags, out); });
    count("usage", [&] { usage(u"orvane", out); });
}

} // namespace
} // namespace qel::config::bench

int main() {
    qel::config::bench::count_everything();
}
