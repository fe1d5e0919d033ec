// Entry on POSIX: arguments are UTF-8, and ill-formed ones are taken as well as they can be.
#include "verbs/tool.hpp"

#include "qel/i18n/convert.hpp"

#include <iostream>

int main(int argc, char** argv) {
    orvane::Tokens args;
    // A program can be started without any argument, not even its name.
    for (int i = 1; i < argc; ++i)
        args.push_back(qel::i18n::utf8_to_ustring(argv[i]));
    return static_cast<int>(orvane::run(args, std::cout, std::cerr));
}
