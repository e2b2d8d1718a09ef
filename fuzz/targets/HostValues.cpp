// Values into the properties of all classes that scripts see. A line each: the class, the property,
// and a value:
//
//     ReferenceRequest.Products texts veltra alpha
//     CompoundReferenceComparator.Comparators cells IndexOrderComparator null ReferenceRequest
//
// All lines of a class set the same object. What is refused changes nothing; what is taken reads
// back equal.
#include "support/HostValues.hpp"

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "FuzzTarget.hpp"
#include "FuzzTexts.hpp"
#include "foundation/core/except/IMsgIDException.hpp"
#include "property/FunctionType.hpp"
#include "property/RefEntityType.hpp"
#include "vq/matrix.hpp"
#include "zorb/COSClass.hpp"

namespace reference::fuzz {
namespace VELTRA_TEST_FILE {

using zorb::COSClass;
using zorb::Property;

const COSClass* classNamed(std::string_view name) {
    for (const auto* const one : COSClass::getClasses())
        if (one->describe().name == name && one->describe().construct)
            return one;
    return nullptr;
}

std::vector<std::string_view> wordsOf(std::string_view line) {
    std::vector<std::string_view> words;
    while (!line.empty())
        words.push_back(takeWord(line));
    return words;
}

// A new object of the class; null for a word that names none.
vqArrayPtr objectOf(std::string_view word) {
    const auto* const objectClass = classNamed(word);
    return objectClass == nullptr ? nullptr : tests::construct(objectClass->getId());
}

vqArrayPtr valueOf(std::string_view line) {
    const auto kind = takeWord(line);
    const auto words = wordsOf(line);
    std::vector<std::uint32_t> numbers;
    for (const auto word : words)
        numbers.push_back(numberOf(word));
    std::vector<vqArrayPtr> objects;
    for (const auto word : words)
        objects.push_back(objectOf(word));
    if (kind == "text")
        return matrix::createString(unitsOf(line));
    if (kind == "texts" || kind == "column") {
        std::vector<std::u16string> texts;
        for (const auto word : words)
            texts.push_back(unitsOf(word));
        const auto row = matrix::createStringRow(std::move(texts));
        return kind == "texts" ? row : tests::asColumn(row);
    }
    if (kind == "numbers")
        return matrix::createNumberRow(std::move(numbers));
    if (kind == "doubles")
        return matrix::createDoubleRow({numbers.begin(), numbers.end()});
    if (kind == "types")
        return tests::members<property::RefEntityType>(std::move(numbers));
    if (kind == "functionTypes")
        return tests::members<property::FunctionType>(std::move(numbers));
    if (kind == "object")
        return objects.empty() ? nullptr : objects.front();
    if (kind == "objects") {
        std::vector<COSInterfacePtr> elements;
        for (const auto& object : objects)
            elements.push_back(object ? omGetArrayElement(object.get(), 0) : nullptr);
        return matrix::createObjectRow(std::move(elements));
    }
    if (kind == "cells")
        return matrix::createCellRow(std::move(objects));
    if (kind == "deep")
        return matrix::createCellRow({matrix::createCellRow(std::move(objects))});
    return nullptr;
}

bool isEqual(const vqArrayPtr& a, const vqArrayPtr& b) {
    return a == b || (a && b && *a == *b);
}

std::vector<vqArrayPtr> shown(const COSClass& objectClass, void* native) {
    std::vector<vqArrayPtr> all;
    for (const auto& property : objectClass.describe().properties)
        all.push_back(property.get(native));
    return all;
}

// A member may be given by its number, a list by an empty value of any kind; a request is copied.
bool readsBack(const Property& property, const vqArrayPtr& seen, const vqArrayPtr& given) {
    using zorb::Shape;
    switch (property.shape.kind) {
        case Shape::Enumeration:
        case Shape::EnumerationArray:
            return !given || tests::numbersOf(seen.get()) == tests::numbersOf(given.get());
        case Shape::Object:
            return omGetCOSClassID(seen.get()) == omGetCOSClassID(given.get());
        default:
            return isEqual(seen, given);
    }
}

void set(const COSClass& objectClass, const Property& property, void* native,
         const vqArrayPtr& value, const std::string& told) {
    const auto before = shown(objectClass, native);
    bool isTaken = true;
    try {
        property.set(native, value.get());
    } catch (const foundation::core::except::IMsgIDException& error) {
        require(!error.getIdentifier().empty(), "An error has an identifier", told);
        isTaken = false;
    }
    const auto after = shown(objectClass, native);
    for (std::size_t i = 0; i < before.size(); ++i) {
        const auto& seen = objectClass.describe().properties[i];
        const bool isThis = seen.name == property.name;
        if (isTaken && isThis && value)
            require(readsBack(property, after[i], value), "What is taken reads back equal", told);
        else if (!isTaken || !isThis)
            require(isEqual(after[i], before[i]), "Nothing else changes",
                    told + " changes " + seen.name);
    }
}

void run(std::string_view input) {
    const tests::LiveCounts before;
    // A cap: each line reads all properties twice.
    constexpr std::size_t mostLines = 60;
    {
        std::map<const COSClass*, vqArrayPtr> objects;
        std::size_t lines = 0;
        for (const auto whole : linesOf(input)) {
            if (++lines > mostLines)
                break;
            auto line = whole;
            const auto name = takeWord(line);
            const auto dot = name.find('.');
            const auto* const objectClass = classNamed(name.substr(0, dot));
            if (objectClass == nullptr || dot == std::string_view::npos)
                continue;
            const auto* const property = objectClass->findProperty(name.substr(dot + 1));
            if (property == nullptr || !property->set)
                continue;
            auto& object = objects[objectClass];
            if (!object)
                object = tests::construct(objectClass->getId());
            set(*objectClass, *property, omGetArrayElement(object.get(), 0)->getNative(),
                valueOf(line), std::string(whole));
        }
    }
    require(tests::LiveCounts() == before, "No value is left behind");
}

const FuzzTarget target("HostValues", &run);

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::fuzz
