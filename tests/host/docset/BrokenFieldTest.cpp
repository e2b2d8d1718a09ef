// What can be wrong within the files of a set: every field in turn.
#include <functional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <gmock/gmock.h>

#include "docset/JsonPosition.hpp"
#include "docset/JsonText.hpp"
#include "docset/validate.hpp"
#include "host/docset/Sets.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

namespace json = boost::json;
using docset::Fault;
using docset::JsonStep;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using Path = std::vector<JsonStep>;

constexpr const char* paths[] = {manifestPath, lookupPath, referencePath};

// Calls `visit(path, value)` for the value and all within it; `visit` may change what it is given.
void visitAll(json::value& value, const Path& path,
              const std::function<void(const Path&, json::value&)>& visit) {
    visit(path, value);
    const auto step = [&](JsonStep to, json::value& inner) {
        Path innerPath = path;
        innerPath.push_back(std::move(to));
        visitAll(inner, innerPath, visit);
    };
    if (auto* object = value.if_object())
        for (auto& member : *object)
            step(std::string(member.key()), member.value());
    if (auto* array = value.if_array())
        for (std::size_t index = 0; index < array->size(); ++index)
            step(index, (*array)[index]);
}

std::vector<Path> pathsIn(json::value document) {
    std::vector<Path> all;
    visitAll(document, {}, [&](const Path& path, json::value&) { all.push_back(path); });
    return all;
}

// Objects whose members have names that the author of a set picks.
bool isMap(const Path& path) {
    const auto* name = path.empty() || path.back().index ? nullptr : &path.back().name;
    return name != nullptr && (*name == "files" || *name == "entities" || *name == "pages");
}

// Writes the sound set with one value of one file changed, and expects a fault of `problem` there.
void expectFaultAfter(const std::string& file, const Path& at, const Path& faultAt,
                      const std::function<void(json::value&)>& change, const char* problem) {
    SCOPED_TRACE(file + ": " + docset::toFieldName(at));
    SetTexts texts = soundSet();
    json::value document = json::parse(fileOf(texts, file));
    visitAll(document, {}, [&](const Path& path, json::value& value) {
        if (path == at)
            change(value);
    });
    std::ostringstream text;
    docset::writeJson(text, document);
    fileOf(texts, file) = text.str();
    const TempFolder root;
    writeSet(root, texts);

    const auto offset = docset::findJsonValues(text.str(), {faultAt}).front();
    ASSERT_TRUE(offset);
    const auto place = docset::LineCounter(text.str()).positionOf(*offset);
    EXPECT_THAT(docset::validate(root.path()).faults,
                Contains(AllOf(Field(&Fault::file, (root.path() / file).string()),
                               Field(&Fault::line, place.line), Field(&Fault::column, place.column),
                               Field(&Fault::field, docset::toFieldName(faultAt)),
                               Field(&Fault::problem, HasSubstr(problem)))));
}

TEST(BrokenFieldTest, AValueOfTheWrongTypeIsNamed) {
    for (const std::string file : paths) {
        SetTexts texts = soundSet();
        const json::value sound = json::parse(fileOf(texts, file));
        for (const auto& path : pathsIn(sound))
            expectFaultAfter(
                file, path, path,
                [](json::value& value) {
                    if (value.is_bool())
                        value = "yes";
                    else
                        value = true;
                },
                "expected here");
    }
}

TEST(BrokenFieldTest, NullIsNoValue) {
    for (const std::string file : paths) {
        SetTexts texts = soundSet();
        for (const auto& path : pathsIn(json::parse(fileOf(texts, file))))
            expectFaultAfter(
                file, path, path, [](json::value& value) { value = nullptr; }, "expected here");
    }
}

TEST(BrokenFieldTest, AnUnknownMemberIsNamedInEveryObject) {
    for (const std::string file : paths) {
        SetTexts texts = soundSet();
        json::value sound = json::parse(fileOf(texts, file));
        visitAll(sound, {}, [&](const Path& path, json::value& value) {
            if (!value.is_object() || isMap(path))
                return;
            Path unknown = path;
            unknown.emplace_back(std::string("remark"));
            expectFaultAfter(
                file, path, unknown, [](json::value& object) { object.as_object()["remark"] = ""; },
                "There is no such member; known here are: ");
        });
    }
}

