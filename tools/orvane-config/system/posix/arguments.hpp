// A command as execvp() takes it.
#pragma once

#include "text/tokens.hpp"

#include "qel/i18n/convert.hpp"

#include <string>
#include <vector>

namespace orvane {

class Arguments {
public:
    explicit Arguments(const Tokens& command) {
        for (const std::u16string& token : command)
            texts_.push_back(qel::i18n::ustring_to_utf8(token));
        for (std::string& text : texts_)
            words_.push_back(text.data());
        words_.push_back(nullptr);
    }
    Arguments(const Arguments&) = delete;
    Arguments& operator=(const Arguments&) = delete;

    const std::string& program() const { return texts_.front(); }
    char* const* words() const { return words_.data(); }

private:
    std::vector<std::string> texts_;
    std::vector<char*> words_;
};

} // namespace orvane
