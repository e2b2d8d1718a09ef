// Hands the inputs that libFuzzer makes to the one target of the program.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "FuzzTarget.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using reference::fuzz::FuzzTarget;
    try {
        FuzzTarget::all().front()->run({reinterpret_cast<const char*>(data), size});
    } catch (const reference::fuzz::Finding& finding) {
        std::fprintf(stderr, "FINDING: %s\n", finding.what.c_str());
        std::abort();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "FINDING: An exception was let out: %s\n", error.what());
        std::abort();
    }
    return 0;
}
