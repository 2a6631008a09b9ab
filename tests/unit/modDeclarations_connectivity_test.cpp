#include "net/modDeclarations.h"
#include "runtime/runtime_error.h"
#include "unit/check_support.h"

namespace swiftpatch {
namespace {

constexpr std::uint32_t kRas = 0x20;
constexpr const char* kHeadBuild = "HEAD http://tolvex.example/files/tolvex30.exe";
constexpr const char* kHeadLicence = "HEAD http://tolvex.example/files/LICENSE.TXT";

class modDeclarationsConnectivity : public ProgramTest {
protected:
    modDeclarationsConnectivity() { Serve("250000", "4000"); }

    /// The lengths that the server gives for the build and for the licence text.
    void Serve(const std::string& build, const std::string& licence) {
        world.network.Answer(kHeadBuild, LengthReply(build));
        world.network.Answer(kHeadLicence, LengthReply(licence));
    }

    bool Check(const std::string& url = kNewBuild) {
        bool connected = false;
        world.Dispatch([&] { connected = check_internet_connectivity(Window(), url); });
        return connected;
    }

    const std::vector<std::string>& Requests() const { return world.network.Requests(); }
};

TEST_F(modDeclarationsConnectivity, OfALargeBuildTakesOneProbe) {
    EXPECT_TRUE(Check());
    EXPECT_EQ(Requests(), std::vector<std::string>{kHeadBuild});
}

TEST_F(modDeclarationsConnectivity, OfABuildOf200000BytesTakesOneProbe) {
    Serve("200000", "0");
    EXPECT_TRUE(Check());
    EXPECT_EQ(Requests(), std::vector<std::string>{kHeadBuild});
}

TEST_F(modDeclarationsConnectivity, OfABuildOf199999BytesIsLeftToTheLicence) {
    Serve("199999", "4000");
    EXPECT_TRUE(Check());
    EXPECT_EQ(Requests(), (std::vector<std::string>{kHeadBuild, kHeadLicence}));
}

TEST_F(modDeclarationsConnectivity, FailsWithASmallBuildAndASmallLicence) {
    Serve("199999", "3999");
    EXPECT_FALSE(Check());
}

TEST_F(modDeclarationsConnectivity, FailsWithoutABuildAndALicenceOf3999Bytes) {
    Serve("", "3999");
    EXPECT_FALSE(Check());
}

TEST_F(modDeclarationsConnectivity, HoldsWithoutABuildAndALicenceOf4000Bytes) {
    Serve("", "4000");
    EXPECT_TRUE(Check());
}

TEST_F(modDeclarationsConnectivity, FailsWithoutAConnectionButStillProbesTheLicence) {
    world.machine.connected = false;
    Serve("250000", "400000");
    EXPECT_FALSE(Check());
    EXPECT_EQ(Requests(), std::vector<std::string>{kHeadLicence});
}

TEST_F(modDeclarationsConnectivity, FailsWithDialUpInstalledButStillProbesTheLicence) {
    world.machine.connectionFlags = 0x12 | kRas;
    Serve("250000", "400000");
    EXPECT_FALSE(Check());
    EXPECT_EQ(Requests(), std::vector<std::string>{kHeadLicence});
}

TEST_F(modDeclarationsConnectivity, DoesNotLookAtTheOtherFlags) {
    world.machine.connectionFlags = ~kRas;
    EXPECT_TRUE(Check());
    world.machine.connectionFlags = 0;
    EXPECT_TRUE(Check());
}

TEST_F(modDeclarationsConnectivity, ProbesAnAddressWithoutTheBuildsNameTwice) {
    const std::string head = "HEAD http://tolvex.example/files/other.exe";
    world.network.Answer(head, LengthReply("4000"));
    EXPECT_TRUE(Check("http://tolvex.example/files/other.exe"));
    EXPECT_EQ(Requests(), (std::vector<std::string>{head, head}));
}

TEST_F(modDeclarationsConnectivity, DoesNotReplaceTheBuildsNameInCapitals) {
    const std::string head = "HEAD http://tolvex.example/files/TOLVEX30.EXE";
    world.network.Answer(head, LengthReply("3999"));
    EXPECT_FALSE(Check("http://tolvex.example/files/TOLVEX30.EXE"));
    EXPECT_EQ(Requests(), (std::vector<std::string>{head, head}));
}

TEST_F(modDeclarationsConnectivity, ReplacesEveryOccurrenceOfTheBuildsName) {
    const std::string build = "http://tolvex.example/tolvex30.exe/tolvex30.exe";
    world.network.Answer("HEAD " + build, LengthReply("100"));
    world.network.Answer("HEAD http://tolvex.example/LICENSE.TXT/LICENSE.TXT", LengthReply("4000"));
    EXPECT_TRUE(Check(build));
    EXPECT_EQ(Requests().back(), "HEAD http://tolvex.example/LICENSE.TXT/LICENSE.TXT");
}

TEST_F(modDeclarationsConnectivity, TakesAFailedProbeForAnUnknownSize) {
    headless::Reply refused;
    refused.failure = error_number::kNoConnection;
    world.network.Answer(kHeadBuild, refused);
    EXPECT_TRUE(Check());
    world.network.Answer(kHeadLicence, refused);
    EXPECT_FALSE(Check());
}

TEST_F(modDeclarationsConnectivity, FailsSilentlyOnAnUnspecifiedFailure) {
    world.machine.connectionError = -2147467259;
    EXPECT_FALSE(Check());
    EXPECT_TRUE(world.trace.Lines().empty());
}

TEST_F(modDeclarationsConnectivity, FailsSilentlyOnAnAuthenticationFailure) {
    world.machine.connectionError = -2147217843;
    EXPECT_FALSE(Check());
    EXPECT_TRUE(world.trace.Lines().empty());
}

TEST_F(modDeclarationsConnectivity, FailsWithABoxOnAnyOtherError) {
    world.machine.connectionError = 5;
    world.user.Answer("check_internet_connectivity");
    EXPECT_FALSE(Check());
    EXPECT_EQ(Joined(world.trace.Lines()),
              Box("Error Number: 5\r\n\r\nInvalid procedure call or argument\r\n\r\n"
                  "Source: [modDeclarations] check_internet_connectivity",
                  64));
}

}  // namespace
}  // namespace swiftpatch
