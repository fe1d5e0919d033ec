// The text form of storage_size.
#include "qel/util/storage_size.hpp"

#include <istream>
#include <limits>
#include <optional>
#include <string_view>

namespace qel::util {
namespace {

constexpr int end_of_text = std::istream::traits_type::eof();
constexpr std::uint64_t largest = std::numeric_limits<std::uint64_t>::max();

/// The next character, which stays in the stream. The end of the text is not a failure here.
int next(std::istream& in) {
    return in.good() ? in.peek() : end_of_text;
}

/// Takes the next character if it is one of these.
std::optional<char> take(std::istream& in, std::string_view any_of) {
    const int character = next(in);
    if (character == end_of_text) return std::nullopt;
    const char letter = std::istream::traits_type::to_char_type(character);
    if (any_of.find(letter) == std::string_view::npos) return std::nullopt;
    in.get();
    return letter;
}

/// <digit>...; nothing if there is no digit, or the value needs more than 64 bits.
std::optional<std::uint64_t> parse_count(std::istream& in) {
    std::optional<std::uint64_t> count;
    while (const auto digit = take(in, "0123456789")) {
        const auto value = static_cast<std::uint64_t>(*digit - '0');
        const std::uint64_t so_far = count.value_or(0);
        if (so_far > (largest - value) / 10) return std::nullopt;
        count = so_far * 10 + value;
    }
    return count;
}

/// B, or one of K M G T P E alone or before B or iB. Returns its power of two; nothing for any other text.
std::optional<unsigned> parse_unit(std::istream& in) {
    constexpr std::string_view units = "BKMGTPEbkmgtpe";
    const auto unit = take(in, units);
    if (!unit) return std::nullopt;
    const auto power = static_cast<unsigned>(units.find(*unit) % (units.size() / 2));
    if (power == 0) return 0;
    const bool binary = take(in, "iI").has_value();
    const bool bytes = take(in, "bB").has_value();
    if (binary && !bytes) return std::nullopt;
    return 10 * power;
}

/// <digits>[<spaces>][<unit>], then the end of the text or white space.
std::optional<std::uint64_t> parse_size(std::istream& in) {
    const auto count = parse_count(in);
    if (!count) return std::nullopt;

    bool spaces = false;
    while (take(in, " "))
        spaces = true;
    const auto ends_here = [&in] {
        constexpr std::string_view white_space = " \t\n\v\f\r";
        const int character = next(in);
        return character == end_of_text ||
               white_space.find(std::istream::traits_type::to_char_type(character)) != std::string_view::npos;
    };
    if (!spaces && ends_here()) return count;

    const auto shift = parse_unit(in);
    if (!shift || !ends_here() || *count > largest >> *shift) return std::nullopt;
    return *count << *shift;
}

} // namespace

storage_size::storage_size() noexcept : bytes_(0) {}

std::istream& storage_size::parse(std::istream& in) {
    const std::istream::sentry ready(in);
    if (!ready) return in;
    if (const auto size = parse_size(in))
        bytes_ = *size;
    else
        in.setstate(std::ios_base::failbit);
    return in;
}

std::uint64_t storage_size::bytes() const noexcept {
    return bytes_;
}

std::istream& operator>>(std::istream& in, storage_size& size) {
    return size.parse(in);
}

} // namespace qel::util
