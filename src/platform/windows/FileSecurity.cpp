// SPDX-License-Identifier: MIT
#include "platform/windows/FileSecurity.h"

namespace vlgs::windows {

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

void copyAccess(const wchar_t* from, const wchar_t* to) {
    constexpr SECURITY_INFORMATION rules = DACL_SECURITY_INFORMATION;
    DWORD size = 0;
    GetFileSecurityW(from, rules, nullptr, 0, &size);
    std::vector<std::byte> copied(size);
    if (size == 0 || !GetFileSecurityW(from, rules, copied.data(), size, &size))
        return;
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    // Unless it is asked for, rules that come from the folder would become the file's own.
    if (GetSecurityDescriptorControl(copied.data(), &control, &revision) && control & SE_DACL_AUTO_INHERITED)
        SetSecurityDescriptorControl(copied.data(), SE_DACL_AUTO_INHERIT_REQ, SE_DACL_AUTO_INHERIT_REQ);
    SetFileSecurityW(to, rules, copied.data());
}

} // namespace vlgs::windows
