#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace swiftpatch::scenarios {

/// What an answer does after `Answer::endAfter` bytes of its body.
enum class Breach { kNone, kStall, kReset, kClose };

/// What the server does with a connection after a whole answer.
enum class Afterwards { kKeep, kClose, kReset };

/// A signature of a build.
struct Signature {
    std::string key;                    ///< The name of a key pair.
    std::string version;                ///< Of the build; empty for the one on offer.
    std::string file = "tolvex30.exe";  ///< The name that it was signed under.
};

/// How one answer of the server differs from the faultless one for the file that was asked for.
struct Answer {
    std::optional<std::string> statusLine;
    std::optional<std::string> length;  ///< What Content-length says, right or wrong.
    bool withoutLength = false;
    std::optional<std::string> date;  ///< What Last-modified says.
    bool withoutDate = false;
    std::vector<std::string> headers;  ///< Further header lines, verbatim.

    std::optional<std::string> build;    ///< The body is the sample build of this version.
    std::optional<std::size_t> letters;  ///< The body is so many letters.
    std::optional<std::size_t> first;    ///< Only so many bytes of the body, correctly announced.
    std::vector<Signature> signatures;   ///< The body is these.
    std::size_t chunkSize = 0;           ///< The body comes in chunks of this size.

    std::optional<std::string> raw;  ///< The whole answer, verbatim; nothing of the above counts.

    std::string interim;  ///< The status line of the answers that come before this one.
    int interims = 0;
    int delay = 0;        ///< Milliseconds before the first byte.
    int headersLate = 0;  ///< Milliseconds between the status line and the headers.
    int speed = 0;        ///< Bytes a second; 0: as fast as it goes.
    bool silent = false;  ///< Never answers.
    /// Answers before it is asked, as soon as a connection comes after so many requests.
    std::optional<std::size_t> early;
    Breach breach = Breach::kNone;
    std::uint64_t endAfter = 0;
    Afterwards afterwards = Afterwards::kKeep;
};

/// Reads "length 79999 | not dated | ...". Throws TableError without a place.
Answer ParseAnswer(const std::string& text);

}  // namespace swiftpatch::scenarios
