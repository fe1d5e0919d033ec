// What the system makes of a file that it is told to run, on POSIX.
#include "system/program_start.hpp"

#include "system/entry.hpp"
#include "system/posix/elf_file.hpp"
#include "text/quoting.hpp"

#include "qel/i18n/convert.hpp"
#include "qel/util/native_path.hpp"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>
#include <utility>

#include <elf.h>

namespace orvane {
namespace {

using Kind = ProgramStart::Kind;
using qel::util::filesystem::Path;

constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
constexpr char own_program[] = "/proc/self/exe";

/// As much as Linux looks at; empty as well when the file cannot be read.
std::string head_of(const std::filesystem::path& file) {
    std::array<char, 256> head{};
    std::ifstream in(file, std::ios_base::binary);
    in.read(head.data(), head.size());
    return {head.data(), static_cast<std::size_t>(in.gcount())};
}

/// Where an ELF header has the processor; 32 or 64 bits and the order of bytes stand at `form`.
constexpr std::size_t form = 4, processor = 18, least_header = 52;

bool is_elf(std::string_view head) {
    return head.starts_with("\x7F"
                            "ELF") &&
           head.size() >= least_header;
}

std::string_view name_of_processor(std::string_view head) {
    struct Processor {
        std::string_view bytes, name;
    };
    constexpr Processor processors[] = {{{"\x03\0", 2}, "32-bit x86"},
                                        {{"\x28\0", 2}, "32-bit ARM"},
                                        {{"\x3E\0", 2}, "x86-64"},
                                        {{"\xB7\0", 2}, "64-bit ARM"},
                                        {{"\xF3\0", 2}, "RISC-V"}};
    for (const auto& [bytes, name] : processors)
        if (head.substr(processor, 2) == bytes) return name;
    return "another processor";
}

/// Whether this machine runs the one as it runs the other.
bool suits(std::string_view head, std::string_view own) {
    // Where the system leaves out the programs of before, their libraries are missing too.
    const bool older = name_of_processor(head) == "32-bit x86" && name_of_processor(own) == "x86-64";
    return older || (head.substr(form, 2) == own.substr(form, 2) &&
                     head.substr(processor, 2) == own.substr(processor, 2));
}

/// Linux can be told to run more: programs in an emulator, for example.
bool knows_more_formats() {
    std::error_code error;
    for (std::filesystem::directory_iterator one("/proc/sys/fs/binfmt_misc", error), end;
         !error && one != end; one.increment(error))
        if (const auto name = one->path().filename(); name != "register" && name != "status") return true;
    return false;
}

ProgramStart script(std::string line) {
    constexpr const char* blanks = " \t";
    line.resize(std::min(line.find('\n'), line.size()));
    line.erase(0, line.find_first_not_of(blanks));
    line.erase(line.find_last_not_of(blanks) + 1);
    ProgramStart start{Kind::script};
    start.interpreter = line.substr(0, line.find_first_of(blanks));
    start.argument = line.substr(start.interpreter.size());
    start.argument.erase(0, start.argument.find_first_not_of(blanks));
    return start;
}

ProgramStart not_run(std::string what, std::string advice) {
    return {knows_more_formats() ? Kind::unclear : Kind::not_run, {}, {}, std::move(what), std::move(advice)};
}

ProgramStart not_run(const Path& file, std::string_view head) {
    if (head.empty()) return not_run("is empty", "Copy it again from its source.");
    if (head.starts_with(byte_order_mark) && head.substr(byte_order_mark.size()).starts_with("#!"))
        return not_run("begins with a byte-order mark, so the system does not see its #!",
                       "Remove the mark: sed -i '1s/^\\xEF\\xBB\\xBF//' " + shown(file.text()));
    if (head.find('\0') != head.npos)
        return not_run("is in no format that this system runs", "Check that this is the right file.");
    return not_run("is no program, and no script either: it does not begin with #!",
                   "If it is a script, make #! and its interpreter the first line, for example #!/bin/sh.");
}

/// A program for this machine, which needs all of its parts and its loader.
ProgramStart program(const std::filesystem::path& file, std::string_view head) {
    const ElfFile elf = head[form] == ELFCLASS64 ? elf_64(file) : elf_32(file);
    if (!elf.whole) return {Kind::not_run, {}, {}, "is cut short", "Copy it again from its source."};
    if (elf.loader.empty() ||
        entry_at(Path(qel::i18n::utf8_to_ustring(elf.loader))).state == Entry::State::file)
        return {Kind::program};
    return {Kind::not_run,
            {},
            {},
            "needs the loader " + elf.loader + ", which is not there",
            "Install the packages that it was made for, or a program that was made for this system."};
}

} // namespace

ProgramStart start_of(const Path& file) {
    const auto name = qel::util::filesystem::native(file);
    const std::string head = head_of(name);
    if (head.empty() && !std::ifstream(name)) return {Kind::unread};
    if (head.starts_with("#!")) return script(head.substr(2));
    if (!is_elf(head)) return not_run(file, head);
    const std::string own = head_of(own_program);
    if (!is_elf(own)) return {Kind::program};
    if (suits(head, own)) return program(name, head);
    return not_run("is a program for " + std::string(name_of_processor(head)) + ", and this machine is " +
                       std::string(name_of_processor(own)),
                   "Install the program for this machine.");
}

} // namespace orvane
