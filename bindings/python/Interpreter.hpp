// How calls of the bridge and the end of the interpreter keep out of each other's way.
#pragma once

#include <exception>
#include <pybind11/pybind11.h>
#include <utility>

namespace veltra::python {

// Every use of a host object holds one for as long as it runs. Once it has begun to end, the
// interpreter ends every other thread (a daemon) by unwinding the thread's stack as soon as the
// thread asks for the interpreter lock. In the middle of C++ code that would let go of Python
// objects without the lock. So the interpreter begins to end when no use is under way, and a thread
// that begins another one after that waits until the process is gone.
//
// Requires: the interpreter lock is held when it is made and when it ends.
class Operation {
  public:
    Operation();
    ~Operation();
    Operation(const Operation&) = delete;  // bound to its scope
    Operation& operator=(const Operation&) = delete;
};

// To be called once, when the extension is loaded: makes the interpreter wait as described above,
// after it has called all functions that scripts registered for its end. An interrupt ends the
// wait.
void waitForOperationsAtExit();

// Runs `work`, which must not touch the interpreter, while other Python threads run. What it throws
// is thrown with the interpreter lock held again. Within an Operation.
template <typename Work>
void withoutInterpreterLock(Work&& work) {
    std::exception_ptr thrown;
    PyThreadState* const state = PyEval_SaveThread();
    try {
        std::forward<Work>(work)();
    } catch (...) {
        thrown = std::current_exception();
    }
    PyEval_RestoreThread(state);
    if (thrown)
        std::rethrow_exception(thrown);
}

}  // namespace veltra::python
