// What a program's file has besides its first bytes, on POSIX.
#include "system/posix/elf_file.hpp"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <system_error>

#include <elf.h>

namespace orvane {
namespace {

template <class Part>
bool read_at(std::ifstream& in, std::uint64_t place, Part& part) {
    in.seekg(static_cast<std::streamoff>(place));
    return static_cast<bool>(in.read(reinterpret_cast<char*>(&part), sizeof part));
}

std::string text_at(std::ifstream& in, std::uint64_t place, std::uint64_t size) {
    constexpr std::uint64_t longest = 4096;
    std::string text(std::min(size, longest), '\0');
    in.seekg(static_cast<std::streamoff>(place));
    in.read(text.data(), static_cast<std::streamsize>(text.size()));
    return text.substr(0, text.find('\0'));
}

template <class Header, class Segment>
ElfFile read_elf(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios_base::binary);
    std::error_code error;
    const std::uint64_t size = std::filesystem::file_size(file, error);
    Header header{};
    if (error || !read_at(in, 0, header)) return {};
    ElfFile found;
    for (unsigned i = 0; i != header.e_phnum && found.whole; ++i) {
        Segment segment{};
        found.whole = read_at(in, header.e_phoff + i * sizeof segment, segment);
        if (segment.p_type != PT_LOAD && segment.p_type != PT_INTERP) continue;
        found.whole = segment.p_offset <= size && segment.p_filesz <= size - segment.p_offset;
        if (segment.p_type == PT_INTERP && found.whole)
            found.loader = text_at(in, segment.p_offset, segment.p_filesz);
    }
    return found;
}

} // namespace

ElfFile elf_32(const std::filesystem::path& file) {
    return read_elf<Elf32_Ehdr, Elf32_Phdr>(file);
}

ElfFile elf_64(const std::filesystem::path& file) {
    return read_elf<Elf64_Ehdr, Elf64_Phdr>(file);
}

} // namespace orvane
