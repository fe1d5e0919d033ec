// What can be learnt of a command line by asking the library.
#include "probing/probing.hpp"

#include "qel/config/error_code.hpp"
#include "qel/config/parse_settings.hpp"

#include <algorithm>
#include <iterator>
#include <sstream>
#include <unordered_map>

namespace orvane {
namespace {

namespace error_code = qel::config::error_code;

/// Walks along a line that changes ahead of it. What lies far enough behind is in a record, so that each question is
/// about a few occurrences only; the occurrence right behind is asked about again, because it may limit the next one, or change.
class Walker {
public:
    /// The first occurrence that is refused, and the library's answer; line.size() when all are taken.
    std::size_t next_refused(const CommandLine& line, Answer& refusal) {
        for (std::size_t stride = 1;;) {
            const std::size_t left = line.size() - base_ - taken_;
            if (left == 0) return line.size();
            stride = std::min(stride, left);
            Answer answer = ask_about(line, taken_ + stride);
            if (answer.consumed()) {
                taken_ += stride;
                stride *= 2;
                move_up(line);
            } else if (stride == 1) {
                refusal = std::move(answer);
                return base_ + taken_;
            } else {
                stride /= 2;
            }
        }
    }

    /// To be told when the line has changed, from this occurrence on.
    void changed(std::size_t from) {
        if (from < base_) *this = Walker();
        taken_ = 0;
    }

private:
    Answer ask_about(const CommandLine& line, std::size_t count) const {
        const auto begin = line.begin() + static_cast<std::ptrdiff_t>(base_);
        return ask(tokens_of(CommandLine(begin, begin + static_cast<std::ptrdiff_t>(count))), record_);
    }

    void move_up(const CommandLine& line) {
        if (taken_ < 2) return;
        record_ = ask_about(line, taken_ - 1).settings;
        base_ += taken_ - 1;
        taken_ = 1;
    }

    std::size_t base_ = 0;  // so many occurrences are in the record
    std::size_t taken_ = 0; // and so many behind them are known to be taken
    qel::config::ServerSettings record_{};
};

} // namespace

bool Answer::consumed() const {
    return !code || code == error_code::missing_required_flag();
}

Answer ask(const Tokens& tokens, qel::config::ServerSettings record) {
    Answer answer{{}, {}, std::move(record)};
    std::ostringstream out;
    answer.code = qel::config::parse_settings(answer.settings, tokens, out);
    answer.text = out.str();
    return answer;
}

Answer ask(const CommandLine& line) {
    return ask(tokens_of(line));
}

FlagKind kind_of(const std::u16string& token) {
    static std::unordered_map<std::u16string, FlagKind> known;
    const auto found = known.find(token);
    if (found != known.end()) return found->second;
    const Answer answer = ask(Tokens{token});
    const FlagKind shape = answer.consumed()                                ? FlagKind::switch_flag
                           : answer.code == error_code::unrecognized_flag() ? FlagKind::no_flag
                                                                            : FlagKind::value_flag;
    return known.emplace(token, shape).first->second;
}

CommandLine occurrences_of(const Tokens& tokens) {
    CommandLine line;
    for (std::size_t i = 0; i != tokens.size(); ++i) {
        Occurrence& occurrence = line.emplace_back(Occurrence{{tokens[i], i + 1}});
        if (kind_of(tokens[i]) != FlagKind::value_flag || i + 1 == tokens.size()) continue;
        ++i;
        occurrence.push_back({tokens[i], i + 1});
    }
    return line;
}

Tokens tokens_of(const CommandLine& line) {
    Tokens tokens;
    for (const Occurrence& occurrence : line)
        for (const Token& word : occurrence)
            tokens.push_back(word.text);
    return tokens;
}

Occurrence occurrence_of(std::u16string flag, std::u16string value) {
    return {{std::move(flag)}, {std::move(value)}};
}

Diagnosis diagnose(const Tokens& tokens, const Repair& repair) {
    Diagnosis diagnosis;
    CommandLine line = occurrences_of(tokens);
    Walker walker;
    while (true) {
        Answer answer;
        const std::size_t position = walker.next_refused(line, answer);
        if (position == line.size()) {
            answer = ask(line);
            if (!answer.code) {
                diagnosis.repaired = std::move(line);
                diagnosis.answer = std::move(answer);
                break;
            }
        }
        Fault& fault = diagnosis.faults.emplace_back(Fault{answer.code, answer.text, {}, {}, {}});
        if (position < line.size()) {
            fault.occurrence = line[position];
            if (position > 0) fault.before = line[position - 1];
            if (position + 1 < line.size()) fault.after = line[position + 1];
            fault.more_before = position > 1;
            fault.more_after = position + 2 < line.size();
        }
        Edit edit = repair(fault, line, position);
        walker.changed(edit.begin);
        // What follows moves only where the number of occurrences changes.
        const auto begin = line.begin() + static_cast<std::ptrdiff_t>(edit.begin);
        const auto kept =
            static_cast<std::ptrdiff_t>(std::min(edit.end - edit.begin, edit.occurrences.size()));
        const auto rest = std::move(edit.occurrences.begin(), edit.occurrences.begin() + kept, begin);
        const auto at = line.erase(rest, line.begin() + static_cast<std::ptrdiff_t>(edit.end));
        line.insert(at, std::move_iterator(edit.occurrences.begin() + kept),
                    std::move_iterator(edit.occurrences.end()));
    }
    if (!diagnosis.faults.empty()) diagnosis.faults[0].text = ask(tokens).text;
    qel::config::validate_settings(diagnosis.answer.settings, diagnosis.problems, diagnosis.involved);
    return diagnosis;
}

} // namespace orvane
