// The platform layer: conversions, paths and their canonical forms, sizes, owned files, TLS settings, message
// IDs.
#include "support.hpp"

#include "qel/msgid/msgid_exception.hpp"
#include "qel/util/bare_host.hpp"
#include "qel/util/canonicalize.hpp"
#include "qel/util/command_line.hpp"
#include "qel/util/native_path.hpp"
#include "qel/util/scoped_file.hpp"
#include "qel/util/storage_size.hpp"

#include <boost/lexical_cast.hpp>

#include <filesystem>
#include <random>
#include <sstream>

namespace disk = std::filesystem;
using namespace qel::util;
using namespace qel::util::filesystem;
using namespace qel::i18n;
using namespace qel::msgid;
using boost::conversion::try_lexical_convert;

namespace qel::config::test {

template <>
ssl::AccessMap sample(int) {
    return {{"client", {}}};
}

namespace {

using Name = std::u16string;
constexpr bool windows = disk::path::preferred_separator == L'\\';

std::string shown(const Path& path) {
    return ustring_to_utf8(path.text());
}

Path path_of(const disk::path& path) {
    return Path(path.u16string());
}

std::string bytes_of(const Name& token) {
    return {token.begin(), token.end()};
}

/// The cases that hold on this system.
std::vector<Case> cases_here(const std::string& file_name) {
    std::vector<Case> cases = read_cases(file_name);
    const Name other = windows ? u"posix" : u"windows";
    std::erase_if(cases, [&](const Case& one) { return one.tokens.back() == other; });
    return cases;
}

TEST(Convert, each_ill_formed_part_is_replaced_and_its_neighbours_stay) {
    for (const auto& [tokens, none, where] : read_cases("platform_conversions.txt")) {
        const std::string bytes = bytes_of(tokens[1]);
        if (tokens[0] == u"utf8")
            EXPECT_EQ(ustring_to_utf8(tokens[1]), bytes_of(tokens[2])) << where;
        else
            EXPECT_EQ(tokens[0] == u"ascii" ? ascii_to_ustring(bytes) : utf8_to_ustring(bytes), tokens[2])
                << where;
    }
    EXPECT_EQ(ustring_to_utf8(std::u16string_view(u"\U0001F600").substr(0, 1)), "\uFFFD");
    EXPECT_EQ(utf8_to_ustring(std::string_view("\xE2\x82\xAC").substr(0, 2)), u"\uFFFD");
    const std::string echoed = ustring_to_term(Name{u'a', 0xD800, u'b'});
    EXPECT_TRUE(echoed.starts_with('a') && echoed.ends_with('b') && echoed.size() > 2) << echoed;
}

TEST(Convert, every_character_survives_both_ways) {
    std::u32string all;
    for (char32_t point = 0; point <= 0x10FFFF; ++point)
        if (point < 0xD800 || point > 0xDFFF) all += point;
    const std::u8string utf8 = disk::path(all).u8string();
    const std::string bytes(utf8.begin(), utf8.end());
    EXPECT_TRUE(ustring_to_utf8(disk::path(all).u16string()) == bytes);
    EXPECT_TRUE(utf8_to_ustring(bytes) == disk::path(all).u16string());
}

TEST(Host, loses_a_pair_of_brackets_around_something_and_nothing_else) {
    const std::pair<Name, Name> hosts[] = {
        {u"[::1]", u"::1"}, {u"[[x]]", u"[x]"}, {u"[::1", u"[::1"}, {u"::1]", u"::1]"},
        {u"[]", u"[]"},     {u"[", u"["},       {u"", u""},         {u"www.x.org", u"www.x.org"}};
    for (const auto& [host, bare] : hosts)
        EXPECT_EQ(bare_host(host), bare);
}

TEST(Path, parents_and_joins_leave_no_separator_hanging_and_end_at_roots) {
    for (const auto& [tokens, none, where] : cases_here("platform_parents.txt"))
        EXPECT_EQ(Path(tokens[0]).parent_path().text(), tokens.at(1)) << where;
    for (const auto& [tokens, none, where] : cases_here("platform_joins.txt"))
        EXPECT_EQ((Path(tokens[0]) / tokens[1]).text(), tokens.at(2)) << where;

    std::mt19937 random(1);
    for (int round = 0; round < 20000; ++round) {
        Name text;
        while (random() % 8 != 0)
            text += u"//\\\\C:?.au"[random() % 10];
        for (Path step(text), parent; !step.empty(); step = parent) {
            parent = step.parent_path();
            ASSERT_LT(parent.text().size(), step.text().size()) << ustring_to_utf8(text);
        }
    }
}

TEST(Path, texts_decide_equality_and_elements_decide_order) {
    const auto rows = read_cases(windows ? "platform_order_windows.txt" : "platform_order_posix.txt");
    EXPECT_TRUE(Path() < Path(rows[0].tokens[0]) && !(Path() < Path()));
    for (std::size_t i = 0; i < rows.size(); ++i)
        for (std::size_t j = 0; j < rows.size(); ++j)
            for (const Name& left : rows[i].tokens)
                for (const Name& right : rows[j].tokens) {
                    EXPECT_EQ(Path(left) < Path(right), i < j) << rows[i].where << " < " << rows[j].where;
                    EXPECT_EQ(Path(left) == Path(right), left == right);
                }
}

/// A separate directory for each test, in which relative paths begin at `a`; removed afterwards.
struct Files : testing::Test {
    std::error_code refused;
    disk::path before = disk::current_path();
    disk::path root =
        disk::temp_directory_path() / ("zep_platform_" + std::to_string(std::random_device()()));

