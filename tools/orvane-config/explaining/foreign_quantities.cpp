// Amounts in the forms of other programs, and what they mean here.
#include "explaining/rules.hpp"
#include "text/spelling.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <limits>
#include <numeric>
#include <span>

namespace orvane {
namespace {

struct Unit {
    std::u16string_view names; ///< each between blanks
    Amount size;
};

constexpr Unit time_units[] = {
    {u" d day days ", 86'400'000'000},
    {u" h hr hrs hour hours std ", 3'600'000'000},
    {u" m min mins minute minutes ", 60'000'000},
    {u" s sec secs second seconds ", 1'000'000},
    {u" ms msec msecs millisecond milliseconds ", 1000},
    {u" us usec \u00B5s microseconds ", 1},
};

constexpr Unit size_units[] = {
    {u"  b byte bytes octets ", 1},
    {u" k kb kib ki kilobytes kbyte kbytes ko ", Amount{1} << 10},
    {u" m mb mib mi megabytes mbyte mbytes meg mo ", Amount{1} << 20},
    {u" g gb gib gi gigabytes gbyte gbytes gig go ", Amount{1} << 30},
    {u" t tb tib ti terabytes tbyte tbytes to ", Amount{1} << 40},
};

constexpr Unit no_unit[] = {{u"  ", 1}};

const Unit* unit_of(const std::u16string& name, std::span<const Unit> units) {
    for (const Unit& unit : units)
        if (unit.names.find(u" " + name + u" ") != unit.names.npos) return &unit;
    return nullptr;
}

bool is_digit(std::u16string_view text, std::size_t at) {
    return at < text.size() && text[at] >= u'0' && text[at] <= u'9';
}

/// 1.5 as 15 with one digit of a fraction.
struct Decimal {
    std::u16string digits{};
    std::size_t fraction = 0;
};

/// Digits between marks: grouped in threes, or with a point or comma before a fraction, or both. Nothing if it can be read in
/// two ways, as 1,500 before a unit.
std::optional<Decimal> decimal(std::u16string_view text, bool has_unit) {
    Decimal number;
    std::u16string marks;
    std::vector<std::size_t> runs{0}; // of digits between marks
    for (const char16_t c : text) {
        const bool mark = !is_digit({&c, 1}, 0);
        (mark ? marks : number.digits) += c;
        mark ? runs.push_back(0) : void(++runs.back());
    }
    if (marks.empty()) return number;
    const auto grouped = [&](std::size_t count) {
        return marks.find_first_not_of(marks[0]) >= count && runs[0] - 1 < 3 && text[0] != u'0' &&
               std::all_of(runs.begin() + 1, runs.begin() + 1 + static_cast<std::ptrdiff_t>(count),
                           [](std::size_t run) { return run == 3; });
    };
    const char16_t last = marks.back();
    const bool groups = grouped(marks.size());
    const bool fraction = is_one_of(last, u".,") && marks.find(last) == marks.size() - 1 &&
                          (marks.size() == 1 || grouped(marks.size() - 1));
    if (groups && fraction && (last == u'.') != has_unit) return std::nullopt;
    if (!groups && !fraction) return std::nullopt;
    if (fraction && (!groups || has_unit)) number.fraction = runs.back();
    return number;
}

/// The number of units as a whole number; nothing if it does not fit, or is not as good as exact.
std::optional<Amount> times(const Decimal& number, Amount unit, std::size_t exponent) {
    constexpr std::size_t longest = 18;
    if (number.digits.size() + exponent > longest) return std::nullopt;
    Amount digits = 0, part = 1;
    for (const char16_t c : number.digits + std::u16string(exponent, u'0'))
        digits = digits * 10 + (c - u'0');
    for (std::size_t i = 0; i != number.fraction; ++i)
        part *= 10;
    const Amount common = std::gcd(unit, part);
    const Amount factor = unit / common;
    part /= common;
    if (factor == 0 || digits > std::numeric_limits<Amount>::max() / factor) return std::nullopt;
    const Amount whole = digits * factor / part;
    constexpr Amount many = 1000; // the rest of a byte, or of a microsecond, is nothing then
    return digits * factor % part == 0 || (unit > 1 && whole >= many) ? std::optional(whole) : std::nullopt;
}

/// Takes a number and the unit after it from the front of the text.
std::optional<Amount> take(std::u16string_view& text, std::span<const Unit> units) {
    const auto skip_blanks = [&text] {
        text.remove_prefix(std::min(text.find_first_not_of(u' '), text.size()));
    };
    skip_blanks();
    std::size_t size = 0;
    while (is_digit(text, size) ||
           (size < text.size() && is_one_of(text[size], u"._,' ") && is_digit(text, size + 1)))
        ++size;
    const std::u16string_view number = text.substr(0, size);
    text.remove_prefix(size);
    std::size_t exponent = 0;
    if (text.starts_with(u'e') && is_digit(text, 1) && !is_digit(text, 2)) {
        exponent = text[1] - u'0';
        text.remove_prefix(2);
    }
    skip_blanks();
    const auto in_name = [](char16_t c) { return (c >= u'a' && c <= u'z') || c >= 0x80; };
    const auto end = std::find_if_not(text.begin(), text.end(), in_name);
    const std::u16string name(text.begin(), end);
    text.remove_prefix(name.size());
    const Unit* const unit = size == 0 ? nullptr : unit_of(name, units);
    const auto read = unit == nullptr ? std::nullopt : decimal(number, !name.empty());
    return read ? times(*read, unit->size, exponent) : std::nullopt;
}

/// 1:2:3, 0:30, 00:00:01.5
std::optional<Amount> clock(const std::u16string& text) {
    constexpr std::u16string_view names[] = {u"h", u"m", u"s"};
    const auto parts = split_words(text, u":");
    if (parts.size() > std::size(names)) return std::nullopt;
    Amount total = 0;
    for (std::size_t i = 0; i != parts.size(); ++i) {
        const std::u16string with_unit = parts[i] + std::u16string(names[i]);
        std::u16string_view rest = with_unit;
        const auto amount = take(rest, time_units);
        const bool fits = i == 0 || (amount && *amount < time_units[i].size);
        if (!amount || !rest.empty() || !fits || (i != 2 && !all_digits(parts[i]))) return std::nullopt;
        total += *amount;
    }
    return total;
}

std::optional<Amount> duration(const std::u16string& text) {
    if (text.find(u':') != text.npos) return clock(text);
    std::u16string_view left = text;
    const bool iso = text.starts_with(u"p"), dated = iso && text.find(u't') == text.npos;
    if (iso) left.remove_prefix(1);
    // In P1M the M is a month.
    if (left.empty() || (dated && !left.ends_with(u'd'))) return std::nullopt;
    Amount total = 0;
    while (!left.empty()) {
        if (iso && left[0] == u't') left.remove_prefix(1);
        const auto amount = take(left, time_units);
        constexpr Amount most = 10'000'000'000'000'000; // 300 years
        if (!amount || *amount > most || total > most) return std::nullopt;
        total += *amount;
    }
    return total;
}

std::u16string digits_of(Amount number) {
    return qel::i18n::utf8_to_ustring(std::to_string(number));
}

std::u16string two_digits(Amount number) {
    return (number < 10 ? u"0" : u"") + digits_of(number);
}

std::u16string as_duration(Amount amount) {
    constexpr Amount second = 1'000'000;
    const Amount whole = amount / second, rest = amount % second;
    std::u16string text =
        two_digits(whole / 3600) + u":" + two_digits(whole / 60 % 60) + u":" + two_digits(whole % 60);
    if (rest != 0) {
        const std::u16string digits = digits_of(second + rest);
        text += u"." + digits.substr(1, digits.find_last_not_of(u'0'));
    }
    return text;
}

std::u16string as_size(Amount size) {
    for (const auto& [name, shift] : {std::pair{u"GiB", 30}, {u"MiB", 20}, {u"KiB", 10}})
        if (size >> shift != 0 && size % (Amount{1} << shift) == 0) return digits_of(size >> shift) + name;
    return digits_of(size);
}

} // namespace

bool is_unit(const std::u16string& word) {
    return unit_of(word, time_units) != nullptr || unit_of(word, size_units) != nullptr;
}

std::optional<Amount> amount_of(const std::u16string& value, Form form) {
    std::u16string text = lower(bare(folded(value)));
    if (text.starts_with(u'+')) text.erase(0, 1);
    if (form == Form::duration) return duration(text);
    std::u16string_view rest = text;
    const auto amount = take(rest, form == Form::size ? std::span<const Unit>(size_units) : no_unit);
    return rest.empty() ? amount : std::nullopt;
}

/// 1h30m, 500ms, PT30S, 30 seconds, 1:2:3.
Readings durations(const std::u16string& value, const Reference&) {
    const auto amount = amount_of(value, Form::duration);
    if (!amount) return {};
    return {{as_duration(*amount), "write a duration as hours:minutes:seconds, two digits each"}};
}

/// 1.5GB, 64_000_000, 1e6, 4Gi.
Readings sizes(const std::u16string& value, const Reference&) {
    const auto amount = amount_of(value, Form::size);
    if (!amount) return {};
    return {{as_size(*amount), "write a size as a whole number, in bytes or with the unit K, M, G or T"}};
}

/// 1,000, 1_000, 4.0
Readings numbers(const std::u16string& value, const Reference&) {
    const auto amount = amount_of(value, Form::number);
    if (!amount) return {};
    return {{digits_of(*amount), "write a whole number with digits only"}};
}

} // namespace orvane
