#include "Planted.hpp"

bool isLess(planted::Value a, planted::Value b) {
    return a.number < a.number || b.number < 0;  // finds: misc-redundant-expression
}

int lengthOf(const planted::Value* value) {
    const planted::Value* unknown = value == nullptr ? planted::noValue() : nullptr;
    return unknown->number;  // finds: clang-analyzer-core.NullDereference
}
