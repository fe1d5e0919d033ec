// Counts what each stage of a start-up costs. bench/measure.py runs it and compares.
#include "corpus.hpp"
#include "count.hpp"

#include "qel/config/config.hpp"
#include "qel/i18n/convert.hpp"

#include <ostream>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <utility>

namespace qel::config::bench {
namespace {

/// Drops what is written: a growing buffer would sometimes be counted too.
class Nowhere : public std::streambuf {
    std::streamsize xsputn(const char*, std::streamsize size) override { return size; }
    int_type overflow(int_type byte) override { return traits_type::not_eof(byte); }
};

ServerSettings parsed(const Corpus& corpus) {
    std::ostringstream out;
    ServerSettings settings;
    if (parse_settings(settings, corpus.wide, out)) throw std::runtime_error(corpus.name + ": " + out.str());
    return settings;
}

void count_parsing(const std::string& name, const std::deque<std::u16string>& tokens) {
    Nowhere nowhere;
    std::ostream out(&nowhere);
    count(name, [&] {
        ServerSettings settings;
        static_cast<void>(parse_settings(settings, tokens, out));
    });
}

void count_validating(const std::string& name, const ServerSettings& settings) {
    ProblemList problems;
    FlagSet flags;
    count("validate " + name, [&] { static_cast<void>(validate_settings(settings, problems, flags)); });
}

/// Settings with 10,000 runtime roots, and directories that lie `depth` levels below one another.
ServerSettings deep_settings(int depth) {
    std::u16string deep = u"/srv";
    for (int i = 0; i != depth; ++i)
        deep += u"/directory";
    ServerSettings settings;
    settings.auto_deploy_root() = Path(deep + u"/deploy");
    settings.log_root() = Path(deep + u"/log");
    settings.extract_root() = Path(deep + u"/extract");
    for (int i = 0; i != 10'000; ++i)
        settings.lumo_root().emplace_back(deep + u"/" + i18n::utf8_to_ustring(std::to_string(i)));
    return settings;
}

void count_everything() {
    for (const Corpus& corpus : corpora()) {
        count_parsing("walk " + corpus.name, for_walk_alone(corpus.wide));
        count_parsing("parse " + corpus.name, corpus.wide);
        const ServerSettings settings = parsed(corpus);
        count("copy " + corpus.name, [&] { ServerSettings copy(settings); });
        count("compare " + corpus.name, [&, other = settings] { static_cast<void>(settings == other); });
        count_validating(corpus.name, settings);
    }
    for (const Corpus& corpus :
         {repeated(100), repeated(1'000), repeated(10'000), repeated(100'000), repeated(10'000, all_kinds)})
        count_parsing("parse " + corpus.name, corpus.wide);

    // Values in forms that are rare on command lines.
    for (const auto& [flag, value] : {std::pair(option::request_timeout(), u"5"),
                                      {option::request_timeout(), u"1:30"},
                                      {option::log_rotation_size(), u"10MB"}})
        count_parsing("parse " + i18n::ustring_to_utf8(flag + u" " + value),
                      {option::auto_deploy_root(), u"D", flag, value});

    count_validating("10,000 roots in a deep tree", deep_settings(20));

    const ProblemList problems(10, u"a problem of the length that problems commonly have");
    const FlagSet flags = {option::http(), option::https(), option::wait()};
    Nowhere nowhere;
    std::ostream out(&nowhere);
    count("report", [&] { report_problems(problems, flags, out); });
    count("usage", [&] { usage(u"orvane", out); });
}

} // namespace
} // namespace qel::config::bench

int main() {
    qel::config::bench::count_everything();
}
