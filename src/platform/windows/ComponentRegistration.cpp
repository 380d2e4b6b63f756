// SPDX-License-Identifier: MIT
#include "platform/ComponentRegistration.h"

#include "platform/windows/Host.h"

#include <objbase.h>

namespace vlgs {

using namespace windows;

namespace {

void freeText(wchar_t* text) noexcept {
    CoTaskMemFree(text);
}
using TaskText = Owned<wchar_t*, &freeText>;

String toString(const wchar_t* text) {
    return reinterpret_cast<const char16_t*>(text);
}

} // namespace

std::optional<GuidValue> registeredClassId(std::u16string_view progId) {
    CLSID id;
    LPOLESTR text = nullptr;
    if (SUCCEEDED(CLSIDFromProgID(WideText(progId).get(), &id)) && SUCCEEDED(StringFromCLSID(id, &text)))
        return parseGuid(toString(TaskText(text).get()));
    return std::nullopt;
}

std::optional<String> registeredProgId(const GuidValue& classId) {
    CLSID id;
    LPOLESTR text = nullptr;
    const String idText = guidText(classId);
    if (SUCCEEDED(CLSIDFromString(wide(idText.data()), &id)) && SUCCEEDED(ProgIDFromCLSID(id, &text)))
        return toString(TaskText(text).get());
    return std::nullopt;
}

} // namespace vlgs
