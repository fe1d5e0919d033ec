// Amounts in the forms of other programs, and what they mean here.
#include "explaining/rules.hpp"
#include "text/spelling.hpp"

#include "qel/i18n/convert.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>

namespace orvane {
namespace {

using qel::i18n::utf8_to_ustring;

std::u16string digits_of(std::uint64_t number) {
    return utf8_to_ustring(std::to_string(number));
}

/// 1.5GB as 1.5 and "gb".
struct Quantity {
    double number;
    std::u16string unit;
};

/// Takes a number and the unit after it from the front of the text.
std::optional<Quantity> take_quantity(std::u16string_view& text) {
    const auto skip_blanks = [&text] {
        text.remove_prefix(std::min(text.find_first_not_of(u' '), text.size()));
    };
    skip_blanks();
    std::string number;
    while (!text.empty() && number.size() < 18 && is_one_of(text[0], u"0123456789._,'")) {
        // Between digits, "_", "'" and "," only group them.
        if (is_one_of(text[0], u"0123456789.")) number += static_cast<char>(text[0]);
        text.remove_prefix(1);
    }
    if (number.find_first_of("0123456789") == number.npos ||
        std::count(number.begin(), number.end(), '.') > 1)
        return std::nullopt;
    if (text.size() > 1 && text[0] == u'e' && all_digits(text.substr(1, 1))) {
        number += "e" + std::string(1, static_cast<char>(text[1]));
        text.remove_prefix(2);
    }
    skip_blanks();
    Quantity found{0, {}};
    try {
        found.number = std::stod(number);
    } catch (const std::out_of_range&) {
        return std::nullopt;
    }
    while (!text.empty() && ((text[0] >= u'a' && text[0] <= u'z') || text[0] >= 0x80)) {
        found.unit += text[0];
        text.remove_prefix(1);
    }
    return found;
}

struct Unit {
    std::u16string_view names; ///< each between blanks
    double size;
};

constexpr Unit time_units[] = {
    {u" d day days ", 86400},
    {u" h hr hrs hour hours std ", 3600},
    {u" m min mins minute minutes ", 60},
    {u" s sec secs second seconds ", 1},
    {u" ms msec msecs millisecond milliseconds ", 1e-3},
    {u" us usec \u00B5s microseconds ", 1e-6},
};

constexpr Unit size_units[] = {
    {u"  b byte bytes octets o ", 1},
    {u" k kb kib ki kilobytes kbyte kbytes ko ", 1024.0},
    {u" m mb mib mi megabytes mbyte mbytes meg mo ", 1048576.0},
    {u" g gb gib gi gigabytes gbyte gbytes gig go ", 1073741824.0},
    {u" t tb tib ti terabytes tbyte tbytes to ", 1099511627776.0},
};

const Unit* unit_of(const std::u16string& name, std::span<const Unit> units) {
    for (const Unit& unit : units)
        if (unit.names.find(u" " + name + u" ") != unit.names.npos) return &unit;
    return nullptr;
}

std::u16string two_digits(std::uint64_t number) {
    return (number < 10 ? u"0" : u"") + digits_of(number);
}

std::u16string as_duration(double seconds) {
    const auto whole = static_cast<std::uint64_t>(seconds);
    const auto micro = static_cast<std::uint64_t>(std::llround((seconds - static_cast<double>(whole)) * 1e6));
    std::u16string text =
        two_digits(whole / 3600) + u":" + two_digits(whole / 60 % 60) + u":" + two_digits(whole % 60);
    if (micro != 0) {
        const std::u16string digits = digits_of(1000000 + micro);
        text += u"." + digits.substr(1, digits.find_last_not_of(u'0'));
    }
    return text;
}

} // namespace

bool is_unit(const std::u16string& word) {
    return unit_of(word, time_units) != nullptr || unit_of(word, size_units) != nullptr;
}

/// 1h30m, 500ms, PT30S, 30 seconds, 1:2:3.
Readings durations(const std::u16string& value, const Reference&) {
    std::u16string lowered = lower(value);
    constexpr auto why = "write a duration as hours:minutes:seconds, two digits each";
    if (lowered.find(u':') != lowered.npos) {
        std::u16string padded;
        for (const std::u16string& part : split_words(lowered, u":"))
            padded += (padded.empty() ? u"" : u":") +
                      ((part.size() == 1 || part.find(u'.') == 1) ? u"0" + part : part);
        return {{padded, why}};
    }
    std::u16string_view text = lowered;
    if (text.starts_with(u"p")) text.remove_prefix(1);
    double total = 0;
    bool any = false;
    while (!text.empty()) {
        if (text[0] == u't' || text[0] == u' ') {
            text.remove_prefix(1);
            continue;
        }
        const auto part = take_quantity(text);
        const Unit* const unit = part ? unit_of(part->unit, time_units) : nullptr;
        if (unit == nullptr) return {};
        total += part->number * unit->size;
        any = true;
    }
    if (!any || total > 1e10) return {};
    return {{as_duration(total), why}};
}

/// 1.5GB, 64_000_000, 1e6, 4Gi.
Readings sizes(const std::u16string& value, const Reference&) {
    const std::u16string lowered = lower(value);
    std::u16string_view text = lowered;
    const auto quantity = take_quantity(text);
    const Unit* const unit = quantity && text.empty() ? unit_of(quantity->unit, size_units) : nullptr;
    if (unit == nullptr || quantity->number * unit->size > 1e18) return {};
    double size = quantity->number * unit->size;
    const char16_t* suffix = u"";
    for (const auto& [name, factor] :
         {std::pair{u"GiB", 1073741824.0}, {u"MiB", 1048576.0}, {u"KiB", 1024.0}})
        if (!*suffix && size >= factor && std::fmod(size, factor) == 0) size /= factor, suffix = name;
    return {{digits_of(static_cast<std::uint64_t>(size)) + suffix,
             "write a size as a whole number, in bytes or with the unit K, M or G"}};
}

/// 1,000, 1_000, 4.0
Readings numbers(const std::u16string& value, const Reference&) {
    std::u16string text = lower(folded(value));
    text.erase(std::remove_if(text.begin(), text.end(), [](char16_t c) { return is_one_of(c, u"_,' "); }),
               text.end());
    if (text.ends_with(u".0")) text.resize(text.size() - 2);
    return {{text, "write a whole number with digits only"}};
}

} // namespace orvane
