// The plain values of the property library: what goes in comes out, equality sees every field, and
// a copy shares nothing.
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "property/AppThumbnail.hpp"
#include "property/ClassPropertyGroup.hpp"
#include "property/Example.hpp"
#include "property/HeaderInfo.hpp"
#include "property/InputGroup.hpp"
#include "property/ObjectInfo.hpp"
#include "property/Output.hpp"
#include "property/Parameter.hpp"
#include "property/RefEntity.hpp"
#include "property/RefItem.hpp"
#include "property/RefItemLookup.hpp"
#include "property/SeeAlso.hpp"
#include "property/SyntaxGroup.hpp"
#include "support/Items.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using namespace property;
using testing::ElementsAre;
using testing::IsEmpty;

using Texts = std::vector<std::u16string>;

// Too long for a string object to hold within itself.
const std::u16string longText(200, u'x');

template <typename T>
void expectAllDifferent(const std::vector<T>& values) {
    for (std::size_t one = 0; one < values.size(); ++one)
        for (std::size_t other = 0; other < values.size(); ++other)
            EXPECT_EQ(values[one] == values[other], one == other) << one << " and " << other;
}

template <typename T>
void expectOwnStorage(const T& original, const std::u16string& (T::*text)() const noexcept) {
    const T copied = original.copy();
    EXPECT_EQ(copied, original);
    EXPECT_NE((copied.*text)().data(), (original.*text)().data());
}

TEST(ValuesTest, HandBackWhatTheyWereMadeOf) {
    const AppThumbnail thumbnail(u"a.png", u"a picture");
    EXPECT_EQ(thumbnail.getSource(), u"a.png");
    EXPECT_EQ(thumbnail.getAlternativeText(), u"a picture");

    const Example example(u"Title", u"x := 1");
    EXPECT_EQ(example.getTitle(), u"Title");
    EXPECT_EQ(example.getCode(), u"x := 1");

    const HeaderInfo header(u"file", u"folder", u"short", u"Display", u"1.2");
    EXPECT_EQ(header.getReferenceFileName(), u"file");
    EXPECT_EQ(header.getHelpFolder(), u"folder");
    EXPECT_EQ(header.getShortName(), u"short");
    EXPECT_EQ(header.getDisplayName(), u"Display");
    EXPECT_EQ(header.getVersion(), u"1.2");

    const ObjectInfo info(u"name", u"purpose", u"href", {u"one", u"two"});
    EXPECT_EQ(info.getName(), u"name");
    EXPECT_EQ(info.getPurpose(), u"purpose");
    EXPECT_EQ(info.getHref(), u"href");
    EXPECT_THAT(info.getValues(), ElementsAre(u"one", u"two"));

    const Parameter parameter(u"Gain", u"Amplification", u"1");
    EXPECT_EQ(parameter.getName(), u"Gain");
    EXPECT_EQ(parameter.getPurpose(), u"Amplification");
    EXPECT_EQ(parameter.getDefaultValue(), u"1");

    const SeeAlso seeAlso(u"ref/a.html", u"a");
    EXPECT_EQ(seeAlso.getPage(), u"ref/a.html");
    EXPECT_EQ(seeAlso.getName(), u"a");

    const SyntaxGroup syntaxes(u"Title", {u"a()", u"a(b)"});
    EXPECT_EQ(syntaxes.getTitle(), u"Title");
    EXPECT_THAT(syntaxes.getSyntaxes(), ElementsAre(u"a()", u"a(b)"));

    const RefEntity entity(RefEntityType::Method, u"p.C.m", FunctionType::StaticMethod);
    EXPECT_EQ(entity.getRefEntityType(), RefEntityType::Method);
    EXPECT_EQ(entity.getName(), u"p.C.m");
    EXPECT_EQ(entity.getFunctionType(), FunctionType::StaticMethod);

    const RefItemLookup record(RefEntityType::Event, FunctionType::Macro, u"ref/e.html", u"fires");
    EXPECT_EQ(record.getType(), RefEntityType::Event);
    EXPECT_EQ(record.getFunctionType(), FunctionType::Macro);
    EXPECT_EQ(record.getHref(), u"ref/e.html");
    EXPECT_EQ(record.getPurpose(), u"fires");
}

TEST(ValuesTest, GroupsHandBackTheirMembersInOrder) {
    const InputGroup inputs(u"Required", {Input(u"a", u"", u"", {}), Input(u"b", u"", u"", {})});
    EXPECT_EQ(inputs.getTitle(), u"Required");
    EXPECT_THAT(inputs.getInputs(),
                ElementsAre(Input(u"a", u"", u"", {}), Input(u"b", u"", u"", {})));

    const ClassPropertyGroup properties(u"Size", {ClassProperty(u"Width", u"", u"", {})});
    EXPECT_EQ(properties.getTitle(), u"Size");
    EXPECT_THAT(properties.getClassProperties(),
                ElementsAre(ClassProperty(u"Width", u"", u"", {})));
}

