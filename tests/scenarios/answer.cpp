#include "scenarios/answer.h"

#include <functional>

#include "scenarios/words.h"

namespace swiftpatch::scenarios {
namespace {

// Takes what stands behind its words.
using Reader = std::function<void(Answer&, const std::string&)>;

struct Clause {
    const char* words;
    Reader read;
};

int SmallNumberIn(const std::string& text) {
    const std::size_t number = NumberIn(text);
    if (number > 1000000000) {
        throw TableError("too large: " + text);
    }
    return static_cast<int>(number);
}

void AddManyHeaders(Answer& answer, const std::string& count) {
    for (int i = 1; i <= SmallNumberIn(count); ++i) {
        const std::string number = std::to_string(i);
        answer.headers.push_back("X-Header-" + number + ": value of the header " + number);
    }
}

void AddLongHeader(Answer& answer, const std::string& size) {
    const std::string name = "X-Long: ";
    answer.headers.push_back(
        name + std::string(static_cast<std::size_t>(SmallNumberIn(size)) - name.size(), 'x'));
}

// Bytes without any order, the same in every run.
std::string Noise(const std::string& size) {
    std::string bytes(static_cast<std::size_t>(SmallNumberIn(size)), '\0');
    std::uint32_t state = 11;
    for (char& byte : bytes) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<char>(static_cast<unsigned char>(state >> 24U));
    }
    return bytes;
}

void ReadInterim(Answer& answer, const std::string& text) {
    std::string line = text;
    answer.interims = SmallNumberIn(TakeWord(line));
    answer.interim = line;
}

// "maker", "maker of 3.0.11.0", "maker as other.exe"
void ReadSignature(Answer& answer, const std::string& text) {
    Signature signature;
    std::string rest = text;
    signature.key = TakeWord(rest);
    if (TakeBeginning(rest, "of")) {
        signature.version = TakeWord(rest);
    }
    if (TakeBeginning(rest, "as")) {
        signature.file = TakeWord(rest);
    }
    answer.signatures.push_back(signature);
}

Reader Breaches(Breach breach) {
    return [breach](Answer& answer, const std::string& text) {
        answer.breach = breach;
        answer.endAfter = NumberIn(text);
    };
}

Reader Ends(Afterwards afterwards) {
    return [afterwards](Answer& answer, const std::string&) { answer.afterwards = afterwards; };
}

// The platform sees the end of the connection in the place of an answer.
Reader EndsInstead(Afterwards afterwards) {
    return [afterwards](Answer& answer, const std::string&) {
        answer.raw = "";
        answer.afterwards = afterwards;
    };
}

const std::vector<Clause>& Clauses() {
    static const std::vector<Clause> kClauses{
        {"status", [](Answer& a, const std::string& t) { a.statusLine = t; }},
        {"length", [](Answer& a, const std::string& t) { a.length = Unescaped(t); }},
        {"no length", [](Answer& a, const std::string&) { a.withoutLength = true; }},
        {"dated", [](Answer& a, const std::string& t) { a.date = Unescaped(t); }},
        {"not dated", [](Answer& a, const std::string&) { a.withoutDate = true; }},
        {"header", [](Answer& a, const std::string& t) { a.headers.push_back(Unescaped(t)); }},
        {"headers", AddManyHeaders},
        {"long header", AddLongHeader},
        {"build", [](Answer& a, const std::string& t) { a.build = t; }},
        {"letters", [](Answer& a, const std::string& t) { a.letters = NumberIn(t); }},
        {"first", [](Answer& a, const std::string& t) { a.first = NumberIn(t); }},
        {"signed by", ReadSignature},
        {"chunks of", [](Answer& a, const std::string& t) { a.chunkSize = NumberIn(t); }},
        {"raw", [](Answer& a, const std::string& t) { a.raw = Unescaped(t); }},
        {"noise", [](Answer& a, const std::string& t) { a.raw = Noise(t); }},
        {"interim", ReadInterim},
        {"delay", [](Answer& a, const std::string& t) { a.delay = SmallNumberIn(t); }},
        {"late headers", [](Answer& a, const std::string& t) { a.headersLate = SmallNumberIn(t); }},
        {"speed", [](Answer& a, const std::string& t) { a.speed = SmallNumberIn(t); }},
        {"silent", [](Answer& a, const std::string&) { a.silent = true; }},
        {"early after", [](Answer& a, const std::string& t) { a.early = NumberIn(t); }},
        {"stalls after", Breaches(Breach::kStall)},
        {"resets after", Breaches(Breach::kReset)},
        {"closes after", Breaches(Breach::kClose)},
        {"then closes", Ends(Afterwards::kClose)},
        {"then resets", Ends(Afterwards::kReset)},
        {"only closes", EndsInstead(Afterwards::kClose)},
        {"only resets", EndsInstead(Afterwards::kReset)},
    };
    return kClauses;
}

void ReadClause(Answer& answer, const std::string& text) {
    for (const Clause& clause : Clauses()) {
        std::string rest = text;
        if (TakeBeginning(rest, clause.words)) {
            clause.read(answer, rest);
            return;
        }
    }
    throw TableError("unknown kind of answer: " + text);
}

}  // namespace

Answer ParseAnswer(const std::string& text) {
    Answer answer;
    for (const std::string& clause : SplitAt(text, '|')) {
        ReadClause(answer, clause);
    }
    return answer;
}

}  // namespace swiftpatch::scenarios
