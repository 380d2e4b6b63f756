// SPDX-License-Identifier: MIT
// The side of an object that raises events: whoever connects an object has its members called, by the numbers
// that the class's outgoing interface gives to its events.
#pragma once

#include "automation/Object.h"

#include <span>
#include <utility>
#include <vector>

namespace vlgs {

class VLGS_API EventSource {
  public:
    /// Calls `sink` at every event from now on, and holds it. Gives the number under which to disconnect it.
    std::int32_t connect(Ref<Object> sink);
    /// Raises 5 for a number under which nothing is connected.
    void disconnect(std::int32_t connection);

  protected:
    ~EventSource() = default;
    /// Tells every sink, in the order of their connection; what one writes to an argument the next one sees.
    /// A sink without such a member is passed over; what another failure raises reaches the caller.
    void raiseEvent(DispatchId event, std::span<Variant> arguments);

  private:
    std::int32_t last_ = 0;
    std::vector<std::pair<std::int32_t, Ref<Object>>> sinks_;
};

} // namespace vlgs
