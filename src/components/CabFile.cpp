#include "components/CabFile.h"

#include <utility>

#include "components/Callback.h"
#include "components/cabinet_names.h"
#include "components/folders.h"
#include "components/system_error_text.h"
#include "components/xml_element.h"
#include "runtime/runtime_error.h"
#include "runtime/strings.h"

namespace swiftpatch {
namespace {

constexpr const char* kSource = "CabFile";

// The component's own errors, numbered from the base of the object errors.
constexpr std::uint32_t kObjectError = 0x80040000U;
constexpr auto kNoCabName = static_cast<std::int32_t>(kObjectError + 1956);
constexpr auto kWalkUnderWay = static_cast<std::int32_t>(kObjectError + 1957);

// The system's numbers for what can go wrong with a single file.
constexpr std::int32_t kPathNotFound = 3;   // ERROR_PATH_NOT_FOUND
constexpr std::int32_t kCannotMake = 82;    // ERROR_CANNOT_MAKE
constexpr std::int32_t kNameTooLong = 111;  // ERROR_BUFFER_OVERFLOW
constexpr std::int32_t kInvalidName = 123;  // ERROR_INVALID_NAME

RuntimeError ComponentError(std::int32_t number) {
    return {number,
            number == kNoCabName ? "You must set the CabName property before taking any action on "
                                   "the CabFile object."
                                 : "Unknown error.",
            kSource};
}

RuntimeError PlatformError(std::int32_t number, const std::string& source) {
    return {number, SystemErrorText(number), source};
}

std::string NameOf(const FileInCabinetInfoA& file) {
    return file.nameInCabinet == nullptr ? "" : file.nameInCabinet;
}

DateTime TimeOf(const FileInCabinetInfoA& file) {
    return FromDosDateTime(file.dosDate, file.dosTime).value_or(MakeDateTime({1980, 1, 1}));
}

CabFileInfo InfoOf(const FileInCabinetInfoA& file) {
    const std::string name = NameOf(file);
    return {name, std::string(BareName(name)), TimeOf(file), file.fileSize,
            std::string(FolderPart(name))};
}

std::string TimeText(DateTime time) {
    const DateParts parts = PartsOf(time);
    return ZeroPadded(parts.year, 4) + "-" + ZeroPadded(parts.month, 2) + "-" +
           ZeroPadded(parts.day, 2) + " " + ZeroPadded(parts.hour, 2) + ":" +
           ZeroPadded(parts.minute, 2) + ":" + ZeroPadded(parts.second, 2);
}

/// Raises an event that may have no listener. A copy is called, because the listener may replace
/// itself.
template <class Event, class... Arguments>
void Raise(Event event, Arguments&&... arguments) {
    if (event) {
        event(std::forward<Arguments>(arguments)...);
    }
}

}  // namespace

void CabFile::Begin() const {
    if (CabName.empty()) {
        throw ComponentError(kNoCabName);
    }
    if (CabRegistration::Exists()) {
        throw ComponentError(kWalkUnderWay);
    }
}

void CabFile::Walk(CabMode mode, const std::string& source) {
    // A listener may set another name for the next walk.
    const std::string cabinet = CabName;
    CabRegistration registration(*this, mode);
    std::uint32_t lastError = 0;
    const bool done = SetupIterateCabinetA(cabinet, CabCallBack, nullptr, lastError);
    if (registration.raised) {
        std::rethrow_exception(registration.raised);
    }
    if (!done) {
        throw PlatformError(static_cast<std::int32_t>(lastError), source);
    }
}

std::int32_t CabFile::FileCount() {
    Begin();
    fileCount_ = 0;
    Walk(CabMode::kCount, kSource);
    return fileCount_;
}

void CabFile::Extract(const std::string& outputPath, const std::string& fileToExtract) {
    Begin();
    if (outputPath.empty()) {
        throw PlatformError(kPathNotFound, kSource);
    }
    outputPath_ = Replace(outputPath, "/", "\\");
    wanted_ = fileToExtract;
    firstFailure_ = 0;
    folderMade_.clear();
    Walk(CabMode::kExtract, kSource);
    if (firstFailure_ != 0) {
        throw PlatformError(firstFailure_, kSource);
    }
}

std::vector<CabFileInfo> CabFile::GetInfo(const std::string& fileToInvestigate) {
    Begin();
    wanted_ = fileToInvestigate;
    found_.clear();
    Walk(CabMode::kDescribe, std::string(kSource) + ".GetInfo");
    return std::exchange(found_, {});
}

std::string CabFile::GetXML() {
    Begin();
    xml_.clear();
    Walk(CabMode::kXml, std::string(kSource) + ".GetXML");
    const std::string content = XmlElement(CabName, "CABFILENAME") + XmlElement(xml_, "FILES");
    return std::string("<?xml version=\"1.0\"?>") + kCrLf + XmlElement(content, "CABFILE");
}

std::uint32_t CabFile::CountFile() {
    ++fileCount_;
    return cabinet_answer::kSkip;
}

std::uint32_t CabFile::LeaveOut(std::int32_t error) {
    if (firstFailure_ == 0) {
        firstFailure_ = error;
    }
    return cabinet_answer::kSkip;
}

bool CabFile::MakeFolderOf(const std::string& target) {
    const std::string folder(FolderPart(target));
    // Most files belong in the same folder as the file before.
    if (folder == folderMade_ || folder.empty()) {
        return true;
    }
    const bool made = MakeFolders(folder);
    folderMade_ = made ? folder : "";
    return made;
}

std::uint32_t CabFile::ExtractFile(FileInCabinetInfoA& file) {
    const std::string name = NameOf(file);
    if (!IsWanted(name, wanted_)) {
        return cabinet_answer::kSkip;
    }
    const std::optional<std::string> target = PathUnder(outputPath_, name);
    if (!target) {
        return LeaveOut(kInvalidName);
    }
    if (target->size() >= sizeof(file.fullTargetName)) {
        return LeaveOut(kNameTooLong);
    }
    bool cancel = false;
    Raise(BeforeExtract, name, file.fileSize, TimeOf(file), *target, cancel);
    if (cancel) {
        return cabinet_answer::kSkip;
    }
    if (!MakeFolderOf(*target)) {
        return LeaveOut(kCannotMake);
    }
    file.fullTargetName[target->copy(file.fullTargetName, target->size())] = '\0';
    return cabinet_answer::kExtract;
}

std::uint32_t CabFile::DescribeFile(const FileInCabinetInfoA& file) {
    const CabFileInfo info = InfoOf(file);
    if (IsWanted(info.fullName, wanted_)) {
        found_.push_back(info);
        Raise(FileFound, info.name, info.dateTime, info.size, info.path);
    }
    return cabinet_answer::kSkip;
}

std::uint32_t CabFile::XmlFile(const FileInCabinetInfoA& file) {
    const CabFileInfo info = InfoOf(file);
    xml_ += XmlElement(XmlElement(info.fullName, "FULLNAME") + XmlElement(info.name, "NAME") +
                           XmlElement(TimeText(info.dateTime), "DATE") +
                           XmlElement(std::to_string(info.size), "SIZE") +
                           XmlElement(info.path, "PATH"),
                       "FILE") +
            kCrLf;
    return cabinet_answer::kSkip;
}

void CabFile::FileExtracted(const std::string& target) { Raise(AfterExtract, target); }

}  // namespace swiftpatch
