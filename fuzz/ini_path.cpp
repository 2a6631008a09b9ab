#include "components/clsIniFile.h"
#include "components/join_path.h"
#include "property.h"

namespace swiftpatch::fuzz {
namespace {

bool IsBackslashes(std::string_view text) {
    return text.find_first_not_of('\\') == std::string_view::npos;
}

/// `path` is `first` and `second` with one backslash in place of all between them.
void CheckJoin(std::string_view first, std::string_view second, std::string_view path) {
    const std::size_t join = IsBackslashes(first) ? 0 : first.find_last_not_of('\\') + 1;
    Always(path.substr(0, join) == first.substr(0, join), "the path starts with the first part");
    Always(path.size() > join && path[join] == '\\', "a backslash joins the parts");
    const std::string_view rest = path.substr(join + 1);
    Always(!rest.starts_with('\\'), "one backslash is enough");
    Always(second.ends_with(rest) && IsBackslashes(second.substr(0, second.size() - rest.size())),
           "the path ends with the second part");
}

}  // namespace
}  // namespace swiftpatch::fuzz

/// The first part of a path on the first line, the second part after it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace swiftpatch;
    const auto fields = fuzz::Fields(fuzz::TextOf(data, size), 2);
    const std::string first(fields[0]);
    const std::string second(fields[1]);
    clsIniFile ini;
    ini.CreateIni(first, second);
    fuzz::CheckJoin(first, second, ini.INIFile());
    fuzz::Always(JoinPath(first + "\\", "\\" + second) == ini.INIFile(),
                 "more backslashes at the join change nothing");
    ini.SetINIFile(first);
    fuzz::Always(ini.INIFile() == first, "a path that is set is kept as it is");
    return 0;
}