TEST(ValuesTest, DefaultObjectsSayNothing) {
    EXPECT_EQ(AppThumbnail(), AppThumbnail(u"", u""));
    EXPECT_EQ(ClassPropertyGroup(), ClassPropertyGroup(u"", {}));
    EXPECT_EQ(Example(), Example(u"", u""));
    EXPECT_EQ(HeaderInfo(), HeaderInfo(u"", u"", u"", u"", u""));
    EXPECT_EQ(InputGroup(), InputGroup(u"", {}));
    EXPECT_EQ(ObjectInfo(), ObjectInfo(u"", u"", u"", {}));
    EXPECT_EQ(Parameter(), Parameter(u"", u"", u""));
    EXPECT_EQ(SeeAlso(), SeeAlso(u"", u""));
    EXPECT_EQ(SyntaxGroup(), SyntaxGroup(u"", {}));
    EXPECT_EQ(RefEntity(), RefEntity(RefEntityType::Unknown, u"", FunctionType::NotCallable));
    EXPECT_EQ(RefItemLookup(),
              RefItemLookup(RefEntityType::Unknown, FunctionType::NotCallable, u"", u""));

    const RefItem item;
    EXPECT_EQ(item, makeItem({}));
    EXPECT_THAT(item.getHref(), IsEmpty());
    EXPECT_THAT(item.getRefEntities(), IsEmpty());
    EXPECT_EQ(item.getDeprecationStatus(), DeprecationStatus::Current);
}

TEST(ValuesTest, EqualityComparesEveryField) {
    expectAllDifferent<AppThumbnail>({{}, {u"a", u""}, {u"", u"a"}});
    expectAllDifferent<Example>({{}, {u"a", u""}, {u"", u"a"}});
    expectAllDifferent<SeeAlso>({{}, {u"a", u""}, {u"", u"a"}});
    expectAllDifferent<Parameter>({{}, {u"a", u"", u""}, {u"", u"a", u""}, {u"", u"", u"a"}});
    expectAllDifferent<HeaderInfo>({{},
                                    {u"a", u"", u"", u"", u""},
                                    {u"", u"a", u"", u"", u""},
                                    {u"", u"", u"a", u"", u""},
                                    {u"", u"", u"", u"a", u""},
                                    {u"", u"", u"", u"", u"a"}});
    expectAllDifferent<ObjectInfo>({{},
                                    {u"a", u"", u"", {}},
                                    {u"", u"a", u"", {}},
                                    {u"", u"", u"a", {}},
                                    {u"", u"", u"", {u"a"}},
                                    {u"", u"", u"", {u"a", u""}}});
    expectAllDifferent<SyntaxGroup>({{}, {u"a", {}}, {u"", Texts{u"a"}}, {u"", Texts{u"b"}}});
    expectAllDifferent<InputGroup>({{}, {u"a", {}}, {u"", {Input(u"a", u"", u"", {})}}});
    expectAllDifferent<ClassPropertyGroup>(
        {{}, {u"a", {}}, {u"", {ClassProperty(u"a", u"", u"", {})}}});
    expectAllDifferent<RefEntity>({{},
                                   {RefEntityType::Class, u"", FunctionType::NotCallable},
                                   {RefEntityType::Unknown, u"a", FunctionType::NotCallable},
                                   {RefEntityType::Unknown, u"", FunctionType::Macro}});
    expectAllDifferent<RefItemLookup>(
        {{},
         {RefEntityType::Class, FunctionType::NotCallable, u"", u""},
         {RefEntityType::Unknown, FunctionType::Macro, u"", u""},
         {RefEntityType::Unknown, FunctionType::NotCallable, u"a", u""},
         {RefEntityType::Unknown, FunctionType::NotCallable, u"", u"a"}});
}

TEST(ValuesTest, EqualityOfItemsComparesEveryField) {
    const Input input(u"a", u"", u"", {});
    expectAllDifferent<RefItem>({
        makeItem({}),
        makeItem({.href = u"a"}),
        makeItem({.entities = {RefEntity()}}),
        makeItem({.packageName = u"a"}),
        makeItem({.purpose = u"a"}),
        makeItem({.introduced = u"a"}),
        makeItem({.description = u"a"}),
        makeItem({.appThumbnail = AppThumbnail(u"a", u"")}),
        makeItem({.deprecationStatus = DeprecationStatus::Removed}),
        makeItem({.syntaxGroups = {SyntaxGroup()}}),
        makeItem({.inputs = {input}}),
        makeItem({.inputGroups = {InputGroup()}}),
        makeItem({.outputs = {Output()}}),
        makeItem({.classPropertyGroups = {ClassPropertyGroup()}}),
        makeItem({.seeAlso = {SeeAlso()}}),
        makeItem({.examples = {Example()}}),
        makeItem({.parameters = {Parameter()}}),
        makeItem({.replacements = {SeeAlso()}}),
    });
}

