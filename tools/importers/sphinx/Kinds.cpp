#include "sphinx/Kinds.hpp"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

#include "sphinx/Text.hpp"

namespace reference::importers::sphinx {
namespace {

using property::FunctionType;
using property::RefEntityType;

// Places in the prose, which an inventory lists only as targets of links.
constexpr std::array placeRoles = std::to_array<std::string_view>({"label", "doc", "token"});
constexpr std::array classRoles = std::to_array<std::string_view>(
    {"class", "exception", "struct", "union", "enum", "enum-class", "enum-struct", "concept"});

constexpr Kind functionKind{RefEntityType::Function, FunctionType::Function};
constexpr Kind methodKind{RefEntityType::Method, FunctionType::Method};
constexpr Kind propertyKind{RefEntityType::Property, FunctionType::Property};
constexpr Kind constructorKind{RefEntityType::Constructor, FunctionType::Constructor};
constexpr Kind commandKind{RefEntityType::Command, FunctionType::Function};
constexpr Kind operatorKind{RefEntityType::Operator, FunctionType::Operator};

constexpr Kind notCallable(RefEntityType::Value type) {
    return {type, FunctionType::NotCallable};
}

// Roles that mean the same wherever they occur within their domain. The remaining ones are judged
// by the name and the signature as well.
const std::map<std::string_view, Kind>& plainKinds() {
    static const std::map<std::string_view, Kind> kinds{
        {"py:function", functionKind},
        {"py:decorator", functionKind},
        {"py:module", notCallable(RefEntityType::Package)},
        {"py:exception", notCallable(RefEntityType::Class)},
        {"py:classmethod", {RefEntityType::Method, FunctionType::ClassMethod}},
        {"py:staticmethod", {RefEntityType::Method, FunctionType::StaticMethod}},
        {"py:decoratormethod", methodKind},
        {"py:property", propertyKind},
        {"py:type", notCallable(RefEntityType::TypeAlias)},
        {"c:function", functionKind},
        {"c:macro", {RefEntityType::Macro, FunctionType::Macro}},
        {"c:type", notCallable(RefEntityType::TypeAlias)},
        {"c:struct", notCallable(RefEntityType::Class)},
        {"c:union", notCallable(RefEntityType::Class)},
        {"c:enum", notCallable(RefEntityType::Enumeration)},
        {"c:enumerator", notCallable(RefEntityType::Constant)},
        {"c:var", notCallable(RefEntityType::Variable)},
        {"c:data", notCallable(RefEntityType::Variable)},
        {"cpp:class", notCallable(RefEntityType::Class)},
        {"cpp:struct", notCallable(RefEntityType::Class)},
        {"cpp:union", notCallable(RefEntityType::Class)},
        {"cpp:enum", notCallable(RefEntityType::Enumeration)},
        {"cpp:enum-class", notCallable(RefEntityType::Enumeration)},
        {"cpp:enum-struct", notCallable(RefEntityType::Enumeration)},
        {"cpp:enumerator", notCallable(RefEntityType::Constant)},
        {"cpp:concept", notCallable(RefEntityType::Interface)},
        {"cpp:type", notCallable(RefEntityType::TypeAlias)},
        {"cpp:alias", notCallable(RefEntityType::TypeAlias)},
        {"cpp:var", notCallable(RefEntityType::Variable)},
        {"cpp:member", notCallable(RefEntityType::Variable)},
        {"js:class", notCallable(RefEntityType::Class)},
        {"js:module", notCallable(RefEntityType::Package)},
    };
    return kinds;
}

// What is documented besides a language's own entities: settings, options, commands, terms and what
// projects add to them. The kind is that of the nearest thing a reader knows: a template filter is
// called with arguments, a field lookup compares, a generator expression is evaluated.
const std::map<std::string_view, Kind>& otherKinds() {
    static const std::map<std::string_view, Kind> kinds{
        {"std:cmdoption", notCallable(RefEntityType::Option)},
        {"std:confval", notCallable(RefEntityType::Setting)},
        {"std:setuptools-confval", notCallable(RefEntityType::Setting)},
        {"std:envvar", notCallable(RefEntityType::Variable)},
        {"std:term", notCallable(RefEntityType::Term)},
        {"std:opcode", commandKind},
        {"std:pdbcommand", commandKind},
        {"std:django-admin", commandKind},
        {"std:control", commandKind},
        {"std:magic", commandKind},
        {"std:2to3fixer", notCallable(RefEntityType::Tool)},
        {"std:templatetag", notCallable(RefEntityType::Keyword)},
        {"std:templatefilter", functionKind},
        {"std:fieldlookup", operatorKind},
        {"std:fixture", functionKind},
        {"std:hook", functionKind},
        {"std:globalvar", notCallable(RefEntityType::Variable)},
        {"std:sig", notCallable(RefEntityType::Event)},
        {"std:state", notCallable(RefEntityType::Constant)},
        {"rst:directive", commandKind},
        {"rst:directive:option", notCallable(RefEntityType::Option)},
        {"rst:role", notCallable(RefEntityType::Keyword)},
        {"cmake:command", commandKind},
        {"cmake:genex", functionKind},
        {"cmake:envvar", notCallable(RefEntityType::Variable)},
        {"cmake:policy", notCallable(RefEntityType::Setting)},
        {"cmake:generator", notCallable(RefEntityType::Tool)},
        {"cmake:cpack_gen", notCallable(RefEntityType::Tool)},
        {"cmake:manual", notCallable(RefEntityType::Topic)},
        {"cmake:guide", notCallable(RefEntityType::Topic)},
    };
    return kinds;
}

// Roles that mean the same in every domain that has them.
const std::map<std::string_view, Kind>& kindsOfAnyDomain() {
    static const std::map<std::string_view, Kind> kinds{
        {"function", functionKind},
        {"class", notCallable(RefEntityType::Class)},
        {"struct", notCallable(RefEntityType::Class)},
        {"exception", notCallable(RefEntityType::Class)},
        {"interface", notCallable(RefEntityType::Interface)},
        {"trait", notCallable(RefEntityType::Interface)},
        {"enum", notCallable(RefEntityType::Enumeration)},
        {"module", notCallable(RefEntityType::Package)},
        {"namespace", notCallable(RefEntityType::Package)},
        {"package", notCallable(RefEntityType::Package)},
        {"const", notCallable(RefEntityType::Constant)},
        {"constant", notCallable(RefEntityType::Constant)},
        {"global", notCallable(RefEntityType::Variable)},
        {"var", notCallable(RefEntityType::Variable)},
        {"variable", notCallable(RefEntityType::Variable)},
        {"macro", {RefEntityType::Macro, FunctionType::Macro}},
        {"type", notCallable(RefEntityType::TypeAlias)},
        {"operator", operatorKind},
        {"event", notCallable(RefEntityType::Event)},
        {"signal", notCallable(RefEntityType::Event)},
        {"command", commandKind},
        {"option", notCallable(RefEntityType::Option)},
        {"setting", notCallable(RefEntityType::Setting)},
    };
    return kinds;
}

// Where the last "::" outside template arguments stands; npos: nowhere. The brackets in an
// operator's own name do not count.
std::size_t lastScope(std::string_view name) {
    const std::size_t nameEnd = std::min(name.find("operator"), name.size());
    std::size_t found = std::string_view::npos;
    int depth = 0;
    for (std::size_t at = 0; at < nameEnd; ++at) {
        const char c = name[at];
        if (c == '<' || c == '(')
            ++depth;
        else if (c == '>' || c == ')')
            --depth;
        else if (c == ':' && depth == 0 && name.substr(at, 2) == "::")
            found = at++;
    }
    return found;
}

std::string_view ownName(const InventoryObject& object) {
    const std::string_view name = object.name;
    if (object.domain != "cpp")
        return lastComponent(name);
    const std::size_t scope = lastScope(name);
    return scope == std::string_view::npos ? name : name.substr(scope + 2);
}

std::string_view withoutTemplateArguments(std::string_view name) {
    return name.substr(0, name.find('<'));
}

bool isOperatorName(std::string_view name) {
    constexpr std::string_view word = "operator";
    if (!name.starts_with(word) || name.size() == word.size())
        return false;
    const char c = name[word.size()];
    const bool continuesName =
        (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
    return !continuesName;
}

bool isAllCapitals(std::string_view name) {
    const auto isCapital = [](char c) { return c >= 'A' && c <= 'Z'; };
    const auto isAllowed = [&](char c) {
        return isCapital(c) || (c >= '0' && c <= '9') || c == '_';
    };
    return std::ranges::any_of(name, isCapital) && std::ranges::all_of(name, isAllowed);
}

Kind dataKind(std::string_view name) {
    return notCallable(isAllCapitals(name) ? RefEntityType::Constant : RefEntityType::Variable);
}

bool hasPrefix(const SignatureFacts* signature, std::string_view word) {
    return signature != nullptr &&
           std::ranges::find(signature->prefixes, word) != signature->prefixes.end();
}

// The name of a base class without its package and its arguments.
std::string_view baseName(std::string_view base) {
    base = base.substr(0, base.find_first_of("[("));
    return lastComponent(trimmed(base));
}

// Tells by the bases that a class's page shows whether it is an enumeration or an interface.
Kind pythonClassKind(const DescriptionFacts* facts, const SignatureFacts* signature) {
    std::vector<std::string> bases = facts != nullptr ? facts->bases : std::vector<std::string>();
    if (signature != nullptr)
        bases.insert(bases.end(), signature->parameters.begin(), signature->parameters.end());
    for (const std::string& base : bases) {
        const std::string_view name = baseName(base);
        for (const std::string_view each : {"Enum", "IntEnum", "StrEnum", "Flag", "IntFlag"})
            if (name == each)
                return notCallable(RefEntityType::Enumeration);
        if (name == "Protocol" || name == "ABC")
            return notCallable(RefEntityType::Interface);
    }
    return notCallable(RefEntityType::Class);
}

Kind methodKindOf(const InventoryObject& object, const SignatureFacts* signature) {
    if (object.domain == "py" && ownName(object) == "__init__")
        return constructorKind;
    if (object.domain == "js" && ownName(object) == "constructor")
        return constructorKind;
    if (hasPrefix(signature, "property"))
        return propertyKind;
    if (hasPrefix(signature, "static"))
        return {RefEntityType::Method, FunctionType::StaticMethod};
    if (hasPrefix(signature, "classmethod"))
        return {RefEntityType::Method, FunctionType::ClassMethod};
    return methodKind;
}

Kind cppFunctionKind(const InventoryObject& object, const Scopes& scopes,
                     const DescriptionFacts* facts, const SignatureFacts* signature) {
    const std::string_view name = ownName(object);
    if (isOperatorName(name))
        return {RefEntityType::Operator, FunctionType::Operator};
    const std::string_view enclosing = Scopes::enclosing(object);
    if (name.starts_with('~') && !enclosing.empty())
        return {RefEntityType::Destructor, FunctionType::Destructor};
    const std::size_t scope = lastScope(enclosing);
    const std::string_view enclosingName =
        scope == std::string_view::npos ? enclosing : enclosing.substr(scope + 2);
    if (!enclosing.empty() &&
        withoutTemplateArguments(name) == withoutTemplateArguments(enclosingName))
        return constructorKind;
    const bool isMember = scopes.isInClass(object) || (facts != nullptr && facts->isNested);
    if (!isMember || enclosing.empty())
        return functionKind;
    return hasPrefix(signature, "static") ? Kind{RefEntityType::Method, FunctionType::StaticMethod}
                                          : methodKind;
}

}  // namespace

bool isReferenceObject(const InventoryObject& object) {
    if (object.name.empty() || object.role == "parameter" || object.role.ends_with("Param"))
        return false;
    if (object.domain != "std")
        return object.priority >= 0;
    // A term ranks as low as a place in the prose, and yet is looked up by its name.
    return object.role == "term" ||
           (object.priority >= 0 && std::ranges::find(placeRoles, object.role) == placeRoles.end());
}

Scopes::Scopes(const std::vector<InventoryObject>& objects) {
    for (const InventoryObject& object : objects) {
        if (std::ranges::find(classRoles, object.role) != classRoles.end())
            m_classes.insert(object.domain + ":" + object.name);
        else if (object.role == "module")
            m_modules.insert(object.domain + ":" + object.name);
    }
}

std::string_view Scopes::enclosing(const InventoryObject& object) {
    const std::string_view name = object.name;
    const std::size_t end = object.domain == "cpp" ? lastScope(name) : name.rfind('.');
    return end == std::string_view::npos ? std::string_view() : name.substr(0, end);
}

bool Scopes::isInClass(const InventoryObject& object) const {
    return m_classes.contains(object.domain + ":" + std::string(enclosing(object)));
}

bool Scopes::isInModule(const InventoryObject& object) const {
    return !isInClass(object) &&
           m_modules.contains(object.domain + ":" + std::string(enclosing(object)));
}

std::string_view Scopes::moduleOf(const InventoryObject& object) const {
    std::string name = object.domain + ":" + object.name;
    for (;;) {
        if (const auto found = m_modules.find(name); found != m_modules.end())
            return std::string_view(*found).substr(object.domain.size() + 1);
        const std::size_t dot = name.rfind('.');
        if (dot == std::string::npos)
            return {};
        name.resize(dot);
    }
}

// The domain's role decides, refined
//   - for methods by the name (constructors) and the signature's prefix (static, class, property),
//   - for data by the spelling of the name, for attributes of modules likewise,
//   - for Python's classes by the bases that are shown,
//   - for C++ functions by the name and by what they stand within,
//   - for members of C structures by what they stand within.
// A role that only some domain knows, and that means nothing here, gives an unknown kind.
Kind kindOf(const InventoryObject& object, const Scopes& scopes, const DescriptionFacts* facts,
            const SignatureFacts* signature) {
    const std::string& role = object.role;
    if (object.domain == "py" && role == "class")
        return pythonClassKind(facts, signature);
    if (object.domain == "cpp" && role == "function")
        return cppFunctionKind(object, scopes, facts, signature);
    if (object.domain == "c" && role == "member")
        return Scopes::enclosing(object).empty() ? notCallable(RefEntityType::Variable)
                                                 : propertyKind;
    if (role == "method" ||
        (object.domain == "js" && role == "function" && ownName(object) == "constructor"))
        return methodKindOf(object, signature);
    if (object.domain == "js" && role == "function")
        return functionKind;
    if (role == "attribute")
        return scopes.isInModule(object) || Scopes::enclosing(object).empty()
                   ? dataKind(ownName(object))
                   : propertyKind;
    if (role == "data")
        return dataKind(ownName(object));
    const std::string fullRole = object.domain + ":" + role;
    for (const auto* const kinds : {&plainKinds(), &otherKinds()})
        if (const auto found = kinds->find(fullRole); found != kinds->end())
            return found->second;
    // The properties of a cache entry, a directory, a source file, a target and so on.
    if (fullRole.starts_with("cmake:prop_"))
        return notCallable(RefEntityType::Setting);
    const auto found = kindsOfAnyDomain().find(role);
    return found != kindsOfAnyDomain().end() ? found->second : Kind{};
}

bool holdsProperties(RefEntityType::Value type) {
    return type == RefEntityType::Class || type == RefEntityType::Enumeration ||
           type == RefEntityType::Interface || type == RefEntityType::TypeAlias;
}

}  // namespace reference::importers::sphinx
