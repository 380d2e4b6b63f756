// SPDX-License-Identifier: MIT
#include "platform/FileHold.h"

#include "base/Error.h"
#include "platform/windows/Host.h"

namespace vlgs {

using namespace windows;

struct FileHold::Open {
    Handle file;
};

namespace {

Handle open(std::u16string_view path, DWORD access, DWORD share) {
    Handle file(CreateFileW(WideText(path).get(), access, share, nullptr, OPEN_EXISTING,
                            FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file)
        raiseLastError();
    return file;
}

constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr int attempts = 20;
constexpr DWORD waitTime = 5; // milliseconds

Handle openNew(std::u16string_view path) {
    const WideText name(path);
    Handle file(CreateFileW(name.get(), GENERIC_READ | GENERIC_WRITE | DELETE, FILE_SHARE_READ, nullptr,
                            CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) {
        const DWORD error = GetLastError();
        if (GetFileAttributesW(name.get()) != INVALID_FILE_ATTRIBUTES)
            raise(RunTimeError::FileAlreadyExists);
        raiseHostError(error);
    }
    return file;
}

} // namespace

FileHold::FileHold() noexcept = default;
FileHold::FileHold(FileHold&& other) noexcept = default;
FileHold& FileHold::operator=(FileHold&& other) noexcept = default;
FileHold::~FileHold() = default;
FileHold::FileHold(std::unique_ptr<Open> open) noexcept : open_(std::move(open)) {}

FileHold FileHold::denyingWriters(std::u16string_view path) {
    return FileHold(std::make_unique<Open>(open(path, GENERIC_READ, FILE_SHARE_READ)));
}

FileHold FileHold::exclusive(std::u16string_view path) {
    return FileHold(std::make_unique<Open>(open(path, GENERIC_READ | GENERIC_WRITE, 0)));
}

FileHold FileHold::create(std::u16string_view path, std::string_view bytes) {
    Handle first = openNew(path);
    DWORD written = 0;
    if (!WriteFile(first.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr)) {
        const DWORD error = GetLastError();
        FILE_DISPOSITION_INFO gone{TRUE};
        SetFileInformationByHandle(first.get(), FileDispositionInfo, &gone, sizeof gone);
        raiseHostError(error);
    }
    // One opening after the other gives up what the next one forbids, and at no moment is there none.
    const Handle second = open(path, GENERIC_READ, shareAll);
    first = Handle();
    return FileHold(std::make_unique<Open>(open(path, GENERIC_READ, FILE_SHARE_READ)));
}

bool FileHold::releaseDeleting(std::u16string_view path) noexcept {
    if (!held())
        return false;
    release();
    const WideText name(path);
    for (int i = 0; i < attempts; ++i) {
        const Handle closing(CreateFileW(name.get(), DELETE, shareAll, nullptr, OPEN_EXISTING,
                                         FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
        if (closing || GetLastError() == ERROR_FILE_NOT_FOUND)
            return true;
        if (GetLastError() != ERROR_SHARING_VIOLATION)
            return false;
        Sleep(waitTime); // somebody looks whether the file is held
    }
    return false;
}

bool FileHold::held() const noexcept {
    return open_ != nullptr;
}

void FileHold::release() noexcept {
    open_.reset();
}

void FileHold::abandon() noexcept {
    if (open_)
        open_->file.detach();
    open_.reset();
}

} // namespace vlgs
