// Names that files cannot have on Windows.
#include "text/windows_name.hpp"

#include "text/quoting.hpp"
#include "text/spelling.hpp"

#include <algorithm>
#include <array>

namespace orvane {
namespace {

/// With any ending, such as nul.txt, and blanks before it.
bool is_of_a_device(std::u16string_view name) {
    constexpr std::array<std::u16string_view, 6> devices = {u"con", u"prn",    u"aux",
                                                            u"nul", u"conin$", u"conout$"};
    const std::u16string stem = lower(orvane::trimmed(name.substr(0, name.find(u'.')), u" "));
    if (std::ranges::find(devices, stem) != devices.end()) return true;
    return stem.size() == 4 && (stem.starts_with(u"com") || stem.starts_with(u"lpt")) &&
           is_one_of(stem[3], u"123456789\u00B9\u00B2\u00B3");
}

std::string why_no_name(const std::u16string& name) {
    const auto bad =
        std::ranges::find_if(name, [](char16_t c) { return c < 0x20 || is_one_of(c, u"<>:\"|?*"); });
    if (bad != name.end()) return "no name on Windows can contain " + orvane::shown(std::u16string(1, *bad));
    if (name.find_first_not_of(u'.') == name.npos) return {};
    if (name.ends_with(u'.') || name.ends_with(u' '))
        return "Windows ignores the " + std::string(name.back() == u'.' ? "dot" : "space") +
               " at the end of " + orvane::shown(name);
    return is_of_a_device(name) ? "Windows keeps the name " + orvane::shown(name) + " for a device" : "";
}

} // namespace

std::string why_no_windows_name(std::u16string_view path) {
    // These prefixes switch the rules off.
    if (path.starts_with(u"\\\\?\\") || path.starts_with(u"\\\\.\\")) return {};
    if (path.size() > 1 && path[1] == u':') path.remove_prefix(2);
    for (const std::u16string& name : split_words(path, u"/\\"))
        if (std::string why = why_no_name(name); !why.empty()) return why;
    return {};
}

} // namespace orvane
