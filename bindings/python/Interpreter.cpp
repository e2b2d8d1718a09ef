#include "Interpreter.hpp"

#include <chrono>
#include <thread>
#include <unistd.h>

namespace veltra::python {
namespace {

// Guarded by the interpreter lock.
int running = 0;
bool isEnding = false;
std::thread::id mainThread;

}  // namespace

Operation::Operation() {
    if (isEnding && std::this_thread::get_id() != mainThread) {
        static_cast<void>(PyEval_SaveThread());
        for (;;)
            pause();
    }
    ++running;
}

Operation::~Operation() {
    --running;
}

void endOperations() {
    mainThread = std::this_thread::get_id();
    isEnding = true;
    while (running > 0) {
        const pybind11::gil_scoped_release release;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

}  // namespace veltra::python
