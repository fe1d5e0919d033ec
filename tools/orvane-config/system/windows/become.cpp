// The program that takes the tool's place, on Windows.
#include "system/become.hpp"

#include "system/child_process.hpp"

#include "qel/i18n/convert.hpp"

#include <ostream>
#include <system_error>

#include <windows.h>

namespace orvane {

int become(const Tokens& command, std::ostream& err) {
    try {
        return ChildProcess(command).run();
    } catch (const std::system_error& failure) {
        err << "orvane-config: " << qel::i18n::ustring_to_utf8(command[0]) << ": " << failure.what() << '\n';
        const int error = failure.code().value();
        return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND ? 127 : 126;
    }
}

} // namespace orvane
