#include "platform/FileHold.h"

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
