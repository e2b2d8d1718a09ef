#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "property/hostNames.hpp"
#include "support/HostValues.hpp"
#include "zorb/ClassDescription.hpp"
#include "zorb/om.hpp"

namespace VELTRA_TEST_FILE {

using reference::property::DeprecationStatus;
using reference::property::HeaderInfo;
using reference::property::RefEntityType;
using reference::property::SeeAlso;
using reference::tests::construct;
using reference::tests::members;
using reference::tests::nativeOf;
using reference::tests::outcomeOf;
using zorb::HostName;
using zorb::internal::makeInterned;

constexpr const char* packageName = "veltra.internal.test.om";

// A native class whose objects are counted.
struct Counted {
    Counted() { ++alive; }
    Counted(const Counted& other) : number(other.number) { ++alive; }
    Counted& operator=(const Counted&) = default;
    ~Counted() { --alive; }

    static const char* getZORBPackageName() noexcept { return packageName; }
    static const char* getZORBClassName() noexcept { return "Counted"; }

    int number = 0;
    static inline int alive = 0;
};

const bool isRegistered [[maybe_unused]] = [] {
    zorb::ClassDescription<Counted>("Counts itself.").constructible().registerClass();
    return true;
}();

vqArrayPtr constructMember(zorb::Interned classId, const vqArrayPtr& number) {
    std::array arguments{number.get()};
    return matrix::from_veltra(
        omConstructObjectWithClient(classId, 1, arguments.data(), COSGetPublicClient()));
}

TEST(InternedTest, EqualTextsAreOneIdentifier) {
    EXPECT_EQ(makeInterned("a.B"), makeInterned("a.B"));
    EXPECT_EQ(&makeInterned("a.B").str(), &makeInterned("a.B").str());
    EXPECT_NE(makeInterned("a.B"), makeInterned("a.b"));
    EXPECT_EQ(makeInterned("a.B").str(), "a.B");
}

TEST(InternedTest, AnEmptyNameGivesTheEmptyIdentifier) {
    EXPECT_EQ(makeInterned(""), zorb::Interned());
    EXPECT_TRUE(makeInterned("").empty());
    EXPECT_EQ(zorb::Interned().str(), "");
    EXPECT_FALSE(makeInterned("a").empty());
}

TEST(WrappingTest, AHostObjectOwnsItsNative) {
    const int before = Counted::alive;
    {
        auto object = omWrapData(new Counted, &COSClass::getClass(HostName<Counted>::id()));
        EXPECT_EQ(Counted::alive, before + 1);
        const auto scalar = matrix::from_veltra(omCreateZORBScalar(object));
        object.reset();
        EXPECT_EQ(Counted::alive, before + 1);
        EXPECT_EQ(scalar->getNumberOfElements(), 1U);
        nativeOf<Counted>(scalar).number = 5;
        EXPECT_EQ(nativeOf<Counted>(scalar).number, 5);
    }
    EXPECT_EQ(Counted::alive, before);
}

TEST(ConstructionTest, MakesANativeDefaultByClassName) {
    const int before = Counted::alive;
    {
        const auto object = construct(makeInterned(std::string(packageName) + ".Counted"));
        EXPECT_EQ(Counted::alive, before + 1);
        EXPECT_EQ(omGetCOSClassID(object.get()), HostName<Counted>::id());
    }
    EXPECT_EQ(Counted::alive, before);
}

TEST(ConstructionTest, RefusesWhatCannotBeMade) {
    EXPECT_EQ(outcomeOf([] { return construct(makeInterned("no.Such")); }),
              "VELTRA:class:UndefinedClass");
    EXPECT_EQ(outcomeOf([] { return construct({}); }), "VELTRA:class:UndefinedClass");
    EXPECT_EQ(outcomeOf([] { return construct<HeaderInfo>(); }), "VELTRA:class:NoConstructor");
    EXPECT_EQ(outcomeOf([] { return construct<RefEntityType>(); }),
              "VELTRA:class:WrongArgumentCount");
    EXPECT_EQ(
        outcomeOf([] { return constructMember(HostName<Counted>::id(), matrix::createNumber(1)); }),
        "VELTRA:class:WrongArgumentCount");
}

TEST(ConstructionTest, MakesEnumerationMembersFromNumbersKeepingUnnamedOnes) {
    const auto classId = HostName<RefEntityType>::id();
    EXPECT_EQ(*constructMember(classId, matrix::createNumber(3)), *members<RefEntityType>({3}));
    EXPECT_EQ(*constructMember(classId, matrix::createNumber(4000000000)),
              *members<RefEntityType>({4000000000}));
    EXPECT_EQ(*constructMember(classId, members<DeprecationStatus>({2})),
              *members<RefEntityType>({2}));
}

TEST(ConstructionTest, RefusesMembersFromAnythingButOneNumber) {
    const auto outcome = [](const vqArrayPtr& value) {
        return outcomeOf(
            [&value] { return constructMember(HostName<RefEntityType>::id(), value); });
    };
    EXPECT_EQ(outcome(nullptr), "VELTRA:class:RequireScalar");
    EXPECT_EQ(outcome(matrix::createNumberRow({})), "VELTRA:class:RequireScalar");
    EXPECT_EQ(outcome(matrix::createNumberRow({1, 2})), "VELTRA:class:RequireScalar");
    EXPECT_EQ(outcome(matrix::createString(u"1")), "VELTRA:class:RequireNumeric");
    EXPECT_EQ(outcome(matrix::createDouble(1)), "VELTRA:class:RequireNumeric");
}

TEST(ArrayElementTest, IsTheVeryObject) {
    const auto scalar = construct<Counted>();
    EXPECT_EQ(omGetArrayElement(scalar.get(), 0), omGetArrayElement(scalar.get(), 0));
    EXPECT_EQ(outcomeOf([&] { return omGetArrayElement(scalar.get(), 1); }),
              "out of range: There is no element 1: the array's last one is element 0.");
    EXPECT_EQ(outcomeOf([] { return omGetArrayElement(nullptr, 0); }), "VELTRA:class:RequireClass");
    EXPECT_EQ(outcomeOf([] { return omGetArrayElement(matrix::createNumber(1).get(), 0); }),
              "VELTRA:class:RequireClass");
}

TEST(NativeTest, IsHandedOutForItsOwnClassOnly) {
    const auto counted = construct<Counted>();
    EXPECT_EQ(outcomeOf([&] { return nativeOf<SeeAlso>(counted); }), "VELTRA:class:RequireClass");
    EXPECT_EQ(outcomeOf([] { return omGetNative<Counted>(nullptr); }), "VELTRA:class:RequireClass");
}

TEST(ClassIdTest, NamesEveryKindOfValue) {
    const auto name = [](const vqArrayPtr& value) { return omGetCOSClassID(value.get()).str(); };
    EXPECT_EQ(name(matrix::createNumber(1)), "uint32");
    EXPECT_EQ(name(matrix::createDouble(1)), "double");
    EXPECT_EQ(name(matrix::createString(u"a")), "string");
    EXPECT_EQ(name(matrix::createCellRow({})), "cell");
    EXPECT_EQ(name(matrix::createObjectRow({})), "object");
    EXPECT_EQ(name(members<RefEntityType>({})), HostName<RefEntityType>::id().str());
    EXPECT_EQ(name(construct<Counted>()), "veltra.internal.test.om.Counted");
    EXPECT_EQ(name(nullptr), "");
}

TEST(UnderlyingArrayTest, IsThatOfTheMembersNumbers) {
    const auto row = members<RefEntityType>({3, 1});
    const auto underlying = omGetUnderlyingArray(row.get());
    EXPECT_EQ(*underlying, *matrix::createNumberRow({3, 1}));
    EXPECT_EQ(omGetNumberOfElementsInUnderlyingArray(row.get()), 2U);

    const auto text = matrix::createString(u"a");
    EXPECT_EQ(omGetUnderlyingArray(text.get()), text);
    EXPECT_FALSE(omGetUnderlyingArray(nullptr));
    EXPECT_EQ(omGetNumberOfElementsInUnderlyingArray(nullptr), 0U);
}

TEST(UnderlyingArrayTest, NumbersAreReadFromNumbersOnly) {
    EXPECT_EQ(omGetUInt32(matrix::createNumberRow({4, 5}).get(), 1), 5U);
    EXPECT_EQ(outcomeOf([] { return omGetUInt32(matrix::createNumber(4).get(), 1); }),
              "out of range: There is no element 1: the array's last one is element 0.");
    for (const auto& value : {matrix::createDouble(1), matrix::createString(u"1"),
                              matrix::createCellRow({nullptr}), vqArrayPtr()})
        EXPECT_EQ(outcomeOf([&value] { return omGetUInt32(value.get(), 0); }),
                  "VELTRA:class:RequireNumeric");
}

TEST(EnumerationMatrixTest, IsWrittenAndReadMemberByMember) {
    const auto classId = HostName<RefEntityType>::id();
    auto* raw = omCreateZORBEnumerationMatrix(2, 2, classId);
    const vqArrayPtr owner(raw);
    EXPECT_EQ(raw->getRows(), 2U);
    omSetEnumerationElement(raw, 1, {.classId = classId, .number = 9});
    EXPECT_EQ(omGetEnumerationID(raw, 0).number, 0U);
    EXPECT_EQ(omGetEnumerationID(raw, 1).number, 9U);
    EXPECT_EQ(omGetEnumerationID(raw, 1).classId, classId);
    EXPECT_EQ(*matrix::from_veltra(omGetEnumeration(classId, omGetEnumerationID(raw, 1))),
              *members<RefEntityType>({9}));
}

TEST(EnumerationMatrixTest, RefusesOtherClassesIndicesAndSharedArrays) {
    const auto classId = HostName<RefEntityType>::id();
    const auto otherId = HostName<DeprecationStatus>::id();
    auto* raw = omCreateZORBEnumerationMatrix(1, 1, classId);
    vqArrayPtr owner(raw);
    EXPECT_EQ(outcomeOf([&] { omSetEnumerationElement(raw, 0, {.classId = otherId}); }),
              "VELTRA:class:RequireClass");
    EXPECT_EQ(outcomeOf([&] { omSetEnumerationElement(raw, 1, {.classId = classId}); }),
              "out of range: There is no element 1: the array's last one is element 0.");
    EXPECT_EQ(outcomeOf([&] { return omGetEnumerationID(raw, 1); }),
              "out of range: There is no element 1: the array's last one is element 0.");
    EXPECT_EQ(outcomeOf([&] {
                  return omGetEnumeration(classId, {otherId, 1});
              }),
              "VELTRA:class:RequireClass");
    EXPECT_EQ(outcomeOf([] { return omGetEnumerationID(matrix::createNumber(1).get(), 0); }),
              "VELTRA:class:RequireEnumeration");
    EXPECT_EQ(outcomeOf([] { return omGetEnumerationID(nullptr, 0); }),
              "VELTRA:class:RequireEnumeration");
    EXPECT_EQ(
        outcomeOf([] { return omCreateZORBEnumerationMatrix(1, 1, makeInterned("no.Such")); }),
        "VELTRA:class:UndefinedClass");
    const vqArrayPtr second = owner;
    EXPECT_EQ(outcomeOf([&] { omSetEnumerationElement(raw, 0, {.classId = classId}); }),
              "invalid argument: Enumeration array is not writable.");
}

TEST(ClientTest, ThePublicOneIsOne) {
    EXPECT_NE(COSGetPublicClient(), nullptr);
    EXPECT_EQ(COSGetPublicClient(), COSGetPublicClient());
}

}  // namespace VELTRA_TEST_FILE
