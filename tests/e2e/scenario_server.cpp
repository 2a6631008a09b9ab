// The server of a scenario, told what the row says.
#include "e2e/scenario_run.h"
#include "fixtures/animation.h"

namespace swiftpatch::e2e {
namespace {

using scenarios::Answer;
using scenarios::Script;

// A name "other:file" stands for a file on the second server.
constexpr char kOnOther[] = "other:";
constexpr char kBuild[] = "tolvex30.exe";
constexpr char kSignature[] = "tolvex30.exe.minisig";
constexpr std::size_t kLicenceSize = 5000;
constexpr int kAnimationFrames = 2;

std::string TargetOf(const std::string& name) {
    const std::string prefix = kOnOther;
    return "/upd/" + (name.rfind(prefix, 0) == 0 ? name.substr(prefix.size()) : name);
}

BodyEnd EndOf(scenarios::Breach breach) {
    switch (breach) {
        case scenarios::Breach::kStall:
            return BodyEnd::kStall;
        case scenarios::Breach::kReset:
            return BodyEnd::kReset;
        case scenarios::Breach::kClose:
            return BodyEnd::kClose;
        default:
            return BodyEnd::kWhole;
    }
}

Afterwards AfterwardsOf(scenarios::Afterwards afterwards) {
    switch (afterwards) {
        case scenarios::Afterwards::kClose:
            return Afterwards::kClose;
        case scenarios::Afterwards::kReset:
            return Afterwards::kReset;
        default:
            return Afterwards::kKeep;
    }
}

// How the answer is sent, whatever is in it.
void ApplyManner(const Answer& answer, Reply& reply) {
    reply.delay = milliseconds(answer.delay);
    reply.headersLate = milliseconds(answer.headersLate);
    reply.bytesPerSecond = static_cast<std::uint64_t>(answer.speed);
    reply.silent = answer.silent;
    reply.early = answer.early;
    reply.interim = answer.interim;
    reply.interims = answer.interims;
    reply.end = EndOf(answer.breach);
    reply.endAfter = answer.endAfter;
    reply.afterwards = AfterwardsOf(answer.afterwards);
}

}  // namespace

HttpServer& ScenarioRun::ServerOf(const std::string& name) {
    return name.rfind(kOnOther, 0) == 0 ? other_ : server_;
}

std::string ScenarioRun::SignaturesOf(const std::vector<scenarios::Signature>& signatures) const {
    return scenarios::SignatureFile(signatures, offered_,
                                    [this](const std::string& version) { return Build(version); });
}

Reply ScenarioRun::UsualReply(const std::string& name) const {
    Reply reply;
    if (name == "LICENSE.TXT") {
        reply.body = Body(std::string(kLicenceSize, 'L'));
        return reply;
    }
    if (name == kSignature) {
        if (!signed_) {
            return NotFound();
        }
        reply.body = Body(SignaturesOf({{"maker", "", kBuild}}));
        return reply;
    }
    if (name == "filecopy.avi") {
        reply.body = Body(fixtures::MakeAnimation(kAnimationFrames));
        return reply;
    }
    return offered_ == "nothing" ? NotFound() : BuildReply(offered_);
}

void ScenarioRun::PrepareServer() {
    for (const char* name : {kBuild, kSignature, "LICENSE.TXT", "filecopy.avi"}) {
        server_.On(TargetOf(name), UsualReply(name));
    }
    std::map<RequestKind, std::vector<const Script*>> inTurns;
    std::vector<RequestKind> order;
    for (const Script& script : row_.scripts) {
        const RequestKind kind(script.method, script.name);
        if (script.turn == 0) {
            ServerOf(script.name).On(script.method, TargetOf(script.name), ReplyOf(script));
        } else {
            inTurns[kind].push_back(&script);
        }
    }
    for (const auto& [kind, scripts] : inTurns) {
        SayInTurns(kind, scripts);
    }
}

void ScenarioRun::SayInTurns(const RequestKind& kind, const std::vector<const Script*>& scripts) {
    std::size_t last = 0;
    for (const Script* script : scripts) {
        last = std::max(last, script->turn);
    }
    std::vector<Reply> replies(last, UsualReply(kind.second));
    for (const Script& script : row_.scripts) {
        if (script.turn == 0 && RequestKind(script.method, script.name) == kind) {
            replies.assign(last, ReplyOf(script));
        }
    }
    for (const Script* script : scripts) {
        replies[script->turn - 1] = ReplyOf(*script);
    }
    for (const Reply& reply : replies) {
        ServerOf(kind.second).Once(kind.first, TargetOf(kind.second), reply);
    }
}

Reply ScenarioRun::ReplyOf(const Script& script) {
    Reply reply = UsualReply(script.name);
    Apply(script.answer, reply);
    return reply;
}

void ScenarioRun::Apply(const Answer& answer, Reply& reply) {
    if (answer.build) {
        reply.body = Body(Build(*answer.build));
    }
    if (!answer.signatures.empty()) {
        reply.body = Body(SignaturesOf(answer.signatures));
    }
    if (answer.letters) {
        reply.body = Body(std::string(*answer.letters, 'x'));
    }
    if (answer.first) {
        reply.body = Body(reply.body.Read(0, *answer.first));
    }
    if (answer.statusLine) {
        reply.statusLine = *answer.statusLine;
    }
    for (const std::string& header : answer.headers) {
        reply.headers.push_back(WithNames(header));
    }
    if (answer.chunkSize != 0) {
        SendInChunks(reply, answer.chunkSize);
    }
    reply.contentLength = answer.length;
    reply.omitContentLength = answer.withoutLength;
    reply.lastModified = answer.withoutDate ? std::nullopt
                         : answer.date      ? answer.date
                                            : reply.lastModified;
    if (answer.raw) {
        reply.raw = WithNames(*answer.raw);
    }
    ApplyManner(answer, reply);
}

}  // namespace swiftpatch::e2e
