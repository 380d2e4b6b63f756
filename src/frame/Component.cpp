// SPDX-License-Identifier: MIT
#include "frame/Component.h"

#include "automation/ClassInfo.h"
#include "base/CaseFold.h"
#include "base/Text.h"
#include "frame/ComponentFacts.h"
#include "frame/Errors.h"
#include "frame/SharedState.h"
#include "platform/Module.h"

namespace vlgs {

namespace {

constexpr std::u16string_view libraryName = u"VlGeneralServices";

} // namespace

String StripTrailingFullStop(std::u16string_view sText) {
    return sText.ends_with(u'.') ? String(sText.substr(0, sText.size() - 1)) : String();
}

String DescribeText(const Variant& vValue) {
    if (isNumeric(vValue))
        return GetMessageCatalogue()->ResourceString(toLong(vValue));
    return StripTrailingFullStop(toText(vValue));
}

String ComponentVersion() {
    return concat(decimal(VLGS_VERSION_MAJOR), u".", decimal(VLGS_VERSION_MINOR), u".",
                  decimal(VLGS_VERSION_REVISION));
}

String ComponentFilename(std::u16string_view baseName) {
    const auto withExtension = [&](std::u16string_view part, std::u16string_view extension) {
        return concat(part.empty() ? String(baseName) : replaceAll(baseName, part, u""), u".", extension);
    };
    if (findIgnoringCase(baseName, u"DLL") != std::u16string_view::npos)
        return withExtension(u"DLL", u"DLL");
    if (findIgnoringCase(baseName, u"EXE") != std::u16string_view::npos)
        return withExtension(u"EXE", u"EXE");
    return withExtension(u"", u"DLL");
}

String ComponentFilename() {
    return ComponentFilename(libraryName);
}

String ComponentFolder() {
    const String folder = moduleFolder();
    return folder.view().ends_with(u'\\') ? folder : concat(folder, u"\\");
}

String messageResourceFile() {
    return concat(ComponentFolder(), u"VlComRes.dll");
}

String Component::ClassName() const {
    return classInfo()->programmaticId();
}

String Component::ClassVersion() const {
    return ComponentVersion();
}

String Component::ClassDescription() const {
    return ClassName();
}

std::int32_t Component::ClassID() const {
    return classInfo()->header().number;
}

String Component::ClassFilename() const {
    return ComponentFilename();
}

String Component::ClassPath() const {
    return ComponentFolder();
}

CountedComponent::CountedComponent() {
    AddInstance();
}

CountedComponent::~CountedComponent() {
    if (isOfThisThread())
        ReleaseInstance(); // the count is the thread's
}

} // namespace vlgs
