// SPDX-License-Identifier: MIT
#include "frame/MessageCatalogue.h"

#include "base/Error.h"

namespace vlgs {

void MessageCatalogue::LoadResources(const String& sResourceFile, const String& sApplication) {
    texts_.emplace(sResourceFile);
    application_ = sApplication;
}

String MessageCatalogue::ResourceString(std::int32_t lMessage) {
    if (!texts_)
        raise(RunTimeError::ObjectVariableNotSet);
    return texts_->text(lMessage);
}

} // namespace vlgs
