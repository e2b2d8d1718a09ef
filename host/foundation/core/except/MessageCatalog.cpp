#include "foundation/core/except/MessageCatalog.hpp"

#include <cstddef>
#include <map>
#include <stdexcept>
#include <utility>

#include "foundation/core/Mutex.hpp"
#include "foundation/core/NeverDestroyed.hpp"
#include "foundation/core/except/IMsgIDException.hpp"

namespace foundation::core::except {
namespace {

using core::Mutex;
using core::MutexLock;
using core::NeverDestroyed;
using Texts = std::map<std::string, std::string, std::less<>>;

// The texts of the host's own errors.
Texts hostTexts() {
    return {
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
    };
}

struct State {
    Mutex mutex;
    Texts texts VELTRA_GUARDED_BY(mutex) = hostTexts();
};

// Made on first use: other libraries add their texts while they are loaded.
State& state() {
    static NeverDestroyed<State> instance;
    return *instance;
}

// Empty where there is no text.
std::string findText(std::string_view identifier) {
    State& all = state();
    const MutexLock lock(all.mutex);
    const auto found = all.texts.find(identifier);
    return found == all.texts.end() ? std::string() : found->second;
}

}  // namespace

IException::~IException() = default;
IUserException::~IUserException() = default;
IMsgIDException::~IMsgIDException() = default;

std::string MessageCatalog::getText(std::string_view identifier,
                                    std::span<const std::string> arguments) {
    const std::string pattern = findText(identifier);
    if (pattern.empty()) {
        std::string text(identifier);
        for (const auto& argument : arguments)
            text += " " + argument;
        return text;
    }
    std::string text;
    // From left to right in one go, so that a place's mark within an argument stays what it is.
    for (std::string_view rest = pattern; !rest.empty();) {
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

void MessageCatalog::addText(std::string identifier, std::string text) {
    if (identifier.find(':') == std::string::npos || text.empty())
        throw std::invalid_argument(
            "A message has an identifier such as \"VELTRA:class:RequireScalar\" and a text; got "
            "\"" +
            identifier + "\" and \"" + text + "\".");
    State& all = state();
    const MutexLock lock(all.mutex);
    const auto [place, isNew] = all.texts.emplace(std::move(identifier), std::move(text));
    if (!isNew)
        throw std::logic_error("The message \"" + place->first + "\" has a text already.");
}

std::vector<std::string> MessageCatalog::getIdentifiers() {
    State& all = state();
    const MutexLock lock(all.mutex);
    std::vector<std::string> identifiers;
    for (const auto& [identifier, text] : all.texts)
        identifiers.push_back(identifier);
    return identifiers;
}

}  // namespace foundation::core::except
