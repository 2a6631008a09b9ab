// The package as a maker gets it: unpacked beside a main program, and set up as its page says.
#include <filesystem>
#include <set>
#include <string>

#include "e2e/options.h"
#include "e2e/text.h"
#include "e2e/update_run.h"
#include "e2e/win32.h"
#include "fixtures/animation.h"

namespace swiftpatch::e2e {
namespace {
namespace fs = std::filesystem;

constexpr char kSample[] = "tolvex.dta.sample.txt";

std::set<std::string> FilesBelow(const fs::path& folder) {
    std::set<std::string> names;
    std::error_code missing;
    for (const auto& entry : fs::recursive_directory_iterator(folder, missing)) {
        if (entry.is_regular_file()) {
            names.insert(PathText(entry.path().lexically_relative(folder)));
        }
    }
    return names;
}

class Package : public UpdateRun {
protected:
    /// An application folder with what the package holds, apart from its pages.
    void UsePackage() {
        const fs::path package = TestOptions().package;
        folder_.reset();
        folder_ = std::make_unique<AppFolder>(TestOptions().scratch / "package",
                                              package / "swiftpatch.exe");
        for (const std::string& name : FilesBelow(package)) {
            if (name.find('\\') == std::string::npos) {
                folder_->CopyIn(package / name, name);
            }
        }
    }

    /// Makes the data file of the sample; only the server folder is another one.
    void EditDataFile() const {
        const std::string key = "ServerDownloadPath=";
        std::string text = folder_->Read(kSample);
        const std::size_t start = text.find("\n" + key) + 1 + key.size();
        text.replace(start, text.find("\r\n", start) - start, ServerFolder());
        folder_->Write("tolvex.dta.txt", text);
    }
};

TEST_F(Package, HoldsBothProgramsWithAllThatAMakerNeeds) {
    EXPECT_EQ(
        FilesBelow(TestOptions().package),
        (std::set<std::string>{"LICENSE", "SHA256SUMS", "docs\\deploying.md", "docs\\publishing.md",
                               "filecopy.avi", "swiftpatch-unattended.exe", "swiftpatch.exe",
                               kSample, "tools\\publish-check.exe", "tools\\publish.exe"}))
        << "in " << PathText(TestOptions().package) << ", where scripts/package leaves it";
}

TEST_F(Package, HoldsTheAnimationThatIsDrawnForIt) {
    EXPECT_TRUE(ReadWholeFile(TestOptions().package / "filecopy.avi") == fixtures::MakeAnimation());
}

TEST_F(Package, BesideAMainProgramRunsAWholeUpdate) {
    UsePackage();
    EditDataFile();
    UpdateFromTheServer();
    ExpectFiles({"created started.txt", "created tolvex.3.00.11.00.exe", "changed tolvex.exe",
                 "created tolvex30.exe"});
    EXPECT_EQ(folder_->Read("tolvex.exe"), Build("3.0.12.5"));
}

}  // namespace
}  // namespace swiftpatch::e2e
