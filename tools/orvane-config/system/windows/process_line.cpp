// The command line and the name of a running process, on Windows: the system shows the line in no file.
#include "system/process_line.hpp"

#include "system/windows/handle.hpp"

#include "qel/i18n/convert.hpp"

#include <array>
#include <stdexcept>

namespace orvane {

std::string process_line_file(unsigned) {
    throw std::runtime_error("the command line of a running process can be read only on Linux");
}

std::string process_name(unsigned pid) {
    const Handle process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, pid));
    std::array<wchar_t, 4096> path{};
    DWORD size = static_cast<DWORD>(path.size());
    if (process.get() == nullptr || !QueryFullProcessImageNameW(process.get(), 0, path.data(), &size))
        return "";
    const std::u16string text(path.data(), path.data() + size);
    return qel::i18n::ustring_to_utf8(text.substr(text.rfind(u'\\') + 1));
}

} // namespace orvane
