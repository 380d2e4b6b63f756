// SPDX-License-Identifier: MIT
#include "Terminal.h"

#include "platform/Environment.h"

#include <array>
#include <ostream>

#ifdef _WIN32
#include <windows.h>
#else
#include <sys/ioctl.h>
#include <unistd.h>
#endif

namespace vlgs::cli {

std::size_t terminalWidth() {
#ifdef _WIN32
    CONSOLE_SCREEN_BUFFER_INFO info;
    if (GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &info))
        return static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left + 1);
    return 0;
#else
    if (!isatty(STDOUT_FILENO))
        return 0;
    winsize size{};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col ? size.ws_col : 80;
#endif
}

void writeWrapped(std::ostream& out, std::size_t indent, std::string_view text, std::size_t hanging) {
    // Narrower than this a column of words is harder to read than broken lines.
    constexpr std::size_t narrowest = 20;
    const std::size_t width = terminalWidth();
    while (width > hanging + narrowest && indent + text.size() > width) {
        auto end = text.rfind(' ', width - indent);
        if (end == text.npos || text.find_first_not_of(' ') > end)
            end = text.find(' ', width - indent);
        if (end == text.npos)
            break;
        out << std::string(indent, ' ') << text.substr(0, end) << '\n';
        text.remove_prefix(end + 1);
        indent = hanging;
    }
    out << std::string(indent, ' ') << text << '\n';
}

std::string inColour(Colour colour, std::string_view text) {
    static constexpr std::array<std::string_view, 4> codes{"\x1B[1;34m", "\x1B[36m", "\x1B[31m", "\x1B[32m"};
    static const bool coloured = [] {
        const auto refused = environmentVariable(u"NO_COLOR");
        return terminalWidth() != 0 && (!refused || refused->empty());
    }();
    if (!coloured)
        return std::string(text);
    return std::string(codes[static_cast<std::size_t>(colour)]) + std::string(text) + "\x1B[0m";
}

} // namespace vlgs::cli
