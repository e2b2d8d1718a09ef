// The bridge as one of several threads of an interpreter that comes to an end.
#pragma once

#include <exception>
#include <pybind11/pybind11.h>
#include <utility>

namespace veltra::python {

// Every use of a host object holds one for as long as it runs. Once it has begun to end, the
// interpreter ends every other thread (a daemon) by unwinding the thread's stack, which would let
// go of Python objects in the midst of C++ code, without the interpreter lock; and the process's
// static objects go. So the interpreter begins to end when all uses have ended, and a thread that
// comes for another one then is left waiting, for good.
//
// Requires: the interpreter lock is held when it is made and when it ends.
class Operation {
  public:
    Operation();
    ~Operation();
    Operation(const Operation&) = delete;  // bound to its scope
    Operation& operator=(const Operation&) = delete;
};

// To be called once, when the extension is loaded: makes the interpreter wait as told above, after
// all that scripts have registered to be called at its end. An interrupt ends the waiting.
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
