#include "e2e/options.h"
#include "e2e/update_run.h"
#include "e2e/win32.h"

namespace swiftpatch::e2e {
namespace {

// The libraries that the program loads, but for version.dll, which Wine's own user32 needs before
// any program runs.
constexpr const char* kNames[] = {"comctl32.dll", "setupapi.dll", "uxtheme.dll", "wininet.dll"};

/// Makes Wine take a library beside the updater for its own, as Windows does; of its own accord it
/// prefers what it has itself.
class WindowsOrder {
public:
    WindowsOrder() {
        HKEY key = nullptr;
        RegCreateKeyExW(HKEY_CURRENT_USER, kKey, 0, nullptr, 0, KEY_SET_VALUE, nullptr, &key,
                        nullptr);
        constexpr wchar_t kOrder[] = L"native,builtin";
        for (const char* name : kNames) {
            RegSetValueExW(key, std::filesystem::path(name).stem().c_str(), 0, REG_SZ,
                           reinterpret_cast<const BYTE*>(kOrder), sizeof(kOrder));
        }
        RegCloseKey(key);
    }
    ~WindowsOrder() { RegDeleteKeyW(HKEY_CURRENT_USER, kKey); }
    WindowsOrder(const WindowsOrder&) = delete;
    WindowsOrder& operator=(const WindowsOrder&) = delete;

private:
    static constexpr wchar_t kKey[] = L"Software\\Wine\\AppDefaults\\swiftpatch.exe\\DllOverrides";
};

class PlantedLibrary : public UpdateRun {
protected:
    void Plant() const {
        for (const char* name : kNames) {
            folder_->CopyIn(TestOptions().fixtures / "planted.dll", name);
        }
    }
    std::vector<std::string> Loaded() const {
        std::vector<std::string> loaded;
        for (const char* name : kNames) {
            if (folder_->Has(std::string(name) + ".loaded")) {
                loaded.push_back(name);
            }
        }
        return loaded;
    }

    const WindowsOrder order_;
};

TEST_F(PlantedLibrary, IsNotLoadedInAWholeUpdate) {
    Publish("3.0.12.5");
    Install("3.0.11.0");
    Plant();
    StartToMainWindow();
    AnswerMissingBuildBox();
    AwaitOffer();
    InstallOffered("3.00.11.00");
    CloseQuietly();
    EXPECT_EQ(Loaded(), std::vector<std::string>{});
}

}  // namespace
}  // namespace swiftpatch::e2e
