// SPDX-License-Identifier: MIT
#include "platform/StringResources.h"

#include "base/Error.h"

namespace vlgs {

void StringResources::raiseMissing(std::u16string_view file) {
    constexpr auto number = static_cast<std::int32_t>(RunTimeError::FileNotFound);
    throw Error(number, {}, concat(Error::descriptionOf(number), u": ", file));
}

} // namespace vlgs
