// A command as execvp() takes it, and what its failure means.
#pragma once

#include "system/child_process.hpp"

#include "qel/i18n/convert.hpp"

#include <cerrno>
#include <string>
#include <system_error>
#include <vector>

#include <unistd.h>

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

    /// Returns only on a failure, which errno tells.
    void execute() const { execvp(words_.front(), words_.data()); }

    /// As the system will call the process.
    std::string name() const { return texts_.front().substr(texts_.front().rfind('/') + 1); }

    NotStarted failure(int error) const {
        return {texts_.front(), std::generic_category().message(error), error == ENOENT};
    }

private:
    std::vector<std::string> texts_;
    std::vector<char*> words_;
};

} // namespace orvane
