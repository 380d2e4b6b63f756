// SPDX-License-Identifier: MIT
// A program of somebody else: typed calls, creation by name, a failure.
#include <VlGeneralServices/Files.h>
#include <VlGeneralServices/VlGeneralServices.h>

#include <iostream>

int main(int count, char** arguments) try {
    if (count != 2)
        return 2;
    const auto path = vlgs::String::fromUtf8(arguments[1]);
    const auto files = vlgs::make<vlgs::Files>();
    const vlgs::Ref<vlgs::INIFile> document = files->RetrieveINIFile(path);
    std::cout << document->KeyValue(u"PROJECT", u"GUID").toUtf8() << '\n';

    const auto named = vlgs::createObject(u"VlGeneralServices.Files");
    std::cout << dynamic_cast<vlgs::Files&>(*named).BuildConnectionStringFromPath(path).toUtf8() << '\n';

    files->CheckVLSFilePath(u"no such project");
    return 1;
} catch (const vlgs::Error& error) {
    std::cout << error.number() - vlgs::objectErrorBase << ' ' << error.what() << '\n';
}
