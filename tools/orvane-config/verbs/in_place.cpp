// A file in which only the tokens that were wrong change.
#include "verbs/in_place.hpp"

#include "formats/content.hpp"
#include "formats/source_files.hpp"
#include "formats/token_edits.hpp"
#include "system/exact_bytes.hpp"
#include "system/replace_file.hpp"
#include "text/lists.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <cstdio>
#include <ostream>
#include <stdexcept>

namespace orvane {
namespace {

[[noreturn]] void refuse(const std::string& file, const std::string& why) {
    throw std::runtime_error(std::string(file)
                                 .append(" cannot be changed in place: ")
                                 .append(why)
                                 .append("; ")
                                 .append("'fix --to FORMAT' prints the whole line"));
}

std::string formats_with_bytes() {
    std::vector<std::string_view> names;
    for (const LineFormat& format : line_formats)
        if (format.has_bytes) names.push_back(format.name);
    return joined(names, ", ", std::identity(), " and ");
}

const LineFormat& format_in(const std::string& text, const Call& call) {
    const std::string wanted = call.value(own("from-format"));
    return wanted.empty() ? format_of(text) : format_named(wanted);
}

std::vector<std::string> texts_of(const ReadTokens& tokens) {
    std::vector<std::string> texts;
    for (const ReadToken& token : tokens)
        texts.push_back(token.text);
    return texts;
}

/// A file and what is in it.
class File {
public:
    File(std::string name, const Call& call)
        : name_(std::move(name)), bytes_(bytes_of(name_, name_)), text_(decoded(bytes_)),
          format_(format_in(text_, call)), call_(call) {
        if (!bytes_.ends_with(text_)) refuse(name_, "it is no UTF-8");
        if (!format_.has_bytes)
            refuse(name_, std::string("its format is ")
                              .append(format_.name)
                              .append(", and only ")
                              .append(formats_with_bytes())
                              .append(" tell for certain where in a file a token is"));
        tokens_ = read(format_, text_);
        for (ReadToken& token : tokens_) {
            token.begin += bytes_.size() - text_.size();
            token.end += bytes_.size() - text_.size();
        }
    }

    /// What is before the flags stays.
    std::vector<LineEdit> edits(const Tokens& given, const std::vector<Token>& fixed) const {
        const std::size_t before = tokens_.size() - std::min(given.size(), tokens_.size());
        std::vector<NewToken> wanted;
        for (std::size_t i = 0; i != before; ++i)
            wanted.push_back({tokens_[i].text, i + 1});
        refuse_other_flags(given, before);
        for (const Token& token : fixed)
            wanted.push_back(
                {qel::i18n::ustring_to_utf8(token.text), token.number == 0 ? 0 : before + token.number});
        try {
            auto edits = token_edits(format_, bytes_, tokens_, wanted);
            refuse_unless_read(edited(lines_in(bytes_), edits), wanted);
            return edits;
        } catch (const CannotHold& fault) {
            refuse(name_, fault.what());
        }
    }

    void change(const std::vector<LineEdit>& edits) const {
        const std::vector<std::string> lines = lines_in(bytes_);
        if (call_.has(own("diff"))) {
            keep_bytes(stdout);
            call_.out << unified_diff(name_, lines, edits);
        } else if (!edits.empty()) {
            replace_file(qel::util::filesystem::Path(qel::i18n::utf8_to_ustring(name_)),
                         edited(lines, edits));
        }
    }

private:
    void refuse_other_flags(const Tokens& given, std::size_t before) const {
        const auto is_same = [](const ReadToken& token, const std::u16string& flag) {
            return qel::i18n::utf8_to_ustring(token.text) == flag;
        };
        const auto own_tokens = tokens_.begin() + static_cast<std::ptrdiff_t>(before);
        if (calls_this_tool(tokens_) ||
            !std::equal(own_tokens, tokens_.end(), given.begin(), given.end(), is_same))
            refuse(name_, "not all of its flags are words of this file");
    }

    /// What is written has to be what is read: this is what the promise rests on.
    void refuse_unless_read(const std::string& bytes, const std::vector<NewToken>& wanted) const {
        std::vector<std::string> texts;
        texts.reserve(wanted.size());
        for (const NewToken& token : wanted)
            texts.push_back(token.text);
        const std::string text = decoded(bytes);
        std::vector<std::string> found;
        try {
            found = texts_of(read(format_in(text, call_), text));
        } catch (const NotUnderstood&) {
            found.clear();
        }
        if (found != texts) refuse(name_, "the corrected flags would be read as others there");
    }

    std::string name_, bytes_, text_;
    const LineFormat& format_;
    const Call& call_;
    ReadTokens tokens_{};
};

} // namespace

std::string file_to_rewrite(const Call& call) {
    const bool is_diff = call.has(own("diff"));
    const std::string option = spelled(is_diff ? own("diff") : own("in-place"));
    if (!is_diff && !call.has(own("in-place"))) return {};
    std::vector<std::string> files = call.files;
    constexpr std::string_view others[] = {"to", "redact", "pid", "env", "format", "in-place"};
    for (const auto& [one, value] : call.options) {
        if (one == &own("from")) files.push_back(value);
        if (contains(others, one->name) && spelled(*one) != option)
            throw MisusedInPublic(
                std::string(option).append(" and ").append(spelled(*one)).append(" exclude each other"));
    }
    if (files.size() != 1 || !call.words.empty() || files[0] == "-" || is_directory(files[0]))
        throw MisusedInPublic(
            std::string(option).append(" takes one FILE, by its name, and no flags beside it"));
    return files[0];
}

void rewrite(const std::string& file, const Tokens& given, const std::vector<Token>& fixed,
             const Call& call) {
    const File content(file, call);
    content.change(content.edits(given, fixed));
}

} // namespace orvane
