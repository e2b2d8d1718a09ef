#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/core/export.hpp"
#include "vq/vqArray.hpp"
#include "zorb/Interned.hpp"

namespace zorb {

// The form of a property's, an argument's or a result's value.
struct Shape {
    enum Kind {
        Text,         // one text
        TextArray,    // texts
        Enumeration,  // one member of an enumeration class
        EnumerationArray,
        Object,  // one object of a class
        ObjectArray,
        CellArray,  // objects of several classes, one to a cell
    };
    Kind kind = Text;
    // The qualified name of the class of objects or enumeration members; empty for texts, and for
    // objects of whatever class.
    std::string className;
    // Whether null stands for a value that was never set.
    bool mayBeNull = false;
};

// A property. The functions get a native object of the class's type.
struct Property {
    std::string name;
    std::string documentation;  // a sentence or two
    Shape shape;
    std::function<vqArrayPtr(void* native)> get;
    // Empty for a property that cannot be set. Throws for a value that it does not take and then
    // leaves the object unchanged.
    std::function<void(void* native, const vqArray* value)> set;
};

// An operation without arguments.
struct Method {
    std::string name;
    std::string documentation;
    Shape result;
    std::function<vqArrayPtr(void* native)> call;
};

// A member of an enumeration class.
struct Member {
    std::string name;
    std::uint32_t number = 0;
};

// What the object system knows about a class. The library that owns the native class describes it
// once (see ClassDescription), when it is loaded. Immutable from then on; any thread.
class VELTRA_HOST_API COSClass {
  public:
    // How a class is described; a class is either one of objects or an enumeration.
    struct Description {
        std::string packageName;
        std::string name;
        std::string documentation;
        std::vector<Property> properties;
        std::vector<Method> methods;
        // Makes a native object; empty for a class whose objects only the library makes.
        std::function<void*()> construct;
        std::function<void(void* native)> destroy;
        // Of an enumeration, in the order of their numbers.
        std::vector<Member> members;
        bool isEnumeration = false;
    };

    // The class of an identifier, which is a package, "." and a name. Throws
    // "VELTRA:class:UndefinedClass" when none is registered.
    [[nodiscard]] static const COSClass& getClass(Interned id);

    // The class of a qualified name, or null.
    [[nodiscard]] static const COSClass* findClass(std::string_view qualifiedName);

    // All classes, by qualified name. They live as long as the process.
    [[nodiscard]] static std::vector<const COSClass*> getClasses();

    // Makes a class known for the life of the process. Throws std::logic_error when the name is
    // taken.
    static const COSClass& registerClass(Description description);

    COSClass(const COSClass&) = delete;  // each name has one object
    COSClass& operator=(const COSClass&) = delete;

    [[nodiscard]] Interned getId() const noexcept { return m_id; }
    [[nodiscard]] const Description& describe() const noexcept { return m_description; }

    // Null when there is none of that name.
    [[nodiscard]] const Property* findProperty(std::string_view name) const noexcept;
    [[nodiscard]] const Method* findMethod(std::string_view name) const noexcept;
    [[nodiscard]] const Member* findMember(std::uint32_t number) const noexcept;

  private:
    explicit COSClass(Description description);

    const Description m_description;
    const Interned m_id;
};

}  // namespace zorb
