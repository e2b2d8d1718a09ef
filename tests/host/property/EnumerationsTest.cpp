#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>

#include "property/DeprecationStatus.hpp"
#include "property/FunctionType.hpp"
#include "property/RefEntityType.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using namespace property;

// The numbers are in files and in other programs' memory: they never change.
struct Named {
    std::uint32_t number;
    std::string_view text;
};

const std::vector<Named> entityTypes = {
    {0, "function"},  {1, "class"},       {2, "package"},     {3, "method"},      {4, "property"},
    {5, "event"},     {6, "enumeration"}, {7, "interface"},   {8, "constructor"}, {9, "destructor"},
    {10, "constant"}, {11, "operator"},   {12, "variable"},   {13, "keyword"},    {14, "command"},
    {15, "app"},      {16, "block"},      {17, "option"},     {18, "setting"},    {19, "topic"},
    {20, "example"},  {21, "term"},       {22, "type-alias"}, {23, "macro"},      {24, "tool"},
    {25, "model"},    {26, "page"},       {27, "unknown"},
};

const std::vector<Named> functionTypes = {
    {0, "function"},    {1, "method"},       {2, "static-method"}, {3, "class-method"},
    {4, "constructor"}, {5, "destructor"},   {6, "property"},      {7, "operator"},
    {8, "macro"},       {9, "not-callable"},
};

const std::vector<Named> deprecationStatuses = {
    {0, "current"},
    {1, "deprecated"},
    {2, "removed"},
};

template <typename Enumeration>
struct NamesOf;
template <>
struct NamesOf<RefEntityType> {
    static const std::vector<Named>& table() { return entityTypes; }
};
template <>
struct NamesOf<FunctionType> {
    static const std::vector<Named>& table() { return functionTypes; }
};
template <>
struct NamesOf<DeprecationStatus> {
    static const std::vector<Named>& table() { return deprecationStatuses; }
};

template <typename Enumeration>
class EnumerationTest : public testing::Test {
  protected:
    using Value = typename Enumeration::Value;

    static Value valueOf(std::uint32_t number) { return static_cast<Value>(number); }
};

using Enumerations = testing::Types<RefEntityType, FunctionType, DeprecationStatus>;
TYPED_TEST_SUITE(EnumerationTest, Enumerations);

TYPED_TEST(EnumerationTest, HasItsNumbersAndTextsForGood) {
    const auto& table = NamesOf<TypeParam>::table();
    std::vector<typename TypeParam::Value> inOrder;
    for (const auto& row : table) {
        SCOPED_TRACE(row.text);
        const auto value = this->valueOf(row.number);
        EXPECT_EQ(TypeParam::enumToString(value), row.text);
        EXPECT_EQ(TypeParam::fromString(row.text), value);
        inOrder.push_back(value);
    }
    EXPECT_EQ(TypeParam::namedValues(), inOrder);
}

TYPED_TEST(EnumerationTest, CarriesAnyNumberOf32BitsAsItsDigits) {
    const auto firstUnnamed = static_cast<std::uint32_t>(NamesOf<TypeParam>::table().size());
    for (const std::uint32_t number :
         {firstUnnamed, std::uint32_t{1000}, std::uint32_t{0x7FFFFFFF}, std::uint32_t{0x80000000},
          std::numeric_limits<std::uint32_t>::max()}) {
        SCOPED_TRACE(number);
        const auto value = this->valueOf(number);
        EXPECT_EQ(TypeParam::enumToString(value), std::to_string(number));
        EXPECT_EQ(TypeParam::fromString(std::to_string(number)), value);
    }
}

TYPED_TEST(EnumerationTest, ReadsTheDigitsOfANamedNumber) {
    for (const auto& row : NamesOf<TypeParam>::table()) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(TypeParam::fromString(std::to_string(row.number)), this->valueOf(row.number));
    }
}

TYPED_TEST(EnumerationTest, ReadsATextLetterCaseAside) {
    for (const auto& row : NamesOf<TypeParam>::table()) {
        std::string shouted(row.text);
        for (char& letter : shouted)
            if (letter >= 'a' && letter <= 'z')
                letter = static_cast<char>(letter - 'a' + 'A');
        SCOPED_TRACE(shouted);
        EXPECT_EQ(TypeParam::fromString(shouted), this->valueOf(row.number));
    }
}

TYPED_TEST(EnumerationTest, KnowsNoOtherText) {
    for (const std::string_view text :
         {"", " ", "subroutine", "functio", "current ", " 1", "1 ", "-1", "+1", "1.0", "0x1",
          "4294967296", "99999999999999999999", "1,2"}) {
        SCOPED_TRACE("\"" + std::string(text) + "\"");
        EXPECT_EQ(TypeParam::fromString(text), std::nullopt);
    }
}

TEST(EnumerationNamesTest, AreThoseOfTheirEnumerators) {
    EXPECT_EQ(RefEntityType::enumToString(RefEntityType::Function), "function");
    EXPECT_EQ(RefEntityType::enumToString(RefEntityType::TypeAlias), "type-alias");
    EXPECT_EQ(RefEntityType::enumToString(RefEntityType::Unknown), "unknown");
    EXPECT_EQ(FunctionType::enumToString(FunctionType::Property), "property");
    EXPECT_EQ(FunctionType::enumToString(FunctionType::NotCallable), "not-callable");
    EXPECT_EQ(DeprecationStatus::enumToString(DeprecationStatus::Removed), "removed");
}

TEST(EnumerationNamesTest, ClassesAreShownUnderOneHostPackage) {
    EXPECT_STREQ(RefEntityType::getZORBClassName(), "RefEntityType");
    EXPECT_STREQ(FunctionType::getZORBClassName(), "FunctionType");
    EXPECT_STREQ(DeprecationStatus::getZORBClassName(), "DeprecationStatus");
    EXPECT_STREQ(RefEntityType::getZORBPackageName(), FunctionType::getZORBPackageName());
    EXPECT_STREQ(RefEntityType::getZORBPackageName(), DeprecationStatus::getZORBPackageName());
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
