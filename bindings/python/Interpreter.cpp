#include "Interpreter.hpp"

#include <atomic>
#include <chrono>
#include <pthread.h>
#include <thread>
#include <unistd.h>

namespace veltra::python {
namespace {

std::atomic<int> worksUnderWay{0};

// Made when the extension is loaded, after the libraries that it is linked with; so that it goes
// before their static objects do.
const struct LastToLeave {
    LastToLeave() {
        // A forked process has but one thread, which is not at work.
        pthread_atfork(nullptr, nullptr, [] { worksUnderWay = 0; });
    }
    ~LastToLeave() {
        while (worksUnderWay > 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
} lastToLeave;

}  // namespace

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
