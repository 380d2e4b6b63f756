#include "locking/CorvaTools.h"

#include "base/CaseFold.h"
#include "frame/Errors.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/Volumes.h"
#include "viewprops/PropertyString.h"

#include <algorithm>

namespace vlgs {

namespace {

constexpr std::u16string_view lockExtension = u"~sd";

/// The folder that a path lies in, with a final backslash; "" for a volume's root.
String folderOf(const String& path) {
    const String full = fullPath(path);
    std::u16string_view folder = full;
    if (folder.ends_with(u'\\'))
        folder.remove_suffix(1);
    return folder.substr(0, folder.rfind(u'\\') + 1);
}

/// Deletes a file that nobody has open; false when it stays.
bool deleteStale(const String& path) {
    try {
        deleteFile(path);
        return true;
    } catch (const Error& error) {
        // Somebody else may have been quicker.
        return error.is(RunTimeError::FileNotFound) || error.is(RunTimeError::PathNotFound);
    }
}

/// What a lock file's name says behind the two characters for the kind of lock.
std::u16string_view documentOf(std::u16string_view name) {
    name.remove_prefix(std::min<std::size_t>(name.size(), 2));
    return name.substr(0, name.find(u'.'));
}

} // namespace

const ClassInfo& CorvaTools::description() {
    return classInfoOf<CorvaTools>();
}

bool CorvaTools::IsDocLocked(const String& sPath, const String& sGUID) const {
    return underSource(u"VlGeneralServices.CorvaTools.IsDocLocked", [&] {
        const String folder = folderOf(sPath);
        if (!folderExists(folder))
            return false;
        bool locked = false;
        for (const auto& [name, attributes] : listFolder(folder, lockExtension))
            if (attributes == FileAttributes::Normal && !deleteStale(concat(folder, name)))
                locked = locked || equalIgnoringCase(documentOf(name), sGUID);
        return locked;
    });
}

std::int32_t CorvaTools::Hash(String& sValue) const noexcept {
    std::int32_t hash = 0;
    try {
        const auto page = CodePage::system();
        for (auto at = sValue.length(); at > 0; --at)
            hash = (hash * 61 + page.codeOf(sValue[at - 1])) & 0x3FFF;
    } catch (...) {
        // A code page that cannot be had leaves what there is.
    }
    return hash;
}

Ref<ViewProperties> CorvaTools::RetrieveViewProperties(const Variant& sProperties) const {
    const String text = underSource(u"VlGeneralServices.CorvaTools.RetrieveViewProperties",
                                    [&] { return toText(sProperties); });
    return make<ViewProperties>(g_BuildPropertyObject(text));
}

} // namespace vlgs
