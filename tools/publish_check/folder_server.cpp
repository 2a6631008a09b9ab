#include "publish_check/folder_server.h"

#include <array>
#include <chrono>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "runtime/strings.h"
#include "shared/paths.h"

namespace publish_check {
namespace {

namespace fs = std::filesystem;

std::string TwoDigits(unsigned number) {
    return swiftpatch::ZeroPadded(static_cast<std::int32_t>(number), 2);
}

/// As a server writes it (RFC 9110 section 5.6.7): "Wed, 05 Feb 2020 08:12:00 GMT".
std::string HttpDate(fs::file_time_type time) {
    using namespace std::chrono;
    constexpr std::array kDays{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    constexpr std::array kMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                 "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const auto seconds = floor<std::chrono::seconds>(file_clock::to_sys(time));
    const auto day = floor<days>(seconds);
    const year_month_day date(day);
    const hh_mm_ss clock(seconds - day);
    return std::string(kDays[weekday(day).c_encoding()]) + ", " +
           TwoDigits(static_cast<unsigned>(date.day())) + " " +
           kMonths[static_cast<unsigned>(date.month()) - 1] + " " +
           std::to_string(static_cast<int>(date.year())) + " " +
           TwoDigits(static_cast<unsigned>(clock.hours().count())) + ":" +
           TwoDigits(static_cast<unsigned>(clock.minutes().count())) + ":" +
           TwoDigits(static_cast<unsigned>(clock.seconds().count())) + " GMT";
}

std::string ReadWhole(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    if (!stream) {
        throw std::runtime_error("cannot read " + path.string());
    }
    return bytes;
}

Answer Found(const std::string& headers, const std::string& body) {
    Answer answer;
    answer.answered = true;
    answer.status = 200;
    answer.headers = "HTTP/1.1 200 OK\r\n" + headers;
    answer.body = body;
    return answer;
}

Answer NotFound() {
    Answer answer;
    answer.answered = true;
    answer.status = 404;
    answer.headers = "HTTP/1.1 404 Not Found\r\nContent-Length: 9\r\n";
    return answer;
}

}  // namespace

PublishedFile ReadPublishedFile(const fs::path& folder, const std::string& name) {
    PublishedFile file{NotFound(), NotFound(), {}};
    // By the names that the folder really has: most servers tell upper from lower case.
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        const std::string found = entry.path().filename().string();
        if (!entry.is_regular_file() || !swiftpatch::EqualWithoutCase(found, name)) {
            continue;
        }
        if (found != name) {
            file.nearlyNamed = found;
            continue;
        }
        const std::string bytes = ReadWhole(entry.path());
        const std::string headers = "Content-Length: " + std::to_string(bytes.size()) +
                                    "\r\nLast-Modified: " + HttpDate(entry.last_write_time()) +
                                    "\r\n";
        file.head = Found(headers, {});
        file.get = Found(headers, bytes);
    }
    return file;
}

ServerState ReadFolder(const fs::path& folder, bool withSignature) {
    ServerState state;
    state.address = "published/";
    state.build = ReadPublishedFile(folder, swiftpatch::kStagedBuild);
    state.licence = ReadPublishedFile(folder, swiftpatch::kLicenceText);
    state.animation = ReadPublishedFile(folder, swiftpatch::kBusyAnimation);
    if (withSignature) {
        state.signature = ReadPublishedFile(folder, swiftpatch::kBuildSignature);
    }
    return state;
}

}  // namespace publish_check
