#include "signing/signature_file.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/byte_text.h"
#include "support/minisign_signer.h"

namespace swiftpatch {

/// What a verdict is called in a test that fails; found by GoogleTest.
void PrintTo(SignatureVerdict verdict, std::ostream* stream) {
    constexpr std::array<std::string_view, 6> kNames = {"unreadable",       "of another key",
                                                        "of another build", "forged comment",
                                                        "of another file",  "signed"};
    *stream << kNames.at(static_cast<std::size_t>(verdict));
}

namespace {

constexpr std::string_view kFileName = "tolvex30.exe";

/// A maker with a key and its spare, and somebody else.
class SignatureFile : public testing::Test {
protected:
    static std::string SignedBy(const MinisignSigner& signer,
                                std::string_view build = "the build") {
        return signer.SignBuild(HashOfBuild(build), TrustedCommentFor(kFileName));
    }

    static std::string CommentedBy(const MinisignSigner& signer, std::string_view comment) {
        return signer.SignBuild(HashOfBuild("the build"), comment);
    }

    /// The file's four lines, to be changed.
    static std::vector<std::string> Lines(std::string_view file) {
        std::vector<std::string> lines;
        for (std::size_t end = file.find('\n'); end != std::string_view::npos;
             end = file.find('\n')) {
            lines.emplace_back(file.substr(0, end));
            file.remove_prefix(end + 1);
        }
        return lines;
    }

    static std::string Joined(const std::vector<std::string>& lines, std::string_view end = "\n") {
        std::string file;
        for (const std::string& line : lines) {
            file.append(line).append(end);
        }
        return file;
    }

    SignatureVerdict Judge(std::string_view file) const {
        return JudgeSignature(ParseSignatureFile(file), keys, HashOfBuild("the build"), kFileName);
    }

    bool IsOneOfOurs(std::string_view file) const {
        return HasBlockOf(ParseSignatureFile(file), keys);
    }

