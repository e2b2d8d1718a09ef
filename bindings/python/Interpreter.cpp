#include "Interpreter.hpp"

#include <chrono>
#include <pthread.h>
#include <thread>
#include <unistd.h>

namespace veltra::python {
namespace {

namespace py = pybind11;

// All guarded by the interpreter lock.
int running = 0;
thread_local int runningHere = 0;
bool wereExitFunctionsCalled = false;
bool isEnding = false;
std::thread::id endingThread;

void endOperations() {
    endingThread = std::this_thread::get_id();
    isEnding = true;
    while (running > runningHere) {
        {
            const py::gil_scoped_release release;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        if (PyErr_CheckSignals() != 0) {
            PyErr_Clear();
            return;
        }
    }
}

}  // namespace

Operation::Operation() {
    if (isEnding && std::this_thread::get_id() != endingThread) {
        static_cast<void>(PyEval_SaveThread());
        for (;;)
            pause();
    }
    ++running;
    ++runningHere;
}

Operation::~Operation() {
    --runningHere;
    --running;
}

void waitForOperationsAtExit() {
    // Python calls these functions in reverse order, so this one may be followed by others. Only
    // after the last one does Python release them and their arguments, which include this capsule.
    const py::capsule last(&running, [](void*) {
        if (wereExitFunctionsCalled)
            endOperations();
    });
    const auto atExit = py::module_::import("atexit").attr("register");
    atExit(py::cpp_function([](const py::object&) { wereExitFunctionsCalled = true; }), last);
    // A forked process has only the thread that forked.
    pthread_atfork(nullptr, nullptr, [] { running = runningHere; });
}

}  // namespace veltra::python
