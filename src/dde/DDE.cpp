// SPDX-License-Identifier: MIT
#include "dde/DDE.h"

#include "base/Error.h"
#include "frame/SharedState.h"

namespace vlgs {

namespace {

[[noreturn]] void raiseDisabled(std::u16string_view member) {
    throw Error(
        10000, concat(u"VlGeneralServices.DDE.", member),
        u"The DDE object is not available at this time because it doesn't seem to be working correctly.\r\n"
        u"I'll will re-enable this class as soon as I figure out what's wrong and fix the problem.\r\n");
}

[[noreturn]] void raiseNoLink() {
    throw Error(1001, u"CheckLink", u"No open DDE link.");
}

} // namespace

const ClassInfo& DDE::description() {
    return classInfoOf<DDE>();
}

DDE::CountsOut::~CountsOut() {
    ReleaseInstance();
}

DDE::DDE() {
    raiseDisabled(u"Class_Initialize");
}

String DDE::Default() const {
    return default_.value_or(u"Corvane|System");
}

void DDE::OpenLink(const String&) {
    raiseDisabled(u"OpenLink");
}

void DDE::ExecuteCommand(const String&) {
    raiseNoLink();
}

String DDE::GetData(const String&) {
    raiseNoLink();
}

Variant DDE::SendData(const String&, const String&) {
    raiseNoLink();
}

void DDE::CloseLink() {
    raiseNoLink();
}

} // namespace vlgs
