// The tool as one process for many command lines: a start of it takes most of a short answer's time.
//
// It reads the number of words in a line, and the words, each ended by a zero byte. It writes a line with the exit code and
// the sizes of what the tool writes to standard output and standard error, and then both.
#include "system/exact_bytes.hpp"
#include "verbs/tool.hpp"

#include "qel/i18n/convert.hpp"

#include <iostream>
#include <sstream>
#include <string>

int main() {
    orvane::keep_bytes(stdin);
    orvane::keep_bytes(stdout);
    for (std::string word; std::getline(std::cin, word);) {
        orvane::Tokens line(std::stoul(word));
        for (std::u16string& token : line) {
            std::getline(std::cin, word, '\0');
            token = qel::i18n::utf8_to_ustring(word);
        }
        std::ostringstream out, err;
        const int code = static_cast<int>(orvane::run(line, out, err));
        std::cout << code << ' ' << out.view().size() << ' ' << err.view().size() << '\n'
                  << out.view() << err.view() << std::flush;
    }
}
