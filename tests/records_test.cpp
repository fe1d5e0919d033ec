// The settings records: their fields, copies and comparisons.
#include "support.hpp"

namespace qel::config::test {
namespace {

template <class R>
void expect_equal(const R& a, const R& b) {
    static_assert(noexcept(a == b && a != b && a < b && a <= b && a > b && a >= b));
    EXPECT_TRUE(a == b && a <= b && a >= b);
    EXPECT_FALSE(a != b || a < b || a > b);
}

template <class R>
void expect_less(const R& a, const R& b) {
    EXPECT_TRUE(a < b && a <= b && a != b && b > a && b >= a && b != a);
    EXPECT_FALSE(a == b || a > b || a >= b || b == a || b < a || b <= a);
}

/// A default record except for one field, which has the n-th sample.
template <class R, class T>
R with(const Field<R, T>& field, int n, R record = {}) {
    (record.*field.set)(sample<T>(n));
    return record;
}

template <class R>
class Records : public testing::Test {};
template <class, class... R>
using Rest = testing::Types<R...>;
// clang-format off
using AllRecords = Rest<void
#define ZEP_EACH_RECORD "../tests/next_record.inl"
#include "qel/config/detail/each_record.inl"
>;
// clang-format on
TYPED_TEST_SUITE(Records, AllRecords);

TYPED_TEST(Records, each_field_alone_decides_all_six_operators) {
    each_field<TypeParam>([]<class T>(const Field<TypeParam, T>& field) {
        SCOPED_TRACE(field.name);
        expect_equal(with(field, 0), TypeParam());
        expect_equal(with(field, 1), with(field, 1));
        expect_less(with(field, 0), with(field, 1));
        if (!std::is_same_v<T, bool>) expect_less(with(field, 1), with(field, 2));
    });
}

TYPED_TEST(Records, of_any_two_fields_the_earlier_decides) {
    each_field<TypeParam>([](const auto& earlier) {
        bool behind = false;
        each_field<TypeParam>([&](const auto& later) {
            SCOPED_TRACE(earlier.name + " before "s + later.name);
            if (behind) expect_less(with(later, 1), with(earlier, 1));
            behind = behind || later.name == std::string(earlier.name);
        });
    });
}

TYPED_TEST(Records, each_field_survives_copies_and_moves) {
    each_field<TypeParam>([]<class T>(const Field<TypeParam, T>& field) {
        TypeParam original, assigned = sample<TypeParam>(2), move_assigned = assigned;
        (original.*field.get)() = sample<T>(1);
        TypeParam copy(original), moved(std::move(copy));
        assigned = moved;
        move_assigned = TypeParam(assigned);
        for (const TypeParam& one : {original, moved, assigned, move_assigned, with(field, 1)}) {
            EXPECT_TRUE((one.*field.read)() == sample<T>(1)) << field.name;
            EXPECT_TRUE(one == original) << field.name;
        }
        EXPECT_TRUE(with(field, 0, original) == TypeParam()) << "the setter does not clear " << field.name;
    });
}

TYPED_TEST(Records, the_full_constructor_takes_the_fields_in_order) {
    each_field<TypeParam>([](const auto& chosen) {
        const auto record = [&]<class... T>(const Field<TypeParam, T>&... field) {
            return TypeParam(sample<T>(field.name == std::string(chosen.name) ? 1 : 0)...);
        };
        EXPECT_TRUE(std::apply(record, fields_of(no_record<TypeParam>)) == with(chosen, 1)) << chosen.name;
    });
}

// The accessors must have these types, because Field<R, T> accepts no others.
TEST(RecordFields, have_these_types_and_names_in_this_order) {
    Lines fields, golden;
    const auto add = [&]<class R>() {
        const std::string record = name_of(no_record<R>);
        fields.push_back(record + ": " + std::to_string(sizeof(R)) + " bytes");
        each_field<R>(
            [&](const auto& field) { fields.push_back(record + ": " + field.type + " " + field.name); });
    };
    [&]<class... R>(testing::Types<R...>) { (add.template operator()<R>(), ...); }(AllRecords());
    for (const Case& row : read_cases("fields.txt")) {
        const std::string record = ustring_to_utf8(row.tokens[0]);
        golden.push_back(record + ": " + ustring_to_utf8(row.tokens.at(1)) + " bytes");
        for (const std::string& field : row.expected)
            golden.push_back(record + ": " + field);
    }
    expect_same_lists(fields, golden, "fields.txt");
    static_assert(std::is_same_v<time_duration, boost::posix_time::time_duration>);
    static_assert(std::is_same_v<optional<Path>, boost::optional<util::filesystem::Path>>);
    static_assert(static_cast<int>(HTTPProtocol::http) == 0 && static_cast<int>(HTTPProtocol::https) == 1);
}

template <class R>
void expect_unordered(const R& a, const R& b) {
    for (const auto& [left, right] : {std::pair(a, b), std::pair(b, a)}) {
        EXPECT_TRUE(left != right && left > right && left >= right);
        EXPECT_FALSE(left == right || left < right || left <= right);
    }
}

TEST(RecordOrder, no_duration_is_neither_less_than_one_nor_equal_but_equals_itself) {
    const time_duration none(boost::posix_time::not_a_date_time);
    expect_equal(RequestQueueTime(none, none), RequestQueueTime(none, none));
    for (const time_duration& some : {time_duration(), time_duration(boost::posix_time::neg_infin)})
        // The later field alone would make the first record less.
        expect_unordered(RequestQueueTime(none, boost::none), RequestQueueTime(some, some));
    expect_less(RequestQueueTime(boost::none, none), RequestQueueTime(none, none));
}

TEST(RecordOrder, two_spellings_of_a_path_are_neither_less_nor_equal_and_end_the_comparison) {
    S a, b;
    a.extract_root(Path(u"a//b"));
    b.extract_root(Path(u"a/b"));
    b.num_workers(1u); // a later field, which would make a the lesser one
    expect_unordered(a, b);
    a.wait_mode(true); // an earlier field still decides
    expect_less(b, a);
    b.extract_root(Path(u"A/B"));
    b = a;
    b.extract_root(Path(u"A//b"));
    expect_less(b, a); // letter case counts
}

} // namespace
} // namespace qel::config::test
