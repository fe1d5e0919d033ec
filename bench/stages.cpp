// Measures the time of each stage of a start-up.
#include "corpus.hpp"

#include "qel/config/config.hpp"
#include "qel/i18n/convert.hpp"

#include <benchmark/benchmark.h>

#include <iostream>
#include <sstream>
#include <stdexcept>

namespace qel::config::bench {
namespace {

std::ostream& quiet() {
    static std::ostream nowhere(nullptr);
    return nowhere;
}

void parse(benchmark::State& state, const std::deque<std::u16string>& tokens,
           const boost::system::error_code& expected) {
    for (auto _ : state) {
        ServerSettings settings;
        if (parse_settings(settings, tokens, quiet()) != expected) throw std::logic_error("another outcome");
    }
}

void validate(benchmark::State& state, const ServerSettings& settings) {
    ProblemList problems;
    FlagSet flags;
    for (auto _ : state)
        benchmark::DoNotOptimize(validate_settings(settings, problems, flags));
}

void compare(benchmark::State& state, const ServerSettings& settings) {
    const ServerSettings other = settings;
    for (auto _ : state)
        benchmark::DoNotOptimize(settings == other);
}

void report(benchmark::State& state) {
    const ProblemList problems(10, u"a problem of the length that problems commonly have");
    const FlagSet flags = {option::http(), option::https(), option::wait()};
    for (auto _ : state) {
        std::ostringstream out;
        report_problems(problems, flags, out);
    }
}

void show_usage(benchmark::State& state) {
    for (auto _ : state) {
        std::ostringstream out;
        usage(u"orvane", out);
    }
}

void register_stages() {
    const auto stage = [](const std::string& name, auto function, auto... arguments) {
        benchmark::RegisterBenchmark(name.c_str(), function, arguments...);
    };
    for (const Corpus& corpus : corpora()) {
        ServerSettings settings;
        if (parse_settings(settings, corpus.wide, std::cerr))
            throw std::logic_error("refused: " + corpus.name);
        stage("walk " + corpus.name, parse, for_walk_alone(corpus.wide), error_code::missing_required_flag());
        stage("parse " + corpus.name, parse, corpus.wide, error_code::success());
        stage("validate " + corpus.name, validate, settings);
        stage("compare " + corpus.name, compare, settings);
    }
    stage("report", report);
    stage("usage", show_usage);
}

} // namespace
} // namespace qel::config::bench

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    qel::config::bench::register_stages();
    benchmark::RunSpecifiedBenchmarks();
}
