// The names under which the scripting language sees the property library's classes.
#pragma once

#include "foundation/core/FixedString.hpp"
#include "property/HeaderInfo.hpp"
#include "property/RefItem.hpp"
#include "zorb/HostName.hpp"

namespace reference::property {

// The names of a class of this library that does not supply them itself.
template <foundation::core::FixedString Name>
struct PropertyName {
    static const char* getZORBPackageName() noexcept { return RefEntityType::getZORBPackageName(); }
    static const char* getZORBClassName() noexcept { return Name.text; }
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
    : HostName<reference::property::PropertyName<"AppThumbnail">> {};
template <>
struct HostName<reference::property::ClassProperty>
    : HostName<reference::property::PropertyName<"ClassProperty">> {};
template <>
struct HostName<reference::property::ClassPropertyGroup>
    : HostName<reference::property::PropertyName<"ClassPropertyGroup">> {};
template <>
struct HostName<reference::property::Example>
    : HostName<reference::property::PropertyName<"Example">> {};
template <>
struct HostName<reference::property::HeaderInfo>
    : HostName<reference::property::PropertyName<"HeaderInfo">> {};
template <>
struct HostName<reference::property::Input> : HostName<reference::property::PropertyName<"Input">> {
};
template <>
struct HostName<reference::property::InputGroup>
    : HostName<reference::property::PropertyName<"InputGroup">> {};
template <>
struct HostName<reference::property::Output>
    : HostName<reference::property::PropertyName<"Output">> {};
template <>
struct HostName<reference::property::Parameter>
    : HostName<reference::property::PropertyName<"Parameter">> {};
template <>
struct HostName<reference::property::RefEntity>
    : HostName<reference::property::PropertyName<"RefEntity">> {};
template <>
struct HostName<reference::property::RefItem>
    : HostName<reference::property::PropertyName<"RefItem">> {};
template <>
struct HostName<reference::property::SeeAlso>
    : HostName<reference::property::PropertyName<"SeeAlso">> {};
template <>
struct HostName<reference::property::SyntaxGroup>
    : HostName<reference::property::PropertyName<"SyntaxGroup">> {};

}  // namespace zorb