TEST(BrokenFieldTest, ARequiredMemberThatIsMissingIsNamedAtItsOwner) {
    struct Row {
        const char* file;
        Path owner;
        std::string member;
    };
    const std::string products = "products";
    const std::string entities = "entities";
    const Path product = {products, std::size_t{0}};
    const auto below = [](Path path, std::vector<JsonStep> steps) {
        path.insert(path.end(), steps.begin(), steps.end());
        return path;
    };
    const Path source =
        below(product, {std::string("files"), std::string("en_US"), std::string("source")});
    const Path record = {entities, std::string("twice"), std::size_t{0}};
    const Path item = below(product, {std::string("pages"), std::string("ref/twice.html"), 0U});
    const Path box = below(product, {std::string("pages"), std::string("ref/box.html"), 0U});
    const auto in = [](const char* list) { return std::vector<JsonStep>{std::string(list), 0U}; };
    std::vector<Row> rows = {
        {manifestPath, {}, "locales"},
        {manifestPath, {}, "products"},
        {manifestPath, product, "shortName"},
        {manifestPath, product, "installed"},
        {manifestPath, product, "files"},
        {manifestPath, below(product, {std::string("files"), std::string("en_US")}), "lookup"},
        {manifestPath, below(product, {std::string("files"), std::string("en_US")}), "reference"},
        {manifestPath, source, "folder"},
        {manifestPath, source, "importer"},
        {lookupPath, {}, "product"},
        {lookupPath, {}, entities},
        {lookupPath, {std::string("product")}, "shortName"},
        {lookupPath, {std::string("product")}, "displayName"},
        {lookupPath, {std::string("product")}, "helpFolder"},
        {lookupPath, record, "type"},
        {lookupPath, record, "functionType"},
        {lookupPath, record, "href"},
        {referencePath, {}, products},
        {referencePath, product, "shortName"},
        {referencePath, product, "displayName"},
        {referencePath, product, "helpFolder"},
        {referencePath, product, "pages"},
        {referencePath, item, entities},
        {referencePath, below(item, in("entities")), "name"},
        {referencePath, below(item, in("entities")), "type"},
        {referencePath, below(item, in("entities")), "functionType"},
        {referencePath, below(item, in("inputs")), "name"},
        {referencePath, below(below(item, in("inputGroups")), in("inputs")), "name"},
        {referencePath, below(item, in("outputs")), "name"},
        {referencePath, below(item, in("seeAlso")), "name"},
        {referencePath, below(item, in("parameters")), "name"},
        {referencePath, below(item, in("replacements")), "name"},
        {referencePath, below(below(box, in("classPropertyGroups")), in("properties")), "name"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE("without " + row.member);
        const std::string problem = "The member \"" + row.member + "\" is missing";
        expectFaultAfter(
            row.file, row.owner, row.owner,
            [&](json::value& owner) { ASSERT_EQ(owner.as_object().erase(row.member), 1U); },
            problem.c_str());
    }
}

// Changes of a sound set; the mark says where the fault is.
struct Row {
    const char* file;
    const char* from;
    const char* to;
    const char* field;
    const char* problem;
};

const std::vector<Row> rows = {
    {lookupPath, R"("type": "class")", R"("type": ^"klass")", "entities.Box[0].type",
     "\"klass\" is not known here; one of these is: function, class, package,"},
    {lookupPath, R"("functionType": "not-callable")", R"("functionType": ^"callable")",
     "entities.Box[0].functionType", "one of these is: function, method, static-method"},
    {lookupPath, R"("type": "class")", R"("type": ^"Class")", "entities.Box[0].type",
     "\"Class\" is not known here"},
    {lookupPath, R"("type": "class")", R"("type": ^"1")", "entities.Box[0].type",
     "\"1\" is not known here"},
    {lookupPath, R"("type": "class")", R"("type": ^4294967296)", "entities.Box[0].type",
     "too large"},
    {lookupPath, R"("type": "class")", R"("type": ^18446744073709551616)", "entities.Box[0].type",
     "whole number of 0 or more"},
    {lookupPath, R"("type": "class")", R"("type": ^-1)", "entities.Box[0].type",
     "whole number of 0 or more"},
    {lookupPath, R"("type": "class")", R"("type": ^1.5)", "entities.Box[0].type",
     "whole number of 0 or more"},
    {lookupPath, R"("type": "class")", R"("type": ^"4294967296")", "entities.Box[0].type",
     "not known here"},
    {lookupPath, R"("shortName": "demo")", R"("shortName": ^"")", "product.shortName", "empty"},
    {lookupPath, R"("functionType": "not-callable", "href": "ref/box.html")",
     R"("functionType": "not-callable", "href": ^"")", "entities.Box[0].href", "empty"},
    {referencePath, R"("deprecated")", R"(^"outdated")",
     R"(products[0].pages["ref/twice.html"][0].deprecationStatus)",
     "one of these is: current, deprecated, removed; or a number"},
    {referencePath, R"("name": "Box", "type": "class")", R"("name": ^"", "type": "class")",
     R"(products[0].pages["ref/box.html"][0].entities[0].name)", "empty"},
    {referencePath, R"("shortName": "demo")", R"("shortName": ^"")", "products[0].shortName",
     "empty"},
    {lookupPath,
     R"("Box": [{"type": "class", "functionType": "not-callable", "href": "ref/box.html"}])",
     R"("Box": ^[])", "entities.Box", "at least one element"},
    {lookupPath, R"("Box": [)", R"("": ^[)", "entities[\"\"]", "The name is empty"},
    {referencePath, R"([{"name": "Box", "type": "class", "functionType": "not-callable"}])", "^[]",
     R"(products[0].pages["ref/box.html"][0].entities)", "at least one element"},
    {referencePath, R"("ref/box.html": [{)", R"("": ^[{)", R"(products[0].pages[""])",
     "The name is empty"},
    {referencePath, R"("ref/box.html": [{)", R"("ref/lid.html": ^[], "ref/box.html": [{)",
     R"(products[0].pages["ref/lid.html"])", "at least one element"},
    // Members that occur twice, in an object of fixed members and in one of free names.
    {manifestPath, R"("installed": true)", R"("installed": true, "installed": ^true)",
     "products[0].installed", "occurs twice"},
    {lookupPath, R"("Box": [)", R"("Box": [], "Box": ^[)", "entities.Box", "occurs twice"},
    {referencePath, R"("purpose": "2x")", R"("purpose": "3x", "purpose": ^"2x")",
     R"(products[0].pages["ref/twice.html"][0].purpose)", "occurs twice"},
};

TEST(BrokenFieldTest, AValueThatTheFormatDoesNotKnowIsNamed) {
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.file) + ": " + row.to);
        SetTexts texts = soundSet();
        const MarkedText marked = takeMark(replaced(fileOf(texts, row.file), row.from, row.to));
        fileOf(texts, row.file) = marked.text;
        const TempFolder root;
        writeSet(root, texts);
        EXPECT_THAT(
            docset::validate(root.path()).faults,
            Contains(AllOf(Field(&Fault::file, (root.path() / row.file).string()),
                           Field(&Fault::line, marked.line), Field(&Fault::column, marked.column),
                           Field(&Fault::field, row.field),
                           Field(&Fault::problem, HasSubstr(row.problem)))));
    }
}

TEST(BrokenFieldTest, AllFaultsOfAFileAreReportedInItsOrder) {
    SetTexts texts = soundSet();
    texts.reference = replaced(texts.reference, R"("introduced": "1")", R"("introduced": 1)");
    texts.reference = replaced(texts.reference, R"("title": "Four")", R"("titel": "Four")");
    texts.reference = replaced(texts.reference, R"("title": "Size")", R"("title": [])");
    const TempFolder root;
    writeSet(root, texts);
    EXPECT_THAT(docset::validate(root.path()).faults,
                ElementsAre(Field(&Fault::field, HasSubstr("introduced")),
                            Field(&Fault::field, HasSubstr("examples[0].titel")),
                            Field(&Fault::field, HasSubstr("classPropertyGroups[0].title"))));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
