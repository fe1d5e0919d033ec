// Where the server's flags come from.
#include "input.hpp"

#include "qel/i18n/convert.hpp"
#include "qel/util/native_path.hpp"

#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>

namespace orvane {
namespace {

std::string all_of(std::istream& in, const std::string& name) {
    std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (in.bad()) throw std::runtime_error("cannot read " + name);
    return text;
}

std::string content_of(const std::string& name) {
    if (name == "-") return all_of(std::cin, "standard input");
    const qel::util::filesystem::Path path(qel::i18n::utf8_to_ustring(name));
    std::ifstream in(qel::util::filesystem::native(path), std::ios_base::binary);
    if (!in) throw std::runtime_error("cannot open " + name);
    return all_of(in, name);
}

Tokens tokens_in(std::string text) {
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
    if (!flags || from.empty()) return flags;
    if (flags->empty()) return tokens_in(content_of(from));
    code = misused(app, "there are flags both in " + from + " and on the command line", err);
    return std::nullopt;
}

} // namespace orvane
