// The program that takes the tool's place, on POSIX.
#include "system/become.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <ostream>
#include <string>
#include <system_error>
#include <vector>

#include <unistd.h>

namespace orvane {

int become(const Tokens& command, std::ostream& err) {
    std::vector<std::string> texts;
    std::transform(command.begin(), command.end(), std::back_inserter(texts),
                   [](const std::u16string& token) { return qel::i18n::ustring_to_utf8(token); });
    std::vector<char*> words;
    words.reserve(texts.size() + 1);
    for (std::string& text : texts)
        words.push_back(text.data());
    words.push_back(nullptr);
    execvp(words[0], words.data());
    const int error = errno;
    err << "orvane-config: cannot start " << texts[0] << ": " << std::generic_category().message(error)
        << '\n';
    return error == ENOENT ? 127 : 126;
}

} // namespace orvane
