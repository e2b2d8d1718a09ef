// Every property of every class, set to every kind of value: what is refused changes nothing.

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fl/i18n/utf.hpp"
#include "reference/api/EntityPrecision.hpp"
#include "reference/api/ReferenceData.hpp"
#include "reference/api/ReferenceRequest.hpp"
#include "reference/api/comparator/IndexOrderComparator.hpp"
#include "reference/api/comparator/ProductMatchComparator.hpp"
#include "reference/utils/getComparatorFromVq.hpp"
#include "support/Generator.hpp"
#include "support/HostValues.hpp"
#include "support/LibraryTest.hpp"
#include "support/Print.hpp"

namespace reference::api {
namespace VELTRA_TEST_FILE {

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
            {"a good and a bad cell", matrix::createCellRow({order, matrix::createNumber(1)})},
            {"a foreign object", zorb::wrap(ReferenceData())},
            {"a request", construct<ReferenceRequest>()},
            {"no object", matrix::createObjectRow({nullptr})},
        };
    }();
    return all;
}

// What a property takes, and how it refuses the rest.
struct Setter {
    vqArrayPtr good;                              // a value that is not the default
    std::string otherwise;                        // the identifier for what `outcomes` do not name
    std::map<std::string, std::string> outcomes;  // "" takes the value
};

constexpr const char* ignored = "ignored";  // changes nothing, and is no error

vqArrayPtr productMatch(const std::u16string& product) {
    auto object = construct<comparator::ProductMatchComparator>();
    tests::nativeOf<comparator::ProductMatchComparator>(object).setProductNameProperty(&product);
    return object;
}

constexpr const char* requireScalar = "VELTRA:class:RequireScalar";
constexpr const char* requireClass = "VELTRA:class:RequireClass";
constexpr const char* notScalar = "VELTRA:referenceapi:ExpectedScalarComparator";
constexpr const char* emptyRequest = "VELTRA:referenceapi:ExpectedRequest";

