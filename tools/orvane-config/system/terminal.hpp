// The terminal that the output may go to.
#pragma once

#include <cstddef>

namespace orvane {

enum class Stream { out, err };

/// Also prepares the terminal for colours, where the system needs that.
bool is_terminal(Stream stream);

/// Columns of standard output's terminal; 80 when it is none.
std::size_t terminal_columns();

/// Everything the tool and the library print is UTF-8 while this lives, on the console too.
class Utf8Console {
public:
    Utf8Console();
    Utf8Console(const Utf8Console&) = delete;
    Utf8Console& operator=(const Utf8Console&) = delete;
    ~Utf8Console();

private:
    [[maybe_unused]] unsigned before_; ///< the console's code page
};

} // namespace orvane
