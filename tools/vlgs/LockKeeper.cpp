// SPDX-License-Identifier: MIT
#include "LockKeeper.h"

#include "HostText.h"
#include "Misuse.h"
#include "base/Error.h"

#ifdef _WIN32

namespace vlgs::cli {

int runCommand(const std::vector<std::string>&, const char*, const std::string&) {
    throw Misuse("lock take works on other hosts only");
}
String startKeeper(const std::function<KeptLock()>&) {
    throw Misuse("lock take works on other hosts only");
}
void endKeeper(const String&) {
    throw Misuse("lock release works on other hosts only");
}

} // namespace vlgs::cli

#else

#include "platform/posix/HostPath.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace vlgs::cli {

namespace {

constexpr int endingSignals[] = {SIGTERM, SIGINT, SIGHUP, SIGQUIT};

sigset_t endingSet() {
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : endingSignals)
        sigaddset(&set, signal);
    return set;
}

// ---- The answer of a keeper: fields that end in NUL, the first one the number of an error or 0 ----

void writeAnswer(int pipe, std::int32_t number, const String& first, const String& second = {}) {
    std::string text = std::to_string(number) + '\0' + toHost(first) + '\0' + toHost(second) + '\0';
    for (std::size_t done = 0; done < text.size();) {
        const auto count = ::write(pipe, text.data() + done, text.size() - done);
        if (count <= 0)
            return;
        done += static_cast<std::size_t>(count);
    }
}

String readAnswer(int pipe) {
    std::string text;
    char buffer[4096];
    for (ssize_t count; (count = ::read(pipe, buffer, sizeof buffer)) > 0;)
        text.append(buffer, static_cast<std::size_t>(count));
    std::istringstream fields(text);
    std::string number, first, second;
    if (!std::getline(fields, number, '\0') || !std::getline(fields, first, '\0'))
        throw Error(RunTimeError::DeviceIoError);
    std::getline(fields, second, '\0');
    if (number != "0")
        throw Error(static_cast<std::int32_t>(std::stol(number)), fromHost(first), fromHost(second));
    return fromHost(first);
}

/// What the keeper does in its own process.
[[noreturn]] void keep(const std::function<KeptLock()>& take, int pipe) {
    ::setsid();
    const auto ending = endingSet();
    ::sigprocmask(SIG_BLOCK, &ending, nullptr);
    KeptLock kept;
    try {
        kept = take();
        writeAnswer(pipe, 0, kept.answer);
    } catch (const Error& error) {
        writeAnswer(pipe, error.number(), error.source(), error.description());
        std::exit(1);
    } catch (...) {
        std::exit(1); // the other end sees that there is no answer
    }
    ::close(pipe);
    // Nobody waits for what it might print, and no folder is kept in use.
    for (const int standard : {0, 1, 2})
        ::close(standard);
    [[maybe_unused]] const int gone = ::chdir("/");
    int signal = 0;
    if (kept.lock)
        ::sigwait(&ending, &signal);
    kept.lock = nullptr;
    std::exit(0);
}

/// Whether a process runs this program and has the file open.
bool isKeeper(const std::string& process, const std::filesystem::path& file) {
    namespace fs = std::filesystem;
    std::error_code ignored;
    const fs::path folder = "/proc/" + process;
    if (!fs::equivalent(folder / "exe", "/proc/self/exe", ignored))
        return false;
    for (const auto& open : fs::directory_iterator(folder / "fd", ignored))
        if (fs::equivalent(open.path(), file, ignored))
            return true;
    return false;
}

/// The processes that hold a file, as the host lists them.
std::vector<std::string> holdersOf(const struct stat& status) {
    std::vector<std::string> holders;
    std::ifstream locks("/proc/locks");
    for (std::string line; std::getline(locks, line);) {
        // "1: FLOCK  ADVISORY  READ 1234 fd:01:5678 0 EOF"
        std::istringstream words(line);
        std::string number, kind, force, access, process, place;
        words >> number >> kind >> force >> access >> process >> place;
        if (kind == "FLOCK" && place.ends_with(":" + std::to_string(status.st_ino)))
            holders.push_back(process);
    }
    return holders;
}

} // namespace

int runCommand(const std::vector<std::string>& words, const char* variable, const std::string& value) {
    const auto ending = endingSet();
    sigset_t before;
    ::sigprocmask(SIG_BLOCK, &ending, &before);
    const pid_t child = ::fork();
    if (child == 0) {
        ::sigprocmask(SIG_SETMASK, &before, nullptr);
        ::setenv(variable, value.c_str(), 1);
        std::vector<char*> arguments;
        arguments.reserve(words.size() + 1);
        for (const auto& word : words)
            arguments.push_back(const_cast<char*>(word.c_str()));
        arguments.push_back(nullptr);
        ::execvp(arguments[0], arguments.data());
        const auto reason = "vlgs: " + words[0] + ": cannot be run\n";
        [[maybe_unused]] const auto written = ::write(2, reason.data(), reason.size());
        ::_exit(127);
    }
    if (child < 0)
        throw Error(RunTimeError::OutOfMemory);
    sigset_t awaited = ending;
    sigaddset(&awaited, SIGCHLD);
    ::sigprocmask(SIG_BLOCK, &awaited, nullptr);
    int status = 0;
    while (::waitpid(child, &status, WNOHANG) != child) {
        siginfo_t info{};
        // The terminal's signals reach the command by themselves.
        if (const int signal = ::sigwaitinfo(&awaited, &info);
            signal > 0 && signal != SIGCHLD && info.si_code <= 0)
            ::kill(child, signal);
    }
    ::sigprocmask(SIG_SETMASK, &before, nullptr);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

String startKeeper(const std::function<KeptLock()>& take) {
    int ends[2];
    if (::pipe(ends) != 0)
        throw Error(RunTimeError::OutOfMemory);
    const pid_t child = ::fork();
    if (child == 0) {
        ::close(ends[0]);
        keep(take, ends[1]);
    }
    ::close(ends[1]);
    if (child < 0) {
        ::close(ends[0]);
        throw Error(RunTimeError::OutOfMemory);
    }
    struct Closer {
        int end;
        ~Closer() { ::close(end); }
    } const closer{ends[0]};
    return readAnswer(ends[0]);
}

void endKeeper(const String& file) {
    const auto host = posix::hostPath(file);
    struct stat status;
    if (::stat(host.c_str(), &status) != 0)
        throw Error(RunTimeError::FileNotFound);
    for (const auto& process : holdersOf(status)) {
        if (!isKeeper(process, host) || ::kill(std::stoi(process), SIGTERM) != 0)
            continue;
        for (int i = 0; i < 500 && ::access(host.c_str(), F_OK) == 0; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        return;
    }
    throw Error(RunTimeError::PermissionDenied);
}

} // namespace vlgs::cli

#endif
