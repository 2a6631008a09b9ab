#include "publish_check/live_server.h"

#include <ctime>
#include <stdexcept>

#include "publish_check/field_machine.h"
#include "publish_check/http_client.h"
#include "runtime/internal/http_address.h"
#include "runtime/runtime_error.h"
#include "shared/paths.h"

namespace publish_check {
namespace {

std::string FullUrl(const std::string& url) {
    try {
        return swiftpatch::UrlOf(swiftpatch::ParseHttpAddress(url));
    } catch (const swiftpatch::RuntimeError&) {
        throw std::runtime_error("\"" + url +
                                 "\" is no address that an updater can use: it speaks "
                                 "http and https only");
    }
}

}  // namespace

ServerState ReadLiveServer(const std::string& address, bool withSignature) {
    ServerState state;
    state.address = FolderFromDataFile(address);
    const std::string folder = state.address;
    HttpClient client;
    state.build.head = client.Ask("HEAD", FullUrl(folder + swiftpatch::kStagedBuild));
    state.licence.head = client.Ask("HEAD", FullUrl(folder + swiftpatch::kLicenceText));
    if (!state.build.head.answered && !state.licence.head.answered) {
        throw std::runtime_error("no answer from " + folder + ": " + state.build.head.problem);
    }
    state.buildPastCaches = client.Ask("HEAD", FullUrl(folder + swiftpatch::kStagedBuild) + "?" +
                                                   std::to_string(std::time(nullptr)));
    state.build.head.bodyToHead =
        state.build.head.answered && client.SendsBodyToHead(state.build.head.address);
    state.animation.head = client.Ask("HEAD", FullUrl(folder + swiftpatch::kBusyAnimation));
    state.build.get = client.Ask("GET", FullUrl(folder + swiftpatch::kStagedBuild));
    state.animation.get = client.Ask("GET", FullUrl(folder + swiftpatch::kBusyAnimation));
    if (withSignature) {
        // After the build: while a new one is being published the signatures come first, and stand
        // in front of those of the build before. So they fit whichever of both was fetched.
        state.signature.get = client.Ask("GET", FullUrl(folder + swiftpatch::kBuildSignature));
    }
    return state;
}

}  // namespace publish_check
