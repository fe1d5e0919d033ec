// All that is wrong with a command line, found by fixing each fault and asking again.
#include "probing/diagnosis.hpp"

#include <algorithm>
#include <iterator>
#include <limits>
#include <set>
#include <unordered_set>

namespace orvane {
namespace {

/// Walks along a line that changes ahead of it. What is refused depends on the flag right before, and on which flags were
/// given at all, not on how often: so each question is about a few occurrences and a record with one of each flag.
class Walker {
public:
    /// The first occurrence that is refused, and the library's answer; line.size() when all are taken.
    std::size_t next_refused(const WorkingLine& line, Answer& refusal) {
        // One more than what has changed: a fault is often followed by another, and then this answer is about it.
        std::size_t stride = changed_ + 1;
        std::size_t refused =
            0; // of so many from the base, `refusal` is about the last, or one before it; 0: unknown
        while (base_ + taken_ != line.size()) {
            const std::size_t end = refused != 0 ? refused - 1 : line.size() - base_;
            stride = std::min(stride, end - taken_);
            Answer answer = ask(tokens_of(line.part(base_, base_ + taken_ + stride)), record_);
            if (answer.consumed()) {
                taken_ += stride;
                stride *= 2;
                const std::size_t moved = move_up(line);
                // What the library said of those that are left behind would be in the text of the refusal.
                refused = answer.text.empty() && refused != 0 ? refused - moved : 0;
            } else {
                refused = taken_ + stride;
                stride = std::max<std::size_t>(stride == changed_ + 1 ? changed_ : stride / 2, 1);
                refusal = std::move(answer);
            }
            if (refused == taken_ + 1) return base_ + taken_;
        }
        return line.size();
    }

    /// Call this when the line has changed: it has `count` other occurrences from this one on.
    void changed(std::size_t from, std::size_t count) {
        base_ = std::min(base_, from);
        taken_ = 0;
        changed_ = from + count - base_;
    }

private:
    /// The last one is asked about again with what follows it. Returns how many others there were.
    std::size_t move_up(const WorkingLine& line) {
        const std::size_t before = base_;
        for (; taken_ > 1; --taken_) {
            const Occurrence& occurrence = line[base_++];
            if (seen_.insert(occurrence[0].text).second)
                record_ = ask(tokens_of({occurrence}), std::move(record_)).settings;
        }
        return base_ - before;
    }

