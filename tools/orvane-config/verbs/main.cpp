// Entry.
#include "system/terminal.hpp"
#include "verbs/tool.hpp"

#include "qel/util/command_line.hpp"

#include <iostream>

int main(int argc, char** argv) {
    const orvane::Utf8Console console;
    const orvane::Tokens args = qel::util::command_line_tokens(argc, argv);
    return static_cast<int>(orvane::run(args, std::cout, std::cerr));
}
