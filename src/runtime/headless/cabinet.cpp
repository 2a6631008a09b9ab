#include "runtime/headless/cabinet.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "runtime/cabinet.h"
#include "runtime/headless/world.h"

namespace swiftpatch {
namespace headless {
namespace {

std::vector<Cabinet*>& Cabinets() {
    static std::vector<Cabinet*> cabinets;
    return cabinets;
}

const Cabinet* FindCabinet(const std::string& path) {
    const auto found = std::find_if(Cabinets().begin(), Cabinets().end(),
                                    [&](const Cabinet* each) { return each->Path() == path; });
    return found == Cabinets().end() ? nullptr : *found;
}

constexpr std::uint32_t kFileNotFound = 2;        // ERROR_FILE_NOT_FOUND
constexpr std::uint32_t kOperationAborted = 995;  // ERROR_OPERATION_ABORTED
constexpr std::uintptr_t kNoParameter = 0;

/// One walk: hands each step to the callback and notes its answers.
class Walk {
public:
    Walk(const Cabinet& cabinet, CabinetCallback callback, void* context)
        : cabinet_(cabinet), callback_(callback), context_(context) {}

    /// 0, or the last error of the walk that failed.
    std::uint32_t Run() {
        for (const Cabinet::Step& step : cabinet_.Steps()) {
            const auto* file = std::get_if<CabinetFile>(&step);
            const std::uint32_t error =
                file != nullptr ? OfFile(*file)
                                : Tell(std::get<CabinetNotification>(step).number, kNoParameter);
            if (error != 0) {
                return error;
            }
        }
        return cabinet_.failure;
    }

private:
    std::uint32_t Tell(std::uint32_t notification, std::uintptr_t record) {
        const std::uint32_t answer = callback_(context_, notification, record, kNoParameter);
        TheWorld().trace.Add("Cabinet " + std::to_string(notification) + " -> " +
                             std::to_string(answer));
        return answer;
    }

    std::uint32_t OfFile(const CabinetFile& file) {
        FileInCabinetInfoA info{};
        info.nameInCabinet = file.name.c_str();
        info.fileSize = static_cast<std::uint32_t>(file.bytes.size());
        info.dosDate = file.dosDate;
        info.dosTime = file.dosTime;
        const auto record = reinterpret_cast<std::uintptr_t>(&info);
        const std::uint32_t answer = Tell(cabinet_notification::kFileInCabinet, record);
        if (answer == cabinet_answer::kExtract) {
            return Extracted(file, info.fullTargetName);
        }
        return answer == cabinet_answer::kSkip ? 0 : kOperationAborted;
    }

    std::uint32_t Extracted(const CabinetFile& file, const std::string& target) {
        if (file.extractError == 0) {
            TheWorld().disk.Add(target, {file.bytes, {}});
        }
        const FilePathsA paths{target.c_str(), cabinet_.Path().c_str(), file.extractError, 0};
        return Tell(cabinet_notification::kFileExtracted, reinterpret_cast<std::uintptr_t>(&paths));
    }

    const Cabinet& cabinet_;
    CabinetCallback callback_;
    void* context_;
};

}  // namespace

Cabinet::Cabinet(std::string path) : path_(std::move(path)) { Cabinets().push_back(this); }

Cabinet::~Cabinet() { std::erase(Cabinets(), this); }

}  // namespace headless

bool SetupIterateCabinetA(const std::string& cabinet, CabinetCallback callback, void* context,
                          std::uint32_t& lastError) {
    headless::TheWorld().trace.Add("SetupIterateCabinet " + cabinet);
    const headless::Cabinet* found = headless::FindCabinet(cabinet);
    lastError = found == nullptr ? headless::kFileNotFound
                                 : headless::Walk(*found, callback, context).Run();
    return lastError == 0;
}

std::optional<DateTime> FromDosDateTime(std::uint16_t date, std::uint16_t time) {
    const int month = date >> 5 & 15;
    const int day = date & 31;
    if (month < 1 || month > 12 || day < 1) {
        return std::nullopt;
    }
    const DateTime stored =
        MakeDateTime({1980 + (date >> 9), month, day, time >> 11, time >> 5 & 63, (time & 31) * 2});
    return AddMinutes(stored, headless::TheWorld().utcOffsetMinutes);
}

}  // namespace swiftpatch
