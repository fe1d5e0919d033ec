// The platform layer: conversions, paths and their canonical forms, sizes, owned files, TLS settings, message
// IDs.
#include "qel/i18n/convert.hpp"
#include "qel/msgid/msgid_exception.hpp"
#include "qel/util/canonicalize.hpp"
#include "qel/util/native_path.hpp"
#include "qel/util/scoped_file.hpp"
#include "qel/util/ssl_context.hpp"
#include "qel/util/storage_size.hpp"

#include <boost/lexical_cast.hpp>
#include <boost/optional/optional_io.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <random>
#include <sstream>

using namespace qel::util;
using namespace qel::util::filesystem;
using namespace qel::i18n;
using namespace qel::msgid;
namespace disk = std::filesystem;

namespace {

constexpr bool windows = disk::path::preferred_separator == L'\\';

std::string shown(const Path& path) {
    return ustring_to_utf8(path.text());
}

Path path_of(const disk::path& path) {
    return Path(path.u16string());
}

TEST(Convert, each_ill_formed_part_is_replaced_and_its_neighbours_stay) {
    // clang-format off
    const std::pair<std::u16string, std::string> wide_rows[] = {
        {{u'a', 0xD800, u'b'}, "a\uFFFDb"},             {{u'a', 0xDC00, u'b'}, "a\uFFFDb"},
        {{0xD83D, 0xD83D, 0xDE00}, "\uFFFD\U0001F600"}, {{0xDE00, 0xD83D, u'z'}, "\uFFFD\uFFFDz"},
        {{u'a', 0xD83D}, "a\uFFFD"},                    {{0xDBFF, 0xDFFF}, "\U0010FFFF"}};
    // One replacement for as many bytes as could have begun a character.
    const std::pair<std::string, std::u16string> utf8_rows[] = {
        {"\xC0\xAF\xE0\x80\xBF\xF0\x81\x82" "A", u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA"},
        {"\xED\xA0\x80\xED\xBF\xBF\xED\xAF" "A", u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA"},
        {"\xF4\x91\x92\x93\xFF" "A\x80\xBF" "B", u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA\uFFFD\uFFFDB"},
        {"\xE1\x80\xE2\xF0\x91\x92\xF1\xBF" "A", u"\uFFFD\uFFFD\uFFFD\uFFFDA"},
        {"\xF0\x9F\x98\xF0\x9F\x98\x80",         u"\uFFFD\U0001F600"},
        {"a\xE2\x82",                           u"a\uFFFD"},
        {"\xF5\xEF\xBB\xBF",                    u"\uFFFD\uFEFF"},
        {{'a', '\0', 'b'},                       {u'a', u'\0', u'b'}}};
    // clang-format on
    for (const auto& [wide, utf8] : wide_rows)
        EXPECT_EQ(ustring_to_utf8(wide), utf8);
    for (const auto& [utf8, wide] : utf8_rows)
        EXPECT_EQ(utf8_to_ustring(utf8), wide) << ustring_to_utf8(wide);
    EXPECT_EQ(ustring_to_utf8(std::u16string_view(u"\U0001F600").substr(0, 1)), "\uFFFD");
    EXPECT_EQ(ascii_to_ustring("a\x7F\x80\xFF"), u"a\x7F\uFFFD\uFFFD");
    const std::string echoed = ustring_to_term(std::u16string{u'a', 0xD800, u'b'});
    EXPECT_TRUE(echoed.starts_with('a') && echoed.ends_with('b') && echoed.size() > 2) << echoed;
}

TEST(Convert, every_character_survives_both_ways) {
    std::u16string all;
    std::size_t bytes = 0;
    for (char32_t point = 0; point <= 0x10FFFF; ++point) {
        if (point >= 0xD800 && point <= 0xDFFF) continue;
        bytes += point < 0x80 ? 1 : point < 0x800 ? 2 : point < 0x10000 ? 3 : 4;
        if (point >= 0x10000) all += static_cast<char16_t>(0xD7C0 + (point >> 10));
        all += static_cast<char16_t>(point < 0x10000 ? point : 0xDC00 + (point & 0x3FF));
    }
    const std::string utf8 = ustring_to_utf8(all);
    EXPECT_EQ(utf8.size(), bytes);
    EXPECT_TRUE(utf8_to_ustring(utf8) == all);
}

TEST(Path, parents_and_joins_leave_no_separator_hanging_and_end_at_roots) {
    // clang-format off
    const std::vector<std::pair<std::u16string, std::u16string>> posix_parents = {
        {u"", u""},       {u"/", u""},        {u"//", u""},     {u"a", u""},       {u"a/", u""},
        {u".", u""},      {u"/a", u"/"},      {u"//a/", u"/"},  {u"a/b/", u"a"},   {u"/a//b", u"/a"},
        {u"C:/", u""},    {u"a\\b", u""},     {u"a/..", u"a"},  {u"//a//b", u"//a"}, {u"a//b//c", u"a//b"}};
    const std::vector<std::pair<std::u16string, std::u16string>> windows_parents = {
        {u"C:\\", u""},   {u"C:", u""},       {u"C:a", u"C:"},  {u"C:\\a", u"C:\\"}, {u"C:/a//b", u"C:/a"},
        {u"\\", u""},     {u"\\a", u"\\"},    {u"a\\b/", u"a"}, {u"1:\\a", u"1:"}, {u"\\\\\\a", u"\\"},
        {u"\\\\s", u""},  {u"\\\\s\\h", u""}, {u"\\\\s\\h\\", u""}, {u"//s/h/a", u"//s/h"},
        {u"\\\\.\\p\\a", u"\\\\.\\p\\"},      {u"\\\\?\\C:\\a", u"\\\\?\\C:\\"},
        {u"\\\\?\\UNC\\s\\h\\", u""},         {u"\\\\?\\unc\\s\\h\\a", u"\\\\?\\unc\\s\\h"}};
    const std::u16string joined = {u'a', char16_t{disk::path::preferred_separator}};
    const std::tuple<std::u16string, std::u16string, std::u16string> joins[] = {
        {u"", u"a", u"a"},  {u"/", u"a", u"/a"},  {u"a/", u"b", u"a/b"},  {u"a", u"b", joined + u"b"},
        {u"a", u"", joined}, {u"a", u"/b", joined + u"/b"}, {u"C:", u"x", windows ? u"C:x" : u"C:/x"}};
    // clang-format on
    for (const auto& [text, parent] : windows ? windows_parents : posix_parents)
        EXPECT_EQ(shown(Path(text).parent_path()), ustring_to_utf8(parent)) << ustring_to_utf8(text);
    for (const auto& [directory, component, result] : joins)
        EXPECT_EQ(shown(Path(directory) / component), ustring_to_utf8(result));

    std::mt19937 random(1);
    for (int round = 0; round < 20000; ++round) {
        std::u16string text;
        while (random() % 8 != 0)
            text += u"//\\\\C:?.au"[random() % 10];
        for (Path step(text); !step.empty();) {
            const Path parent = step.parent_path();
            ASSERT_LT(parent.text().size(), step.text().size()) << ustring_to_utf8(text);
            step = parent;
        }
    }
}

TEST(Path, texts_decide_equality_and_elements_decide_order) {
    // Each group is less than the next; within a group all texts differ but none is less.
    // clang-format off
    const std::vector<std::vector<std::u16string>> posix_groups = {
        {u""}, {u"!"}, {u"/", u"//", u"///"}, {u"/a", u"//a", u"/a/"}, {u"/a/b", u"/a//b"}, {u"0"},
        {u"a", u"a/"}, {u"a/b", u"a//b"}, {u"a/b/c"}, {u"a/bb", u"a//bb"}, {u"a!"}, {{0xD83D, 0xDE00}},
        {{0xE000}}};
    const std::vector<std::vector<std::u16string>> windows_groups = {
        {u"C:"}, {u"C:a"}, {u"C:\\", u"C:/", u"C:\\\\"}, {u"C:\\a", u"C:/a/"}, {u"\\", u"/"}, {u"\\a", u"/a"},
        {u"\\\\s\\h", u"//s/h/"}, {u"\\\\s\\h\\a"}, {u"a\\b", u"a/b"}};
    // clang-format on
    const auto& groups = windows ? windows_groups : posix_groups;
    for (std::size_t i = 0; i < groups.size(); ++i)
        for (std::size_t j = 0; j < groups.size(); ++j)
            for (const auto& left : groups[i])
                for (const auto& right : groups[j]) {
                    EXPECT_EQ(Path(left) < Path(right), i < j) << ustring_to_utf8(left + u" < " + right);
                    EXPECT_EQ(Path(left) == Path(right), left == right);
                }
}

/// A folder of its own for each test, in which relative paths begin at `a`; gone afterwards.
struct Files : testing::Test {
    disk::path before = disk::current_path();
    disk::path root =
        disk::temp_directory_path() / ("zep_platform_" + std::to_string(std::random_device()()));

    Files() {
        disk::create_directories(root / "a" / "b" / "c");
        disk::current_path(root / "a");
    }
    ~Files() override {
        disk::current_path(before);
        disk::remove_all(root);
    }

    /// A system that lets nobody create links is tested without them.
    void link(const std::string& name, const disk::path& target) {
        std::error_code refused;
        disk::create_directory_symlink(target, root / name, refused);
    }

    disk::path file(const char* name) {
        std::ofstream(root / name) << name;
        return root / name;
    }

    static bool exists(const Path& path) {
        std::error_code unreachable;
        return disk::exists(native(path), unreachable);
    }
};

TEST_F(Files, canonical_forms_are_equal_exactly_for_one_place_and_one_walk_finds_what_steps_find) {
    for (const char* directory : {".", "a", "a/b", "a/b/c"})
        std::ofstream(root / directory / "place") << directory;
    link("link", disk::path("a") / "b");
    link("whole", root / "a");
    link("loop", "loop");
    link("dangling", disk::path("nowhere") / "b");
    link("a/up", "..");
    // clang-format off
    const std::u16string parts[] = {u"a", u"b", u"c", u"..", u".", u"..", u"link", u"whole", u"A", u"a",
                                    u"LINK", u"missing", u"dangling", u"up", u"nowhere", u"loop", u"place"};
    // clang-format on
    const std::u16string top = root.u16string();
    const std::u16string starts[] = {u"", u"..//", top + u"/", top + u"//a/./", u"/", u"//"};

    struct Case {
        Path path;
        std::string place;             // the directory of the tree that the system finds there; empty outside
        std::vector<Path> canonical{}; // of the path and of each of its parents
    };
    const auto place = [](const Path& path) {
        std::string name;
        std::ifstream(native(path) / "place") >> name;
        return name;
    };
    std::vector<Case> cases;
    std::mt19937 random(2);
    Canonicalizer canonicalizer;
    while (cases.size() < 300) {
        // Two separators in front would name a share on Windows, and be looked for in the network.
        std::u16string text = starts[random() % (windows ? 5 : 6)];
        for (auto length = random() % 6; length > 0; --length)
            text += parts[random() % std::size(parts)] + (random() % 4 != 0 ? u"/" : u"//");
        if (random() % 2 != 0 && text.size() > 1) text.pop_back();

        Case& at = cases.emplace_back(Case{Path(text), ""});
        if (!text.empty()) at.place = place(at.path);
        for (Path step = at.path; at.canonical.empty() || !step.empty(); step = step.parent_path())
            at.canonical.push_back(canonicalize(step));
        EXPECT_EQ(shown(canonicalizer.canonicalize(at.path)), shown(at.canonical.front())) << shown(at.path);
        if (!at.place.empty()) {
            EXPECT_EQ(place(at.canonical.front()), at.place) << shown(at.path);
        }
    }
    std::size_t places = 0, nested = 0;
    for (const Case& at : cases)
        for (const Case& root_at : cases) {
            const Path& wanted = root_at.canonical.front();
            const bool below = std::count(at.canonical.begin(), at.canonical.end(), wanted) != 0;
            ASSERT_EQ(canonicalizer.is_same_or_below(at.path, root_at.path), below)
                << shown(at.path) << " and " << shown(root_at.path);
            nested += below;
            if (at.place.empty() || root_at.place.empty()) continue;
            ++places;
            ASSERT_EQ(at.canonical.front() == wanted, at.place == root_at.place)
                << shown(at.path) << " and " << shown(root_at.path);
        }
    EXPECT_GT(places, 1000U);
    EXPECT_GT(nested, 1000U);
}

TEST_F(Files, what_does_not_exist_is_folded_as_text) {
    const std::u16string zero(1, u'\0'), too_long(70000, u'x');
    link("link0", "a");
    const std::pair<std::u16string, disk::path> rows[] = {
        {u"x/./y//../z/", root / "a/x/z"},
        {u"../x/../a/../../x/../" + root.filename().u16string(), root},
        {u"../link0" + zero + u"/b", root / (u"link0" + zero) / "b"},
        {too_long + u"/../b", root / "a/b"},
        {too_long, root / "a" / too_long}};
    const std::size_t given = root.native().size();
    const std::u16string base = canonicalize(path_of(root)).text();
    for (auto [path, expected] : rows)
        EXPECT_TRUE(canonicalize(Path(path)).text() ==
                    base + expected.make_preferred().u16string().substr(given))
            << ustring_to_utf8(path).substr(0, 100);

    // The system, too, gives up on a long chain.
    for (int i = 1; i <= 40; ++i) {
        link("link" + std::to_string(i), "link" + std::to_string(i - 1));
        const Path chain = path_of(root / ("link" + std::to_string(i)) / "b");
        EXPECT_EQ(canonicalize(chain) == canonicalize(Path(u"b")), exists(chain)) << i;
    }
}

TEST_F(Files, a_canonicalizer_asks_once_and_takes_linear_time) {
    Canonicalizer canonicalizer;
    const Path late(u"../late/x");
    const Path before_change = canonicalizer.canonicalize(late);
    link("late", "a");
    EXPECT_EQ(shown(canonicalizer.canonicalize(late)), shown(before_change));
    EXPECT_EQ(canonicalize(late) == canonicalize(Path(u"x")), exists(Path(u"../late")));

    // Asking or comparing anew for each component would take minutes.
    for (const char16_t* part : {u"x/", u"./", u"c/../", u"x/../", u"//x"}) {
        std::u16string deep = u"b/";
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
    std::error_code refused;
    if (!disk::remove(root / "gone", refused)) GTEST_SKIP() << "this system keeps current directories";
    EXPECT_EQ(shown(canonicalize(Path(u"x/../y"))), shown(canonicalize(Path(u"./y"))));
    EXPECT_NE(shown(canonicalize(Path(u"y"))), shown(canonicalize(Path(u"/y"))));
}

TEST_F(Files, an_owned_file_goes_with_its_last_owner_and_directories_stay) {
    const disk::path one = file("one"), two = file("two"), named = root / u"\u00E4\U0001F600";
    {
        scoped_file first(path_of(one)), second(path_of(two)), nothing, missing(path_of(root / "missing"));
        const scoped_file folder(path_of(root / "a/b/c")), wide(path_of(named));
        std::ofstream(native(path_of(named))) << "text";
        EXPECT_TRUE(disk::exists(named));
        scoped_file third(std::move(first));
        EXPECT_TRUE(first.path().empty() && disk::exists(one));
        second = std::move(third);
        EXPECT_TRUE(third.path().empty() && disk::exists(one) && !disk::exists(two));
        second = static_cast<scoped_file&&>(second);
        EXPECT_TRUE(second.path() == path_of(one) && disk::exists(one));
    }
    EXPECT_FALSE(disk::exists(one) || disk::exists(named));
    EXPECT_TRUE(disk::exists(root / "a/b/c"));
}

TEST(StorageSize, texts_are_sizes_or_failures) {
    constexpr std::uint64_t K = 1024, M = K * K, E = M * M * M, most = ~std::uint64_t{};
    const boost::optional<std::uint64_t> bad;
    // clang-format off
    const std::pair<const char*, boost::optional<std::uint64_t>> rows[] = {
        {"0", 0},       {"007", 7},    {"12b", 12},    {"1k", K},     {"2 KB", 2 * K}, {"3   kIb", 3 * K},
        {"1M", M},      {"1gib", M * K}, {"1T", M * M}, {"1pB", E / K}, {"15E", 15 * E}, {"16E", bad},
        {"18446744073709551615", most}, {"18446744073709551616", bad}, {"99999999999999999999 K", bad},
        {"18014398509481983K", most - 1023},           {"18014398509481984K", bad},
        {"", bad},      {"K", bad},    {" 1", bad},    {"1 ", bad},   {"1K ", bad},    {"1Ki", bad},
        {"1KBB", bad},  {"1BB", bad},  {"1iB", bad},   {"1 1", bad},  {"-1", bad},     {"+1", bad},
        {"1.5K", bad},  {"1\tK", bad}, {"1,000", bad}, {"1X", bad},   {"1\n", bad},    {"1\xFF", bad}};
    // clang-format on
    for (const auto& [text, expected] : rows) {
        storage_size size;
        const bool read = boost::conversion::try_lexical_convert(std::string(text), size);
        EXPECT_EQ(read ? boost::make_optional(size.bytes()) : bad, expected) << "'" << text << "'";
    }
}

TEST(StorageSize, streams_are_read_size_by_size_and_a_failure_changes_nothing) {
    std::istringstream in(" 1K\t2\n3.5 4"), last("3"), nothing(" "), glued("3KX");
    storage_size size;
    for (const std::uint64_t expected : {1024U, 2U}) {
        EXPECT_TRUE(in >> size);
        EXPECT_EQ(size.bytes(), expected);
    }
    EXPECT_FALSE(size.parse(in) || size.parse(nothing) || size.parse(glued));
    EXPECT_EQ(size.bytes(), 2U);
    EXPECT_EQ(size.parse(last).rdstate(), std::ios_base::eofbit);
}

template <class T>
T sample() {
    if constexpr (std::is_same_v<T, bool>) return true;
    if constexpr (std::is_same_v<T, ssl::SslVerifyPeerMode>) return T::verify_peer_require_peer_cert;
    if constexpr (std::is_same_v<T, ssl::AccessMap>) return {{"client", {}}};
    if constexpr (std::is_same_v<T, boost::optional<Path>>) return Path(u"x");
    if constexpr (std::is_same_v<T, boost::optional<std::string>>) return std::string("x");
}

TEST(SslContext, each_field_decides_and_the_earlier_one_first) {
    using namespace qel::util::ssl;
    std::vector<SslContext> with;
#define QEL_SSL_FIELD(name, ...)                                                                             \
    EXPECT_TRUE(with.emplace_back().name() == __VA_ARGS__{}) << #name;                                       \
    with.back().name(sample<__VA_ARGS__>());                                                                 \
    EXPECT_TRUE(with.back().name() == sample<__VA_ARGS__>()) << #name;
#include "qel/util/ssl_context_fields.def"
    for (std::size_t i = 0; i < with.size(); ++i) {
        EXPECT_TRUE(SslContext() < with[i] && !(with[i] < SslContext()) && !(with[i] == SslContext())) << i;
        EXPECT_TRUE(SslContext(with[i]) == with[i]) << i;
        for (std::size_t later = i + 1; later < with.size(); ++later)
            EXPECT_TRUE(with[later] < with[i] && !(with[i] < with[later])) << i << " " << later;
    }
    // Two spellings of one path end the comparison, whatever follows.
    SslContext one, other;
    one.ca_file(Path(u"a//b"));
    other.ca_file(Path(u"a/b"));
    other.use_crl(true);
    EXPECT_FALSE(one < other || other < one || one == other);
}

TEST(SslVerifyPeerMode, only_the_two_names_are_read) {
    ssl::SslVerifyPeerMode mode{};
    for (const char* text : {"", "verify-peer", "No-verify-peer", "no-verify-peer ", " no-verify-peer", "1"})
        EXPECT_FALSE(boost::conversion::try_lexical_convert(std::string(text), mode)) << text;
    for (const auto known : {ssl::SslVerifyPeerMode::verify_peer_require_peer_cert, ssl::SslVerifyPeerMode{}})
        EXPECT_EQ(boost::lexical_cast<ssl::SslVerifyPeerMode>(std::string(to_text(known))), known);
}

TEST(MsgIDException, the_text_names_what_is_wrong_and_what_is_expected) {
    const std::string config = "ZEP:server:Config";
    const std::tuple<MessageID, std::vector<std::string>> rows[] = {
        {{config, "CacheProviderBadFormat", {u"%1@%2@x"}}, {"\"%1@%2@x\"", "<provider>@[<host>:]<port>"}},
        {{config, "StartCacheLocalhost", {"far"}}, {"\"far\"", "'localhost'", "'127.0.0.1'"}},
        {{config, "StartCacheLocalhost", {}}, {"\"\""}},
        {{config, "Unknown", {"one", u"two"}}, {"ZEP:server:Config:Unknown \"one\" \"two\""}}};
    for (const auto& [message, parts] : rows)
        for (const std::string& part : parts)
            EXPECT_NE(std::string(MsgIDException(message).what()).find(part), std::string::npos) << part;
}

TEST(MsgIDException, copies_keep_the_content_and_the_hook_sees_it) {
    static std::string seen;
    const LegacyErrorHook hook = [](const IMsgIDException& failure) { seen += failure.identifier(); };
    EXPECT_EQ(set_legacy_error_hook(hook), nullptr);
    MsgIDException copy({"other", "Other", {}});
    try {
        const MsgIDException original({"catalog", "ID", {u"wide"}});
        notify_legacy_error_hook(original);
        throw original;
    } catch (const std::runtime_error& failure) {
        copy = dynamic_cast<const MsgIDException&>(failure);
    }
    EXPECT_EQ(set_legacy_error_hook(nullptr), hook);
    notify_legacy_error_hook(copy);
    EXPECT_EQ(seen, "catalog:ID");
    EXPECT_EQ(copy.catalog() + copy.message_id() + copy.what(), "catalogIDcatalog:ID \"wide\"");
    EXPECT_EQ(copy.arguments(), std::vector<Argument>{u"wide"});
}

} // namespace
