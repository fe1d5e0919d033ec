// Cost grows no faster than the input: counted in bytes requested from operator new, not in time.
#include "replaced_new.hpp"
#include "support.hpp"

namespace qel::config::test {
namespace {

/// `work(n)` returns the number of bytes that an input of n parts takes.
template <class Work>
void expect_linear(int size, Work work) {
    const std::size_t once = work(size), twice = work(2 * size);
    EXPECT_GT(once, 0u) << "what the library asks for does not come here, and nothing is compared";
    // Containers that double may need one more step.
    EXPECT_LE(twice, 3 * once + 4096) << "twice the input takes far more than twice the memory";
}

TEST(Growth, of_parsing_is_linear_in_the_tokens) {
    const char16_t* flags[] = {u"--lumo-root", u"--ssl-allowed-client", u"--profile",
                               u"--cors-allowed-origins"};
    expect_linear(5'000, [&](int pairs) {
        Tokens tokens = {u"--auto-deploy-root", u"D", u"--https", u"1"};
        for (int i = 0; i != pairs; ++i) {
            const std::u16string n = i18n::ascii_to_ustring(std::to_string(i));
            const Tokens next[] = {
                {flags[i % 4], n}, {u"--user-data", n + u" v"}, {u"--attach-cache", n + u"@1"}};
            tokens = std::move(tokens) + next[i % 3];
        }
        allocated = 0;
        EXPECT_EQ(parse(tokens).code, error_code::success());
        return allocated;
    });
}

TEST(Growth, of_validating_runtime_roots_is_linear_in_the_roots) {
    for (const bool equal : {false, true}) {
        expect_linear(5'000, [equal](int count) {
            S settings = parse_with_root({u"--extract-root", u"E"}).settings;
            for (int i = 0; i != count; ++i)
                settings.lumo_root().emplace_back(i18n::ascii_to_ustring(std::to_string(equal ? 0 : i)));
            ProblemList problems;
            FlagSet flags;
            allocated = 0;
            const auto code = validate_settings(settings, problems, flags);
            EXPECT_EQ(code.failed(), !problems.empty());
            EXPECT_EQ(problems.size(), equal ? static_cast<std::size_t>(count) - 1 : 0u);
            return allocated;
        });
    }
}

} // namespace
} // namespace qel::config::test
