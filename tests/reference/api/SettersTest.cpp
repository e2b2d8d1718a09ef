// Every property of every class, set to every kind of value: what is refused changes nothing.

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "reference/api/EntityPrecision.hpp"
#include "reference/api/ReferenceData.hpp"
#include "reference/api/ReferenceRequest.hpp"
#include "reference/api/comparator/EntityDepthOrderComparator.hpp"
#include "reference/api/comparator/IndexOrderComparator.hpp"
#include "support/HostValues.hpp"

namespace reference::api {
namespace {

using property::FunctionType;
using property::RefEntityType;
using tests::construct;
using tests::members;
using tests::objects;
using tests::outcomeOf;
using zorb::COSClass;

struct Value {
    std::string name;
    vqArrayPtr value;
};

const std::vector<Value>& values() {
    static const std::vector<Value> all = [] {
        const auto order = construct<comparator::IndexOrderComparator>();
        return std::vector<Value>{
            {"null", nullptr},
            {"no objects", matrix::createObjectRow({})},
            {"no members", members<RefEntityType>({})},
            {"no numbers", matrix::createNumberRow({})},
            {"no texts", matrix::createStringRow({})},
            {"no cells", matrix::createCellRow({})},
            {"a text", matrix::createString(u"a")},
            {"two texts", matrix::createStringRow({u"a", u"b"})},
            {"a number", matrix::createNumber(1)},
            {"two numbers", matrix::createNumberRow({0, 1})},
            {"a double", matrix::createDouble(1)},
            {"a type", members<RefEntityType>({1})},
            {"two types", members<RefEntityType>({1, 2})},
            {"a foreign member", members<FunctionType>({1})},
            {"two foreign members", members<FunctionType>({1, 2})},
            {"a comparator", order},
            {"two comparators", objects({order, construct<comparator::IndexOrderComparator>()})},
            {"a comparator in a cell", matrix::createCellRow({order})},
            {"a cell in a cell", matrix::createCellRow({matrix::createCellRow({order})})},
            {"an empty cell", matrix::createCellRow({nullptr})},
            {"a foreign object", zorb::wrap(ReferenceData())},
            {"a request", construct<ReferenceRequest>()},
            {"no object", matrix::createObjectRow({nullptr})},
        };
    }();
    return all;
}

// What is accepted, and how the rest is refused; "ignored" changes nothing either.
using Outcomes = std::map<std::string, std::string>;
struct Setter {
    std::string otherwise;  // the identifier for what `outcomes` do not name
    Outcomes outcomes;      // "" accepts
};

constexpr const char* requireScalar = "VELTRA:class:RequireScalar";
constexpr const char* requireClass = "VELTRA:class:RequireClass";
constexpr const char* notScalar = "VELTRA:referenceapi:ExpectedScalarComparator";

const std::map<std::string, Setter>& setters() {
    static const Setter text{"VELTRA:class:RequireString", {{"null", "ignored"}, {"a text", ""}}};
    static const Setter oneMember{"VELTRA:class:RequireNumeric",
                                  {{"null", "ignored"},
                                   {"no objects", requireScalar},
                                   {"no members", requireScalar},
                                   {"no numbers", requireScalar},
                                   {"no texts", requireScalar},
                                   {"no cells", requireScalar},
                                   {"two texts", requireScalar},
                                   {"two numbers", requireScalar},
                                   {"two types", requireScalar},
                                   {"two foreign members", requireScalar},
                                   {"two comparators", requireScalar},
                                   {"a number", ""},
                                   {"a type", ""},
                                   {"a foreign member", ""}}};
    static const std::map<std::string, Setter> all = {
        {"ReferenceRequest.EntityText", text},
        {"ReferenceRequest.EntityCaseSensitivity", oneMember},
        {"ReferenceRequest.EntityPrecision", oneMember},
        {"ReferenceRequest.Types",
         {"VELTRA:class:RequireEnumeration",
          {{"null", ""},
           {"no objects", ""},
           {"no members", ""},
           {"no numbers", ""},
           {"no texts", ""},
           {"no cells", ""},
           {"a type", ""},
           {"two types", ""},
           {"a foreign member", requireClass},
           {"two foreign members", requireClass}}}},
        {"ReferenceRequest.Products",
         {"VELTRA:class:RequireStringArray",
          {{"null", "ignored"}, {"no texts", ""}, {"a text", ""}, {"two texts", ""}}}},
        {"ReferenceRequest.Comparator",
         {"VELTRA:referenceapi:InvalidComparator",
          {{"null", "ignored"},
           {"no objects", notScalar},
           {"no members", notScalar},
           {"no numbers", notScalar},
           {"no texts", notScalar},
           {"no cells", notScalar},
           {"two texts", notScalar},
           {"two numbers", notScalar},
           {"two types", notScalar},
           {"two foreign members", notScalar},
           {"two comparators", notScalar},
           {"a comparator", ""}}}},
        {"ReferenceDataRetriever.ReferenceRequest",
         {requireClass,
          {{"null", "ignored"},
           {"no objects", "out of range: There is no element 0: the array is empty."},
           {"a request", ""}}}},
        {"CompoundReferenceComparator.Comparators",
         {"VELTRA:referenceapi:ExpectedComparatorCellArray",
          {{"null", "ignored"},
           {"no cells", ""},
           {"a comparator in a cell", ""},
           {"a cell in a cell", "VELTRA:referenceapi:InvalidComparator"},
           {"an empty cell", "VELTRA:referenceapi:InvalidComparator"}}}},
        {"EntityMatchComparator.EntityName", text},
        {"EntityMatchComparator.RefEntityType", oneMember},
        {"EntityMatchComparator.EntityCaseSensitivity", oneMember},
        {"EntityNameMatchComparator.EntityName", text},
        {"EntityNameMatchComparator.EntityCaseSensitivity", oneMember},
        {"EntityTypeMatchComparator.RefEntityType", oneMember},
        {"PageNameMatchComparator.PageName", text},
        {"PageNameMatchComparator.EntityCaseSensitivity", oneMember},
        {"ProductMatchComparator.ProductName", text},
    };
    return all;
}

// The setters of the table, and those that derived retrievers share with their base.
const Setter* setterOf(const std::string& className, const std::string& property) {
    const bool isRetriever = className.ends_with("Retriever");
    const auto found =
        setters().find((isRetriever ? "ReferenceDataRetriever" : className) + "." + property);
    return found == setters().end() ? nullptr : &found->second;
}

bool isEqual(const vqArrayPtr& a, const vqArrayPtr& b) {
    return a == b || (a && b && *a == *b);
}

// Everything that a script sees of an object; objects by identity, as the caches keep them.
std::vector<vqArrayPtr> shown(const COSClass& objectClass, void* native) {
    std::vector<vqArrayPtr> all;
    for (const auto& property : objectClass.describe().properties)
        all.push_back(property.get(native));
    return all;
}

void checkSetter(const COSClass& objectClass, const zorb::Property& property, const Setter& setter,
                 bool isReadFirst) {
    for (const auto& [name, value] : values()) {
        SCOPED_TRACE(name + (isReadFirst ? ", read before" : ""));
        const auto object = construct(objectClass.getId());
        void* native = omGetArrayElement(object.get(), 0)->getNative();
        std::vector<vqArrayPtr> before;
        if (isReadFirst)
            before = shown(objectClass, native);
        const auto found = setter.outcomes.find(name);
        const std::string expected =
            found == setter.outcomes.end() ? setter.otherwise : found->second;

        const auto outcome = outcomeOf([&] { property.set(native, value.get()); });
        EXPECT_EQ(outcome, expected == "ignored" ? "" : expected);
        if (expected.empty())
            continue;
        if (!isReadFirst) {
            // The field is as it was: what is filled from it now is a new object's.
            const auto untouched = construct(objectClass.getId());
            const auto& cell = property.get(native);
            const auto& fresh = property.get(omGetArrayElement(untouched.get(), 0)->getNative());
            // Objects are made anew for each owner.
            EXPECT_TRUE(isEqual(cell, fresh) || property.shape.kind == zorb::Shape::Object);
            continue;
        }
        const auto after = shown(objectClass, native);
        for (std::size_t i = 0; i < after.size(); ++i) {
            const auto& shownProperty = objectClass.describe().properties[i];
            SCOPED_TRACE(shownProperty.name);
            EXPECT_TRUE(isEqual(after[i], before[i]));
            // Texts are not kept in host form.
            EXPECT_TRUE(after[i] == before[i] || shownProperty.shape.kind == zorb::Shape::Text);
        }
    }
}

TEST(SettersTest, TakeWhatTheyShouldAndAreUnmovedByTheRest) {
    std::size_t checked = 0;
    for (const auto* one : COSClass::getClasses()) {
        const auto& description = one->describe();
        if (!description.packageName.starts_with("veltra.internal.reference.api"))
            continue;
        for (const auto& property : description.properties) {
            if (!property.set)
                continue;
            SCOPED_TRACE(description.name + "." + property.name);
            const Setter* setter = setterOf(description.name, property.name);
            ASSERT_NE(setter, nullptr) << "not in the table";
            checkSetter(*one, property, *setter, false);
            checkSetter(*one, property, *setter, true);
            ++checked;
        }
    }
    // The table has one line for all five retrievers.
    EXPECT_EQ(checked, setters().size() + 4);
}

TEST(SettersTest, LeaveNothingBehind) {
    static_cast<void>(values());
    const tests::LiveCounts before;
    for (const auto* one : COSClass::getClasses()) {
        if (!one->describe().construct)
            continue;
        const auto object = construct(one->getId());
        void* native = omGetArrayElement(object.get(), 0)->getNative();
        for (const auto& property : one->describe().properties)
            for (const auto& value : values()) {
                if (property.set)
                    outcomeOf([&] { property.set(native, value.value.get()); });
                static_cast<void>(property.get(native));
            }
    }
    EXPECT_EQ(tests::LiveCounts(), before);
}

}  // namespace
}  // namespace reference::api
