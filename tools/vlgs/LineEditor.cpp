// SPDX-License-Identifier: MIT
#include "LineEditor.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <utility>

#ifdef _WIN32
#include <io.h>
#else
#include "platform/posix/UserFolders.h"

#include <dlfcn.h>
#include <unistd.h>
#endif

namespace vlgs::cli {

namespace {

std::optional<std::string> readPlainly(const char* prompt) {
    std::cout << prompt << std::flush;
    std::string line;
    if (!std::getline(std::cin, line))
        return std::nullopt;
    return line;
}

} // namespace

#ifdef _WIN32

LineEditor::LineEditor(Completer) {}
LineEditor::~LineEditor() = default;

std::optional<std::string> LineEditor::read(const char* prompt) {
    return readPlainly(prompt);
}

bool isInteractive() {
    return _isatty(_fileno(stdin)) != 0;
}

#else

namespace {

constexpr int keptLines = 1000;

using Generator = char* (*)(const char* word, int state);
using Attempt = char** (*)(const char* word, int start, int end);

// The functions that both libraries have under the same names.
struct Library {
    char* (*readline)(const char* prompt) = nullptr;
    void (*usingHistory)() = nullptr;
    int (*addHistory)(const char* line) = nullptr;
    int (*readHistory)(const char* file) = nullptr;
    int (*writeHistory)(const char* file) = nullptr;
    int (*stifleHistory)(int lines) = nullptr;
    char** (*matches)(const char* word, Generator) = nullptr;
    char** line = nullptr;
    Attempt* attempt = nullptr;
    int* attemptIsAll = nullptr;
    const char** wordBreaks = nullptr;
    int* appended = nullptr;
    int (**nextCharacter)(FILE*) = nullptr;
    int* catchesSignals = nullptr;
    bool isReadline = false;

    template <class Symbol>
    static bool find(void* library, const char* name, Symbol& symbol) {
        void* const found = dlsym(library, name);
        std::memcpy(&symbol, &found, sizeof symbol);
        return found != nullptr;
    }

    bool load(const char* name) {
        void* const library = dlopen(name, RTLD_NOW | RTLD_LOCAL);
        return library && find(library, "readline", readline) &&
               find(library, "using_history", usingHistory) && find(library, "add_history", addHistory) &&
               find(library, "read_history", readHistory) && find(library, "write_history", writeHistory) &&
               find(library, "stifle_history", stifleHistory) &&
               find(library, "rl_completion_matches", matches) && find(library, "rl_line_buffer", line) &&
               find(library, "rl_attempted_completion_function", attempt) &&
               find(library, "rl_attempted_completion_over", attemptIsAll) &&
               find(library, "rl_completer_word_break_characters", wordBreaks) &&
               find(library, "rl_completion_append_character", appended) &&
               find(library, "rl_getc_function", nextCharacter) &&
               find(library, "rl_catch_signals", catchesSignals);
    }
};

// The libraries call back without a pointer of ours; there is one editor in a process.
struct Session {
    Library library;
    Completer completer;
    std::vector<std::string> found;
    std::string historyFile;
};
Session* session = nullptr;

volatile std::sig_atomic_t interrupted = 0;

// The end of the line for an interrupt, over which libreadline's own function would go on.
int nextCharacter(FILE* from) {
    unsigned char c = 0;
    ssize_t count = 0;
    do
        count = ::read(fileno(from), &c, 1);
    while (count < 0 && errno == EINTR && !interrupted);
    return count == 1 ? c : interrupted ? '\n' : EOF;
}

// While it lasts an interrupt ends the line that is being typed, not the process. One that comes before the
// wait for a key has begun would only be seen with the next key: the alarm then ends that wait.
class Interruptible {
  public:
    Interruptible() {
        interrupted = 0;
        struct sigaction action {};
        action.sa_handler = [](int) {
            interrupted = 1;
            alarm(1);
        };
        sigaction(SIGINT, &action, &interrupt_);
        sigaction(SIGALRM, &action, &alarm_);
    }
    ~Interruptible() {
        sigaction(SIGINT, &interrupt_, nullptr);
        alarm(0);
        sigaction(SIGALRM, &alarm_, nullptr);
    }
    Interruptible(const Interruptible&) = delete;
    Interruptible& operator=(const Interruptible&) = delete;

  private:
    using Action = struct sigaction;
    Action interrupt_{};
    Action alarm_{};
};

char* nextMatch(const char*, int state) {
    const auto i = static_cast<std::size_t>(state);
    return i < session->found.size() ? strdup(session->found[i].c_str()) : nullptr;
}

char** complete(const char* word, int start, int) {
    try {
        const std::string_view line(*session->library.line);
        session->found = session->completer(line.substr(0, static_cast<std::size_t>(start)), word);
    } catch (const std::exception&) {
        session->found.clear();
    }
    if (session->found.empty())
        return nullptr; // the library offers files
    *session->library.attemptIsAll = 1;
    // "." may follow a class, a value follows "NAME=".
    const bool goesOn = session->found.front().find('.') == std::string::npos;
    *session->library.appended = goesOn ? 0 : ' ';
    return session->library.matches(word, nextMatch);
}

} // namespace

LineEditor::LineEditor(Completer completer) {
    Library library;
    if (!library.load("libedit.so.2")) {
        library.isReadline = library.load("libreadline.so.8");
        if (!library.isReadline)
            return;
    }
    session = new Session{library, std::move(completer), {}, {}};
    library.usingHistory();
    library.stifleHistory(keptLines);
    *library.attempt = complete;
    *library.wordBreaks = " \t";
    *library.catchesSignals = 0;
    if (library.isReadline)
        *library.nextCharacter = nextCharacter;
    if (const auto home = posix::trustedVariable("HOME"); home && !home->empty()) {
        session->historyFile = *home + "/.vlgs_history";
        library.readHistory(session->historyFile.c_str());
    }
}

LineEditor::~LineEditor() {
    delete std::exchange(session, nullptr);
}

std::optional<std::string> LineEditor::read(const char* prompt) {
    const Interruptible reading;
    if (!session)
        return readPlainly(prompt); // the terminal forgets the line that was interrupted
    char* const line = session->library.readline(prompt);
    if (interrupted) {
        std::free(line);
        std::cout << std::endl;
        return std::string();
    }
    if (!line)
        return std::nullopt;
    std::string text(line);
    std::free(line);
    if (!text.empty() && text.front() != ' ') {
        session->library.addHistory(text.c_str());
        if (!session->historyFile.empty()) // now, as an interrupt ends the process
            session->library.writeHistory(session->historyFile.c_str());
    }
    return text;
}

bool isInteractive() {
    return isatty(STDIN_FILENO) != 0;
}

#endif

} // namespace vlgs::cli
