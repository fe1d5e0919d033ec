// Counts instructions and allocations of every parser for every command line. bench/table.py runs it.
#include "../count.hpp"
#include "contest.hpp"

int main() {
    using namespace qel::config::bench;
    for_each_contestant([](const std::string& line, const std::string& parser, int flags, auto parse) {
        count(line + "/" + parser + "/" + std::to_string(flags), parse);
    });
}
