// Under which names the scripting language sees the property library's classes.
#pragma once

#include "foundation/core/FixedString.hpp"
#include "property/HeaderInfo.hpp"
#include "property/RefItem.hpp"
#include "zorb/HostName.hpp"

namespace reference::property {

// The names of a class of this library.
template <foundation::core::FixedString Name>
struct PropertyHostName {
    static const char* package() noexcept { return RefEntityType::getZORBPackageName(); }
    static const char* name() noexcept { return Name.text; }
    static zorb::Interned id() {
        static const zorb::Interned qualified =
            zorb::internal::makeInterned(std::string(package()) + "." + name());
        return qualified;
    }
};

}  // namespace reference::property

namespace zorb {

// Enumerations are named by the classes that they are nested in.
template <>
struct HostName<reference::property::RefEntityType::Value>
    : HostName<reference::property::RefEntityType> {};
template <>
struct HostName<reference::property::FunctionType::Value>
    : HostName<reference::property::FunctionType> {};
template <>
struct HostName<reference::property::DeprecationStatus::Value>
    : HostName<reference::property::DeprecationStatus> {};

template <>
struct HostName<reference::property::AppThumbnail>
    : reference::property::PropertyHostName<"AppThumbnail"> {};
template <>
struct HostName<reference::property::ClassProperty>
    : reference::property::PropertyHostName<"ClassProperty"> {};
template <>
struct HostName<reference::property::ClassPropertyGroup>
    : reference::property::PropertyHostName<"ClassPropertyGroup"> {};
template <>
struct HostName<reference::property::Example> : reference::property::PropertyHostName<"Example"> {};
template <>
struct HostName<reference::property::HeaderInfo>
    : reference::property::PropertyHostName<"HeaderInfo"> {};
template <>
struct HostName<reference::property::Input> : reference::property::PropertyHostName<"Input"> {};
template <>
struct HostName<reference::property::InputGroup>
    : reference::property::PropertyHostName<"InputGroup"> {};
template <>
struct HostName<reference::property::Output> : reference::property::PropertyHostName<"Output"> {};
template <>
struct HostName<reference::property::Parameter>
    : reference::property::PropertyHostName<"Parameter"> {};
template <>
struct HostName<reference::property::RefEntity>
    : reference::property::PropertyHostName<"RefEntity"> {};
template <>
struct HostName<reference::property::RefItem> : reference::property::PropertyHostName<"RefItem"> {};
template <>
struct HostName<reference::property::SeeAlso> : reference::property::PropertyHostName<"SeeAlso"> {};
template <>
struct HostName<reference::property::SyntaxGroup>
    : reference::property::PropertyHostName<"SyntaxGroup"> {};

}  // namespace zorb
