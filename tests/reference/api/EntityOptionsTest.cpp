#include <gtest/gtest.h>

#include "reference/api/EntityCaseSensitivity.hpp"
#include "reference/api/EntityPrecision.hpp"
#include "reference/api/ReferenceData.hpp"
#include "reference/api/ReferenceRequest.hpp"

namespace reference::api {
namespace VELTRA_TEST_FILE {

TEST(EntityCaseSensitivityTest, HasFixedNumbersAndTexts) {
    EXPECT_EQ(EntityCaseSensitivity::Sensitive, 0u);
    EXPECT_EQ(EntityCaseSensitivity::Insensitive, 1u);
    EXPECT_EQ(EntityCaseSensitivity::enumToString(EntityCaseSensitivity::Sensitive), "Sensitive");
    EXPECT_EQ(EntityCaseSensitivity::enumToString(EntityCaseSensitivity::Insensitive),
              "Insensitive");
}

TEST(EntityCaseSensitivityTest, NumberOutOfRangeIsToldAsSensitive) {
    EXPECT_EQ(EntityCaseSensitivity::enumToString(static_cast<EntityCaseSensitivity::Value>(7)),
              "Sensitive");
}

TEST(EntityPrecisionTest, HasFixedNumbersAndTexts) {
    EXPECT_EQ(EntityPrecision::Exact_Match, 0u);
    EXPECT_EQ(EntityPrecision::Ignore_Package, 1u);
    EXPECT_EQ(EntityPrecision::enumToString(EntityPrecision::Exact_Match), "Exact_Match");
    EXPECT_EQ(EntityPrecision::enumToString(EntityPrecision::Ignore_Package), "Ignore_Package");
}

TEST(EntityPrecisionTest, NumberOutOfRangeIsToldAsIgnorePackage) {
    EXPECT_EQ(EntityPrecision::enumToString(static_cast<EntityPrecision::Value>(7)),
              "Ignore_Package");
}

TEST(EntityOptionsTest, ShareTheirPackageWithRequestAndResult) {
    const std::string package = "veltra.internal.reference.api";
    EXPECT_EQ(EntityCaseSensitivity::getZORBPackageName(), package);
    EXPECT_EQ(EntityPrecision::getZORBPackageName(), package);
    EXPECT_EQ(ReferenceRequest::getZORBPackageName(), package);
    EXPECT_EQ(ReferenceData::getZORBPackageName(), package);
}

TEST(EntityOptionsTest, HaveTheirClassNames) {
    EXPECT_STREQ(EntityCaseSensitivity::getZORBClassName(), "EntityCaseSensitivity");
    EXPECT_STREQ(EntityPrecision::getZORBClassName(), "EntityPrecision");
    EXPECT_STREQ(ReferenceRequest::getZORBClassName(), "ReferenceRequest");
    EXPECT_STREQ(ReferenceData::getZORBClassName(), "ReferenceData");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::api
