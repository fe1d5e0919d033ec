// The walk over the tokens: which flag stores what, failures, and the completion of the record.
#include "support.hpp"

namespace qel::config::test {
namespace {

TEST(Flags, have_these_names_and_texts_in_this_order) {
    Lines listed, golden;
#define ZEP_FLAG(name, text) listed.push_back(#name "|" + ustring_to_utf8(option::name()));
#include "qel/config/flags.def"
    for (const Case& flag : read_cases("flags.txt"))
        golden.push_back(ustring_to_utf8(flag.tokens[0] + u"|" + flag.tokens[1]));
    expect_same_lists(listed, golden, "flags.txt");
}

TEST(Flags, store_what_they_are_given_and_add_to_the_lists_of_a_filled_record) {
    expect_cases("flags_accepted.txt", {u"--auto-deploy-root", u"D"});
    expect_cases("flags_filled.txt", {u"--auto-deploy-root", u"D"}, sample<S>(2));
}

TEST(Flags, leave_every_other_field_of_a_filled_record_alone) {
    const S before = sample<S>(2);
    std::set<std::u16string> seen;
    for (const Case& one : read_cases("flags_accepted.txt")) {
        seen.insert(one.tokens.begin(), one.tokens.end());
        std::set<std::string> changed = {"extract_root", "auto_deploy_root", "lumo_root"};
        for (const std::string& line : one.expected)
            changed.insert(line.substr(0, line.find(" =")));
        const S after = parse_with_root(one.tokens, before).settings;
        each_field<S>([&](const auto& field) {
            if (changed.contains(field.name)) return;
            EXPECT_TRUE((after.*field.read)() == (before.*field.read)())
                << one.where << " changes " << field.name;
        });
    }
    for (const Case& flag : read_cases("flags.txt"))
        EXPECT_TRUE(seen.contains(flag.tokens[1]))
            << ustring_to_utf8(flag.tokens[1]) << " is not in flags_accepted.txt";
}

TEST(Flags, are_refused_with_their_whole_text_and_keep_what_stood_before_them) {
    expect_cases("flags_refused.txt", {u"--wait"});
}

TEST(Flags, without_their_value_are_refused) {
    for (const Case& flag : read_cases("flags.txt")) {
        const std::string text = ustring_to_utf8(flag.tokens[1]);
        const Parsed got = parse({u"--wait", flag.tokens[1]}, sample<S>(2));
        const Lines expected = {"parse error: invalid option '" + text +
                                "', missing argument(s) (at option '" + text + "')"};
        if (flag.tokens[2] == u"switch") continue;
        EXPECT_EQ(outcome(got, sample<S>(2)), expected);
    }
}

TEST(Flags, with_one_letter_changed_are_unknown) {
    for (const Case& flag : read_cases("flags.txt"))
        for (std::size_t at = 0; at != flag.tokens[1].size(); ++at) {
            std::u16string text = flag.tokens[1];
            text[at] ^= 0x100;
            EXPECT_EQ(parse({text, u"1"}).code, error_code::unrecognized_flag()) << flag.where << ", " << at;
        }
}

TEST(Flags, take_ill_formed_values_without_throwing) {
    for (const Case& flag : read_cases("flags.txt")) {
        for (const auto& value : {u"\xD800"s, u"a\xDC00 b"s, u"k \xD83D\xD83D\xDE00"s, u"p@\xDFFF:1"s}) {
            const Parsed got = parse_with_root({flag.tokens[1], value});
            EXPECT_NE(got.code, error_code::incompatible_flags());
            EXPECT_EQ(got.text.empty(), got.code == error_code::success()) << flag.where;
            EXPECT_EQ(parse_with_root({value, flag.tokens[1]}).code, error_code::unrecognized_flag());
        }
    }
    EXPECT_EQ(parse({u"a\xD800z"}).text,
              "unrecognized option: " + i18n::ustring_to_term(u"a\uFFFDz") + "\n\f");
    const S stored = parse_with_root({u"--driver", u"\xD800x", u"--user-data", u"\xDC00 \xD800"}).settings;
    EXPECT_EQ(stored.driver().value(), u"\xD800x");
    EXPECT_EQ(stored.user_data().at(0), std::pair(u"\xDC00"s, u"\xD800"s));
}

TEST(Flags, behind_a_request_timeout_are_known_only_if_they_stand_below_it) {
    bool below = false;
    for (const Case& flag : read_cases("flags.txt")) {
        const Parsed got = parse({u"--request-timeout", u"1", flag.tokens[1], u"any value"});
        EXPECT_EQ(got.code == error_code::unrecognized_flag(), !below) << flag.where;
        EXPECT_EQ(got.text == "unrecognized option: " + ustring_to_utf8(flag.tokens[1]) + "\n\f", !below)
            << got.text;
        below = below || flag.tokens[1] == u"--request-timeout";
    }
    EXPECT_TRUE(below);
}

TEST(Flags, all_together_fill_every_field_that_has_one) {
    Tokens tokens;
    for (const Case& line : read_cases("full.txt"))
        tokens = tokens + line.tokens;
    EXPECT_EQ(outcome(parse(tokens), S()), read_cases("full_outcome.txt")[0].expected);
}

TEST(EndOfTheWalk, completes_what_it_can_without_the_required_flag) {
    EXPECT_EQ(outcome(parse({}, sample<S>(2)), sample<S>(2)), Lines{"missing required flag: "});
    expect_cases("unfinished.txt", {}, sample<S>(2));
}

TEST(EndOfTheWalk, joins_the_component_of_deployed_archives_to_the_root) {
    using i18n::operator/;
    const S settings = parse_with_root({}).settings;
    EXPECT_EQ(settings.auto_deploy_root().text(), u"D");
    EXPECT_EQ(settings.extract_root().text(), (Path(u"D") / u".zep_deployed"s).text());
}

/// A buffer that accepts no characters.
struct Full : std::streambuf {};

TEST(Streams, that_take_nothing_change_neither_code_nor_record) {
    for (const char* file : {"flags_accepted.txt", "flags_refused.txt", "values_refused.txt"}) {
        for (const Case& one : read_cases(file)) {
            const Parsed expected = parse_with_root(one.tokens);
            std::ostringstream failed;
            failed.setstate(std::ios_base::failbit);
            std::ostream without_buffer(nullptr);
            for (std::ostream* out : {static_cast<std::ostream*>(&failed), &without_buffer}) {
                S settings;
                const auto code =
                    parse_settings(settings, Tokens{u"--auto-deploy-root", u"D"} + one.tokens, *out);
                EXPECT_TRUE(code == expected.code && settings == expected.settings) << one.where;
                report_problems({u"problem"}, {u"--flag"}, usage(u"name", *out));
            }
            EXPECT_EQ(failed.str(), "");
            EXPECT_EQ(failed.rdstate(), std::ios_base::failbit);
        }
    }
}

TEST(Streams, with_exceptions_enabled_let_them_out_and_the_record_keeps_what_was_stored) {
    const Tokens lines[] = {{u"x"},
                            {u"--num-threads", u"0"},
                            {u"--http", u"x"},
                            {u"--user-data", u"a 1", u"--user-data", u"a 2"}};
    for (const Tokens& line : lines) {
        Full full;
        std::ostream out(&full);
        out.exceptions(std::ios_base::badbit);
        S settings;
        EXPECT_THROW(std::ignore = parse_settings(settings, Tokens{u"--wait"} + line, out),
                     std::ios_base::failure);
        EXPECT_TRUE(settings.wait_mode());
        EXPECT_THROW(report_problems({}, {}, out), std::ios_base::failure);
        EXPECT_THROW(usage(u"", out), std::ios_base::failure);
    }
}

} // namespace
} // namespace qel::config::test
