#include <string>

#include <gtest/gtest.h>

#include "sphinx/Kinds.hpp"

namespace reference::importers::sphinx {
namespace VELTRA_TEST_FILE {

using property::FunctionType;
using property::RefEntityType;

InventoryObject object(std::string_view type, std::string_view name) {
    const std::size_t colon = type.find(':');
    InventoryObject result;
    result.domain = std::string(type.substr(0, colon));
    result.role = std::string(type.substr(colon + 1));
    result.name = std::string(name);
    return result;
}

const std::vector<InventoryObject>& inventory() {
    static const std::vector<InventoryObject> objects{
        object("py:module", "pkg"),      object("py:module", "pkg.sub"),
        object("py:class", "pkg.C"),     object("py:exception", "pkg.E"),
        object("cpp:class", "ns::Box"),  object("cpp:struct", "ns::Pair<T, U>"),
        object("c:struct", "Point"),     object("js:module", "lib"),
        object("js:class", "lib.Thing"),
    };
    return objects;
}

TEST(KindsTest, FollowFromRoleAndName) {
    const Scopes scopes(inventory());
    const struct {
        const char* type;
        const char* name;
        RefEntityType::Value entity;
        FunctionType::Value function;
    } rows[] = {
        {"py:function", "pkg.f", RefEntityType::Function, FunctionType::Function},
        {"py:class", "pkg.C", RefEntityType::Class, FunctionType::NotCallable},
        {"py:exception", "pkg.E", RefEntityType::Class, FunctionType::NotCallable},
        {"py:method", "pkg.C.m", RefEntityType::Method, FunctionType::Method},
        {"py:method", "pkg.C.__init__", RefEntityType::Constructor, FunctionType::Constructor},
        {"py:staticmethod", "pkg.C.s", RefEntityType::Method, FunctionType::StaticMethod},
        {"py:classmethod", "pkg.C.c", RefEntityType::Method, FunctionType::ClassMethod},
        {"py:property", "pkg.C.p", RefEntityType::Property, FunctionType::Property},
        {"py:attribute", "pkg.C.a", RefEntityType::Property, FunctionType::Property},
        {"py:attribute", "pkg.other.a", RefEntityType::Property, FunctionType::Property},
        {"py:attribute", "pkg.sub.level", RefEntityType::Variable, FunctionType::NotCallable},
        {"py:attribute", "pkg.sub.MAX_2", RefEntityType::Constant, FunctionType::NotCallable},
        {"py:data", "pkg.LIMIT", RefEntityType::Constant, FunctionType::NotCallable},
        {"py:data", "pkg.limit", RefEntityType::Variable, FunctionType::NotCallable},
        {"py:module", "pkg", RefEntityType::Package, FunctionType::NotCallable},
        {"py:type", "pkg.T", RefEntityType::TypeAlias, FunctionType::NotCallable},
        {"py:unheard-of", "pkg.x", RefEntityType::Unknown, FunctionType::NotCallable},
        {"c:function", "f", RefEntityType::Function, FunctionType::Function},
        {"c:macro", "M", RefEntityType::Macro, FunctionType::Macro},
        {"c:type", "t", RefEntityType::TypeAlias, FunctionType::NotCallable},
        {"c:struct", "Point", RefEntityType::Class, FunctionType::NotCallable},
        {"c:enum", "e", RefEntityType::Enumeration, FunctionType::NotCallable},
        {"c:enumerator", "E", RefEntityType::Constant, FunctionType::NotCallable},
        {"c:member", "Point.x", RefEntityType::Property, FunctionType::Property},
        {"c:member", "loose", RefEntityType::Variable, FunctionType::NotCallable},
        {"cpp:function", "ns::f", RefEntityType::Function, FunctionType::Function},
        {"cpp:function", "ns::Box::open", RefEntityType::Method, FunctionType::Method},
        {"cpp:function", "ns::Box::Box", RefEntityType::Constructor, FunctionType::Constructor},
        {"cpp:function", "ns::Pair<T, U>::Pair", RefEntityType::Constructor,
         FunctionType::Constructor},
        {"cpp:function", "ns::Box::~Box", RefEntityType::Destructor, FunctionType::Destructor},
        {"cpp:function", "ns::Box::operator==", RefEntityType::Operator, FunctionType::Operator},
        {"cpp:function", "operator<", RefEntityType::Operator, FunctionType::Operator},
        {"cpp:function", "ns::operator bool", RefEntityType::Operator, FunctionType::Operator},
        {"cpp:function", "ns::operators", RefEntityType::Function, FunctionType::Function},
        {"cpp:member", "ns::Box::size", RefEntityType::Variable, FunctionType::NotCallable},
        {"cpp:enumerator", "ns::Red", RefEntityType::Constant, FunctionType::NotCallable},
        {"cpp:concept", "ns::Sortable", RefEntityType::Interface, FunctionType::NotCallable},
        {"cpp:union", "ns::U", RefEntityType::Class, FunctionType::NotCallable},
        {"js:function", "lib.run", RefEntityType::Function, FunctionType::Function},
        {"js:class", "lib.Thing", RefEntityType::Class, FunctionType::NotCallable},
        {"js:method", "lib.Thing.go", RefEntityType::Method, FunctionType::Method},
        {"js:method", "lib.Thing.constructor", RefEntityType::Constructor,
         FunctionType::Constructor},
        {"js:attribute", "lib.Thing.size", RefEntityType::Property, FunctionType::Property},
        {"std:cmdoption", "prog.--help", RefEntityType::Option, FunctionType::NotCallable},
        {"std:envvar", "HOME", RefEntityType::Variable, FunctionType::NotCallable},
        {"std:confval", "theme", RefEntityType::Setting, FunctionType::NotCallable},
        {"std:setting", "DEBUG", RefEntityType::Setting, FunctionType::NotCallable},
        {"std:term", "iterator", RefEntityType::Term, FunctionType::NotCallable},
        {"std:event", "started", RefEntityType::Event, FunctionType::NotCallable},
        {"std:opcode", "POP_TOP", RefEntityType::Command, FunctionType::Function},
        {"std:pdbcommand", "where", RefEntityType::Command, FunctionType::Function},
        {"std:templatetag", "block", RefEntityType::Keyword, FunctionType::NotCallable},
        {"std:templatefilter", "add", RefEntityType::Function, FunctionType::Function},
        {"std:fieldlookup", "iexact", RefEntityType::Operator, FunctionType::Operator},
        {"std:unheard-of", "x", RefEntityType::Unknown, FunctionType::NotCallable},
        {"rst:directive", "toctree", RefEntityType::Command, FunctionType::Function},
        {"rst:directive:option", "toctree:glob", RefEntityType::Option, FunctionType::NotCallable},
        {"rst:role", "ref", RefEntityType::Keyword, FunctionType::NotCallable},
        {"cmake:command", "install", RefEntityType::Command, FunctionType::Function},
        {"cmake:variable", "BUILD_TYPE", RefEntityType::Variable, FunctionType::NotCallable},
        {"cmake:module", "FindZLIB", RefEntityType::Package, FunctionType::NotCallable},
        {"cmake:prop_tgt", "FOLDER", RefEntityType::Setting, FunctionType::NotCallable},
        {"cmake:genex", "BOOL", RefEntityType::Function, FunctionType::Function},
        {"rb:module", "Enumerable", RefEntityType::Package, FunctionType::NotCallable},
        {"php:class", "Box", RefEntityType::Class, FunctionType::NotCallable},
        {"js:data", "lib.VERSION", RefEntityType::Constant, FunctionType::NotCallable},
    };
    for (const auto& row : rows)
        EXPECT_EQ(kindOf(object(row.type, row.name), scopes, nullptr, nullptr),
                  (Kind{row.entity, row.function}))
            << row.type << " " << row.name;
}

TEST(KindsTest, FollowFromThePrefixOfTheSignature) {
    const Scopes scopes(inventory());
    const struct {
        const char* prefix;
        Kind kind;
    } rows[] = {
        {"static", {RefEntityType::Method, FunctionType::StaticMethod}},
        {"classmethod", {RefEntityType::Method, FunctionType::ClassMethod}},
        {"property", {RefEntityType::Property, FunctionType::Property}},
        {"async", {RefEntityType::Method, FunctionType::Method}},
    };
    for (const auto& row : rows) {
        SignatureFacts signature;
        signature.prefixes = {row.prefix};
        EXPECT_EQ(kindOf(object("py:method", "pkg.C.m"), scopes, nullptr, &signature), row.kind)
            << row.prefix;
    }
}

TEST(KindsTest, FollowFromTheBasesThatAreShown) {
    const Scopes scopes(inventory());
    const struct {
        const char* base;
        RefEntityType::Value type;
    } rows[] = {
        {"enum.Enum", RefEntityType::Enumeration}, {"IntFlag", RefEntityType::Enumeration},
        {"Protocol[T]", RefEntityType::Interface}, {"abc.ABC", RefEntityType::Interface},
        {"object", RefEntityType::Class},          {"EnumLike", RefEntityType::Class},
    };
    for (const auto& row : rows) {
        DescriptionFacts facts;
        facts.bases = {row.base};
        SignatureFacts signature;
        EXPECT_EQ(kindOf(object("py:class", "pkg.C"), scopes, &facts, &signature).type, row.type)
            << row.base;
        signature.parameters = {row.base};
        EXPECT_EQ(kindOf(object("py:class", "pkg.C"), scopes, nullptr, &signature).type, row.type)
            << row.base;
    }
}

TEST(KindsTest, LeaveOutWhatDoesNotBelongIntoAReference) {
    const struct {
        const char* type;
        int priority;
        bool belongs;
    } rows[] = {
        {"py:function", 1, true},        {"py:function", 0, true},
        {"py:function", -1, false},      {"c:functionParam", 1, false},
        {"cpp:functionParam", 1, false}, {"cpp:templateParam", 1, false},
        {"py:parameter", 1, false},      {"std:label", -1, false},
        {"std:doc", -1, false},          {"rst:directive", 1, true},
        {"js:method", 1, true},          {"std:label", 1, false},
        {"std:doc", 1, false},           {"std:token", -1, false},
        {"std:token", 1, false},         {"std:term", -1, true},
        {"std:setting", 1, true},        {"std:setting", -1, false},
        {"cmake:command", 1, true},      {"lua:function", 1, true},
    };
    for (const auto& row : rows) {
        InventoryObject each = object(row.type, "x");
        each.priority = row.priority;
        EXPECT_EQ(isReferenceObject(each), row.belongs) << row.type << " " << row.priority;
    }
}

TEST(KindsTest, FindTheLongestModuleAtAComponentBoundary) {
    const Scopes scopes(inventory());
    EXPECT_EQ(scopes.moduleOf(object("py:function", "pkg.sub.f")), "pkg.sub");
    EXPECT_EQ(scopes.moduleOf(object("py:method", "pkg.C.m")), "pkg");
    EXPECT_EQ(scopes.moduleOf(object("py:function", "pkg.submarine")), "pkg");
    EXPECT_EQ(scopes.moduleOf(object("py:module", "pkg.sub")), "pkg.sub");
    EXPECT_EQ(scopes.moduleOf(object("py:function", "pkgs.f")), "");
    EXPECT_EQ(scopes.moduleOf(object("c:function", "pkg.f")), "");
    EXPECT_EQ(scopes.moduleOf(object("js:function", "lib.f")), "lib");
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::importers::sphinx
