// SPDX-License-Identifier: MIT
#include "automation/Object.h"

#include "automation/ClassInfo.h"
#include "automation/Variant.h"
#include "base/Error.h"

#include <atomic>
#include <new>
#include <vector>

namespace vlgs {

namespace {

std::atomic<void (*)(const Object*) noexcept> endWatcher = nullptr;

/// Objects that hold one another end inside one another, which takes stack. Those that would end inside
/// `deepest` others wait for their turn instead, so that a chain may have any length.
struct Endings {
    static constexpr int deepest = 64;
    int depth;
    std::vector<const Object*>* waiting; // of the one at `deepest`

    /// False when there is no memory to wait in.
    bool wait(const Object* object) const noexcept {
        try {
            waiting->push_back(object);
            return true;
        } catch (const std::bad_alloc&) {
            return false;
        }
    }
};
constinit thread_local Endings endings{};

/// The number of the calling thread, 1 and up.
std::uint32_t threadNumber() noexcept {
    constinit static std::atomic<std::uint32_t> last = 0;
    constinit thread_local std::uint32_t number = 0;
    if (number == 0)
        number = last.fetch_add(1, std::memory_order_relaxed) % 0x7FFFFFFF + 1;
    return number;
}

} // namespace

Object::Object() noexcept : thread_(threadNumber() & 0x7FFFFFFF), watched_(0) {}

Object::~Object() {
    if (watched_)
        endWatcher.load(std::memory_order_relaxed)(this);
}

void Object::release() const noexcept {
    if (--references_ != 0)
        return;
    Endings& here = endings;
    if (here.depth >= Endings::deepest && here.wait(this))
        return;
    std::vector<const Object*> waiting;
    const bool deepest = ++here.depth == Endings::deepest;
    if (deepest)
        here.waiting = &waiting;
    delete this;
    while (!waiting.empty()) {
        const Object* next = waiting.back();
        waiting.pop_back();
        delete next;
    }
    if (deepest)
        here.waiting = nullptr;
    --here.depth;
}

void Object::watchEnd(void (*watcher)(const Object*) noexcept) const noexcept {
    endWatcher.store(watcher, std::memory_order_relaxed);
    watched_ = 1;
}

bool Object::isOfThisThread() const noexcept {
    return thread_ == threadNumber();
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
