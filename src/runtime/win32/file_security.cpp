#include "runtime/win32/file_security.h"

#include <vector>

#include "runtime/win32/handle.h"

namespace swiftpatch {
namespace {

constexpr SECURITY_INFORMATION kOwners = OWNER_SECURITY_INFORMATION | GROUP_SECURITY_INFORMATION;

/// A security descriptor; empty where the drive or the system keeps none.
std::vector<BYTE> SecurityOf(const std::string& path, SECURITY_INFORMATION part) {
    DWORD size = 0;
    ::GetFileSecurityA(path.c_str(), part, nullptr, 0, &size);
    std::vector<BYTE> descriptor(size);
    if (size == 0 || !::GetFileSecurityA(path.c_str(), part, descriptor.data(), size, &size)) {
        descriptor.clear();
    }
    return descriptor;
}

std::vector<BYTE> ReadToken(HANDLE token, TOKEN_INFORMATION_CLASS what) {
    DWORD size = 0;
    ::GetTokenInformation(token, what, nullptr, 0, &size);
    std::vector<BYTE> information(size);
    if (size == 0 || !::GetTokenInformation(token, what, information.data(), size, &size)) {
        information.clear();
    }
    return information;
}

/// The user, or whom the system makes the owner of what that user creates: a group for some.
bool IsOurs(PSID owner) {
    HANDLE opened = nullptr;
    if (!::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &opened)) {
        return true;  // A system that knows no owners.
    }
    const UniqueKernelObject token(opened);
    std::vector<BYTE> user = ReadToken(opened, TokenUser);
    std::vector<BYTE> creator = ReadToken(opened, TokenOwner);
    return (!user.empty() &&
            ::EqualSid(owner, reinterpret_cast<TOKEN_USER*>(user.data())->User.Sid)) ||
           (!creator.empty() &&
            ::EqualSid(owner, reinterpret_cast<TOKEN_OWNER*>(creator.data())->Owner));
}

}  // namespace

DWORD TakeOverSecurity(const std::string& from, const std::string& to) {
    std::vector<BYTE> owners = SecurityOf(from, kOwners);
    if (!owners.empty()) {
        ::SetFileSecurityA(to.c_str(), kOwners, owners.data());
    }
    std::vector<BYTE> permissions = SecurityOf(from, DACL_SECURITY_INFORMATION);
    const bool done = permissions.empty() ||
                      ::SetFileSecurityA(to.c_str(), DACL_SECURITY_INFORMATION, permissions.data());
    return done ? ERROR_SUCCESS : ::GetLastError();
}

bool BelongsToAnother(const std::string& path) {
    std::vector<BYTE> security = SecurityOf(path, OWNER_SECURITY_INFORMATION);
    PSID owner = nullptr;
    BOOL byDefault = FALSE;
    return !security.empty() && ::GetSecurityDescriptorOwner(security.data(), &owner, &byDefault) &&
           owner != nullptr && !IsOurs(owner);
}

}  // namespace swiftpatch
