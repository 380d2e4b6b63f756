// SPDX-License-Identifier: MIT
// A process that stores something again and again while it is killed, meets failing system calls or runs out
// of room: what torture/run.py sets to work.
//
//     Worker save FILE SIZE STEPS       saves a document of about so many bytes
//     Worker registry NAME SIZE STEPS   sets a value of a key of that name
//     Worker lock FILE 0 STEPS          takes and releases the exclusive lock of a project
//     Worker add NAME 0 STEPS           adds values to a key, each under a new name
//     Worker watch NAME 0 STEPS         reads them, until there are that many
//
// What is stored tells its own number and is whole or not. The process first looks what is there, then goes
// on counting from that, and tells in a line each, at once:
//
//     = NUMBER    what was found; 0 for nothing, -1 for what is not whole
//     ? NUMBER    is about to be stored
//     + NUMBER    is stored
//     ! ERROR     is not: it was refused, or failed
#include "base/Error.h"
#include "ini/INIFile.h"
#include "ini/INIText.h"
#include "locking/CorvaTools.h"
#include "platform/Files.h"
#include "platform/Registry.h"
#include "platform/Volumes.h"

#include <charconv>
#include <cstdio>
#include <memory>
#include <string>
#include <unistd.h>

namespace vlgs {
namespace {

constexpr long broken = -1;

void tell(char event, long number) {
    char line[32];
    const int length = std::snprintf(line, sizeof line, "%c %ld\n", event, number);
    [[maybe_unused]] const auto written = ::write(STDOUT_FILENO, line, static_cast<std::size_t>(length));
}

/// A text that nobody takes for a part of another: its number, its length and a letter of its own.
std::string numbered(long number, std::size_t size) {
    auto text = std::to_string(number) + ":" + std::to_string(size) + ":";
    return text.append(size, static_cast<char>('a' + number % 26));
}

long numberOf(const std::string& text) {
    long number = 0;
    std::size_t size = 0;
    const auto* end = text.data() + text.size();
    const auto first = std::from_chars(text.data(), end, number);
    if (first.ptr != end)
        std::from_chars(first.ptr + 1, end, size);
    return size <= text.size() && text == numbered(number, size) ? number : broken;
}

/// Something that is stored by number.
class Store {
  public:
    virtual ~Store() = default;
    /// The number of what is there.
    virtual long found() = 0;
    virtual void put(long number) = 0;
};

class SavedDocument final : public Store {
  public:
    SavedDocument(const char* path, std::size_t size)
        : path_(fullPath(String::fromUtf8(path))), size_(size) {}

    long found() override {
        if (!fileExists(path_))
            return 0;
        const auto document = make<INIFile>();
        readFileInto(*document, path_);
        return numberOf(document->KeyValue(u"Torture", u"value").toUtf8());
    }

    void put(long number) override {
        const auto document = make<INIFile>();
        document->PutStream(concat(u"[Torture]\r\nvalue=", String::fromUtf8(numbered(number, size_))));
        document->Save(path_);
    }

  private:
    String path_;
    std::size_t size_;
};

void require(RegistryStatus status) {
    if (status != RegistryStatus::Success)
        throw Error(static_cast<std::int32_t>(status), {}, {});
}

RegistryKey keyOf(const char* name) {
    RegistryKey key;
    require(RegistryKey(RegistryHive::CurrentUser)
                .create(concat(u"Software\\", String::fromUtf8(name)),
                        registryAccess::queryValue | registryAccess::setValue, key));
    return key;
}

class RegistryText final : public Store {
  public:
    RegistryText(const char* name, std::size_t size) : name_(name), size_(size) {}

    long found() override {
        RegistryData data;
        const auto status = keyOf(name_).query(u"value", data);
        if (status != RegistryStatus::NotFound)
            require(status);
        return status == RegistryStatus::Success ? numberOf(data.bytes) : 0;
    }
    void put(long number) override {
        require(keyOf(name_).set(u"value", {registryType::binary, numbered(number, size_)}));
    }

  private:
    const char* name_;
    std::size_t size_;
};

/// Values of which each stays: what is found is how many there are without a gap.
class RegistryRow : public Store {
  public:
    explicit RegistryRow(const char* name) : key_(keyOf(name)) {}

    long found() override {
        RegistryData data;
        while (key_.query(nameOf(count_ + 1), data) == RegistryStatus::Success) {
            if (numberOf(data.bytes) != count_ + 1)
                return broken;
            ++count_;
        }
        return key_.query(nameOf(count_), data) == RegistryStatus::Success || count_ == 0 ? count_ : broken;
    }
    void put(long number) override {
        require(key_.set(nameOf(number), {registryType::binary, numbered(number, 10)}));
    }

  private:
    static String nameOf(long number) { return String::fromUtf8(std::to_string(number)); }
    RegistryKey key_;
    long count_ = 0;
};

/// The same, seen by somebody who only reads: waits for each.
class RegistryWatch final : public Store {
  public:
    explicit RegistryWatch(const char* name) : row_(name) {}
    long found() override { return 0; }
    void put(long number) override {
        while (seen_ != broken && seen_ < number) {
            seen_ = row_.found();
            ::usleep(100);
        }
        if (seen_ == broken)
            tell('=', broken);
    }

  private:
    RegistryRow row_;
    long seen_ = 0;
};

class ProjectLock final : public Store {
  public:
    explicit ProjectLock(const char* path) : path_(fullPath(String::fromUtf8(path))) {}
    long found() override { return 0; }
    void put(long) override {
        const auto lock = tools_->InitiateLock(path_, eUserLock_Exclusive);
        if (!lock || isGrantedTwice())
            tell('=', broken);
    }

  private:
    bool isGrantedTwice() {
        try {
            return bool(tools_->InitiateLock(path_, eUserLock_Exclusive));
        } catch (const Error&) {
            return false;
        }
    }
    Ref<CorvaTools> tools_ = make<CorvaTools>();
    String path_;
};

std::unique_ptr<Store> storeOf(const std::string& kind, const char* name, std::size_t size) {
    if (kind == "save")
        return std::make_unique<SavedDocument>(name, size);
    if (kind == "registry")
        return std::make_unique<RegistryText>(name, size);
    if (kind == "lock")
        return std::make_unique<ProjectLock>(name);
    if (kind == "add")
        return std::make_unique<RegistryRow>(name);
    if (kind == "watch")
        return std::make_unique<RegistryWatch>(name);
    return nullptr;
}

void work(Store& store, long steps) {
    const long first = store.found();
    tell('=', first);
    for (long number = first + 1; number <= first + steps; ++number) {
        tell('?', number);
        store.put(number);
        tell('+', number);
    }
}

} // namespace
} // namespace vlgs

int main(int count, char** words) {
    if (count != 5)
        return 2;
    ::getppid(); // from here on, say those who let system calls fail
    try {
        if (const auto store = vlgs::storeOf(words[1], words[2], std::stoul(words[3])))
            vlgs::work(*store, std::stol(words[4]));
        else
            return 2;
    } catch (const vlgs::Error& error) {
        vlgs::tell('!', error.number());
    } catch (const std::bad_alloc&) {
        vlgs::tell('!', 7);
    }
}
