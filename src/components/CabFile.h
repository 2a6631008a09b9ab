#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "runtime/cabinet.h"
#include "runtime/datetime.h"

namespace swiftpatch {

enum class CabMode : std::int32_t;

/// A file of a cabinet as GetInfo describes it.
struct CabFileInfo {
    std::string fullName;    ///< As it stands in the cabinet, folders included.
    std::string name;        ///< The part after the last folder.
    DateTime dateTime;       ///< Local time. The first day of 1980 where the cabinet holds no date.
    std::uint32_t size = 0;  ///< Bytes.
    std::string path;        ///< The folders, without a trailing "\"; empty for none.
};

/// Counts, extracts and describes the files of one cabinet.
///
/// No method pumps, unless a listener of an event does. Errors are raised with the source "CabFile"
/// (from GetInfo "CabFile.GetInfo" and from GetXML "CabFile.GetXML" once the cabinet is being
/// read):
///   - 0x800407A4 when CabName is empty;
///   - 0x800407A5 when called from inside an event of a walk that is under way;
///   - the system's last error after a walk that failed, with its text (SystemErrorText).
/// An error that a listener of an event raises ends the walk and is passed on as it is.
class CabFile {
public:
    std::string CabName;  ///< Full path of the cabinet.

    /// A file that GetInfo found: its bare name and the folders around it.
    std::function<void(const std::string& fileName, DateTime dateTime, std::uint32_t size,
                       const std::string& path)>
        FileFound;

    /// A file is about to be extracted to `outputFile`; setting `cancel` skips it. `fileName` is
    /// the full name in the cabinet.
    std::function<void(const std::string& fileName, std::uint32_t size, DateTime dateTime,
                       const std::string& outputFile, bool& cancel)>
        BeforeExtract;

    /// A file has been extracted.
    std::function<void(const std::string& outputFile)> AfterExtract;

    /// The number of files.
    std::int32_t FileCount();

    /// Extracts all files, or those whose full or bare name equals `fileToExtract` without regard
    /// to case, into the folder `outputPath` and folders below it, which are made where they are
    /// missing. Existing files are replaced. Nothing is ever written outside that folder: a
    /// file with a name that would lead there is left out, and so is one whose name is too long or
    /// whose folder cannot be made; once all others are extracted the first such failure is raised
    /// (123, 111, 82). Raises 3 for an empty `outputPath`.
    void Extract(const std::string& outputPath, const std::string& fileToExtract = {});

    /// Raises FileFound for all files, or for those that `fileToInvestigate` names (as in Extract),
    /// and returns their descriptions.
    std::vector<CabFileInfo> GetInfo(const std::string& fileToInvestigate = {});

    /// A description of the cabinet as XML. Nothing is escaped.
    std::string GetXML();

    // For CabCallBack: what is done with each file of a walk, one function for each mode, and what
    // is done after a file has been extracted.
    std::uint32_t CountFile();
    std::uint32_t ExtractFile(FileInCabinetInfoA& file);
    std::uint32_t DescribeFile(const FileInCabinetInfoA& file);
    std::uint32_t XmlFile(const FileInCabinetInfoA& file);
    void FileExtracted(const std::string& target);

private:
    void Begin() const;
    void Walk(CabMode mode, const std::string& source);
    std::uint32_t LeaveOut(std::int32_t error);
    bool MakeFolderOf(const std::string& target);

    std::int32_t fileCount_ = 0;
    std::string xml_;
    std::vector<CabFileInfo> found_;
    std::string outputPath_;
    std::string wanted_;
    std::string folderMade_;
    std::int32_t firstFailure_ = 0;
};

}  // namespace swiftpatch
