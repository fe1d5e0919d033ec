// Values are read without a stream. The results must be those of the casts that define them.
#include "support.hpp"

#include "qel/util/storage_size.hpp"

#include <boost/algorithm/string/trim.hpp>
#include <boost/date_time/posix_time/posix_time_io.hpp>
#include <boost/lexical_cast.hpp>
#include <boost/tokenizer.hpp>

#include <locale>
#include <map>
#include <random>

namespace qel::config::test {
namespace {

/// Texts that are values, nearly values, or nothing.
class Texts {
public:
    std::u16string next() {
        std::u16string text;
        switch (random_() % 4) {
        case 0:
            return pick(words_);
        case 1:
            text = digits(random_() % 11);
            for (auto parts = random_() % 3; parts-- != 0;)
                text += u":" + digits(2);
            if (random_() % 2 != 0) text += u"." + digits(random_() % 8);
            break;
        default:
            text = digits(random_() % 21);
        }
        if (random_() % 4 == 0) text.insert(random_() % (text.size() + 1), pick(words_));
        if (random_() % 8 == 0 && !text.empty()) text.erase(random_() % text.size(), 1);
        return text;
    }

    /// What durations are made of, in any order.
    std::u16string next_duration() {
        std::u16string text;
        for (auto parts = random_() % 7; parts-- != 0;)
            text += digits(random_() % 4) + (random_() % 2 == 0 ? u":" : pick(parts_));
        if (random_() % 4 == 0 && !text.empty()) text.erase(random_() % text.size(), 1);
        return text;
    }

private:
    std::u16string digits(std::size_t count) {
        std::u16string text;
        while (text.size() != count)
            text += u"0123456789059"[random_() % 13];
        return text;
    }

    const std::u16string& pick(const Tokens& from) { return from[random_() % from.size()]; }

