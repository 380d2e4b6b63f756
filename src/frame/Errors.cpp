// SPDX-License-Identifier: MIT
#include "frame/Errors.h"

#include "frame/Component.h"
#include "frame/ComponentFacts.h"
#include "frame/SharedState.h"

#include <exception>
#include <limits>
#include <new>
#include <utility>

namespace vlgs {

namespace {

/// A message code without the base of the object-defined errors.
std::int32_t withoutBase(std::int32_t number) {
    if ((number & objectErrorBase) == 0)
        return number;
    const std::int64_t code = std::int64_t{number} - objectErrorBase;
    if (code > std::numeric_limits<std::int32_t>::max())
        raise(RunTimeError::Overflow);
    return static_cast<std::int32_t>(code);
}

} // namespace

Ref<MessageCatalogue> GetMessageCatalogue() {
    Ref<MessageCatalogue>& held = SharedState::ofThread().catalogue;
    if (held && !held->IsInitialized())
        held = nullptr;
    if (!held) {
        held = make<MessageCatalogue>();
        held->LoadResources(messageResourceFile(), u"VlGeneralServices");
    }
    return held;
}

void RaiseCatalogueError(const String& sSource, std::int32_t& lMessage, const String& sExtra) {
    lMessage = withoutBase(lMessage);
    const String text = GetMessageCatalogue()->ResourceString(lMessage);
    // The sum is never out of range: the code of a positive number is without the base's bits, that of a
    // negative one had the base taken off.
    throw Error(lMessage + objectErrorBase, sSource, sExtra.empty() ? text : concat(text, u"\r\n", sExtra));
}

void raiseMessage(const String& sSource, std::int32_t lMessage, const String& sExtra) {
    RaiseCatalogueError(sSource, lMessage, sExtra);
}

void reraise(const String& sSource) {
    try {
        throw;
    } catch (const Error& error) {
        throw Error(error.number(), sSource, error.description());
    } catch (const std::bad_alloc&) {
        const Error error(RunTimeError::OutOfMemory);
        throw Error(error.number(), sSource, error.description());
    }
}

void SaveError(const Error& oErr) {
    SharedState& state = SharedState::ofThread();
    state.savedSource = oErr.source();
    state.savedDescription = oErr.description();
    state.savedNumber = oErr.number();
}

void SaveError() {
    if (!std::current_exception())
        return;
    try {
        throw;
    } catch (const Error& error) {
        SaveError(error);
    } catch (...) {
        // Not one of the errors that callers know: there is nothing to save.
    }
}

void RaiseSavedError() {
    SharedState& state = SharedState::ofThread();
    if (state.savedNumber == 0)
        return;
    throw Error(std::exchange(state.savedNumber, 0), std::exchange(state.savedSource, {}),
                std::exchange(state.savedDescription, {}));
}

} // namespace vlgs
