#include "Interpreter.hpp"

#include <atomic>
#include <chrono>
#include <pthread.h>
#include <thread>
#include <unistd.h>

namespace veltra::python {
namespace {

std::atomic<int> worksUnderWay{0};

void waitForNativeWork() {
    while (worksUnderWay > 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

}  // namespace

void keepProcessForNativeWork() {
    // Called when the interpreter has ended, so that no work can begin any more, and before static
    // objects go.
    if (Py_AtExit(&waitForNativeWork) != 0)
        throw pybind11::import_error("The interpreter takes no more functions to call at its end.");
    // A forked process has but one thread, which is not at work.
    pthread_atfork(nullptr, nullptr, [] { worksUnderWay = 0; });
}

void waitForEver() noexcept {
    for (;;)
        pause();
}

NativeWork::NativeWork() noexcept {
    ++worksUnderWay;
}

NativeWork::~NativeWork() {
    --worksUnderWay;
}

void takeInterpreterLock(PyThreadState* state) {
    if (_Py_IsFinalizing() != 0 || Py_IsInitialized() == 0)
        waitForEver();
    callPython([state] { PyEval_RestoreThread(state); });
}

}  // namespace veltra::python
