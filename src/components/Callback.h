#pragma once

#include <cstdint>
#include <exception>

namespace swiftpatch {

class CabFile;

/// What a walk through a cabinet is for.
enum class CabMode : std::int32_t { kCount = 0, kExtract = 1, kDescribe = 2, kXml = 3 };

/// Makes an object the one that CabCallBack works for, as long as the registration lives. There is
/// one at a time.
class CabRegistration {
public:
    CabRegistration(CabFile& object, CabMode mode);
    ~CabRegistration();
    CabRegistration(const CabRegistration&) = delete;
    CabRegistration& operator=(const CabRegistration&) = delete;

    /// True while a walk is under way.
    static bool Exists();

    CabFile& object;
    const CabMode mode;
    /// What a listener of an event raised; to be raised again once the walk has ended.
    std::exception_ptr raised;
};

/// The callback of every walk. Never raises: what a listener raises is kept in the registration
/// and ends the walk. Without a registration, and for notifications that it does not know, it
/// answers 0.
std::uint32_t CabCallBack(void* context, std::uint32_t notification, std::uintptr_t param1,
                          std::uintptr_t param2) noexcept;

}  // namespace swiftpatch
