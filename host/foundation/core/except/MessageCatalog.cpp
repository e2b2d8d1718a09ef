#include "foundation/core/except/MessageCatalog.hpp"

#include <cstddef>
#include <map>

#include "foundation/core/except/IMsgIDException.hpp"

namespace foundation::core::except {
namespace {

using Texts = std::map<std::string, std::string, std::less<>>;

// Never destroyed: errors may be raised after static objects have gone.
const Texts& texts() {
    static const auto* const all = new Texts{
        {"VELTRA:class:NoConstructor",
         "Objects of the class {0} are made by the library; a script cannot construct one."},
        {"VELTRA:class:NoSuchMethod", "The class {0} has no method \"{1}\"; its methods are: {2}."},
        {"VELTRA:class:NoSuchProperty",
         "The class {0} has no property \"{1}\"; its properties are: {2}."},
        {"VELTRA:class:OperationFailed", "{0}"},
        {"VELTRA:class:ReadOnlyProperty",
         "The property {1} of the class {0} can be read but not set."},
        {"VELTRA:class:RequireClass",
         "An object of the class {0} was expected; this value is of the class {1}."},
        {"VELTRA:class:RequireEnumeration",
         "Enumeration members were expected; this value is of the class {0}."},
        {"VELTRA:class:RequireNumeric",
         "A whole number from 0 to 4294967295 or an enumeration member was expected; this value is "
         "of the class {0}."},
        {"VELTRA:class:RequireScalar",
         "A single value was expected; an array with no or several elements was given."},
        {"VELTRA:class:RequireString",
         "A single text was expected; this value is of the class {0}."},
        {"VELTRA:class:RequireStringArray",
         "An array of texts was expected; this value is of the class {0}."},
        {"VELTRA:class:UndefinedClass", "There is no class \"{0}\"."},
        {"VELTRA:class:UnsupportedValue",
         "A value of the type {0} cannot be passed on. Texts, numbers, enumeration members, "
         "objects, lists of these and None can."},
        {"VELTRA:class:WrongArgumentCount", "{0} takes {1} arguments, but {2} were given."},
        {"VELTRA:referenceapi:ExpectedComparatorCellArray",
         "The comparators of a compound comparator are given as a cell array, with one comparator "
         "in each cell; this value is no cell array."},
        {"VELTRA:referenceapi:ExpectedScalarComparator",
         "A request takes one comparator object; to order by several, put them into a "
         "CompoundReferenceComparator."},
        {"VELTRA:referenceapi:InvalidComparator",
         "A value of the class {0} is no comparator; objects of the classes of the package "
         "veltra.internal.reference.api.comparator are."},
    };
    return *all;
}

}  // namespace

IException::~IException() = default;
IUserException::~IUserException() = default;
IMsgIDException::~IMsgIDException() = default;

std::string MessageCatalog::getText(std::string_view identifier,
                                    std::span<const std::string> arguments) {
    const auto found = texts().find(identifier);
    if (found == texts().end()) {
        std::string text(identifier);
        for (const auto& argument : arguments)
            text += " " + argument;
        return text;
    }
    std::string text;
    // From left to right in one go, so that a place's mark within an argument stays what it is.
    for (std::string_view rest = found->second; !rest.empty();) {
        const bool isPlace = rest.size() >= 3 && rest[0] == '{' && rest[2] == '}';
        const auto number = isPlace ? static_cast<std::size_t>(rest[1] - '0') : arguments.size();
        if (isPlace && number < arguments.size()) {
            text += arguments[number];
            rest.remove_prefix(3);
        } else {
            text += rest.front();
            rest.remove_prefix(1);
        }
    }
    return text;
}

std::vector<std::string> MessageCatalog::getIdentifiers() {
    std::vector<std::string> identifiers;
    for (const auto& [identifier, text] : texts())
        identifiers.push_back(identifier);
    return identifiers;
}

}  // namespace foundation::core::except
