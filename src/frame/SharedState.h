// SPDX-License-Identifier: MIT
// What the library shares among its objects. It exists once for each thread, since objects live on the thread
// that made them; nothing here is locked.
#pragma once

#include "automation/Object.h"
#include "base/String.h"
#include "frame/MessageCatalogue.h"

#include <cstdint>

namespace vlgs {

struct SharedState {
    /// Live counted objects on this thread. Can fall below 0, see `ReleaseInstance`.
    std::int32_t instances = 0;
    /// Made with the first message that is wanted, dropped with the last counted object.
    Ref<MessageCatalogue> catalogue;
    String savedSource;
    String savedDescription;
    /// 0: no error is saved.
    std::int32_t savedNumber = 0;

    /// The state of the calling thread. Raises 7.
    static SharedState& ofThread();
};

/// Counts an object. Raises 6 when the count is full.
void AddInstance();

/// Counts an object out; when fewer than one are left the catalogue is dropped. A class may count out what it
/// never counted in (`DDE` does), which makes the catalogue go early; the next message makes it again.
void ReleaseInstance() noexcept;

} // namespace vlgs
