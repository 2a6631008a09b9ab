// The rows about what comes over the wire.
#include <algorithm>
#include <cstdint>
#include <optional>
#include <set>

#include "e2e/drive_error.h"
#include "e2e/http_server.h"
#include "e2e/text.h"
#include "e2e/tls_front.h"
#include "measure.h"
#include "support/minisign_signer.h"

namespace swiftpatch::bench {

using namespace e2e;
namespace fs = std::filesystem;

namespace {

constexpr int kLargeMegabytes = 256;

// The server as a process of its own, so that it does not share the time of what is measured.
class FarServer {
public:
    enum class Kind { kPlain, kSecure, kSigned };

    explicit FarServer(const Options& options, Kind kind = Kind::kPlain)
        : addressFile_(options.scratch / "server.txt") {
        fs::remove(addressFile_);
        process_.emplace(options.fixtures.parent_path() / "bench_server.exe",
                         Quoted(addressFile_) + (kind == Kind::kSigned ? L" signed" : L""));
        Await(
            "the server", [this] { return !Address().empty(); }, kLongestStage);
        if (kind == Kind::kSecure) {
            TrustOwnAuthority();
            const std::string address = Address();
            const auto port = std::stoul(address.substr(address.rfind(':') + 1));
            front_.emplace(static_cast<std::uint16_t>(port), "good");
        }
    }

    std::string Folder(int megabytes) const {
        const std::string host = front_ ? "https://" + front_->Host() : "http://" + Address();
        return host + "/" + std::to_string(megabytes) + "/";
    }
    std::wstring Url(int megabytes) const { return Wide(Folder(megabytes)) + L"tolvex30.exe"; }

private:
    std::string Address() const {
        const std::string text = fs::exists(addressFile_) ? ReadWholeFile(addressFile_) : "";
        return text.substr(0, text.find('\n') == std::string::npos ? 0 : text.find('\n'));
    }

