#include "model/record_differences.h"
#include "tests/support/generators.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstddef>
#include <string_view>
#include <tuple>
#include <vector>

namespace vantor {
namespace {

struct Anything {
    template <typename T>
    operator T() const;
};

// As many values as a record can be made of at most.
template <typename Record, typename... Values>
consteval std::size_t memberCount() {
    if constexpr (requires { Record{Values{}..., Anything{}}; })
        return memberCount<Record, Values..., Anything>();
    else
        return sizeof...(Values);
}

template <typename Record>
class RecordFields : public ::testing::Test {};

using Records = ::testing::Types<SetItem, SetData, SetActivation, Shoot, Product, CatalogData>;
TYPED_TEST_SUITE(RecordFields, Records, );

TYPED_TEST(RecordFields, AreAllMembers) {
    EXPECT_EQ(std::tuple_size_v<std::remove_const_t<decltype(kFields<TypeParam>)>>, memberCount<TypeParam>())
        << "a member stands in no line of the table";
}

TYPED_TEST(RecordFields, ThatDifferAreNamedInTheirOrder) {
    EXPECT_TRUE(rc::check([] {
        const auto one = *testing::generated<TypeParam>();
        const auto other = *testing::generated<TypeParam>();
        auto record = one;
        std::vector<std::string_view> taken;
        forEachField<TypeParam>([&](const auto& field) {
            if (*rc::gen::arbitrary<bool>()) {
                record.*field.member = other.*field.member;
                if (!(one.*field.member == other.*field.member))
                    taken.push_back(field.key);
            }
        });
        RC_ASSERT(differingFields(one, record) == taken);
        RC_ASSERT((one == record) == taken.empty());
    }));
}

TEST(RecordDifferences, MayBeConfinedToSomeFields) {
    const Product jeans{Uuid::random(), "jeans", {"blue"}, "Nike"};
    auto other = jeans;
    EXPECT_TRUE(agreeExceptIn({}, jeans, other));
    other.name = "Jeans";
    other.colors.emplace_back("black");
    EXPECT_TRUE(agreeExceptIn({"colors", "name"}, jeans, other));
    EXPECT_TRUE(agreeExceptIn({"id", "name", "colors", "brand"}, jeans, other));
    EXPECT_FALSE(agreeExceptIn({"name"}, jeans, other));
    EXPECT_FALSE(agreeExceptIn({}, jeans, other));
}

} // namespace
} // namespace vantor
