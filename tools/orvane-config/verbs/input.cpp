// Where the server's flags come from.
#include "verbs/input.hpp"

#include "qel/i18n/convert.hpp"
#include "qel/util/native_path.hpp"

#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>

namespace orvane {
namespace {

std::string all_of(std::istream& in, const std::string& name) {
    constexpr std::size_t most = 4 << 20; // some devices have no end
    std::string text(most, '\0');
    in.read(text.data(), static_cast<std::streamsize>(most));
    if (in.bad()) throw std::runtime_error("cannot read " + name);
    if (in) throw std::runtime_error(name + " is too large: flags take no more than 4 MiB");
    text.resize(static_cast<std::size_t>(in.gcount()));
    return text;
}

std::string content_of(const std::string& name) {
    if (name == "-") return all_of(std::cin, "standard input");
    const qel::util::filesystem::Path path(qel::i18n::utf8_to_ustring(name));
    std::ifstream in(qel::util::filesystem::native(path), std::ios_base::binary);
    if (!in) throw std::runtime_error("cannot open " + name);
    return all_of(in, name);
}

/// Text in two bytes a unit, as some editors and redirections write it, marked by its first two bytes.
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
    if (text.starts_with("\xEF\xBB\xBF")) text.erase(0, 3); // editors mark UTF-8 files so
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

} // namespace

std::optional<Tokens> take_flags(CLI::App& app, const Tokens& args, std::ostream& out, std::ostream& err,
                                 ExitCode& code) {
    std::string from;
    app.add_option("--from", from, // the tool's own option
                   "read the flags from this file, or from standard input (-): a token a line, or each ended "
                   "by a zero byte");
    auto flags = take_options(app, args, out, err, code);
    if (!flags || app.count("--from") == 0) return flags; // the tool's own option
    if (flags->empty()) return tokens_in(content_of(from));
    code = misused(app, "there are flags both in " + from + " and on the command line", err);
    return std::nullopt;
}

} // namespace orvane