    std::size_t base_ = 0;    // this many occurrences are done
    std::size_t taken_ = 0;   // and this many after them are known to be taken
    std::size_t changed_ = 0; // but these changed after the last answer
    std::unordered_set<std::u16string> seen_{};
    qel::config::ServerSettings record_{};
};

/// The edit in terms of the line as it was given, without what stays the same at both ends.
Fix fix_of(const Tokens& given, const WorkingLine& line, const Edit& edit) {
    const std::vector<Token> old = tokens_in(line.part(edit.begin, edit.end));
    const std::vector<Token> replacement = tokens_in(edit.occurrences);
    const auto same = [&given](const Token& a, const Token& b) {
        return a.text == b.text && a.number == b.number && a.number != 0 && given[a.number - 1] == a.text;
    };
    std::size_t front = 0, back = 0;
    while (front < std::min(old.size(), replacement.size()) && same(old[front], replacement[front]))
        ++front;
    // Only at the line's end is there a place without a token.
    if (front == old.size() && edit.end != line.size() && front != 0) --front;
    const std::size_t most = std::min(old.size() - front, replacement.size() - front);
    while (back + 1 < old.size() - front && back < most &&
           same(old[old.size() - 1 - back], replacement[replacement.size() - 1 - back]))
        ++back;
    std::set<std::size_t> numbers;
    for (std::size_t i = front; i < old.size() - back; ++i)
        if (old[i].number != 0) numbers.insert(old[i].number);
    const auto at = [&replacement](std::size_t i) {
        return replacement.begin() + static_cast<std::ptrdiff_t>(i);
    };
    return {{numbers.begin(), numbers.end()}, {at(front), at(replacement.size() - back)}};
}

/// In a line that is refused: its first refused occurrence, looked for without a record.
std::size_t bisected(const WorkingLine& line, Answer& refusal) {
    std::size_t taken = 0;
    for (std::size_t refused = line.size(); refused - taken > 1;) {
        const std::size_t middle = taken + (refused - taken) / 2;
        (ask(line.part(0, middle)).consumed() ? taken : refused) = middle;
    }
    refusal = ask(line.part(0, taken + 1));
    return taken;
}

/// The same with a walker that came this far; `last` is about the whole line when none is refused.
std::size_t next_refused(const WorkingLine& line, Walker& walker, Answer& last) {
    if (const std::size_t position = walker.next_refused(line, last); position != line.size())
        return position;
    last = ask(line.part(0, line.size()));
    return last.consumed() ? line.size() : bisected(line, last);
}

Fault fault_at(const WorkingLine& line, std::size_t position, const Answer& answer) {
    Fault fault{answer.code, answer.text, {}, {}, {}};
    if (position == line.size()) return fault;
    fault.occurrence = line[position];
    if (position > 0) fault.before = line[position - 1];
    if (position + 1 < line.size()) fault.after = line[position + 1];
    fault.more_before = position > 1;
    fault.more_after = position + 2 < line.size();
    return fault;
}

/// The tokens of the line and, where they were, those that it had to lose.
std::vector<Token> with_lost(const CommandLine& line, const std::vector<Token>& lost) {
    std::vector<Token> all;
    auto next = lost.begin();
    for (const Occurrence& occurrence : line) {
        for (; next != lost.end() && occurrence[0].number > next->number; ++next)
            all.push_back(*next);
        all.insert(all.end(), occurrence.begin(), occurrence.end());
    }
    all.insert(all.end(), next, lost.end());
    return all;
}

void find_problems(Diagnosis& diagnosis, const Answer& accepted) {
    std::ignore = qel::config::validate_settings(accepted.settings, diagnosis.problems, diagnosis.involved);
}

/// Counts how often in a row no less was left after a fault: nothing may keep the tool at one place.
class Standstill {
public:
    int after(std::size_t left) {
        count_ = left < least_left_ ? 0 : count_ + 1;
        least_left_ = std::min(least_left_, left);
        return count_;
    }

private:
    int count_ = 0;
    std::size_t least_left_ = std::numeric_limits<std::size_t>::max();
};

/// Puts the edit into the line, and notes what it does to the line as it was given.
void apply(Edit edit, const Tokens& given, WorkingLine& line, Diagnosis& diagnosis,
           std::vector<Token>& lost) {
    if (edit.proposed)
        diagnosis.faults.back().fix = fix_of(given, line, edit);
    else
        std::ranges::copy(tokens_in(line.part(edit.begin, edit.end)), std::back_inserter(lost));
    diagnosis.complete = diagnosis.complete && edit.proposed;
    line.replace(edit.begin, edit.end, std::move(edit.occurrences));
}

/// What is refused more often is left out.
constexpr int most_tries = 8;

} // namespace

Diagnosis diagnose(const Tokens& tokens, const Answer& answer, const FindEdit& find_edit) {
    Diagnosis diagnosis;
    if (!answer.code) {
        find_problems(diagnosis, answer);
        return diagnosis;
    }
    WorkingLine line(occurrences_of(tokens));
    std::vector<Token> lost;
    Walker walker;
    Answer last;
    Standstill standstill;
    for (;;) {
        const std::size_t position = next_refused(line, walker, last);
        if (!last.code) break;
        const Fault& fault = diagnosis.faults.emplace_back(fault_at(line, position, last));
        const int tries = standstill.after(line.size() - position);
        if (position == line.size() && tries > 1) break;
        Edit edit = tries > most_tries ? Edit{position, position + 1, {}, false}
                                       : find_edit(FaultInLine{fault, line, position});
        walker.changed(edit.begin, edit.occurrences.size());
        apply(std::move(edit), tokens, line, diagnosis, lost);
    }
    diagnosis.faults[0].text = answer.text;
    find_problems(diagnosis, last);
    diagnosis.fixed = with_lost(line.part(0, line.size()), lost);
    return diagnosis;
}

std::size_t first_refused(const CommandLine& line, Answer& refusal) {
    Walker walker;
    return next_refused(WorkingLine(line), walker, refusal);
}

} // namespace orvane
