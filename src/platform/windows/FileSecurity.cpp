// SPDX-License-Identifier: MIT
#include "platform/windows/FileSecurity.h"

#include <aclapi.h>

namespace vlgs::windows {

namespace {

void freeLocal(void* memory) noexcept {
    LocalFree(memory);
}
using LocalMemory = Owned<void*, &freeLocal>;

} // namespace

struct UserOnly::Parts {
    std::vector<std::byte> user;
    std::vector<std::byte> rules;
    SECURITY_DESCRIPTOR descriptor{};
    SECURITY_ATTRIBUTES attributes{sizeof(SECURITY_ATTRIBUTES), &descriptor, FALSE};
};

UserOnly::UserOnly() : parts_(std::make_unique<Parts>()) {
    HANDLE opened = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened))
        raiseLastError();
    const Handle token(opened);
    DWORD size = 0;
    GetTokenInformation(token.get(), TokenUser, nullptr, 0, &size);
    parts_->user.resize(size);
    if (!GetTokenInformation(token.get(), TokenUser, parts_->user.data(), size, &size))
        raiseLastError();
    PSID id = reinterpret_cast<TOKEN_USER*>(parts_->user.data())->User.Sid;
    parts_->rules.resize(sizeof(ACL) + sizeof(ACCESS_ALLOWED_ACE) + GetLengthSid(id));
    auto* rules = reinterpret_cast<ACL*>(parts_->rules.data());
    if (!InitializeAcl(rules, static_cast<DWORD>(parts_->rules.size()), ACL_REVISION) ||
        !AddAccessAllowedAce(rules, ACL_REVISION, FILE_ALL_ACCESS, id) ||
        !InitializeSecurityDescriptor(&parts_->descriptor, SECURITY_DESCRIPTOR_REVISION) ||
        !SetSecurityDescriptorDacl(&parts_->descriptor, TRUE, rules, FALSE) ||
        !SetSecurityDescriptorControl(&parts_->descriptor, SE_DACL_PROTECTED, SE_DACL_PROTECTED))
        raiseLastError();
}

UserOnly::~UserOnly() = default;

SECURITY_ATTRIBUTES* UserOnly::get() noexcept {
    return &parts_->attributes;
}

void copyAccess(const wchar_t* from, const wchar_t* to) noexcept {
    ACL* rules = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (GetNamedSecurityInfoW(const_cast<wchar_t*>(from), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                              nullptr, &rules, nullptr, &descriptor) != ERROR_SUCCESS)
        return;
    const LocalMemory owner(descriptor);
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    GetSecurityDescriptorControl(descriptor, &control, &revision);
    const SECURITY_INFORMATION inheritance = control & SE_DACL_PROTECTED
                                                 ? PROTECTED_DACL_SECURITY_INFORMATION
                                                 : UNPROTECTED_DACL_SECURITY_INFORMATION;
    if (rules)
        SetNamedSecurityInfoW(const_cast<wchar_t*>(to), SE_FILE_OBJECT,
                              DACL_SECURITY_INFORMATION | inheritance, nullptr, nullptr, rules, nullptr);
}

} // namespace vlgs::windows