TEST(ValuesTest, CopiesShareNoStorage) {
    expectOwnStorage(AppThumbnail(longText, u""), &AppThumbnail::getSource);
    expectOwnStorage(ClassPropertyGroup(longText, {}), &ClassPropertyGroup::getTitle);
    expectOwnStorage(Example(longText, u""), &Example::getTitle);
    expectOwnStorage(InputGroup(longText, {}), &InputGroup::getTitle);
    expectOwnStorage(ObjectInfo(longText, u"", u"", {}), &ObjectInfo::getName);
    expectOwnStorage(Parameter(longText, u"", u""), &Parameter::getName);
    expectOwnStorage(SeeAlso(longText, u""), &SeeAlso::getPage);
    expectOwnStorage(SyntaxGroup(longText, {}), &SyntaxGroup::getTitle);
    expectOwnStorage(RefEntity(RefEntityType::Class, longText, FunctionType::Macro),
                     &RefEntity::getName);
    expectOwnStorage(RefItemLookup(RefEntityType::Class, FunctionType::Macro, longText, u""),
                     &RefItemLookup::getHref);
}

TEST(ValuesTest, CopiesOfItemsAndHeadersAreIndependentOfTheirSource) {
    RefItem item = makeFullItem(longText);
    const RefItem copied = item.copy();
    EXPECT_EQ(copied, item);
    item.setReplacements({SeeAlso(u"new.html", u"new")});
    EXPECT_EQ(copied, makeFullItem(longText));
    EXPECT_NE(copied, item);
    item = RefItem();
    EXPECT_EQ(copied, makeFullItem(longText));

    HeaderInfo header(u"file", u"folder", u"short", u"Display", longText);
    const HeaderInfo copiedHeader = header.copy();
    header = HeaderInfo();
    EXPECT_EQ(copiedHeader, HeaderInfo(u"file", u"folder", u"short", u"Display", longText));
}

TEST(ValuesTest, CopiesOfItemsAndHeadersShareTheirTexts) {
    const RefItem item = makeFullItem(longText);
    EXPECT_EQ(&item.copy().getHref(), &item.getHref());
    const RefItem copied = item.copy();
    EXPECT_EQ(&copied.getExamples(), &item.getExamples());
    const HeaderInfo header(u"file", u"folder", u"short", u"Display", longText);
    EXPECT_EQ(&header.copy().getVersion(), &header.getVersion());
}

TEST(ValuesTest, AnItemOrHeaderThatWasMovedFromSaysNothing) {
    RefItem item = makeFullItem(longText);
    static_cast<void>(item.getExamples());
    const RefItem taken = std::move(item);
    EXPECT_EQ(taken, makeFullItem(longText));
    EXPECT_EQ(item, RefItem());  // NOLINT(bugprone-use-after-move): what this is about
    HeaderInfo header(u"file", u"folder", u"short", u"Display", longText);
    const HeaderInfo takenHeader = std::move(header);
    EXPECT_EQ(header, HeaderInfo());  // NOLINT(bugprone-use-after-move)
}

TEST(ValuesTest, AnItemWithoutReplacementsStaysAsItIsWhenItIsGivenNone) {
    RefItem item = makeItem({.purpose = u"fits"});
    const std::u16string* const purpose = &item.getPurpose();
    item.setReplacements({});
    EXPECT_EQ(&item.getPurpose(), purpose);
    item.setReplacements({SeeAlso(u"", u"new")});
    item.setReplacements({});
    EXPECT_EQ(item, makeItem({.purpose = u"fits"}));
}

// Counts how often its body is read.
class CountedItem final : public SharedItem {
  public:
    CountedItem() : SharedItem({.purpose = u"fits"}) {}
    [[nodiscard]] boost::intrusive_ptr<const WholeItem> whole() const override {
        ++reads;
        return new WholeItem(head(), {.description = longText});
    }
    mutable int reads = 0;
};

TEST(ValuesTest, TheBodyOfAStoredItemIsReadOnceForEachObjectThatWantsIt) {
    const boost::intrusive_ptr<const CountedItem> stored(new CountedItem);
    const RefItem item{boost::intrusive_ptr<const SharedItem>(stored)};
    EXPECT_EQ(item.getPurpose(), u"fits");
    const RefItem early = item.copy();
    EXPECT_EQ(stored->reads, 0);
    EXPECT_EQ(item.getDescription(), longText);
    EXPECT_EQ(&item.getDescription(), &item.getDescription());
    EXPECT_EQ(stored->reads, 1);
    EXPECT_EQ(item.copy().getDescription(), longText);
    EXPECT_EQ(stored->reads, 1);
    EXPECT_EQ(early.getDescription(), longText);
    EXPECT_EQ(stored->reads, 2);
}

TEST(ValuesTest, CopiesOfInputsOutputsAndPropertiesKeepTheirKind) {
    const Input input = Input(longText, u"", u"", {}).copy();
    const Output output = Output(longText, u"", u"", {}).copy();
    const ClassProperty property = ClassProperty(longText, u"", u"", {}).copy();
    EXPECT_EQ(input, Input(longText, u"", u"", {}));
    EXPECT_EQ(output, Output(longText, u"", u"", {}));
    EXPECT_EQ(property, ClassProperty(longText, u"", u"", {}));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
