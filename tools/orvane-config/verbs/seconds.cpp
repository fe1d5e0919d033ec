// Options that take a time.
#include "verbs/seconds.hpp"

#include <locale>
#include <sstream>

namespace orvane {

double seconds_in(const Call& call, const OwnOption& option, const std::string& otherwise) {
    const std::string text = call.value(option, otherwise);
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    double seconds = 0;
    // Not a number is within no range.
    if (!(in >> seconds) || !in.eof() || !(seconds >= 0 && seconds <= longest_wait))
        throw Misused(spelled(option) + " takes a number of seconds, not '" + text + "'");
    return seconds;
}

} // namespace orvane