    std::mt19937 random_{1};
    const Tokens words_ = {u"statistics", u"trace",      u"error",      u"out",     u"err",
                           u"warnin",     u"Trace",      u"K",          u":",       u".",
                           u"-",          u"+",          u" ",          u"",        u"65535",
                           u"65536",      u"4294967295", u"4294967296", u"\uFF11",  u"18446744073709551615",
                           u" B",         u",",          u"'",          u"00:00:01"};
    // 2562047789 hours wrap around.
    const Tokens parts_ = {u".", u"\t",     u"2562047789", u"9223372036854775807", u"9223372036854775808",
                           u"x", u"\u00E9", u"-infinity",  u"not-a-date-time",     u"minimum-date-time",
                           u"-", u"\xD800", u"+Infinity",  u"MAXIMUM-DATE-TIME",   u"00000000000000000000"};
};

/// The flag's value must be what the cast gives for the text, as `Stored`; `get` reads it from the record.
template <class Cast, class Get, class Convert>
void expect_as_cast(const std::u16string& flag, const std::u16string& text, Get get, Convert convert) {
    const Parsed got = parse({flag, text});
    const std::string told = ustring_to_utf8(flag + u" " + text);
    Cast expected;
    try {
        expected = boost::lexical_cast<Cast>(ustring_to_utf8(text));
    } catch (const boost::bad_lexical_cast&) {
        ASSERT_EQ(got.code, error_code::parse_error()) << told;
        return;
    }
    ASSERT_EQ(got.code, error_code::missing_required_flag()) << told;
    ASSERT_TRUE(get(got.settings) == convert(expected)) << told;
}

constexpr auto same = [](auto value) { return value; };

void expect_port_as_cast(const std::u16string& text) {
    expect_as_cast<unsigned short>(
        u"--http", text, [](const S& s) { return s.http()->port(); }, same);
}

void expect_all_as_cast(int rounds) {
    Texts texts;
    for (int i = 0; i != rounds; ++i) {
        const std::u16string text = texts.next();
        expect_as_cast<unsigned>(
            u"--num-workers", text, [](const S& s) { return *s.num_workers(); }, same);
        expect_port_as_cast(text.substr(text.rfind(u':') + 1));
        expect_as_cast<util::storage_size>(
            u"--log-rotation-size", text, [](const S& s) { return *s.log_rotation_size(); },
            [](const util::storage_size& size) { return size.bytes(); });
        expect_as_cast<time_duration>(
            u"--request-timeout", i % 2 == 0 ? text : texts.next_duration(),
            [](const S& s) { return *s.request_timeout(); }, same);

        // Only the names of severities are accepted.
        const Parsed severity = parse({u"--log-severity", text});
        const auto& names = logging::severity_names;
        const auto named = std::find(names.begin(), names.end(), ustring_to_utf8(text));
        ASSERT_EQ(severity.settings.log_severity().has_value(), named != names.end())
            << ustring_to_utf8(text);
        if (named != names.end()) {
            ASSERT_EQ(to_text(*severity.settings.log_severity()), *named);
        }
    }
}

TEST(CommonForms, are_what_the_casts_make_of_them) {
    expect_all_as_cast(1500);
}

/// Counts as an odometer does; after the last text of a length comes the first one that is longer.
void count_on(std::u16string& text, std::u16string_view letters) {
    for (char16_t& letter : text) {
        const auto next = (letters.find(letter) + 1) % letters.size();
        letter = letters[next];
        if (next != 0) return;
    }
    text += letters[0];
}

/// The sanitizer of clang also finds what overflows on the way to a refusal; that of g++ does not.
TEST(CommonForms, of_all_short_texts_are_the_same) {
    for (std::u16string text; text.size() <= 6; count_on(text, u"0356-."))
        expect_port_as_cast(text);
}

struct Grouping : std::numpunct<char> {
    char do_thousands_sep() const override { return '\''; }
    char do_decimal_point() const override { return ','; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(CommonForms, are_the_same_in_a_locale_that_groups_digits) {
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new Grouping));
    expect_all_as_cast(500);
    // Whole groups are read.
    for (const char16_t* text : {u"65'535", u"65'5355", u"6'5535"})
        expect_as_cast<unsigned>(
            u"--num-workers", text, [](const S& s) { return *s.num_workers(); },
            [](unsigned number) { return number; });
    // Texts for people use their locale.
    EXPECT_EQ(parse({u"--request-size-limit", u"2147483648"}).text,
              "--request-size-limit exceeds maximum value of 2'147'483'647");
    std::locale::global(before);
}

struct Dashes : std::ctype<char> {
    static const mask* table() {
        static std::vector<mask> all(classic_table(), classic_table() + table_size);
        all['-'] = space;
        return all.data();
    }
    Dashes() : std::ctype<char>(table()) {}
};

TEST(CommonForms, of_clients_are_trimmed_as_the_global_locale_says) {
    for (const bool dashes : {false, true}) {
        std::locale locale = std::locale::classic();
        if (dashes) locale = std::locale(locale, new Dashes);
        const std::locale before = std::locale::global(locale);
        std::mt19937 random(1);
        for (int i = 0; i != 300; ++i) {
            std::string text = "a";
            while (random() % 5 != 0)
                text.insert(random() % (text.size() + 1), 1, "ab- \t\v"[random() % 6]);
            const Parsed got =
                parse_with_root({u"--https", u"1", u"--ssl-allowed-client", i18n::utf8_to_ustring(text)});
            ASSERT_EQ(got.settings.https()->ssl_context().allowed_clients().begin()->first,
                      boost::trim_copy(text))
                << text;
        }
        std::locale::global(before);
    }
}

TEST(CommonForms, of_user_data_are_split_as_the_tokenizer_does) {
    using Separator = boost::escaped_list_separator<char16_t>;
    std::mt19937 random(1);
    int pairs = 0;
    for (int i = 0; i != 3000; ++i) {
        std::u16string text;
        while (random() % 7 != 0)
            text += u"ab \t\"\\xn\u00E4"[random() % 9];
        const Parsed got = parse({u"--user-data", text, u"--auto-deploy-root", u"D"});
        const boost::tokenizer<Separator, std::u16string::const_iterator, std::u16string> tokenizer(
            text, Separator(u"\\", u" \t", u"\""));
        std::vector<std::u16string> parts;
        try {
            for (const std::u16string& part : tokenizer)
                if (parts.empty() || !part.empty() || parts.size() > 1) parts.push_back(part);
        } catch (const boost::escaped_list_error&) {
            parts.clear();
        }
        ASSERT_EQ(got.settings.user_data().size(), parts.size() == 2 ? 1u : 0u) << ustring_to_utf8(text);
        if (parts.size() != 2) continue;
        ++pairs;
        ASSERT_EQ(got.settings.user_data()[0], std::make_pair(parts[0], parts[1])) << ustring_to_utf8(text);
    }
    EXPECT_GT(pairs, 100);
}

TEST(CommonForms, of_user_data_are_merged_and_sorted_as_in_a_map) {
    std::mt19937 random(1);
    for (const unsigned keys : {3u, 9u, 10u, 100u, 5000u}) {
        Tokens tokens = {u"--auto-deploy-root", u"D"};
        std::map<std::u16string, std::u16string> wanted;
        std::string warnings;
        for (unsigned i = 0; i != 2 * keys; ++i) {
            std::u16string key = u"shared", value = i18n::ascii_to_ustring(std::to_string(i));
            for (auto rest = random() % keys; rest != 0; rest /= 8)
                key += u"\0\1 a~\x80\xD800\xFFFF"[rest % 8];
            tokens = std::move(tokens) + Tokens{u"--user-data", u'"' + key + u"\" " + value};
            if (wanted.count(key) != 0)
                warnings += "Warning: overriding previously specified \"--user-data\" value for key \"" +
                            i18n::ustring_to_term(key) + "\"\n\f";
            wanted[key] = value;
        }
        const Parsed got = parse(tokens);
        EXPECT_EQ(got.text, warnings);
        S sorted;
        sorted.user_data().assign(wanted.begin(), wanted.end());
        EXPECT_TRUE(got.settings.user_data() == sorted.user_data()) << keys;
    }
}

} // namespace
} // namespace qel::config::test
