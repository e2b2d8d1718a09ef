// The bridge as one of several threads of an interpreter that comes to an end.
#pragma once

#include <exception>
#include <pybind11/pybind11.h>
#include <utility>

namespace veltra::python {

// Every function of the bridge holds one for as long as it runs. Once the interpreter has begun to
// end, a thread that outlives it (a daemon) stops here for good: it would otherwise be ended by the
// interpreter somewhere within C++ code, which cannot survive that.
//
// Requires: the interpreter lock is held when it is made and when it ends.
class Operation {
  public:
    Operation();
    ~Operation();
    Operation(const Operation&) = delete;  // bound to its scope
    Operation& operator=(const Operation&) = delete;
};

// Waits for the operations of other threads to end and lets no new ones begin. To be called by the
// main thread when the interpreter begins to end.
void endOperations();

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
