// Values with an inner syntax, including those of the TLS flags.
#include "support.hpp"

#include "qel/msgid/msgid_exception.hpp"

#include <exception>

namespace qel::config::test {
namespace {

TEST(Values, are_taken_apart) {
    expect_cases("values_accepted.txt", {u"--auto-deploy-root", u"D"});
}

TEST(Values, are_refused_with_their_whole_text_and_leave_what_was_stored_before_the_check) {
    expect_cases("values_refused.txt", {u"--wait"});
}

TEST(Values, that_are_no_enumerators_have_no_name) {
    EXPECT_EQ(to_text(logging::log_content_type(1)), "");
    EXPECT_EQ(to_text(logging::log_format_type(9)), "");
}

std::string shown, shown_text;

TEST(Values, of_cache_flags_are_refused_with_message_ids_that_the_platform_is_shown) {
    const auto previous = msgid::set_legacy_error_hook([](const msgid::IMsgIDException& failure) {
        EXPECT_EQ(failure.catalog(), "ZEP:server:Config");
        EXPECT_EQ(std::current_exception(), nullptr) << "the hook is called inside a handler";
        ASSERT_EQ(failure.arguments().size(), 1u);
        const auto& argument = failure.arguments()[0];
        const bool wide = argument.index() == 1;
        shown += failure.message_id() + (wide ? " wide " + ustring_to_utf8(std::get<1>(argument))
                                              : " narrow " + std::get<0>(argument));
        shown_text = dynamic_cast<const std::exception&>(failure).what();
    });
    for (const Case& one : read_cases("caches_refused.txt")) {
        Lines outcomes;
        for (const std::u16string flag : {u"--attach-cache", u"--start-cache"}) {
            shown.clear();
            const Parsed got = parse({flag, one.tokens[0]});
            outcomes.push_back(shown.empty() ? "accepted" : shown);
            const bool accepted = got.settings.cache_list().has_value();
            EXPECT_EQ(got.text, accepted ? "" : shown_text + " (at option '" + ustring_to_utf8(flag) + "')");
            EXPECT_EQ(got.code, accepted ? error_code::missing_required_flag() : error_code::parse_error());
        }
        EXPECT_EQ(outcomes, one.expected) << one.where;
    }
    msgid::set_legacy_error_hook(previous);
}

TEST(Values, of_cache_flags_end_with_what_the_platforms_hook_throws) {
    const Tokens refused = {u"--wait", u"--start-cache", u"p@h:x"},
                 far = {u"--wait", u"--start-cache", u"p@far:1"};
    const auto previous = msgid::set_legacy_error_hook([](const auto&) { throw std::range_error("hooked"); });
    for (const Tokens& line : {refused, far})
        EXPECT_EQ(outcome(parse(line), parse({u"--wait"}).settings),
                  Lines{"parse error: hooked (at option '--start-cache')"});
    // Anything but a std::exception is passed to the caller.
    msgid::set_legacy_error_hook([](const auto&) { throw 7; });
    for (const Tokens& line : {refused, far})
        EXPECT_THROW(parse(line), int);
    msgid::set_legacy_error_hook(previous);
}

} // namespace
} // namespace qel::config::test
