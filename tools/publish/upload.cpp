#include "publish/upload.h"

#include <string_view>

#include "publish/publish_error.h"
#include "publish/system.h"
#include "publish_check/utf8_path.h"

namespace publish {
namespace {

using publish_check::Utf8;

void Replace(std::string& text, std::string_view place, const std::string& word) {
    for (std::size_t at = text.find(place); at != std::string::npos;
         at = text.find(place, at + word.size())) {
        text.replace(at, place.size(), word);
    }
}

}  // namespace

std::string UploadCommand(const std::string& pattern, const std::filesystem::path& file) {
    std::string command = pattern;
    Replace(command, kNamePlace, Quoted(Utf8(file.filename())));
    Replace(command, kFilePlace, Quoted(Utf8(file)));
    return command;
}

void Upload(const std::string& pattern, const std::filesystem::path& file) {
    const int status = RunInShell(UploadCommand(pattern, file));
    if (status != 0) {
        throw PublishError("the command to upload " + Utf8(file.filename()) +
                           " with ended with the status " + std::to_string(status));
    }
}

}  // namespace publish
