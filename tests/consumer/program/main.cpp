// A program of somebody else, built against the installed library.
#include "files/Files.h"
#include "ini/INIFile.h"

#include <iostream>

int main(int count, char** arguments) {
    if (count != 2)
        return 2;
    const auto files = vlgs::make<vlgs::Files>();
    const vlgs::Ref<vlgs::INIFile> document = files->RetrieveINIFile(vlgs::String::fromUtf8(arguments[1]));
    std::cout << document->KeyValue(u"PROJECT", u"GUID").toUtf8() << '\n';
    std::cout << files->BuildConnectionStringFromPath(vlgs::String::fromUtf8(arguments[1])).toUtf8() << '\n';
}
