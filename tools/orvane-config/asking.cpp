// What can be learnt of a command line by asking the library.
#include "asking.hpp"

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
/// about a few steps only; the step right behind is asked about again, because it may limit the next one, or change.
class Walker {
public:
    /// The first step that is refused, and the library's answer; line.size() when all are taken.
    std::size_t next_refused(const Line& line, Answer& refusal) {
        for (std::size_t stride = 1;;) {
            const std::size_t left = line.size() - base_ - taken_;
            if (left == 0) return line.size();
            stride = std::min(stride, left);
            Answer answer = ask_about(line, taken_ + stride);
            if (answer.walked()) {
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

    /// To be told when the line has changed, from this step on.
    void changed(std::size_t from) {
        if (from < base_) *this = Walker();
        taken_ = 0;
    }

private:
    Answer ask_about(const Line& line, std::size_t count) const {
        const auto begin = line.begin() + static_cast<std::ptrdiff_t>(base_);
        return ask(tokens_of(Line(begin, begin + static_cast<std::ptrdiff_t>(count))), record_);
    }

    void move_up(const Line& line) {
        if (taken_ < 2) return;
        record_ = ask_about(line, taken_ - 1).settings;
        base_ += taken_ - 1;
        taken_ = 1;
    }

    std::size_t base_ = 0;  // so many steps are in the record
    std::size_t taken_ = 0; // and so many behind them are known to be taken
    qel::config::ServerSettings record_{};
};

} // namespace

bool Answer::walked() const {
    return !code || code == error_code::missing_required_flag();
}

Answer ask(const Tokens& tokens, qel::config::ServerSettings record) {
    Answer answer{{}, {}, std::move(record)};
    std::ostringstream out;
    answer.code = qel::config::parse_settings(answer.settings, tokens, out);
    answer.text = out.str();
    return answer;
}

Answer ask(const Line& line) {
    return ask(tokens_of(line));
}

Shape shape_of(const std::u16string& token) {
    static std::unordered_map<std::u16string, Shape> known;
    const auto found = known.find(token);
    if (found != known.end()) return found->second;
    const Answer answer = ask(Tokens{token});
    const Shape shape = answer.walked()                                  ? Shape::switch_flag
                        : answer.code == error_code::unrecognized_flag() ? Shape::no_flag
                                                                         : Shape::value_flag;
    return known.emplace(token, shape).first->second;
}

Line steps_of(const Tokens& tokens) {
    Line line;
    for (std::size_t i = 0; i != tokens.size(); ++i) {
        Step& step = line.emplace_back(Step{{tokens[i], i + 1}});
        if (shape_of(tokens[i]) != Shape::value_flag || i + 1 == tokens.size()) continue;
        ++i;
        step.push_back({tokens[i], i + 1});
    }
    return line;
}

Tokens tokens_of(const Line& line) {
    Tokens tokens;
    for (const Step& step : line)
        for (const Word& word : step)
            tokens.push_back(word.text);
    return tokens;
}

Step step_of(std::u16string flag, std::u16string value) {
    return {{std::move(flag)}, {std::move(value)}};
}

Diagnosis diagnose(const Tokens& tokens, const Repair& repair) {
    Diagnosis diagnosis;
    Line line = steps_of(tokens);
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
            fault.step = line[position];
            if (position > 0) fault.before = line[position - 1];
            if (position + 1 < line.size()) fault.after = line[position + 1];
            fault.more_before = position > 1;
            fault.more_after = position + 2 < line.size();
        }
        Edit edit = repair(fault, line, position);
        walker.changed(edit.begin);
        // What follows moves only where the number of steps changes.
        const auto begin = line.begin() + static_cast<std::ptrdiff_t>(edit.begin);
        const auto kept = static_cast<std::ptrdiff_t>(std::min(edit.end - edit.begin, edit.steps.size()));
        const auto rest = std::move(edit.steps.begin(), edit.steps.begin() + kept, begin);
        const auto at = line.erase(rest, line.begin() + static_cast<std::ptrdiff_t>(edit.end));
        line.insert(at, std::move_iterator(edit.steps.begin() + kept), std::move_iterator(edit.steps.end()));
    }
    if (!diagnosis.faults.empty()) diagnosis.faults[0].text = ask(tokens).text;
    qel::config::validate_settings(diagnosis.answer.settings, diagnosis.problems, diagnosis.involved);
    return diagnosis;
}

} // namespace orvane
