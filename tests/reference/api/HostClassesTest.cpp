// The library's classes in the registry of the scripting language.

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "reference/api/EntityPrecision.hpp"
#include "support/HostValues.hpp"
#include "support/LibraryTest.hpp"

namespace reference::api {
namespace VELTRA_TEST_FILE {

using property::RefEntityType;
using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;
using tests::construct;
using tests::members;
using zorb::COSClass;

constexpr const char* apiPackage = "veltra.internal.reference.api";

std::vector<std::string> classesOf(const std::string& package) {
    std::vector<std::string> names;
    for (const auto* one : COSClass::getClasses())
        if (one->describe().packageName == package)
            names.push_back(one->describe().name);
    return names;
}

const COSClass& classOf(const std::string& package, const std::string& name) {
    return COSClass::getClass(zorb::internal::makeInterned(package + "." + name));
}

vqArrayPtr read(const vqArrayPtr& value, const char* name, std::size_t i = 0) {
    const auto object = omGetArrayElement(value.get(), i);
    return object->getClass().findProperty(name)->get(object->getNative());
}

// The names that scripts rely on, once for all tests.
TEST(LibraryHostClassesTest, AllAreThere) {
    EXPECT_THAT(
        classesOf(apiPackage),
        ElementsAre("AllTextDataRetriever", "ClassEntityDataRetriever", "EntityCaseSensitivity",
                    "EntityPrecision", "EntityPurposeDataRetriever", "PageNameDataRetriever",
                    "ReferenceData", "ReferenceDataRetriever", "ReferenceRequest"));
    EXPECT_THAT(classesOf(std::string(apiPackage) + ".comparator"),
                ElementsAre("CompoundReferenceComparator", "DeprecatedOrderComparator",
                            "EntityDepthOrderComparator", "EntityMatchComparator",
                            "EntityNameMatchComparator", "EntityTypeMatchComparator",
                            "EntityTypeOrderComparator", "FunctionTypeOrderComparator",
                            "IndexOrderComparator", "PageNameMatchComparator",
                            "PreferredOrderComparator", "ProductMatchComparator"));
}

TEST(LibraryHostClassesTest, ScriptsMakeAllButResults) {
    for (const auto* one : COSClass::getClasses()) {
        const auto& description = one->describe();
        if (!description.packageName.starts_with(apiPackage))
            continue;
        SCOPED_TRACE(description.name);
        EXPECT_NE(description.documentation, "");
        EXPECT_EQ(static_cast<bool>(description.construct),
                  !description.isEnumeration && description.name != "ReferenceData");
        for (const auto& property : description.properties)
            EXPECT_NE(property.documentation, "") << property.name;
        for (const auto& method : description.methods)
            EXPECT_NE(method.documentation, "") << method.name;
    }
}

TEST(LibraryHostClassesTest, WhatIsNullUntilItIsSetSaysSo) {
    std::vector<std::string> names;
    for (const auto* one : COSClass::getClasses())
        if (one->describe().packageName.starts_with(apiPackage))
            for (const auto& property : one->describe().properties)
                if (property.shape.mayBeNull)
                    names.push_back(one->describe().name + "." + property.name);
    EXPECT_THAT(names, UnorderedElementsAre("CompoundReferenceComparator.Comparators",
                                            "ReferenceRequest.Types"));
}

TEST(LibraryHostClassesTest, EnumerationsHaveTheirMembers) {
    const auto& precision = classOf(apiPackage, "EntityPrecision");
    ASSERT_EQ(precision.describe().members.size(), 2U);
    EXPECT_EQ(precision.findMember(0)->name, "Exact_Match");
    EXPECT_EQ(precision.findMember(1)->name, "Ignore_Package");
    const auto& fold = classOf(apiPackage, "EntityCaseSensitivity");
    ASSERT_EQ(fold.describe().members.size(), 2U);
    EXPECT_EQ(fold.findMember(0)->name, "Sensitive");
    EXPECT_EQ(fold.findMember(1)->name, "Insensitive");
}

class ScriptedSearchTest : public tests::LibraryTest {};

// A search as a script makes it: through the registry alone.
TEST_F(ScriptedSearchTest, AnswersWithResultsThatCanBeRead) {
    add(tests::ProductBuilder(u"veltra").entity(u"fit", RefEntityType::Function, u"fit.html",
                                                u"Fits a curve."));
    add(tests::ProductBuilder(u"alpha").entity(u"stat.fit", RefEntityType::Method, u"s.html"));
    for (const auto* name : {"ReferenceDataRetriever", "AllTextDataRetriever"}) {
        const auto& requestClass = classOf(apiPackage, "ReferenceRequest");
        const auto request = construct(requestClass.getId());
        void* native = omGetArrayElement(request.get(), 0)->getNative();
        requestClass.findProperty("EntityText")->set(native, matrix::createString(u"fit").get());
        requestClass.findProperty("EntityPrecision")
            ->set(native, members<EntityPrecision>({1}).get());

        const auto& retrieverClass = classOf(apiPackage, name);
        const auto retriever = construct(retrieverClass.getId());
        void* searcher = omGetArrayElement(retriever.get(), 0)->getNative();
        retrieverClass.findProperty("ReferenceRequest")->set(searcher, request.get());
        const auto results = retrieverClass.findMethod("getReferenceData")->call(searcher);

        ASSERT_EQ(results->getNumberOfElements(), 2U);
        EXPECT_EQ(*read(read(results, "HeaderInfo", 0), "ShortName"),
                  *matrix::createString(u"alpha"));
        const auto item = read(results, "RefItem", 1);
        EXPECT_EQ(*read(item, "Purpose"), *matrix::createString(u"Fits a curve."));
        EXPECT_EQ(*read(read(item, "RefEntities"), "Name"), *matrix::createString(u"fit"));
    }
}

TEST_F(ScriptedSearchTest, FindingNothingIsAnEmptyArrayOfObjects) {
    const auto& retrieverClass = classOf(apiPackage, "PageNameDataRetriever");
    const auto retriever = construct(retrieverClass.getId());
    const auto results = retrieverClass.findMethod("getReferenceData")
                             ->call(omGetArrayElement(retriever.get(), 0)->getNative());
    EXPECT_EQ(*results, *matrix::createObjectRow({}));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::api