    const MinisignSigner work{"work"};
    const MinisignSigner spare{"spare"};
    const MinisignSigner stranger{"stranger"};
    std::vector<SigningKey> keys = {work.PublicKey(), spare.PublicKey()};
    const std::string good = SignedBy(work);
};

TEST_F(SignatureFile, OfTheMakerIsSigned) {
    EXPECT_TRUE(IsOneOfOurs(good));
    EXPECT_EQ(Judge(good), SignatureVerdict::kSigned);
    EXPECT_EQ(Judge(SignedBy(spare)), SignatureVerdict::kSigned);
}

TEST_F(SignatureFile, WithoutAWholeBlockIsUnreadable) {
    const std::string page =
        "<html>\n<head>\n<title>404</title>\n</head>\n<body>Not found</body>\n";
    for (const std::string& file : {std::string(), std::string("\n\n\n\n"), page,
                                    std::string(1000, '\0'), std::string("\r\n")}) {
        EXPECT_TRUE(ParseSignatureFile(file).empty()) << file;
        EXPECT_FALSE(IsOneOfOurs(file)) << file;
        EXPECT_EQ(Judge(file), SignatureVerdict::kUnreadable) << file;
    }
}

TEST_F(SignatureFile, CutAnywhereIsNotSigned) {
    // Only the end of the last line is one that a whole file need not have.
    for (std::size_t length = 0; length < good.size() - 1; ++length) {
        EXPECT_EQ(Judge(good.substr(0, length)), SignatureVerdict::kUnreadable) << length;
        EXPECT_FALSE(IsOneOfOurs(good.substr(0, length))) << length;
    }
    EXPECT_EQ(Judge(good.substr(0, good.size() - 1)), SignatureVerdict::kSigned);
}

TEST_F(SignatureFile, CutBehindOneOfOurBlocksIsSigned) {
    const std::string two = good + SignedBy(stranger);
    for (std::size_t length = good.size(); length <= two.size(); length += 7) {
        EXPECT_EQ(Judge(two.substr(0, length)), SignatureVerdict::kSigned) << length;
    }
}

TEST_F(SignatureFile, LinesMayEndWithCrLf) {
    const std::string dos = Joined(Lines(good), "\r\n");
    EXPECT_EQ(Judge(dos), SignatureVerdict::kSigned);
    EXPECT_EQ(Judge(dos + dos), SignatureVerdict::kSigned);
    EXPECT_EQ(Judge(dos.substr(0, dos.size() - 2)), SignatureVerdict::kSigned);
    EXPECT_EQ(Judge(Joined(Lines(good), "\r")), SignatureVerdict::kUnreadable);
    EXPECT_EQ(Judge(Joined(Lines(good), "\r\r\n")), SignatureVerdict::kUnreadable);
}

TEST_F(SignatureFile, LongerThanItMayBeIsUnreadable) {
    EXPECT_EQ(Judge(good + std::string(4096 - good.size(), 'x')), SignatureVerdict::kSigned);
    EXPECT_EQ(Judge(good + std::string(4097 - good.size(), 'x')), SignatureVerdict::kUnreadable);
    EXPECT_EQ(Judge(good + std::string(1 << 20, '\n')), SignatureVerdict::kUnreadable);
}

// The same bytes under the name of the older algorithm, whose signature is that of the whole build.
TEST_F(SignatureFile, InTheOlderFormIsNone) {
    std::vector<std::string> lines = Lines(good);
    ASSERT_TRUE(lines[1].starts_with("RU"));
    lines[1][1] = 'W';
    EXPECT_FALSE(IsOneOfOurs(Joined(lines)));
    EXPECT_EQ(Judge(Joined(lines)), SignatureVerdict::kUnreadable);
}

TEST_F(SignatureFile, WithAnyBitOfItsSecondToFourthLineChangedIsNotSigned) {
    const std::size_t begin = good.find('\n') + 1;
    for (std::size_t at = begin; at < good.size() - 1; ++at) {
        std::string changed = good;
        changed[at] = static_cast<char>(changed[at] ^ (1 << at % 8));
        EXPECT_NE(Judge(changed), SignatureVerdict::kSigned) << at;
    }
}

TEST_F(SignatureFile, MaySayWhatItLikesInTheUntrustedComment) {
    std::vector<std::string> lines = Lines(good);
    lines[0] = "untrusted comment: ";
    EXPECT_EQ(Judge(Joined(lines)), SignatureVerdict::kSigned);
    lines[0] = "untrusted comment: \x01\xFF anything";
    EXPECT_EQ(Judge(Joined(lines)), SignatureVerdict::kSigned);
    for (const char* first :
         {"", "untrusted comment:", "Untrusted comment: x", " untrusted comment: "}) {
        lines[0] = first;
        EXPECT_EQ(Judge(Joined(lines)), SignatureVerdict::kUnreadable) << first;
    }
}

TEST_F(SignatureFile, NeedsTheWordsBeforeTheTrustedComment) {
    std::vector<std::string> lines = Lines(good);
    lines[2][0] = 'T';
    EXPECT_EQ(Judge(Joined(lines)), SignatureVerdict::kUnreadable);
}

TEST_F(SignatureFile, OfAnotherKeyIsKnownBeforeTheDownload) {
    EXPECT_FALSE(IsOneOfOurs(SignedBy(stranger)));
    EXPECT_EQ(Judge(SignedBy(stranger)), SignatureVerdict::kOfAnotherKey);
    keys.clear();
    EXPECT_FALSE(IsOneOfOurs(good));
    EXPECT_EQ(Judge(good), SignatureVerdict::kOfAnotherKey);
}

TEST_F(SignatureFile, OfAnotherKeyUnderOurNumberIsNotSigned) {
    MinisignSigner forger = stranger;
    forger.TakeNumberOf(work);
    EXPECT_TRUE(IsOneOfOurs(SignedBy(forger)));
    EXPECT_EQ(Judge(SignedBy(forger)), SignatureVerdict::kOfAnotherBuild);
}

TEST_F(SignatureFile, OfOurKeyUnderAnotherNumberIsNotSigned) {
    MinisignSigner renamed = work;
    renamed.TakeNumberOf(stranger);
    EXPECT_EQ(Judge(SignedBy(renamed)), SignatureVerdict::kOfAnotherKey);
    renamed.TakeNumberOf(spare);
    EXPECT_EQ(Judge(SignedBy(renamed)), SignatureVerdict::kOfAnotherBuild);
}

TEST_F(SignatureFile, IsTriedWithEveryKeyOfItsNumber) {
    MinisignSigner sameNumber = spare;
    sameNumber.TakeNumberOf(work);
    keys = {work.PublicKey(), sameNumber.PublicKey()};
    EXPECT_EQ(Judge(SignedBy(work)), SignatureVerdict::kSigned);
    EXPECT_EQ(Judge(SignedBy(sameNumber)), SignatureVerdict::kSigned);
}

// Both signatures have to be of one key: a block is not put together from two.
TEST_F(SignatureFile, WithASignatureOfEachKeyIsNotSigned) {
    MinisignSigner sameNumber = spare;
    sameNumber.TakeNumberOf(work);
    keys = {work.PublicKey(), sameNumber.PublicKey()};
    std::vector<std::string> lines = Lines(good);
    const Ed25519Signature first = work.Sign(HashOfBuild("the build"));
    std::string covered(first.begin(), first.end());
    covered += TrustedCommentFor(kFileName);
    lines[3] = EncodeBase64(work.Sign(AsBytes(covered)));
    ASSERT_EQ(Judge(Joined(lines)), SignatureVerdict::kSigned);
    lines[3] = EncodeBase64(sameNumber.Sign(AsBytes(covered)));
    EXPECT_EQ(Judge(Joined(lines)), SignatureVerdict::kForgedComment);
}

TEST_F(SignatureFile, OfAnotherBuildIsNotSigned) {
    EXPECT_TRUE(IsOneOfOurs(SignedBy(work, "an older build")));
    EXPECT_EQ(Judge(SignedBy(work, "an older build")), SignatureVerdict::kOfAnotherBuild);
}

TEST_F(SignatureFile, WithTheCommentOfAnotherSignatureIsForged) {
    std::vector<std::string> lines = Lines(good);
    const std::vector<std::string> other = Lines(SignedBy(work, "another build"));
    lines[3] = other[3];
    EXPECT_TRUE(IsOneOfOurs(Joined(lines)));
    EXPECT_EQ(Judge(Joined(lines)), SignatureVerdict::kForgedComment);
    lines[2] = other[2] + " and more";
    EXPECT_EQ(Judge(Joined(lines)), SignatureVerdict::kForgedComment);
}

TEST_F(SignatureFile, WithACommentThatWasChangedIsForged) {
    std::vector<std::string> lines = Lines(CommentedBy(work, "file:other.exe"));
    lines[2] = "trusted comment: file:tolvex30.exe";
    EXPECT_EQ(Judge(Joined(lines)), SignatureVerdict::kForgedComment);
}

TEST_F(SignatureFile, OfAnotherFileIsNotSigned) {
    for (const char* comment :
         {"", "timestamp:1", "file:other.exe", "xfile:tolvex30.exe", "file:tolvex30.exe2",
          "file:tolvex30.ex", "file: tolvex30.exe", "file:tolvex30.exe ", "file:Tolvex30.exe",
          "File:tolvex30.exe", "note file:tolvex30.exe", "tolvex30.exe",
          "file:", "a file:tolvex30.exe\tb", "file:x\ttolvex30.exe"}) {
        EXPECT_EQ(Judge(CommentedBy(work, comment)), SignatureVerdict::kOfAnotherFile) << comment;
    }
}

TEST_F(SignatureFile, NamesItsFileInAnyField) {
    for (const char* comment :
         {"file:tolvex30.exe", "file:tolvex30.exe\thashed", "timestamp:1\tfile:tolvex30.exe",
          "\tfile:tolvex30.exe\t", "file:other.exe\tfile:tolvex30.exe"}) {
        EXPECT_EQ(Judge(CommentedBy(work, comment)), SignatureVerdict::kSigned) << comment;
    }
}

TEST_F(SignatureFile, OfTwoKeysIsSignedInEachOrder) {
    for (const std::string& file : {good + SignedBy(spare), SignedBy(spare) + good,
                                    SignedBy(stranger) + good, good + SignedBy(stranger)}) {
        for (const MinisignSigner& signer : {work, spare}) {
            keys = {signer.PublicKey()};
            const bool in =
                file.find(signer.SignBuild(HashOfBuild("the build"),
                                           TrustedCommentFor(kFileName))) != std::string::npos;
            EXPECT_EQ(IsOneOfOurs(file), in);
            EXPECT_EQ(Judge(file),
                      in ? SignatureVerdict::kSigned : SignatureVerdict::kOfAnotherKey);
        }
    }
}

TEST_F(SignatureFile, HasTheBestVerdictOfItsBlocks) {
    std::string file = Joined({"no", "block", "at", "all"});
    EXPECT_EQ(Judge(file), SignatureVerdict::kUnreadable);
    std::vector<std::string> forged = Lines(good);
    forged[2] += "x";
    const std::vector<std::pair<std::string, SignatureVerdict>> steps = {
        {SignedBy(stranger), SignatureVerdict::kOfAnotherKey},
        {SignedBy(work, "an older build"), SignatureVerdict::kOfAnotherBuild},
        {Joined(forged), SignatureVerdict::kForgedComment},
        {CommentedBy(work, "file:other.exe"), SignatureVerdict::kOfAnotherFile},
        {good, SignatureVerdict::kSigned},
    };
    std::string before;
    for (const auto& [block, verdict] : steps) {
        before.insert(0, block);
        file += block;
        EXPECT_EQ(Judge(file), verdict);
        EXPECT_EQ(Judge(before), verdict);
    }
}

// Four lines are four lines: what is no block does not move those behind it.
TEST_F(SignatureFile, SkipsFourLinesThatAreNoBlock) {
    EXPECT_EQ(Judge("a\nb\nc\nd\n" + good), SignatureVerdict::kSigned);
    EXPECT_EQ(Judge("\n" + good), SignatureVerdict::kUnreadable);
    EXPECT_EQ(Judge(good + "\n" + good), SignatureVerdict::kSigned);
    EXPECT_EQ(Judge("a\nb\nc\n" + good), SignatureVerdict::kUnreadable);
}

TEST_F(SignatureFile, IsLookedAtUpToTheThirteenthBlock) {
    std::string file;
    for (int block = 0; block < 12; ++block) {
        file += "a\nb\nc\nd\n";
    }
    EXPECT_EQ(Judge(file + good), SignatureVerdict::kSigned);
    EXPECT_TRUE(IsOneOfOurs(file + good));
    EXPECT_EQ(Judge(file + "a\nb\nc\nd\n" + good), SignatureVerdict::kUnreadable);
    EXPECT_FALSE(IsOneOfOurs(file + "a\nb\nc\nd\n" + good));
}

TEST_F(SignatureFile, OfThirteenWholeBlocksFits) {
    std::string file;
    for (int block = 0; block < 12; ++block) {
        file += SignedBy(stranger);
    }
    EXPECT_EQ(Judge(file + good), SignatureVerdict::kSigned);
    EXPECT_EQ(ParseSignatureFile(file + good).size(), 13U);
}

TEST_F(SignatureFile, WithOneLetterTooFewOrTooManyIsUnreadable) {
    for (const std::size_t line : {1U, 3U}) {
        for (const char* more : {" ", "=", "A", "\t"}) {
            std::vector<std::string> lines = Lines(good);
            lines[line] += more;
            EXPECT_EQ(Judge(Joined(lines)), SignatureVerdict::kUnreadable) << line << more;
            lines = Lines(good);
            lines[line].insert(0, more);
            EXPECT_EQ(Judge(Joined(lines)), SignatureVerdict::kUnreadable) << line << more;
        }
    }
}

}  // namespace
}  // namespace swiftpatch
