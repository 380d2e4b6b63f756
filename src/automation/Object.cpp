#include "automation/Object.h"

#include "automation/ClassInfo.h"
#include "automation/Error.h"
#include "automation/Variant.h"

#include <atomic>

namespace vlgs {

namespace {
std::atomic<void (*)(const Object*) noexcept> endWatcher = nullptr;
} // namespace

Object::~Object() {
    if (watched_)
        endWatcher.load(std::memory_order_relaxed)(this);
}

void Object::release() const noexcept {
    if (--references_ == 0)
        delete this;
}

void Object::watchEnd(void (*watcher)(const Object*) noexcept) const noexcept {
    endWatcher.store(watcher, std::memory_order_relaxed);
    watched_ = 1;
}

DispatchId Object::idOf(std::u16string_view name) const {
    const ClassInfo* info = classInfo();
    return info ? info->idOf(name) : unknownMember;
}

Variant Object::invoke(DispatchId member, InvokeKind kind, const Arguments& arguments) {
    const ClassInfo* info = classInfo();
    if (!info)
        raise(RunTimeError::NoSuchMember);
    return info->invoke(*this, member, kind, arguments);
}

} // namespace vlgs
