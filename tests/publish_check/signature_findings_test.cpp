#include "publish_check/signature_findings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>

#include "publish_check/assessment.h"
#include "publish_check/outcome.h"
#include "publish_check/report.h"
#include "publish_check/sample_server.h"
#include "support/minisign_signer.h"

namespace publish_check {
namespace {

using swiftpatch::HashOfBuild;
using swiftpatch::MinisignSigner;
using swiftpatch::TrustedCommentFor;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::size_t kLongest = 4096;

class Signature : public testing::Test {
protected:
    Signature() { Put(Signed(maker)); }

    /// The signature of the build that is there.
    std::string Signed(const MinisignSigner& signer,
                       const std::string& name = "tolvex30.exe") const {
        return signer.SignBuild(HashOfBuild(state.build.get.body), TrustedCommentFor(name));
    }
    std::string SignedOtherBuild(const MinisignSigner& signer) const {
        return signer.SignBuild(HashOfBuild("other"), TrustedCommentFor("tolvex30.exe"));
    }
    void Put(const std::string& file) { state.signature = Published(file); }

    /// Each finding about the signature: how bad it is, and its code.
    std::vector<std::string> Look(const std::string& keys) {
        constexpr std::array kNames{"ok ", "note ", "warning ", "fault "};
        std::vector<Finding> list;
        CheckSignature(state, keys, list);
        std::vector<std::string> found;
        text.clear();
        for (const Finding& finding : list) {
            EXPECT_EQ(finding.subject, "tolvex30.exe.minisig");
            found.push_back(kNames.at(static_cast<std::size_t>(finding.severity)) + finding.code);
            text += finding.text + "\n";
        }
        return found;
    }
    std::vector<std::string> Look() { return Look(maker.PublicKeyText()); }

    Assessment Assessed(const Version& installed = {3, 0, 11, 0}) const {
        return Assess(state, {{installed}}, LookTime(), maker.PublicKeyText());
    }
    /// What comes of an updater with the maker's key.
    std::string Outcome() const { return NameOf(Assessed().updaters.at(0).run.outcome); }

    /// As minisign shows it.
    static std::string NumberOf(const MinisignSigner& signer) {
        std::string number;
        for (const std::uint8_t byte : signer.PublicKey().number) {
            std::array<char, 3> digits{};
            std::snprintf(digits.data(), digits.size(), "%02X", unsigned{byte});
            number.insert(0, digits.data());
        }
        return number;
    }

