// SPDX-License-Identifier: MIT
#include "Apartment.h"

#include "Library.h"

namespace vlgs::python {

const std::shared_ptr<Apartment>& Apartment::ofThisThread() {
    thread_local const auto apartment = std::make_shared<Apartment>();
    return apartment;
}

void Apartment::drop(vlgs_object* object) {
    if (this == ofThisThread().get()) {
        library.release(object);
        return;
    }
    dropped_.push_back(object);
    if (depth_ > 0 || visited_)
        return; // who is inside does it on leaving
    visited_ = true;
    {
        const std::lock_guard visit(visit_);
        releaseDropped();
    }
    visited_ = false;
}

// The release of an object may run Python code, and with it other threads that drop more.
void Apartment::releaseDropped() {
    while (!dropped_.empty()) {
        vlgs_object* const object = dropped_.back();
        dropped_.pop_back();
        library.release(object);
    }
}

void Apartment::waitForVisitor() {
    while (visited_) {
        const WithoutLock others;
        const std::lock_guard visit(visit_);
    }
}

} // namespace vlgs::python
