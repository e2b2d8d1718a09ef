#include <algorithm>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <gmock/gmock.h>

#include "docset/ProductFileReader.hpp"
#include "host/docset/Sets.hpp"
#include "support/Items.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using namespace property;
using docset::Fault;
using docset::ProductHeader;
using docset::readLookupFile;
using docset::readReferenceFile;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::Pair;
using testing::ThrowsMessage;

const ProductHeader demoHeader{
    .shortName = u"demo", .displayName = u"Demo", .helpFolder = u"demo", .version = u"1"};

void raise(const Fault& fault) {
    throw std::runtime_error(fault.toString());
}

TEST(ProductFileTest, ALookupFileIsReadWhole) {
    const TempFolder root;
    writeSet(root, soundSet());
    const auto contents = readLookupFile(root.path(), lookupPath, raise);
    ASSERT_TRUE(contents);
    EXPECT_EQ(contents->header, demoHeader);
    EXPECT_THAT(
        contents->entities,
        ElementsAre(
            Pair(u"Box", ElementsAre(RefItemLookup(RefEntityType::Class, FunctionType::NotCallable,
                                                   u"ref/box.html", u""))),
            Pair(u"Box.Width",
                 ElementsAre(RefItemLookup(RefEntityType::Property, FunctionType::Property,
                                           u"ref/box.html", u""))),
            Pair(u"twice",
                 ElementsAre(RefItemLookup(RefEntityType::Function, FunctionType::Function,
                                           u"ref/twice.html", u"2x")))));
}

TEST(ProductFileTest, AReferenceFileIsReadWhole) {
    const TempFolder root;
    writeSet(root, soundSet());
    const auto contents = readReferenceFile(root.path(), referencePath, raise);
    ASSERT_TRUE(contents);
    ASSERT_EQ(contents->size(), 1U);
    EXPECT_EQ(contents->front().header, demoHeader);
    const RefItem twice = makeItem(
        {.href = u"ref/twice.html",
         .entities = {RefEntity(RefEntityType::Function, u"twice", FunctionType::Function)},
         .packageName = u"arith",
         .purpose = u"2x",
         .introduced = u"1",
         .description = u"One.\n\nTwo.",
         .deprecationStatus = DeprecationStatus::Deprecated,
         .syntaxGroups = {SyntaxGroup(u"Plain", {u"y := twice(x)"})},
         .inputs = {Input(u"x", u"A number", u"#x", {u"number"})},
         .inputGroups = {InputGroup(u"All", {Input(u"x", u"", u"", {})})},
         .outputs = {Output(u"y", u"Its double", u"", {})},
         .seeAlso = {SeeAlso(u"ref/box.html", u"Box")},
         .examples = {Example(u"Four", u"twice(2)")},
         .parameters = {Parameter(u"Gain", u"Of old", u"2")},
         .replacements = {SeeAlso(u"ref/box.html", u"Box")}});
    const RefItem box =
        makeItem({.href = u"ref/box.html",
                  .entities = {RefEntity(RefEntityType::Class, u"Box", FunctionType::NotCallable)},
                  .appThumbnail = AppThumbnail(u"box.png", u"A box"),
                  .classPropertyGroups = {
                      ClassPropertyGroup(u"Size", {ClassProperty(u"Width", u"", u"", {})})}});
    EXPECT_THAT(contents->front().pages, ElementsAre(Pair(u"ref/box.html", ElementsAre(box)),
                                                     Pair(u"ref/twice.html", ElementsAre(twice))));
}

TEST(ProductFileTest, ItemsOfAPageKeepTheirOrder) {
    const TempFolder root;
    root.write("r.json", R"({"format": "veltra-documentation-reference", "formatVersion": 1,
        "products": [{"shortName": "a", "displayName": "", "helpFolder": "", "pages": {"p": [
            {"entities": [{"name": "f", "type": 0, "functionType": 0}], "purpose": "2"},
            {"entities": [{"name": "g", "type": 0, "functionType": 0}], "purpose": "1"}]}},
                     {"shortName": "b", "displayName": "", "helpFolder": "", "pages": {}}]})");
    const auto contents = readReferenceFile(root.path(), "r.json", raise);
    ASSERT_TRUE(contents);
    ASSERT_EQ(contents->size(), 2U);
    EXPECT_THAT(contents->at(0).pages.at(u"p"),
                ElementsAre(testing::Property(&RefItem::getPurpose, u"2"),
                            testing::Property(&RefItem::getPurpose, u"1")));
    EXPECT_EQ(contents->at(1).header.shortName, u"b");
}

// Puts the members of every object into another order.
void shuffleMembers(boost::json::value& value, std::mt19937& random) {
    if (auto* array = value.if_array())
        for (auto& element : *array)
            shuffleMembers(element, random);
    auto* object = value.if_object();
    if (object == nullptr)
        return;
    std::vector<std::string> names;
    for (auto& member : *object) {
        shuffleMembers(member.value(), random);
        names.emplace_back(member.key());
    }
    std::ranges::shuffle(names, random);
    boost::json::object shuffled;
    for (const auto& name : names)
        shuffled[name] = object->at(name);
    *object = shuffled;
}

