// Measures the time of every parser for every command line. bench/table.py runs it.
#include "contest.hpp"

#include <benchmark/benchmark.h>

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    using namespace qel::config::bench;
    for_each_contestant([](const std::string& line, const std::string& parser, int flags, auto parse) {
        const std::string name = line + "/" + parser + "/" + std::to_string(flags);
        benchmark::RegisterBenchmark(name.c_str(), [parse](benchmark::State& state) {
            for (auto _ : state)
                parse();
        });
    });
    benchmark::RunSpecifiedBenchmarks();
}
