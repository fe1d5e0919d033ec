// Where the server's flags come from.
#include "verbs/input.hpp"

#include "probing/diagnosis.hpp"

#include "qel/config/error_code.hpp"
#include "qel/i18n/convert.hpp"
#include "qel/util/native_path.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fstream>
#include <ostream>
#include <stdexcept>
#include <system_error>

namespace orvane {
namespace {

constexpr std::size_t largest_input = 4 << 20; // some devices have no end

[[noreturn]] void fail(const std::string& what) {
    const int error = errno;
    throw std::runtime_error(what + (error == 0 ? "" : ": " + std::generic_category().message(error)));
}

/// `read` fills a piece of memory as far as it can, and returns how far.
template <class Read>
std::string all_of(const Read& read, const std::string& name) {
    std::string text, piece(1 << 16, '\0');
    while (const std::size_t count = read(piece)) {
        text.append(piece, 0, count);
        if (text.size() > largest_input)
            throw std::runtime_error(name + " is too large: at most 4 MiB of flags are read");
    }
    return text;
}

/// Through the C library: to a C++ stream, a failure to read standard input looks like its end.
std::string content_of_standard_input() {
    const std::string name = "standard input";
    const auto read = [&](std::string& piece) {
        errno = 0;
        const std::size_t count = std::fread(piece.data(), 1, piece.size(), stdin);
        if (std::ferror(stdin) != 0) fail("cannot read " + name);
        return count;
    };
    return all_of(read, name);
}

std::string content_of(const std::string& name) {
    if (name == "-") return content_of_standard_input();
    const qel::util::filesystem::Path path(qel::i18n::utf8_to_ustring(name));
    errno = 0;
    std::ifstream in(qel::util::filesystem::native(path), std::ios_base::binary);
    if (!in) fail("cannot open " + name);
    const auto read = [&](std::string& piece) {
        in.read(piece.data(), static_cast<std::streamsize>(piece.size()));
        if (in.bad()) fail("cannot read " + name);
        return static_cast<std::size_t>(in.gcount());
    };
    return all_of(read, name);
}

/// UTF-16, as some editors and redirections write it, is marked by its first two bytes.
std::string utf8_of(const std::string& text) {
    const bool big = text.starts_with("\xFE\xFF");
    if (!big && !text.starts_with("\xFF\xFE")) return text;
    std::u16string units;
    for (std::size_t i = 2; i + 1 < text.size(); i += 2) {
        const auto byte = [&text](std::size_t at) { return static_cast<unsigned char>(text[at]); };
        units += static_cast<char16_t>(big ? byte(i) << 8 | byte(i + 1) : byte(i + 1) << 8 | byte(i));
    }
    return qel::i18n::ustring_to_utf8(units);
}

Tokens tokens_in(const std::string& bytes) {
    std::string text = utf8_of(bytes);
    const bool by_zeros = text.find('\0') != text.npos;
    if (text.starts_with("\xEF\xBB\xBF")) text.erase(0, 3); // some editors mark UTF-8 files with it
    Tokens tokens;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find(by_zeros ? '\0' : '\n', begin), text.size());
        std::string token = text.substr(begin, end - begin);
        if (!by_zeros && token.ends_with('\r')) token.pop_back();
        tokens.push_back(qel::i18n::utf8_to_ustring(token));
        begin = end + 1;
    }
    return tokens;
}

/// The position of the "--" that ends the flags, or the end. One that is the value of a flag does not: that
/// is the case when the flags before it do not parse.
Tokens::const_iterator end_of_flags(const Tokens& words) {
    if (std::find(words.begin(), words.end(), u"--") == words.end()) return words.end();
    using qel::config::error_code::unrecognized_flag, qel::config::error_code::parse_error;
    const CommandLine line = occurrences_of(words);
    Answer refusal;
    const std::size_t refused = first_refused(line, refusal);
    if (refused == line.size()) return words.end(); // each is a value
    // Without its value, a flag that the library knows does not parse.
    const bool in_place = refusal.code == unrecognized_flag();
    const auto from = words.begin() + static_cast<std::ptrdiff_t>(in_place ? line[refused].front().number - 1
                                                                           : line[refused].back().number);
    return refusal.code == parse_error() ? words.end() : std::find(from, words.end(), u"--");
}

/// FLAGS from a file; the command line has at most the command.
Input from_file(const Call& call, const std::string& name) {
    const bool command = takes_command(call.verb) && call.ended;
    if (!call.words.empty() && !command)
        throw Misused("there are flags both in " + name + " and on the command line");
    Input input{tokens_in(content_of(name)), {}};
    if (command) input.command = call.words;
    if (input.flags.empty())
        call.err << "orvane-config: " << (name == "-" ? "standard input" : name) << " contains no flags\n";
    return input;
}

Input from_command_line(const Call& call) {
    if (!takes_command(call.verb)) return {call.words, {}};
    const auto end = end_of_flags(call.words);
    Input input{{call.words.begin(), end}, {}};
    if (end != call.words.end()) input.command.emplace(end + 1, call.words.end());
    return input;
}

} // namespace

Input input_of(const Call& call) {
    Input input = call.has(own("from")) ? from_file(call, call.value(own("from"))) : from_command_line(call);
    if (input.command && input.command->empty()) throw Misused("no command after '--'");
    return input;
}

} // namespace orvane
