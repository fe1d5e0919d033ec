// What a program's file has besides its first bytes.
#pragma once

#include <filesystem>
#include <string>

namespace orvane {

struct ElfFile {
    bool whole = true;    ///< all that is to be loaded is there
    std::string loader{}; ///< the program that loads this one and its libraries; empty: none is needed
};

/// Of a file whose header is there, in this machine's order of bytes. What cannot be read counts as whole.
ElfFile elf_32(const std::filesystem::path& file);
ElfFile elf_64(const std::filesystem::path& file);

} // namespace orvane
