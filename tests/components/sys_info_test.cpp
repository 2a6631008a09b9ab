#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <string>

#include "components/sys_info_report.h"
#include "win32/files.h"

namespace swiftpatch::real_system {
namespace {

/// The Wine setting by which a program is told another version of Windows. It is kept for this
/// program alone, and every process reads it when it starts.
constexpr const char* kSetting = "Software\\Wine\\AppDefaults\\component_tests.exe";

/// What a version of Windows reports, in the form of SysInfoReport.
struct Reported {
    const char* setting;
    const char* report;
};

void PrintTo(const Reported& reported, std::ostream* out) { *out << reported.setting; }

class ReportedVersion {
public:
    explicit ReportedVersion(const std::string& version) {
        HKEY key = nullptr;
        RegCreateKeyExA(HKEY_CURRENT_USER, kSetting, 0, nullptr, 0, KEY_WRITE, nullptr, &key,
                        nullptr);
        RegSetValueExA(key, "Version", 0, REG_SZ, reinterpret_cast<const BYTE*>(version.c_str()),
                       static_cast<DWORD>(version.size() + 1));
        RegCloseKey(key);
    }
    ~ReportedVersion() { RegDeleteKeyA(HKEY_CURRENT_USER, kSetting); }
    ReportedVersion(const ReportedVersion&) = delete;
    ReportedVersion& operator=(const ReportedVersion&) = delete;
};

/// What this program prints in a new process.
std::string ReportOfNewProcess(const Workplace& place) {
    const std::string output = place.PathOf("report.txt");
    std::array<char, MAX_PATH> self{};
    GetModuleFileNameA(nullptr, self.data(), MAX_PATH);
    std::string command = "\"" + std::string(self.data()) + "\" --report-version";

    SECURITY_ATTRIBUTES inherit{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    const HANDLE file = CreateFileA(output.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherit,
                                    CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    STARTUPINFOA startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = file;
    PROCESS_INFORMATION process{};
    const BOOL started = CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                        nullptr, &startup, &process);
    EXPECT_TRUE(started);
    WaitForSingleObject(process.hProcess, INFINITE);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    CloseHandle(file);
    return ReadFile(output);
}

class SysInfoUnder : public testing::TestWithParam<Reported> {};

/// The names of the product types 0 to 3.
std::string ProductName(const std::string& number) {
    return std::array{"Unknown", "NT Workstation", "Domain Controller",
                      "NT Server"}[static_cast<std::size_t>(std::stoi(number))];
}

TEST_P(SysInfoUnder, ReportsWhatThatWindowsReports) {
    const Workplace place;
    const ReportedVersion version(GetParam().setting);
    const std::string report = ReportOfNewProcess(place);
    // The product type is compared with the one that the system itself gave to that process: some
    // versions of Wine report "win7" as a server.
    const std::size_t product = report.find("|product ");
    ASSERT_NE(product, std::string::npos) << report;
    EXPECT_EQ(report.substr(0, product), GetParam().report);
    const std::string number = report.substr(report.find_last_of('|') + 1);
    EXPECT_EQ(report.substr(product), "|product " + ProductName(number) + "|" + number);
}

INSTANTIATE_TEST_SUITE_P(
    All, SysInfoUnder,
    testing::Values(Reported{"win95", "Windows 95 v4.0, Build 950|1||0.0|---5--"},
                    Reported{"win98", "Windows 98 v4.10, Build 2222|1|A|0.0|---58-"},
                    Reported{"winme", "Windows Me v4.90, Build 3000|1||0.0|---58M"},
                    Reported{"nt40", "Windows NT v4.0, Build 1381|2|Service Pack 6a|6.0|N-----"},
                    Reported{"win2k", "Windows 2000 v5.0, Build 2195|2|Service Pack 4|4.0|N2----"},
                    Reported{"winxp", "Windows XP v5.1, Build 2600|2|Service Pack 3|3.0|N2X---"},
                    Reported{"win2003", "Windows XP v5.2, Build 3790|2|Service Pack 2|2.0|N2X---"},
                    Reported{"vista", "Windows 2000 v6.0, Build 6002|2|Service Pack 2|2.0|N2----"},
                    Reported{"win7", "Windows XP v6.1, Build 7601|2|Service Pack 1|1.0|N2X---"},
                    // Without a manifest that names it, a program is told no version after 6.2.
                    Reported{"win10", "Windows XP v6.2, Build 9200|2||0.0|N2X---"}),
    [](const auto& test) { return std::string(test.param.setting); });

}  // namespace
}  // namespace swiftpatch::real_system
