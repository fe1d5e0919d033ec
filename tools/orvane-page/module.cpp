// The tool as a WebAssembly module: one call for one command line. The files that it reads are in the module's memory.
#include "verbs/tool.hpp"

#include "qel/i18n/convert.hpp"

#include <array>
#include <cstddef>
#include <sstream>
#include <string>
#include <string_view>

namespace {

std::array<std::string, 2> texts; // of the last call

orvane::Tokens words_in(std::string_view text) {
    orvane::Tokens words;
    for (std::size_t end; (end = text.find('\0')) != text.npos; text.remove_prefix(end + 1))
        words.push_back(qel::i18n::utf8_to_ustring(text.substr(0, end)));
    return words;
}

} // namespace

extern "C" {
/// Runs the tool with words that are each ended by a zero byte, and returns its exit code.
int answer(const char* words, std::size_t size) {
    std::ostringstream out, err;
    const auto code = static_cast<int>(orvane::run(words_in({words, size}), out, err));
    texts = {out.str(), err.str()};
    return code;
}

/// What the last call wrote to standard output, 0, or standard error, 1.
const char* text(int stream) {
    return texts[stream == 0 ? 0 : 1].data();
}

std::size_t text_size(int stream) {
    return texts[stream == 0 ? 0 : 1].size();
}
}
