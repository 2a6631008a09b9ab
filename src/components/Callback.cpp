#include "components/Callback.h"

#include "components/CabFile.h"
#include "runtime/cabinet.h"

namespace swiftpatch {
namespace {

constexpr std::uint32_t kNothing = 0;
/// The system's ERROR_CANCELLED: any number but 0 ends a walk after an extracted file.
constexpr std::uint32_t kCancelled = 1223;

CabRegistration* registered = nullptr;

/// The record that a notification comes with. The system hands its address over as a number.
template <class Record>
Record& RecordAt(std::uintptr_t address) {
    return *reinterpret_cast<Record*>(address);  // NOLINT(performance-no-int-to-ptr)
}

std::uint32_t FileInCabinet(FileInCabinetInfoA& file) {
    switch (registered->mode) {
        case CabMode::kCount:
            return registered->object.CountFile();
        case CabMode::kExtract:
            return registered->object.ExtractFile(file);
        case CabMode::kDescribe:
            return registered->object.DescribeFile(file);
        case CabMode::kXml:
            return registered->object.XmlFile(file);
        default:
            return kNothing;
    }
}

std::uint32_t FileExtracted(const FilePathsA& paths) {
    const FilePathsA copy = paths;
    if (copy.win32Error == 0) {
        registered->object.FileExtracted(copy.target == nullptr ? "" : copy.target);
    }
    return copy.win32Error;
}

std::uint32_t Answer(std::uint32_t notification, std::uintptr_t param1) {
    switch (notification) {
        case cabinet_notification::kFileInCabinet:
            return FileInCabinet(RecordAt<FileInCabinetInfoA>(param1));
        case cabinet_notification::kFileExtracted:
            return FileExtracted(RecordAt<const FilePathsA>(param1));
        default:
            return kNothing;
    }
}

/// The answer that ends the walk.
std::uint32_t EndOfWalk(std::uint32_t notification) {
    return notification == cabinet_notification::kFileInCabinet ? cabinet_answer::kAbort
                                                                : kCancelled;
}

}  // namespace

CabRegistration::CabRegistration(CabFile& walked, CabMode purpose) : object(walked), mode(purpose) {
    registered = this;
}

CabRegistration::~CabRegistration() { registered = nullptr; }

bool CabRegistration::Exists() { return registered != nullptr; }

std::uint32_t CabCallBack(void* /*context*/, std::uint32_t notification, std::uintptr_t param1,
                          std::uintptr_t /*param2*/) noexcept {
    if (registered == nullptr) {
        return kNothing;
    }
    if (!registered->raised) {
        try {
            return Answer(notification, param1);
        } catch (...) {
            registered->raised = std::current_exception();
        }
    }
    return EndOfWalk(notification);
}

}  // namespace swiftpatch
