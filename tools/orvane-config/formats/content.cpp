// The content of files and of standard input.
#include "formats/content.hpp"

#include "formats/format.hpp"
#include "system/exact_bytes.hpp"

#include "qel/i18n/convert.hpp"
#include "qel/util/native_path.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace orvane {
namespace {

constexpr std::size_t largest_input = 4 << 20; // some devices have no end

[[noreturn]] void fail(const std::string& what) {
    const int error = errno;
    throw std::runtime_error(what + (error == 0 ? "" : ": " + std::generic_category().message(error)));
}

/// A zero byte may end a token.
bool is_in_no_text(char byte) {
    constexpr std::string_view controls("\0\b\t\n\v\f\r\x1b", 8);
    return byte >= 0 && byte < ' ' && controls.find(byte) == controls.npos;
}

std::filesystem::path native_of(const std::string& path) {
    return qel::util::filesystem::native(qel::util::filesystem::Path(qel::i18n::utf8_to_ustring(path)));
}

/// `read` fills a piece of memory as far as it can, and returns how far.
template <class Read>
std::string all_of(const Read& read, const std::string& name) {
    std::string text, piece(1 << 16, '\0');
    while (const std::size_t count = read(piece)) {
        text.append(piece, 0, count);
        if (is_program(text)) break;
        if (text.size() > largest_input)
            throw std::runtime_error(name + " is too large: at most 4 MiB of flags are read");
    }
    return text;
}

/// Through the C library: to a C++ stream, a failure to read standard input looks like its end.
std::string bytes_of_standard_input(const std::string& name) {
    keep_bytes(stdin);
    const auto read = [&](std::string& piece) {
        errno = 0;
        const std::size_t count = std::fread(piece.data(), 1, piece.size(), stdin);
        if (std::ferror(stdin) != 0) fail("cannot read " + name);
        return count;
    };
    return all_of(read, name);
}

} // namespace

std::string bytes_of(const std::string& path, const std::string& name) {
    if (path == "-") return bytes_of_standard_input(name);
    errno = 0;
    std::ifstream in(native_of(path), std::ios_base::binary);
    if (!in) fail("cannot open " + name);
    const auto read = [&](std::string& piece) {
        in.read(piece.data(), static_cast<std::streamsize>(piece.size()));
        if (in.bad()) fail("cannot read " + name);
        return static_cast<std::size_t>(in.gcount());
    };
    return all_of(read, name);
}

bool is_directory(const std::string& path) {
    std::error_code error;
    return path != "-" && std::filesystem::is_directory(native_of(path), error);
}

bool is_there(const std::string& path) {
    std::error_code error;
    return std::filesystem::exists(native_of(path), error);
}

std::string absolute(const std::string& path) {
    return qel::i18n::ustring_to_utf8(std::filesystem::absolute(native_of(path)).generic_u16string());
}

std::vector<std::string> files_in(const std::string& directory, const std::string& name, bool may_be_empty) {
    const std::string start = directory.ends_with('/') ? directory : directory + "/";
    std::vector<std::string> files;
    std::error_code error;
    std::filesystem::directory_iterator one(native_of(directory), error);
    for (const std::filesystem::directory_iterator end; !error && one != end; one.increment(error)) {
        const std::string file = qel::i18n::ustring_to_utf8(one->path().filename().u16string());
        std::error_code unknown;
        if (!file.starts_with('.') && !one->is_directory(unknown)) files.push_back(start + file);
    }
    if (error) throw std::runtime_error("cannot read " + name + ": " + error.message());
    if (files.empty() && !may_be_empty) throw std::runtime_error("there are no files in " + name);
    std::ranges::sort(files);
    return files;
}

bool is_program(std::string_view content) {
    return content.starts_with("\x7f"
                               "ELF") ||
           (content.starts_with("MZ") && content.size() > 3 && static_cast<unsigned char>(content[3]) < 2);
}

std::string content_of(const std::string& path, const std::string& name) {
    return decoded(bytes_of(path, name));
}

bool has_bytes_of_no_text(std::string_view content) {
    return std::ranges::any_of(content, is_in_no_text);
}

void refuse_unless_utf8(const std::string& text, const std::string& name) {
    const auto spot = first_not_utf8(text);
    if (spot && has_bytes_of_no_text(text)) throw std::runtime_error(name + ": this is not a text file");
    if (spot)
        throw std::runtime_error(name + ":" + std::to_string(spot->line) + ":" +
                                 std::to_string(spot->column) +
                                 ": this byte is no UTF-8; save the file as UTF-8");
}

} // namespace orvane
