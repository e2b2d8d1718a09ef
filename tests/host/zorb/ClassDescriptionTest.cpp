#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "property/hostNames.hpp"
#include "support/HostValues.hpp"
#include "zorb/ClassDescription.hpp"

namespace VELTRA_TEST_FILE {

using reference::property::RefEntityType;
using reference::tests::construct;
using reference::tests::LiveCounts;
using reference::tests::members;
using reference::tests::nativeOf;
using reference::tests::outcomeOf;
using ::testing::IsNull;
using ::testing::NotNull;
using zorb::HostName;
using zorb::Shape;

constexpr const char* packageName = "veltra.internal.test.description";

// A result that can be moved but copied only by name.
class Part {
  public:
    explicit Part(std::u16string label = {}) : m_label(std::move(label)) {}
    Part(Part&&) = default;
    Part& operator=(Part&&) = default;
    Part(const Part&) = delete;  // as large results are
    Part& operator=(const Part&) = delete;

    [[nodiscard]] Part copy() const { return Part(m_label); }
    [[nodiscard]] const std::u16string& getLabel() const noexcept { return m_label; }

    static const char* getZORBPackageName() noexcept { return packageName; }
    static const char* getZORBClassName() noexcept { return "Part"; }

  private:
    std::u16string m_label;
};

class Base {
  public:
    [[nodiscard]] const std::vector<std::u16string>& getTags() const noexcept { return m_tags; }

  private:
    std::vector<std::u16string> m_tags = {u"x", u"y"};
};

class Door : public Base {
  public:
    [[nodiscard]] const std::u16string* getLabelProperty() const noexcept { return &m_label; }
    void setLabelProperty(const std::u16string* label) {
        if (label != nullptr)
            m_label = *label;
    }
    [[nodiscard]] RefEntityType::Value getType() const noexcept { return RefEntityType::Method; }
    [[nodiscard]] const Part& getPart() const noexcept { return m_parts.front(); }
    [[nodiscard]] const std::vector<Part>& getParts() const noexcept { return m_parts; }
    [[nodiscard]] const vqArray* getValueProperty() const noexcept { return m_value.get(); }
    void setValueProperty(const vqArray* value) { m_value.reset(value); }
    [[nodiscard]] std::vector<Part> takeApart() const {
        std::vector<Part> parts;
        parts.emplace_back(u"handle");
        parts.emplace_back(u"hinge");
        return parts;
    }

    static const char* getZORBPackageName() noexcept { return packageName; }
    static const char* getZORBClassName() noexcept { return "Door"; }

  private:
    std::u16string m_label = u"exit";
    std::vector<Part> m_parts = takeApart();
    vqArrayPtr m_value;
};

const zorb::COSClass& partClass = zorb::ClassDescription<Part>("A part.")
                                      .readOnly("Label", &Part::getLabel, "What it is called.")
                                      .registerClass();
const zorb::COSClass& doorClass =
    zorb::ClassDescription<Door>("A door.")
        .constructible()
        .readOnly("Tags", &Base::getTags, "Its tags.")
        .readOnly("Type", &Door::getType, "Its type.")
        .readOnly("Part", &Door::getPart, "A part.")
        .readOnly("Parts", &Door::getParts, "Its parts.")
        .text("Label", &Door::getLabelProperty, &Door::setLabelProperty, "What stands on it.")
        .value("Value", {.kind = Shape::CellArray}, &Door::getValueProperty,
               &Door::setValueProperty, "Whatever.")
        .method("takeApart", &Door::takeApart, "Its parts, new.")
        .registerClass();

class ClassDescriptionTest : public ::testing::Test {
  protected:
    vqArrayPtr get(const char* property) { return doorClass.findProperty(property)->get(&m_door); }
    std::string set(const char* property, const vqArrayPtr& value) {
        return outcomeOf([&] { doorClass.findProperty(property)->set(&m_door, value.get()); });
    }
    static Shape::Kind kindOf(const char* property) {
        return doorClass.findProperty(property)->shape.kind;
    }

