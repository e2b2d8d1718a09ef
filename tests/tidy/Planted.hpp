// Faults that scripts/check-tidy must find before it may call the sources clean: in a header, and
// in sources that it reads as one. A line with a fault names the check that finds it.
#pragma once

namespace planted {

struct Value {
    int number = 0;
};

inline const Value* noValue() {
    return 0;  // finds: modernize-use-nullptr
}

}  // namespace planted
