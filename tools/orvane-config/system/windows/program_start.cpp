// What the system makes of a file that it is told to run, on Windows.
#include "system/program_start.hpp"

#include "qel/util/native_path.hpp"

#include <array>
#include <cwctype>
#include <fstream>
#include <string>

namespace orvane {
namespace {

using Kind = ProgramStart::Kind;

/// Its command processor runs these.
bool is_batch_file(std::wstring name) {
    for (wchar_t& c : name)
        c = static_cast<wchar_t>(std::towlower(c));
    return name.ends_with(L".bat") || name.ends_with(L".cmd");
}

} // namespace

ProgramStart start_of(const qel::util::filesystem::Path& file) {
    const auto name = qel::util::filesystem::native(file);
    if (is_batch_file(name.wstring())) return {Kind::program};
    std::array<char, 2> head{};
    std::ifstream in(name, std::ios_base::binary);
    if (!in) return {Kind::unread};
    in.read(head.data(), head.size());
    // Which processors' programs run here is not asked: Windows emulates others.
    if (head == std::array{'M', 'Z'}) return {Kind::program};
    return {Kind::not_run, {}, {}, "is not a program for Windows", "Check that this is the right file."};
}

} // namespace orvane
