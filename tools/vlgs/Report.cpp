// SPDX-License-Identifier: MIT
#include "Report.h"

#include "HostText.h"
#include "Misuse.h"
#include "base/Error.h"

#include <iostream>
#include <new>

namespace vlgs::cli {

namespace {

int report(const std::string& place, const Error& error) {
    std::cerr << place << "error " << error.number();
    if (!error.source().empty())
        std::cerr << ' ' << oneLine(error.source());
    std::cerr << ": " << oneLine(error.description()) << '\n';
    return 1;
}

} // namespace

std::string oneLine(std::u16string_view text) {
    std::u16string line;
    for (const char16_t c : text) {
        if (c >= u' ' && c != 0x7F)
            line += c;
        else if (!line.ends_with(u' '))
            line += u' ';
    }
    while (line.ends_with(u' '))
        line.pop_back();
    return toHost(line);
}

int reportFailure(const std::string& place) {
    try {
        throw;
    } catch (const Misuse& misuse) {
        std::cerr << (place.empty() ? "vlgs: " : place) << misuse.what() << '\n';
        return 2;
    } catch (const Error& error) {
        return report(place, error);
    } catch (const std::bad_alloc&) {
        return report(place, Error(RunTimeError::OutOfMemory));
    }
}

} // namespace vlgs::cli
