// SPDX-License-Identifier: MIT
#include "automation/EventSource.h"

#include "automation/Variant.h"
#include "base/Error.h"

#include <algorithm>

namespace vlgs {

std::int32_t EventSource::connect(Ref<Object> sink) {
    if (!sink)
        raise(RunTimeError::ObjectVariableNotSet);
    sinks_.emplace_back(last_ + 1, std::move(sink));
    return ++last_;
}

void EventSource::disconnect(std::int32_t connection) {
    const auto found = std::ranges::find(sinks_, connection, &std::pair<std::int32_t, Ref<Object>>::first);
    if (found == sinks_.end())
        raise(RunTimeError::InvalidProcedureCall);
    sinks_.erase(found);
}

void EventSource::raiseEvent(DispatchId event, std::span<Variant> arguments) {
    // A sink may connect and disconnect while it is told.
    const auto sinks = sinks_;
    for (const auto& [connection, sink] : sinks) {
        try {
            sink->invoke(event, InvokeKind::Method, {arguments});
        } catch (const Error& error) {
            if (!error.is(RunTimeError::NoSuchMember))
                throw;
        }
    }
}

} // namespace vlgs