    Files() {
        disk::create_directories(root / "a/b/c");
        disk::current_path(root / "a");
    }
    ~Files() override {
        disk::current_path(before);
        disk::remove_all(root);
    }

    /// On a system where links cannot be created, the tests run without them.
    void link(const disk::path& name, disk::path target) {
        disk::create_directory_symlink(target.make_preferred(), root / name, refused);
    }
};

TEST_F(Files, canonical_forms_are_equal_exactly_for_one_place_and_one_walk_finds_what_steps_find) {
    for (const char* directory : {".", "a", "a/b", "a/b/c"})
        std::ofstream(root / directory / "place") << directory;
    for (const auto& [tokens, none, where] : read_cases("platform_links.txt"))
        link(tokens[0], boost::replace_all_copy(tokens[1], u"%", root.u16string()));
    // Two separators at the beginning would name a share on Windows, which would be searched for in the network.
    const Name top = root.u16string(),
               starts[] = {u"", u"..//", top + u"/", top + u"//a/./", u"/", windows ? u"" : u"//"};
    const Tokens parts = read_cases("platform_components.txt")[0].tokens;

    // The directory of the tree that the system finds there; empty outside.
    const auto place_of = [](const Path& path) {
        std::string name;
        if (!path.empty()) std::ifstream(native(path) / "place") >> name;
        return name;
    };
    // Each path with its place, and the canonical forms of itself and of each of its parents.
    std::vector<std::tuple<Path, std::string, std::vector<Path>>> cases;
    std::mt19937 random(2);
    Canonicalizer canonicalizer;
    while (cases.size() < 300) {
        Name text = starts[random() % 6];
        for (auto length = random() % 6; length > 0; --length)
            text += parts[random() % parts.size()] + (random() % 4 != 0 ? u"/" : u"//");
        if (random() % 2 != 0 && text.size() > 1) text.pop_back();

        auto& [path, place, canonical] =
            cases.emplace_back(Path(text), place_of(Path(text)), std::vector<Path>());
        for (Path step = path; canonical.empty() || !step.empty(); step = step.parent_path())
            canonical.push_back(canonicalize(step));
        EXPECT_EQ(shown(canonicalizer.canonicalize(path)), shown(canonical[0])) << shown(path);
        EXPECT_TRUE(place.empty() || place_of(canonical[0]) == place) << shown(path);
    }
    std::size_t places = 0, nested = 0;
    for (const auto& [path, place, canonical] : cases)
        for (const auto& [root_path, root_place, root_canonical] : cases) {
            const std::string both = shown(path) + " and " + shown(root_path);
            const bool below = std::count(canonical.begin(), canonical.end(), root_canonical[0]) != 0;
            ASSERT_EQ(canonicalizer.is_same_or_below(path, root_path), below) << both;
            nested += below;
            if (place.empty() || root_place.empty()) continue;
            ++places;
            ASSERT_EQ(canonical[0] == root_canonical[0], place == root_place) << both;
        }
    EXPECT_TRUE(places > 1000 && nested > 1000) << places << " " << nested;
}

TEST_F(Files, what_does_not_exist_is_folded_as_text) {
    const Name zero(1, u'\0'), too_long(70000, u'x'), base = canonicalize(path_of(root)).text();
    link("link0", "a");
    link("a/in", "b");
    EXPECT_EQ(native(Path(u"a" + zero)), disk::path()) << "or it would be the file a";
    const std::pair<Name, disk::path> rows[] = {{u"x/./y//../z/", u"/a/x/z"},
                                                {u"../x/../a/../../x/../" + root.filename().u16string(), u""},
                                                {u"../link0" + zero + u"/b", u"/link0" + zero + u"/b"},
                                                {too_long + u"/../b", u"/a/b"},
                                                {u"../x/../a/in", refused ? u"/a/in" : u"/a/b"},
                                                {too_long, u"/a/" + too_long}};
    for (auto [path, expected] : rows)
        EXPECT_TRUE(canonicalize(Path(path)).text() == base + expected.make_preferred().u16string())
            << ustring_to_utf8(path).substr(0, 100);

    link("top", "/");
    EXPECT_TRUE(refused || canonicalize(Path(u"../top/..")) == canonicalize(Path(u"/")));

    // What was compared before an absolute link is compared again.
    link("a/same", root / "z/c");
    EXPECT_FALSE(Canonicalizer().is_same_or_below(Path(u"./same"), Path(u"c")));

    // The system gives up on a long chain, too.
    for (int i = 1; i <= 40; ++i) {
        link("link" + std::to_string(i), "link" + std::to_string(i - 1));
        const Path chain = path_of(root / ("link" + std::to_string(i)) / "b");
        EXPECT_EQ(canonicalize(chain) == canonicalize(Path(u"b")), disk::exists(native(chain), refused)) << i;
    }
}

TEST_F(Files, a_path_may_be_longer_than_everyday_ones) {
    const Name part(150, u'x');
    const disk::path directory = root / part / part;
    disk::create_directories(native(path_of(directory)));
    {
        const scoped_file file(path_of(directory / ".." / part / "file"));
        std::ofstream(native(file.path())) << "text";
        EXPECT_TRUE(disk::exists(native(path_of(directory / "file"))));
    }
    // The directory can be removed, so the file was removed.
    EXPECT_TRUE(disk::remove(native(path_of(directory))));
    if (!windows) return;
    const std::pair<Name, Name> rows[] = {
        {u"C:/a/./b/../" + part + u"/" + part, u"\\\\?\\C:\\a\\" + part + u"\\" + part},
        {u"\\\\server\\share\\" + part + part, u"\\\\?\\UNC\\server\\share\\" + part + part},
        {u"\\\\?\\C:\\" + part + part, u"\\\\?\\C:\\" + part + part},
        {part + part, u"\\\\?\\" + disk::current_path().u16string() + u"\\" + part + part},
        {u"C:/a/../b", u"C:/a/../b"}};
    for (const auto& [path, expected] : rows)
        EXPECT_EQ(native(Path(path)).u16string(), expected);
}

TEST_F(Files, a_canonicalizer_asks_once_and_takes_linear_time) {
    Canonicalizer canonicalizer;
    const Path late(u"../late/x"), before_change = canonicalizer.canonicalize(late);
    link("late", "a");
    EXPECT_EQ(shown(canonicalizer.canonicalize(late)), shown(before_change));
    EXPECT_EQ(canonicalize(late) == canonicalize(Path(u"x")), disk::exists("../late", refused));

    // Looking up or comparing everything again for each component would take minutes.
    for (const char16_t* part : {u"x/", u"./", u"c/../", u"x/../", u"//x"}) {
        Name deep = u"b/";
        for (int i = 0; i < 100000; ++i)
            deep += part;
        EXPECT_TRUE(canonicalizer.is_same_or_below(Path(deep), Path(u"b")));
        EXPECT_FALSE(canonicalizer.is_same_or_below(Path(deep), Path(u"c")));
        EXPECT_FALSE(canonicalizer.is_same_or_below(Path(deep), Path(deep + u"/y")));
    }
}

TEST_F(Files, a_lost_current_directory_equals_no_other) {
    disk::create_directory(root / "gone");
    disk::current_path(root / "gone");
    if (!disk::remove(root / "gone", refused)) GTEST_SKIP() << "this system keeps current directories";
    EXPECT_EQ(shown(canonicalize(Path(u"x/../y"))), shown(canonicalize(Path(u"./y"))));
    EXPECT_NE(shown(canonicalize(Path(u"y"))), shown(canonicalize(Path(u"/y"))));
}

TEST_F(Files, an_owned_file_goes_with_its_last_owner_and_directories_stay) {
    const disk::path one = root / "one", two = root / "two", named = root / u"\u00E4\U0001F600";
    {
        scoped_file first(path_of(one)), second(path_of(two)), nothing, missing(path_of(root / "missing"));
        const scoped_file folder(path_of(root / "a/b/c")), wide(path_of(named));
        for (const disk::path& file : {one, two, native(path_of(named))})
            std::ofstream(file) << "text";
        scoped_file third(std::move(first));
        EXPECT_TRUE(first.path().empty() && disk::exists(one) && disk::exists(named));
        second = std::move(third);
        EXPECT_TRUE(third.path().empty() && disk::exists(one) && !disk::exists(two));
        second = static_cast<scoped_file&&>(second);
        second = scoped_file(path_of(one));
        EXPECT_TRUE(second.path() == path_of(one) && disk::exists(one));
    }
    EXPECT_TRUE(!disk::exists(one) && !disk::exists(named) && disk::exists(root / "a/b/c"));
}

TEST(CommandLine, is_taken_as_utf_8_without_the_programs_name) {
    // On Windows it is the process's own; tool_on_windows tests it.
    if (windows) GTEST_SKIP();
    const char* words[] = {"program", "", "\xC3\xA4\xFF\xED\xA0\x80z", "--wait"};
    EXPECT_EQ(command_line_tokens(4, words), Tokens({u"", u"\u00E4\uFFFD\uFFFD\uFFFD\uFFFDz", u"--wait"}));
    EXPECT_EQ(command_line_tokens(0, words), Tokens());
}

TEST(Values, are_read_from_their_texts_and_from_no_others) {
    for (const auto& [tokens, none, where] : read_cases("platform_values.txt")) {
        using enum ssl::SslVerifyPeerMode;
        for (const auto before : {no_verify_peer, verify_peer_require_peer_cert}) {
            storage_size size;
            ssl::SslVerifyPeerMode mode = before;
            std::string text = bytes_of(tokens[1]), got = "refused";
            if (tokens[0] == u"size" && try_lexical_convert(text, size)) got = std::to_string(size.bytes());
            if (tokens[0] == u"mode" && try_lexical_convert(text, mode)) got = to_text(mode);
            EXPECT_EQ(got, bytes_of(tokens.at(2))) << where;
            // The cast also refuses what follows the word. The operator alone promises to change nothing.
            std::istringstream in(text);
            mode = before;
            if (tokens[0] == u"mode" && !(in >> mode)) {
                EXPECT_EQ(mode, before) << where;
            }
        }
    }
}

TEST(StorageSize, streams_are_read_size_by_size_and_a_failure_changes_nothing) {
    std::istringstream in(" 1\t2K\n3\v4\f5\r6.5 7"), last("3"), nothing(" "), glued("3KX");
    storage_size size;
    for (const std::uint64_t expected : {1U, 2048U, 3U, 4U, 5U})
        EXPECT_TRUE(in >> size && size.bytes() == expected) << expected;
    EXPECT_FALSE(size.parse(in) || size.parse(nothing) || size.parse(glued));
    EXPECT_EQ(size.bytes(), 5U);
    EXPECT_EQ(size.parse(last).rdstate(), std::ios_base::eofbit);
}

TEST(SslContext, each_field_decides_and_the_earlier_one_first) {
    using namespace ssl;
    std::vector<SslContext> with;
#define QEL_SSL_FIELD(name, ...)                                                                             \
    EXPECT_TRUE(with.emplace_back().name() == __VA_ARGS__{}) << #name;                                       \
    with.back().name(sample<__VA_ARGS__>(2));                                                                \
    EXPECT_TRUE(with.back().name() == sample<__VA_ARGS__>(2)) << #name;
#include "qel/util/ssl_context_fields.def"
    for (std::size_t i = 0; i < with.size(); ++i) {
        EXPECT_TRUE(SslContext() < with[i] && !(with[i] < SslContext()) && !(with[i] == SslContext())) << i;
        EXPECT_TRUE(SslContext(with[i]) == with[i]) << i;
        for (std::size_t later = i + 1; later < with.size(); ++later)
            EXPECT_TRUE(with[later] < with[i] && !(with[i] < with[later])) << i << " " << later;
    }
    // Two spellings of one path end the comparison, whatever follows.
    SslContext one, other;
    static_assert(noexcept(one == other && one < other && to_text(one.verify_peer_mode()) == ""));
    one.ca_file(Path(u"a//b"));
    other.ca_file(Path(u"a/b"));
    other.use_crl(true);
    EXPECT_FALSE(one < other || other < one || one == other);
}

TEST(MsgIDException, the_text_names_what_is_wrong_and_what_is_expected) {
    const std::string config = "ZEP:server:Config";
    const std::pair<MessageID, std::string> rows[] = {
        {{config, "CacheProviderBadFormat", {u"%1@%2@x"}},
         "the cache definition \"%1@%2@x\" is malformed: it must have the form <provider>@[<host>:]<port>, "
         "for example provider@localhost:4711"},
        {{config, "StartCacheLocalhost", {"far"}},
         "a cache can not be started on host \"far\": the host must be 'localhost' or '127.0.0.1'"},
        {{config, "StartCacheLocalhost", {}},
         "a cache can not be started on host \"\": the host must be 'localhost' or '127.0.0.1'"},
        {{config, "Unknown", {"one", u"two"}}, "ZEP:server:Config:Unknown \"one\" \"two\""}};
    for (const auto& [message, text] : rows)
        EXPECT_EQ(MsgIDException(message).what(), text);
}

TEST(MsgIDException, copies_keep_the_content_and_the_hook_sees_it) {
    static std::string seen;
    const LegacyErrorHook hook = [](const IMsgIDException& failure) { seen += failure.identifier(); };
    EXPECT_EQ(set_legacy_error_hook(hook), nullptr);
    MsgIDException copy({"other", "Other", {}});
    const MsgIDException original({"catalog", "ID", {u"wide"}});
    notify_legacy_error_hook(original);
    copy = MsgIDException(original);
    EXPECT_EQ(set_legacy_error_hook(nullptr), hook);
    notify_legacy_error_hook(copy);
    EXPECT_EQ(seen, "catalog:ID");
    EXPECT_EQ(copy.catalog() + copy.message_id() + copy.what(), "catalogIDcatalog:ID \"wide\"");
    EXPECT_EQ(copy.arguments(), std::vector<Argument>{u"wide"});
}

} // namespace
} // namespace qel::config::test
