// The property library's classes as the scripting language sees them.

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "property/hostNames.hpp"
#include "support/HostValues.hpp"
#include "support/Items.hpp"
#include "zorb/ClassDescription.hpp"

namespace reference::property {
namespace VELTRA_TEST_FILE {

using tests::members;
using zorb::COSClass;
using zorb::HostName;

// A property of an object that a 1-by-1 array holds, or of the first element of a larger one.
vqArrayPtr read(const vqArrayPtr& value, const char* name) {
    const auto object = omGetArrayElement(value.get(), 0);
    return object->getClass().findProperty(name)->get(object->getNative());
}

std::u16string readText(const vqArrayPtr& value, const char* name) {
    return read(value, name)->getIf<vqArray::Strings>()->front();
}

std::vector<std::string> memberNames(zorb::Interned classId) {
    std::vector<std::string> names;
    for (const auto& member : COSClass::getClass(classId).describe().members)
        names.push_back(member.name);
    return names;
}

TEST(PropertyHostClassesTest, EnumerationsHaveTheNamesOfTheirValues) {
    const auto& types = COSClass::getClass(HostName<RefEntityType>::id());
    EXPECT_TRUE(types.describe().isEnumeration);
    EXPECT_EQ(types.describe().members.size(), 28U);
    EXPECT_EQ(types.findMember(0)->name, "Function");
    EXPECT_EQ(types.findMember(22)->name, "TypeAlias");
    EXPECT_EQ(types.findMember(27)->name, "Unknown");
    EXPECT_EQ(types.findMember(28), nullptr);
    EXPECT_THAT(memberNames(HostName<DeprecationStatus>::id()),
                ::testing::ElementsAre("Current", "Deprecated", "Removed"));
    EXPECT_THAT(memberNames(HostName<FunctionType>::id()), ::testing::Contains("StaticMethod"));
}

TEST(PropertyHostClassesTest, AnItemIsReadToItsLastPart) {
    const RefItem item = tests::makeFullItem(u"ref/full.html");
    const vqArrayPtr value = zorb::wrap(item);
    EXPECT_EQ(readText(value, "Href"), item.getHref());
    EXPECT_EQ(readText(value, "PackageName"), item.getPackageName());
    EXPECT_EQ(readText(value, "Purpose"), item.getPurpose());
    EXPECT_EQ(readText(value, "Introduced"), item.getIntroduced());
    EXPECT_EQ(readText(value, "Description"), item.getDescription());
    EXPECT_EQ(*read(value, "DeprecationStatus"),
              *members<DeprecationStatus>({item.getDeprecationStatus()}));

    const auto entities = read(value, "RefEntities");
    ASSERT_EQ(entities->getNumberOfElements(), item.getRefEntities().size());
    const auto& entity = item.getRefEntities().front();
    EXPECT_EQ(readText(entities, "Name"), entity.getName());
    EXPECT_EQ(*read(entities, "RefEntityType"),
              *members<RefEntityType>({entity.getRefEntityType()}));
    EXPECT_EQ(*read(entities, "FunctionType"), *members<FunctionType>({entity.getFunctionType()}));

    EXPECT_EQ(readText(read(value, "AppThumbnail"), "Source"), item.getAppThumbnail().getSource());
    EXPECT_EQ(readText(read(value, "AppThumbnail"), "AlternativeText"),
              item.getAppThumbnail().getAlternativeText());
    const auto& syntaxes = item.getSyntaxGroups().front();
    EXPECT_EQ(readText(read(value, "SyntaxGroups"), "Title"), syntaxes.getTitle());
    EXPECT_EQ(*read(read(value, "SyntaxGroups"), "Syntaxes"),
              *matrix::createStringRow(syntaxes.getSyntaxes()));

    const auto& input = item.getInputs().front();
    EXPECT_EQ(readText(read(value, "Inputs"), "Name"), input.getName());
    EXPECT_EQ(readText(read(value, "Inputs"), "Purpose"), input.getPurpose());
    EXPECT_EQ(readText(read(value, "Inputs"), "Href"), input.getHref());
    EXPECT_EQ(*read(read(value, "Inputs"), "Values"), *matrix::createStringRow(input.getValues()));
    EXPECT_EQ(readText(read(value, "InputGroups"), "Title"),
              item.getInputGroups().front().getTitle());
    EXPECT_EQ(readText(read(read(value, "InputGroups"), "Inputs"), "Name"),
              item.getInputGroups().front().getInputs().front().getName());
    EXPECT_EQ(readText(read(value, "Outputs"), "Name"), item.getOutputs().front().getName());

    const auto& group = item.getClassPropertyGroups().front();
    EXPECT_EQ(readText(read(value, "ClassPropertyGroups"), "Title"), group.getTitle());
    EXPECT_EQ(readText(read(read(value, "ClassPropertyGroups"), "ClassProperties"), "Purpose"),
              group.getClassProperties().front().getPurpose());

    EXPECT_EQ(readText(read(value, "SeeAlsoInfo"), "Page"),
              item.getSeeAlsoInfo().front().getPage());
    EXPECT_EQ(readText(read(value, "SeeAlsoInfo"), "Name"),
              item.getSeeAlsoInfo().front().getName());
    EXPECT_EQ(readText(read(value, "Examples"), "Title"), item.getExamples().front().getTitle());
    EXPECT_EQ(readText(read(value, "Examples"), "Code"), item.getExamples().front().getCode());
    const auto& parameter = item.getParameters().front();
    EXPECT_EQ(readText(read(value, "Parameters"), "Name"), parameter.getName());
    EXPECT_EQ(readText(read(value, "Parameters"), "Purpose"), parameter.getPurpose());
    EXPECT_EQ(readText(read(value, "Parameters"), "DefaultValue"), parameter.getDefaultValue());
    EXPECT_EQ(readText(read(value, "Replacements"), "Name"),
              item.getReplacements().front().getName());
}

TEST(PropertyHostClassesTest, AHeaderIsReadWhole) {
    const vqArrayPtr value = zorb::wrap(HeaderInfo(u"a.json", u"help/a", u"a", u"The A", u"1.2"));
    EXPECT_EQ(readText(value, "ReferenceFileName"), u"a.json");
    EXPECT_EQ(readText(value, "HelpFolder"), u"help/a");
    EXPECT_EQ(readText(value, "ShortName"), u"a");
    EXPECT_EQ(readText(value, "DisplayName"), u"The A");
    EXPECT_EQ(readText(value, "Version"), u"1.2");
}

TEST(PropertyHostClassesTest, EverythingIsExplainedAndReadOnly) {
    for (const auto* one : COSClass::getClasses()) {
        const auto& description = one->describe();
        if (description.packageName != RefEntityType::getZORBPackageName())
            continue;
        SCOPED_TRACE(one->getId().str());
        EXPECT_NE(description.documentation, "");
        EXPECT_FALSE(description.construct);
        for (const auto& property : description.properties) {
            EXPECT_NE(property.documentation, "") << property.name;
            EXPECT_FALSE(property.set) << property.name;
        }
    }
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::property
