// SPDX-License-Identifier: MIT
// Processes that keep a lock: one that runs a command meanwhile, and one that stays behind.
#pragma once

#include "automation/Object.h"
#include "base/String.h"

#include <functional>
#include <string>
#include <vector>

namespace vlgs::cli {

/// Runs a command with a further variable in its environment and waits for it; its exit status, 128 + the
/// signal that ended it, 127 when it cannot be run. The signals that ask this process to end are passed on to
/// it.
int runCommand(const std::vector<std::string>& words, const char* variable, const std::string& value);

/// A lock, which may be none, and what there is to tell of it.
struct KeptLock {
    Ref<Object> lock;
    String answer;
};

/// Takes a lock in a process of its own, which keeps it until `endKeeper`, and gives back the answer. Without
/// a lock the process ends. Raises what `take` raises there.
String startKeeper(const std::function<KeptLock()>& take);

/// Ends the process that keeps this lock file. Raises 53 when there is no such file, 70 when no process of
/// `startKeeper` has it.
void endKeeper(const String& file);

} // namespace vlgs::cli
