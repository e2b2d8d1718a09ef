#pragma once

#include <string>

#include "zorb/Interned.hpp"

namespace zorb {

// The name under which the scripting language sees a native type. By default the type itself
// supplies it; specialise this for a type that does not, such as an enumeration that is nested in
// its class.
template <typename T>
struct HostName {
    static const char* package() noexcept { return T::getZORBPackageName(); }
    static const char* name() noexcept { return T::getZORBClassName(); }

    // The interned qualified name: package, "." and name.
    static Interned id() {
        static const Interned qualified =
            internal::makeInterned(std::string(package()) + "." + name());
        return qualified;
    }
};

}  // namespace zorb