    Door m_door;
};

TEST_F(ClassDescriptionTest, ClassesAreFoundByQualifiedName) {
    EXPECT_EQ(&zorb::COSClass::getClass(
                  zorb::internal::makeInterned("veltra.internal.test.description.Door")),
              &doorClass);
    EXPECT_EQ(doorClass.getId(), HostName<Door>::id());
    EXPECT_EQ(doorClass.describe().name, "Door");
    EXPECT_EQ(doorClass.describe().packageName, packageName);
    EXPECT_EQ(doorClass.describe().documentation, "A door.");
    EXPECT_THAT(zorb::COSClass::findClass("no.Such"), IsNull());
    EXPECT_THAT(zorb::COSClass::findClass(""), IsNull());
    EXPECT_EQ(outcomeOf([] { static_cast<void>(zorb::COSClass::getClass({})); }),
              "VELTRA:class:UndefinedClass");
}

TEST_F(ClassDescriptionTest, AllClassesAreListedByName) {
    const auto all = zorb::COSClass::getClasses();
    EXPECT_TRUE(std::ranges::find(all, &doorClass) != all.end());
    EXPECT_TRUE(std::ranges::is_sorted(
        all, {}, [](const zorb::COSClass* one) { return one->getId().str(); }));
}

TEST_F(ClassDescriptionTest, ANameIsTakenOnce) {
    EXPECT_THROW(zorb::ClassDescription<Door>("Again.").registerClass(), std::logic_error);
    EXPECT_EQ(doorClass.describe().documentation, "A door.");
}

TEST_F(ClassDescriptionTest, WhatIsNotThereIsNotFound) {
    EXPECT_THAT(doorClass.findProperty("label"), IsNull());
    EXPECT_THAT(doorClass.findMethod("Label"), IsNull());
    EXPECT_THAT(doorClass.findMember(0), IsNull());
    EXPECT_THAT(doorClass.findMethod("takeApart"), NotNull());
}

TEST_F(ClassDescriptionTest, ShapesFollowFromNativeTypes) {
    EXPECT_EQ(kindOf("Tags"), Shape::TextArray);
    EXPECT_EQ(kindOf("Type"), Shape::Enumeration);
    EXPECT_EQ(doorClass.findProperty("Type")->shape.className, HostName<RefEntityType>::id().str());
    EXPECT_EQ(kindOf("Part"), Shape::Object);
    EXPECT_EQ(kindOf("Parts"), Shape::ObjectArray);
    EXPECT_EQ(doorClass.findProperty("Parts")->shape.className, partClass.getId().str());
    EXPECT_EQ(kindOf("Label"), Shape::Text);
    EXPECT_EQ(doorClass.findMethod("takeApart")->result.kind, Shape::ObjectArray);
}

TEST_F(ClassDescriptionTest, NativeValuesAreRead) {
    EXPECT_EQ(*get("Tags"), *matrix::createStringRow({u"x", u"y"}));
    EXPECT_EQ(*get("Type"), *members<RefEntityType>({3}));
    EXPECT_EQ(*get("Label"), *matrix::createString(u"exit"));
    EXPECT_EQ(nativeOf<Part>(get("Part")).getLabel(), u"handle");
    EXPECT_EQ(get("Parts")->getNumberOfElements(), 2U);
    EXPECT_FALSE(get("Value"));
}

TEST_F(ClassDescriptionTest, ObjectsThatAreReadAreCopies) {
    const auto part = get("Part");
    EXPECT_NE(&nativeOf<Part>(part), &m_door.getPart());
}

TEST_F(ClassDescriptionTest, WhatMayOnlyBeReadHasNoSetter) {
    EXPECT_FALSE(doorClass.findProperty("Part")->set);
    EXPECT_TRUE(doorClass.findProperty("Label")->set);
}

TEST_F(ClassDescriptionTest, TextsAreSetFromOneText) {
    EXPECT_EQ(set("Label", matrix::createString(u"entry")), "");
    EXPECT_EQ(*m_door.getLabelProperty(), u"entry");
    EXPECT_EQ(set("Label", nullptr), "");
    EXPECT_EQ(*m_door.getLabelProperty(), u"entry");
    for (const auto& wrong :
         {matrix::createStringRow({}), matrix::createStringRow({u"a", u"b"}),
          matrix::createNumber(1), matrix::createCellRow({matrix::createString(u"a")}),
          members<RefEntityType>({1}), construct<Door>()}) {
        EXPECT_EQ(set("Label", wrong), "VELTRA:class:RequireString");
        EXPECT_EQ(*m_door.getLabelProperty(), u"entry");
    }
}

TEST_F(ClassDescriptionTest, ResultsOfMethodsAreGivenAway) {
    const auto parts = doorClass.findMethod("takeApart")->call(&m_door);
    ASSERT_EQ(parts->getNumberOfElements(), 2U);
    EXPECT_EQ(omGetNative<Part>(omGetArrayElement(parts.get(), 1)).getLabel(), u"hinge");
}

TEST_F(ClassDescriptionTest, NothingIsLeftBehind) {
    const LiveCounts before;
    {
        const auto door = construct<Door>();
        static_cast<void>(get("Parts"));
        static_cast<void>(doorClass.findMethod("takeApart")->call(&nativeOf<Door>(door)));
        set("Value", matrix::createCellRow({door}));
        set("Value", nullptr);
    }
    EXPECT_EQ(LiveCounts(), before);
}

}  // namespace VELTRA_TEST_FILE
