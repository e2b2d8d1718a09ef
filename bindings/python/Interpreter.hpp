// The bridge as one of several threads of an interpreter that comes to an end.
//
// Once it has begun to end, the interpreter ends every other thread (a daemon) that asks for its
// lock, by unwinding the thread's stack. C++ code in the midst of that would let go of Python
// objects without holding the lock, so that such a thread is left waiting instead, for good.
#pragma once

#include <cxxabi.h>
#include <exception>
#include <pybind11/pybind11.h>
#include <utility>

namespace veltra::python {

// Waits until the process is gone.
[[noreturn]] void waitForEver() noexcept;

// Runs what calls into the interpreter, which may pass its lock to other threads meanwhile.
template <typename Call>
decltype(auto) callPython(Call&& call) {
    try {
        return std::forward<Call>(call)();
    } catch (const abi::__forced_unwind&) {
        waitForEver();
    }
}

// To be called once, when the extension is loaded: from then on the process does not end while
// there is a NativeWork. Native work refers to static objects.
void keepProcessForNativeWork();

// Marks that the calling thread is at work without the interpreter lock.
class NativeWork {
  public:
    NativeWork() noexcept;
    ~NativeWork();
    NativeWork(const NativeWork&) = delete;  // bound to its scope
    NativeWork& operator=(const NativeWork&) = delete;
};

// Takes the interpreter lock again after PyEval_SaveThread() returned `state`; never returns once
// the interpreter has begun to end.
void takeInterpreterLock(PyThreadState* state);

// Runs `work`, which must not touch the interpreter, while other Python threads run. What it throws
// is thrown with the interpreter lock held again. Requires: it is held.
template <typename Work>
void withoutInterpreterLock(Work&& work) {
    if (_Py_IsFinalizing() != 0) {  // the thread that ends the interpreter; there are no others
        std::forward<Work>(work)();
        return;
    }
    std::exception_ptr thrown;
    PyThreadState* const state = PyEval_SaveThread();
    {
        const NativeWork underWay;
        try {
            std::forward<Work>(work)();
        } catch (...) {
            thrown = std::current_exception();
        }
    }
    takeInterpreterLock(state);
    if (thrown)
        std::rethrow_exception(thrown);
}

}  // namespace veltra::python
