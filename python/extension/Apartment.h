// SPDX-License-Identifier: MIT
// Objects count their references without any lock, so only one thread works with them at a time: their owner
// while it is inside the library, or whoever drops a last reference while the owner is elsewhere or has
// ended.
#pragma once

#include "Reference.h"

#include "capi/vlgs.h"

#include <memory>
#include <mutex>
#include <vector>

namespace vlgs::python {

/// What belongs to one thread. Its members change only while the interpreter's lock is held.
class Apartment {
  public:
    /// The apartment of the calling thread.
    static const std::shared_ptr<Apartment>& ofThisThread();
    /// Gives back a reference to an object of this apartment, at once or as the owner leaves.
    void drop(vlgs_object* object);

    /// Keeps the exception that a handler of events ended with until the call that raised the event is back.
    void keep(PyObject* exception) { kept_ = Reference::borrowed(exception); }
    /// That exception, or none.
    Reference takeKept() { return std::move(kept_); }
    bool hasKept() const { return static_cast<bool>(kept_); }

  private:
    friend class Inside;
    void releaseDropped();
    void waitForVisitor();

    int depth_ = 0;
    bool visited_ = false; // another thread releases objects, and holds `visit_`
    std::vector<vlgs_object*> dropped_;
    Reference kept_;
    std::mutex visit_;
};

/// The owner's stay in its apartment, during which it may let go of the interpreter's lock.
class Inside {
  public:
    explicit Inside(Apartment& apartment) : apartment_(apartment) {
        if (apartment_.visited_) [[unlikely]]
            apartment_.waitForVisitor();
        ++apartment_.depth_;
    }
    ~Inside() {
        if (apartment_.depth_ == 1 && !apartment_.dropped_.empty()) [[unlikely]]
            apartment_.releaseDropped();
        --apartment_.depth_;
    }
    Inside(const Inside&) = delete;
    Inside& operator=(const Inside&) = delete;

  private:
    Apartment& apartment_;
};

/// Other threads of Python run while one of these lives.
class WithoutLock {
  public:
    WithoutLock() : state_(PyEval_SaveThread()) {}
    ~WithoutLock() {
        orRest([this] { PyEval_RestoreThread(state_); });
    }
    WithoutLock(const WithoutLock&) = delete;
    WithoutLock& operator=(const WithoutLock&) = delete;

  private:
    PyThreadState* state_;
};

} // namespace vlgs::python