TEST(ProductFileTest, MembersMayStandInAnyOrder) {
    const TempFolder root;
    writeSet(root, soundSet());
    const auto lookup = readLookupFile(root.path(), lookupPath, raise).value();
    const auto reference = readReferenceFile(root.path(), referencePath, raise).value();
    std::mt19937 random(1);
    for (int round = 0; round < 20; ++round) {
        SetTexts texts = soundSet();
        for (auto* text : {&texts.lookup, &texts.reference}) {
            boost::json::value document = boost::json::parse(*text);
            shuffleMembers(document, random);
            *text = boost::json::serialize(document);
        }
        SCOPED_TRACE(texts.lookup + "\n" + texts.reference);
        const TempFolder shuffled;
        writeSet(shuffled, texts);
        EXPECT_EQ(readLookupFile(shuffled.path(), lookupPath, raise).value().entities,
                  lookup.entities);
        EXPECT_EQ(readReferenceFile(shuffled.path(), referencePath, raise).value().at(0).pages,
                  reference.at(0).pages);
    }
}

TEST(ProductFileTest, AFaultyFieldTakesItsDefaultWhenTheHandlerReturns) {
    SetTexts texts = soundSet();
    texts.lookup = replaced(texts.lookup, "\"type\": \"class\"", "\"type\": \"klass\"");
    texts.reference = replaced(texts.reference, "\"deprecated\"", "\"outdated\"");
    texts.reference = replaced(texts.reference, "\"introduced\": \"1\"", "\"introduced\": 1");
    const TempFolder root;
    writeSet(root, texts);
    FaultList faults;
    const auto lookup = readLookupFile(root.path(), lookupPath, faults.handler());
    ASSERT_TRUE(lookup);
    EXPECT_THAT(lookup->entities.at(u"Box"),
                ElementsAre(RefItemLookup(RefEntityType::Unknown, FunctionType::NotCallable,
                                          u"ref/box.html", u"")));
    const auto reference = readReferenceFile(root.path(), referencePath, faults.handler());
    ASSERT_TRUE(reference);
    const RefItem& twice = reference->front().pages.at(u"ref/twice.html").front();
    EXPECT_EQ(twice.getDeprecationStatus(), DeprecationStatus::Current);
    EXPECT_EQ(twice.getIntroduced(), u"");
    EXPECT_EQ(twice.getPurpose(), u"2x");
    EXPECT_EQ(faults.all().size(), 3U);
}

TEST(ProductFileTest, AFileThatIsUnusableAsAWholeGivesNothing) {
    for (const char* text : {"", "[]", "{}", R"({"format": "other", "formatVersion": 1})"}) {
        SCOPED_TRACE(text);
        const TempFolder root;
        root.write("file.json", text);
        FaultList faults;
        EXPECT_FALSE(readLookupFile(root.path(), "file.json", faults.handler()));
        EXPECT_FALSE(readReferenceFile(root.path(), "file.json", faults.handler()));
        EXPECT_EQ(faults.all().size(), 2U);
    }
}

TEST(ProductFileTest, ALookupFileIsNoReferenceFile) {
    const TempFolder root;
    writeSet(root, soundSet());
    FaultList faults;
    EXPECT_FALSE(readReferenceFile(root.path(), lookupPath, faults.handler()));
    EXPECT_FALSE(readLookupFile(root.path(), referencePath, faults.handler()));
    EXPECT_THAT(faults.all(),
                ElementsAre(Field(&Fault::field, "format"), Field(&Fault::field, "format")));
}

TEST(ProductFileTest, AHandlerThatThrowsEndsTheReading) {
    SetTexts texts = soundSet();
    texts.reference = replaced(texts.reference, "\"introduced\": \"1\"", "\"introduced\": 1");
    const TempFolder root;
    writeSet(root, texts);
    EXPECT_THAT(
        [&] { static_cast<void>(readReferenceFile(root.path(), referencePath, raise)); },
        ThrowsMessage<std::runtime_error>(HasSubstr("introduced: A text was expected here.")));
}

TEST(ProductFileTest, NamesThatLeaveTheRootAreNotOpened) {
    const TempFolder root;
    writeSet(root, soundSet());
    root.write("inner/nothing.txt", "");
    for (const char* name : {"", "/etc/hostname", "../en_US/demo.lookup.json", "en_US/",
                             "en_US//demo.lookup.json", "./en_US/demo.lookup.json"}) {
        SCOPED_TRACE(name);
        FaultList faults;
        EXPECT_FALSE(readLookupFile(root.path(), name, faults.handler()));
        EXPECT_EQ(faults.all().size(), 1U);
    }
    FaultList faults;
    EXPECT_FALSE(
        readLookupFile(root.path() / "inner", "../en_US/demo.lookup.json", faults.handler()));
    EXPECT_EQ(faults.all().size(), 1U);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
