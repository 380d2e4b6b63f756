// SPDX-License-Identifier: MIT
// The object that the thread's objects share to fetch the texts of their messages.
#pragma once

#include "automation/Object.h"
#include "frame/MessageTexts.h"

#include <optional>

namespace vlgs {

class MessageCatalogue final : public Object {
  public:
    /// Whether resources are loaded.
    bool IsInitialized() const noexcept { return texts_.has_value(); }

    /// Loads the texts of a resource file, in place of those loaded before. Raises 53 when there is none.
    void LoadResources(const String& sResourceFile, const String& sApplication);

    /// The text of a message in the user's language, see MessageTexts::text. Raises 326 for a number without
    /// text, 91 while nothing is loaded.
    String ResourceString(std::int32_t lMessage);

    /// The application that loaded the resources.
    const String& application() const noexcept { return application_; }

  private:
    std::optional<MessageTexts> texts_;
    String application_;
};

} // namespace vlgs
