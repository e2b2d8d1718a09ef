#include "Planted.hpp"

namespace unused = planted;  // finds: misc-unused-alias-decls
using planted::Value;        // finds: misc-unused-using-decls

int numberOf(const planted::Value* value) {
    if (value == nullptr)
        return value->number;  // finds: clang-analyzer-core.NullDereference
    return 0;
}