const std::map<std::string, Setter>& setters() {
    static const Setter text{matrix::createString(u"a"),
                             "VELTRA:class:RequireString",
                             {{"null", ignored}, {"a text", ""}}};
    static const Setter oneMember{members<RefEntityType>({1}),
                                  "VELTRA:class:RequireNumeric",
                                  {{"null", ignored},
                                   {"no objects", requireScalar},
                                   {"no members", requireScalar},
                                   {"no numbers", requireScalar},
                                   {"no texts", requireScalar},
                                   {"no cells", requireScalar},
                                   {"a good and a bad cell", requireScalar},
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
         {members<RefEntityType>({1, 0, 4}),
          "VELTRA:class:RequireEnumeration",
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
         {matrix::createStringRow({u"veltra", u"b"}),
          "VELTRA:class:RequireStringArray",
          {{"null", ignored}, {"no texts", ""}, {"a text", ""}, {"two texts", ""}}}},
        {"ReferenceRequest.Comparator",
         {productMatch(u"veltra"),
          "VELTRA:referenceapi:InvalidComparator",
          {{"null", ignored},
           {"no objects", notScalar},
           {"no members", notScalar},
           {"no numbers", notScalar},
           {"no texts", notScalar},
           {"no cells", notScalar},
           {"a good and a bad cell", notScalar},
           {"two texts", notScalar},
           {"two numbers", notScalar},
           {"two types", notScalar},
           {"two foreign members", notScalar},
           {"two comparators", notScalar},
           {"a comparator", ""}}}},
        {"ReferenceDataRetriever.ReferenceRequest",
         {zorb::wrap(ReferenceRequest(u"plot")),
          requireClass,
          {{"null", ignored},
           {"no objects", emptyRequest},
           {"no members", emptyRequest},
           {"no numbers", emptyRequest},
           {"no texts", emptyRequest},
           {"no cells", emptyRequest},
           {"a request", ""}}}},
        {"CompoundReferenceComparator.Comparators",
         {matrix::createCellRow({productMatch(u"veltra")}),
          "VELTRA:referenceapi:ExpectedComparatorCellArray",
          {{"null", ignored},
           {"no cells", ""},
           {"a comparator in a cell", ""},
           {"a cell in a cell", "VELTRA:referenceapi:InvalidComparator"},
           {"an empty cell", "VELTRA:referenceapi:InvalidComparator"},
           {"a good and a bad cell", "VELTRA:referenceapi:InvalidComparator"}}}},
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

// An object that every property of was set to something that is not the default.
vqArrayPtr setUp(const COSClass& objectClass) {
    auto object = construct(objectClass.getId());
    for (const auto& property : objectClass.describe().properties)
        property.set(omGetArrayElement(object.get(), 0)->getNative(),
                     setterOf(objectClass.describe().name, property.name)->good.get());
    return object;
}

// Everything that a script sees of an object; objects by identity, as the caches keep them.
std::vector<vqArrayPtr> shown(const COSClass& objectClass, void* native) {
    std::vector<vqArrayPtr> all;
    for (const auto& property : objectClass.describe().properties)
        all.push_back(property.get(native));
    return all;
}

// The places of results at random, as a comparator orders them.
std::string orderOf(const RefRequestComparator& comparator) {
    static const auto results = tests::Generator(7).results(60);
    std::vector<const ReferenceData*> order;
    for (const auto& result : results)
        order.push_back(&result);
    std::stable_sort(order.begin(), order.end(),
                     [&comparator](const ReferenceData* a, const ReferenceData* b) {
                         return comparator(*a, *b);
                     });
    std::string places;
    for (const auto* result : order)
        places += std::to_string(result - results.data()) + " ";
    return places;
}

std::string stateOf(const ReferenceRequest& request) {
    std::string state = fl::i18n::toUtf8(request.getEntityText()) + ", types";
    for (const auto type : request.getTypes())
        state += " " + std::to_string(type);
    state += ", products";
    for (const auto& product : request.getProducts())
        state += " " + fl::i18n::toUtf8(product);
    return state + ", " + std::to_string(request.getEntityCaseSensitivity()) + " " +
           std::to_string(request.getEntityPrecision()) + ", " +
           orderOf(request.getRefRequestComparator());
}

// What an object does, which is what its native fields say.
std::string nativeState(const vqArrayPtr& object) {
    const auto& objectClass = omGetArrayElement(object.get(), 0)->getClass();
    if (objectClass.getId() == zorb::HostName<ReferenceRequest>::id())
        return stateOf(tests::nativeOf<ReferenceRequest>(object));
    const auto* search = objectClass.findMethod("getReferenceData");
    if (search == nullptr)
        return orderOf(utils::getComparatorFromVq(object.get()));
    const auto results = search->call(omGetArrayElement(object.get(), 0)->getNative());
    std::string found;
    for (std::size_t i = 0; i < results->getNumberOfElements(); ++i)
        found += tests::dump(omGetNative<ReferenceData>(omGetArrayElement(results.get(), i))) + " ";
    return found;
}

// The library over two entries that the requests of these tests tell apart.
class SettersTest : public tests::LibraryTest {
  protected:
    SettersTest() {
        add(tests::ProductBuilder(u"veltra")
                .entity(u"fit", RefEntityType::Function, u"fit", u"A fit.")
                .entity(u"plot", RefEntityType::Class, u"plot", u"A plot."));
    }

    static void checkUnmoved(const COSClass& objectClass, const zorb::Property& property,
                             const Value& wrong, const std::string& outcome) {
        const auto object = setUp(objectClass);
        void* native = omGetArrayElement(object.get(), 0)->getNative();
        const auto state = nativeState(object);
        const auto before = shown(objectClass, native);
        EXPECT_EQ(outcomeOf([&] { property.set(native, wrong.value.get()); }), outcome);
        EXPECT_EQ(nativeState(object), state);
        const auto after = shown(objectClass, native);
        for (std::size_t i = 0; i < after.size(); ++i) {
            const auto& seen = objectClass.describe().properties[i];
            SCOPED_TRACE(seen.name);
            EXPECT_TRUE(isEqual(after[i], before[i]));
            // Texts are not kept in host form.
            EXPECT_TRUE(after[i] == before[i] || seen.shape.kind == zorb::Shape::Text);
        }
    }

    // What was never read or set before is as in an object that nothing was done to.
    static void checkUntouched(const COSClass& objectClass, const zorb::Property& property,
                               const Value& wrong) {
        const auto object = construct(objectClass.getId());
        const auto fresh = construct(objectClass.getId());
        void* native = omGetArrayElement(object.get(), 0)->getNative();
        outcomeOf([&] { property.set(native, wrong.value.get()); });
        EXPECT_EQ(nativeState(object), nativeState(fresh));
        const auto one = property.get(native);
        const auto other = property.get(omGetArrayElement(fresh.get(), 0)->getNative());
        // Each owner gets a default object of its own; their classes are the same.
        EXPECT_TRUE(isEqual(one, other) ||
                    (property.shape.kind == zorb::Shape::Object &&
                     omGetCOSClassID(one.get()) == omGetCOSClassID(other.get())));
    }

    static void checkTaken(const COSClass& objectClass, const zorb::Property& property,
                           const Value& right) {
        const auto object = setUp(objectClass);
        void* native = omGetArrayElement(object.get(), 0)->getNative();
        EXPECT_EQ(outcomeOf([&] { property.set(native, right.value.get()); }), "");
        const auto seen = property.get(native);
        if (property.name == "Types")
            EXPECT_EQ(tests::numbersOf(seen.get()), tests::numbersOf(right.value.get()));
        else if (property.name == "ReferenceRequest")
            EXPECT_EQ(stateOf(tests::nativeOf<ReferenceRequest>(seen)),
                      stateOf(tests::nativeOf<ReferenceRequest>(right.value)));
        else
            EXPECT_TRUE(isEqual(seen, right.value));
    }
};

TEST_F(SettersTest, TakeWhatTheyShouldAndAreUnmovedByTheRest) {
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
            for (const auto& value : values()) {
                SCOPED_TRACE(value.name);
                const auto found = setter->outcomes.find(value.name);
                const auto expected =
                    found == setter->outcomes.end() ? setter->otherwise : found->second;
                if (expected.empty()) {
                    checkTaken(*one, property, value);
                } else {
                    checkUnmoved(*one, property, value, expected == ignored ? "" : expected);
                    checkUntouched(*one, property, value);
                }
            }
            ++checked;
        }
    }
    // The table has one line for all five retrievers.
    EXPECT_EQ(checked, setters().size() + 4);
}

TEST_F(SettersTest, BeginFromObjectsThatAreNotTheDefault) {
    for (const auto* one : COSClass::getClasses()) {
        const auto& description = one->describe();
        if (!description.packageName.starts_with("veltra.internal.reference.api") ||
            description.properties.empty() || !description.construct)
            continue;
        EXPECT_NE(nativeState(setUp(*one)), nativeState(construct(one->getId())))
            << description.name;
    }
}

TEST_F(SettersTest, LeaveNothingBehind) {
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

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::api