    fs::path addressFile_;
    std::optional<Process> process_;
    std::optional<TlsFront> front_;
};

struct Download {
    Cost cost;
    double peakMegabytes = 0;
};

bool HasSize(const fs::path& file, int megabytes) {
    return static_cast<double>(fs::file_size(file)) == megabytes * kMegabyte;
}

void CheckSize(const fs::path& file, int megabytes) {
    if (!HasSize(file, megabytes)) {
        throw DriveError(PathText(file) + " has not the size of the body");
    }
}

// From the moment when the file for the body is made to the one when it holds the whole: what the
// dialogs before and after it cost is no download.
Download ByProduct(const Options& options, const FarServer& server, int megabytes,
                   const std::string& moreSettings = {}) {
    const AppFolder folder(options.scratch / "app", options.updater);
    Furnish(folder, options, server.Folder(megabytes), moreSettings);
    const Updater updater(folder.Updater());
    const fs::path target = folder.File("tolvex30.exe");
    std::optional<WarmMemory> memory(kLargeMegabytes);
    updater.Answer(updater.AwaitMessageBox(kLongestStage), IDOK);
    Await(
        "the answer", [&] { return fs::exists(target); }, kLongestStage);
    const double before = ProcessorSeconds(updater.Running());
    const SteadyTime start = Now();
    memory.reset();
    Await(
        "the whole body", [&] { return HasSize(target, megabytes); }, kLongestTransfer);
    Download done;
    done.cost = {SecondsSince(start), ProcessorSeconds(updater.Running()) - before};
    updater.AwaitMessageBox(kLongestStage);
    done.peakMegabytes = static_cast<double>(updater.Running().PeakWorkingSet()) / kMegabyte;
    return done;
}

Cost ByPlain(const Options& options, const FarServer& server, const std::wstring& mode) {
    const fs::path target = options.scratch / "plain.bin";
    WarmMemory{kLargeMegabytes};
    const Cost cost =
        RunPlain(options, mode + L" " + server.Url(kLargeMegabytes) + L" " + Quoted(target));
    CheckSize(target, kLargeMegabytes);
    fs::remove(target);
    return cost;
}

Reply BuildReply(Body body) {
    Reply reply;
    reply.body = std::move(body);
    reply.lastModified = kServerDate;
    return reply;
}

// How many of the one are missing or others in the other.
double Differences(std::vector<std::string> one, std::vector<std::string> other) {
    const std::size_t longer = std::max(one.size(), other.size());
    one.resize(longer);
    other.resize(longer);
    double count = 0;
    for (std::size_t i = 0; i < longer; ++i) {
        count += one[i] == other[i] ? 0 : 1;
    }
    return count;
}

}  // namespace

void MeasureDownload(const Options& options) {
    const FarServer server(options);
    std::vector<double> wall;
    std::vector<double> processor;
    std::vector<double> smallReads;
    std::vector<double> library;
    for (int run = 1; run <= kRuns; ++run) {
        const Cost plain = ByPlain(options, server, L"read 65536");
        const Cost product = ByProduct(options, server, kLargeMegabytes).cost;
        const Cost small = ByPlain(options, server, L"read 10240");
        const Cost url = ByPlain(options, server, L"fetch");
        PrintRun(
            "download of %d MiB, seconds (processor): 64 KiB loop %.2f (%.2f), swiftpatch "
            "%.2f (%.2f), 10 KiB loop %.2f, URLDownloadToFile %.2f",
            kLargeMegabytes, plain.seconds, plain.processor, product.seconds, product.processor,
            small.seconds, url.seconds);
        wall.push_back(product.seconds / plain.seconds);
        processor.push_back(product.processor / plain.processor);
        smallReads.push_back(product.seconds / small.seconds);
        library.push_back(product.seconds / url.seconds);
    }
    PrintFigure("download-wall", Median(wall));
    PrintFigure("download-processor", Median(processor));
    PrintFigure("download-small-reads", Median(smallReads));
    PrintFigure("download-library", Median(library));
}

void MeasureSecureDownload(const Options& options) {
    const FarServer server(options, FarServer::Kind::kSecure);
    std::vector<double> wall;
    for (int run = 1; run <= kRuns; ++run) {
        const Cost plain = ByPlain(options, server, L"read 65536");
        const Cost product = ByProduct(options, server, kLargeMegabytes).cost;
        PrintRun(
            "the same over https, seconds (processor): 64 KiB loop %.2f (%.2f), swiftpatch "
            "%.2f (%.2f)",
            plain.seconds, plain.processor, product.seconds, product.processor);
        wall.push_back(product.seconds / plain.seconds);
    }
    PrintFigure("download-secure", Median(wall));
}

// Of the updater itself, without and with the check.
void MeasureSignedDownload(const Options& options) {
    const FarServer server(options, FarServer::Kind::kSigned);
    const std::string keys = "SigningKeys=" + MinisignSigner("maker").PublicKeyText() + "\r\n";
    std::vector<double> wall;
    std::vector<double> processor;
    std::vector<double> memory;
    for (int run = 1; run <= kMoreRuns; ++run) {
        const Download without = ByProduct(options, server, kLargeMegabytes);
        const Download with = ByProduct(options, server, kLargeMegabytes, keys);
        PrintRun(
            "download of %d MiB, seconds (processor), largest memory: unsigned %.2f (%.2f) %.2f "
            "MiB, signed %.2f (%.2f) %.2f MiB",
            kLargeMegabytes, without.cost.seconds, without.cost.processor, without.peakMegabytes,
            with.cost.seconds, with.cost.processor, with.peakMegabytes);
        wall.push_back(with.cost.seconds / without.cost.seconds);
        processor.push_back(with.cost.processor / without.cost.processor);
        memory.push_back((with.peakMegabytes - without.peakMegabytes) * 1024);
    }
    PrintFigure("signed-wall", Median(wall));
    PrintFigure("signed-processor", Median(processor));
    PrintFigure("signed-memory", Median(memory));
}

void MeasureMemory(const Options& options) {
    const FarServer server(options);
    const double small = ByProduct(options, server, 1).peakMegabytes;
    const double large = ByProduct(options, server, 1024).peakMegabytes;
    PrintRun("largest memory of swiftpatch, MiB: body of 1 MiB %.2f, body of 1 GiB %.2f", small,
             large);
    PrintFigure("memory", large - small);
}

void MeasureThrottled(const Options& options) {
    constexpr std::uint64_t kSize = 16 * 1024 * 1024;
    HttpServer server;
    Reply slow = BuildReply(Body::Pattern(kSize));
    slow.bytesPerSecond = 2 * 1024 * 1024;
    server.On("/upd/tolvex30.exe", slow);
    const AppFolder folder(options.scratch / "app", options.updater);
    Furnish(folder, options, server.Host() + "/upd/");
    const Updater updater(folder.Updater());
    const Box missing = updater.AwaitMessageBox(kLongestStage);
    const double before = ProcessorSeconds(updater.Running());
    updater.Answer(missing, IDOK);
    Await(
        "the whole body", [&] { return server.BodyBytesSent() >= kSize; }, kLongestTransfer);
    const SteadyTime sent = Now();
    updater.AwaitMessageBox(kLongestStage);
    const SteadyTime done = Now();
    const double processor = ProcessorSeconds(updater.Running()) - before;
    const SteadyTime asked = server.Requests().back().time;
    PrintRun(
        "download of 16 MiB at 2 MiB/s, seconds: sent in %.2f, there after %.2f, processor "
        "%.2f",
        SecondsBetween(asked, sent), SecondsBetween(asked, done), processor);
    PrintFigure("throttled-wall", SecondsBetween(asked, done) / SecondsBetween(asked, sent));
    PrintFigure("throttled-processor", 100 * processor / SecondsBetween(asked, done));
}

void MeasureRequests(const Options& options) {
    HttpServer server;
    server.On("/upd/tolvex30.exe", BuildReply(Body(MainProgram(options, kOffered))));
    const AppFolder folder(options.scratch / "app", options.updater);
    Furnish(folder, options, server.Host() + "/upd/");
    const Updater updater(folder.Updater());
    updater.Answer(updater.AwaitMessageBox(kLongestStage), IDOK);
    updater.AwaitText(kLblStatus, "Click on Install Button.", kLongestStage);
    CloseQuietly(updater);
    updater.AwaitEnd(kLongestStage);

    const std::string build = " /upd/tolvex30.exe";
    const std::vector<std::string> expected{"HEAD" + build, "HEAD" + build, "HEAD" + build,
                                            "GET" + build};
    std::set<int> connections;
    for (const Request& request : server.Requests()) {
        PrintRun("request on connection %d: %s", request.connection, request.Line().c_str());
        connections.insert(request.connection);
    }
    PrintFigure("connections", static_cast<double>(connections.size()));
    PrintFigure("requests", Differences(server.RequestLines(), expected));
}

}  // namespace swiftpatch::bench