    MinisignSigner maker{"maker"};
    MinisignSigner spare{"spare"};
    MinisignSigner stranger{"stranger"};
    ServerState state = GoodServer();
    std::string text;
};

TEST_F(Signature, GoodSaysWhichKey) {
    EXPECT_THAT(Look(), ElementsAre("ok signed"));
    EXPECT_EQ(text, "The key " + NumberOf(maker) + " has signed this build.\n");
    EXPECT_TRUE(Assessed().Served());
    EXPECT_EQ(Outcome(), "offered");
}

// minisign writes this number into the first line of its minisign.pub.
TEST_F(Signature, NumberIsWrittenAsMinisignDoes) {
    Put(Signed(stranger));
    Look("RWQHW0ELammGy7e8ud9O+Lp24JhN/IbxAm4t+3khN0afeExWIewHKTS+");
    EXPECT_THAT(text, HasSubstr("CB86696A0B415B07"));
}

TEST_F(Signature, MissingIsAFault) {
    state.signature.get.status = 404;
    EXPECT_THAT(Look(), ElementsAre("fault missing"));
    EXPECT_EQ(Outcome(), "signature-missing");
    EXPECT_FALSE(Assessed().Served());
}

TEST_F(Signature, UnderAnyOtherStatusIsMissing) {
    state.signature.get.status = 203;
    EXPECT_THAT(Look(), ElementsAre("fault missing"));
    EXPECT_EQ(Outcome(), "signature-missing");
}

TEST_F(Signature, ThatIsNotAnsweredIsAFault) {
    state.signature.get = {};
    state.signature.get.problem = "timed out";
    EXPECT_THAT(Look(), ElementsAre("fault no-answer"));
    EXPECT_THAT(text, HasSubstr("timed out"));
    EXPECT_FALSE(Assessed().Served());
}

TEST_F(Signature, ThatBreaksOffIsAFaultAndNotAMissingOne) {
    state.signature.get.body.resize(100);
    state.signature.get.problem = "connection reset";
    EXPECT_THAT(Look(), ElementsAre("fault broken-body"));
    EXPECT_EQ(Outcome(), "broken-download");
    EXPECT_THAT(Assessed().updaters.at(0).findings.at(0).text,
                HasSubstr("It does not get all of the signature"));
}

TEST_F(Signature, WithoutAWholeBlockIsAFault) {
    const std::string page = "<html>" + std::string(kLongest - 6, 'x');
    const std::string good = Signed(maker);
    for (const std::string& file : {std::string(), page, good.substr(0, good.size() - 10)}) {
        Put(file);
        EXPECT_THAT(Look(), ElementsAre("fault unreadable"));
        EXPECT_EQ(Outcome(), "signature-missing");
    }
}

TEST_F(Signature, OfMoreThan4096BytesIsAFault) {
    std::string file = Signed(maker);
    file.resize(kLongest, '\n');
    Put(file);
    EXPECT_THAT(Look(), ElementsAre("ok signed"));
    EXPECT_EQ(Outcome(), "offered");
    Put(file + "\n");
    EXPECT_THAT(Look(), ElementsAre("fault unreadable"));
    EXPECT_THAT(text, HasSubstr("4097 bytes"));
    EXPECT_EQ(Outcome(), "signature-missing");
}

TEST_F(Signature, OfAnotherKeyIsAFaultThatNamesBoth) {
    Put(Signed(stranger));
    EXPECT_THAT(Look(), ElementsAre("fault other-key"));
    EXPECT_THAT(text, HasSubstr("(" + NumberOf(stranger) + ") than " + NumberOf(maker)));
    EXPECT_EQ(Outcome(), "signature-missing");
}

TEST_F(Signature, OfAnotherBuildIsAFault) {
    Put(SignedOtherBuild(maker));
    EXPECT_THAT(Look(), ElementsAre("fault other-build"));
    EXPECT_EQ(Outcome(), "signature-invalid");
}

// The rest of the build counts too, not only what an updater reads out of it.
TEST_F(Signature, OfABuildWithAnotherLastByteIsAFault) {
    state.build.get.body.back() ^= 1;
    EXPECT_THAT(Look(), ElementsAre("fault other-build"));
    EXPECT_EQ(Outcome(), "signature-invalid");
}

TEST_F(Signature, WithAForgedCommentIsAFault) {
    std::string file = Signed(maker);
    file.replace(file.find("timestamp:1"), 11, "timestamp:2");
    Put(file);
    EXPECT_THAT(Look(), ElementsAre("fault forged-comment"));
    EXPECT_EQ(Outcome(), "signature-invalid");
}

TEST_F(Signature, OfAnotherFileIsAFault) {
    Put(Signed(maker, "setup.exe"));
    EXPECT_THAT(Look(), ElementsAre("fault other-file"));
    EXPECT_THAT(text, HasSubstr("\"file:tolvex30.exe\""));
    EXPECT_EQ(Outcome(), "signature-invalid");
}

TEST_F(Signature, ByTwoKeysSaysHowMany) {
    Put(Signed(maker) + Signed(spare));
    EXPECT_THAT(Look(maker.PublicKeyText() + " " + spare.PublicKeyText()),
                ElementsAre("ok signed"));
    EXPECT_THAT(text, HasSubstr("signed with 2 of the 2 keys: " + NumberOf(maker) + ", " +
                                NumberOf(spare) + "."));
}

TEST_F(Signature, ThatAKeyLacksIsNoted) {
    const std::string keys = spare.PublicKeyText() + " " + maker.PublicKeyText();
    EXPECT_THAT(Look(keys), ElementsAre("ok signed", "note not-by-key"));
    EXPECT_THAT(text, HasSubstr("signed with 1 of the 2 keys: " + NumberOf(maker) + "."));
    EXPECT_THAT(text, HasSubstr("The key " + NumberOf(spare) + " has not signed this build"));
    // A signature of an earlier build by that key is none of this one.
    Put(Signed(maker) + SignedOtherBuild(spare));
    EXPECT_THAT(Look(keys), ElementsAre("ok signed", "note not-by-key"));
}

// As it is published: behind the new signature stands that of the build before.
TEST_F(Signature, InFrontOfAnOlderOneIsGood) {
    Put(Signed(maker) + SignedOtherBuild(maker));
    EXPECT_THAT(Look(), ElementsAre("ok signed"));
    EXPECT_EQ(Outcome(), "offered");
}

TEST_F(Signature, IsNotComparedWithABuildThatDidNotCome) {
    state.build.get.problem = "connection reset";
    EXPECT_THAT(Look(), ElementsAre("note not-compared"));
    state.build.get = {};
    EXPECT_THAT(Look(), ElementsAre("note not-compared"));
    state.build.get = Ok("");
    state.build.get.status = 404;
    EXPECT_THAT(Look(), ElementsAre("note not-compared"));
}

TEST_F(Signature, WithKeysThatCannotBeReadIsAFault) {
    EXPECT_THAT(Look("RWno"), ElementsAre("fault signing-key-invalid"));
}

std::vector<std::string> Codes(const Assessment& assessment) {
    std::vector<std::string> codes;
    for (const Finding& finding : assessment.updaters.at(0).findings) {
        codes.push_back(finding.code);
    }
    return codes;
}

TEST_F(Signature, OfABuildOlderThanTheInstalledIsWarnedOf) {
    const Assessment assessment = Assessed({3, 0, 12, 6});
    ASSERT_THAT(Codes(assessment), ElementsAre("nothing-newer", "older"));
    EXPECT_EQ(assessment.updaters[0].findings[1].severity, Severity::kWarning);
    EXPECT_TRUE(assessment.Served());
    EXPECT_THAT(Codes(Assessed({3, 0, 12, 5})), ElementsAre("nothing-newer"));
    // Without keys the next run offers it.
    EXPECT_THAT(Codes(Assess(state, {{Version{3, 0, 12, 6}}}, LookTime())),
                ElementsAre("nothing-newer", "downgrade"));
}

// Such a part is a negative number for an updater, so that it may see things the other way round.
TEST_F(Signature, OfABuildOlderThanAPartAbove32767IsNotBothOfferedAndNever) {
    const std::vector<std::string> codes = Codes(Assessed({3, 0, 12, 40000}));
    EXPECT_EQ(std::count(codes.begin(), codes.end(), "older") +
                  std::count(codes.begin(), codes.end(), "downgrade"),
              1);
}

TEST_F(Signature, OfAnOlderBuildThatSeemsNewerSaysWhyTheUpdaterCallsItsOwnTheLatest) {
    const Assessment assessment = Assessed({3, 0, 40000, 1});
    EXPECT_THAT(assessment.updaters[0].findings[0].text, HasSubstr("finds that it is older than"));
}

TEST_F(Signature, AnimationIsNotNeededWhereBuildsAreSigned) {
    state.animation = {};
    EXPECT_TRUE(Assessed().Served());
    EXPECT_FALSE(Assess(state, {}, LookTime()).Served());
}

TEST_F(Signature, IsNothingToAnUpdaterWithoutKeys) {
    state.signature = {};
    const Assessment assessment = Assess(state, {}, LookTime());
    EXPECT_TRUE(assessment.Served());
    EXPECT_THAT(JsonReport(assessment), Not(HasSubstr("minisig")));
}

TEST_F(Signature, FaultsStandInTheReportForMachines) {
    Put(Signed(stranger));
    const std::string json = JsonReport(Assessed());
    EXPECT_THAT(json, HasSubstr(R"({"severity":"fault","subject":"tolvex30.exe.minisig",)"
                                R"("code":"other-key",)"));
    EXPECT_THAT(json, HasSubstr(R"("outcome":"signature-missing","requests":["HEAD tolvex30.exe",)"
                                R"("HEAD tolvex30.exe","HEAD tolvex30.exe",)"
                                R"("GET tolvex30.exe.minisig"])"));
    EXPECT_THAT(json, HasSubstr(R"(It shows \"Signature Missing\".)"));
}

}  // namespace
}  // namespace publish_check
