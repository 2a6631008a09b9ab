#include "publish_check/report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "publish_check/sample_server.h"

namespace publish_check {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

Assessment Sample() {
    Assessment assessment;
    assessment.address = "http://tolvex.example/a \"b\"\\\xE4\n/";
    assessment.versions = FileVersions{{9, 8, 7, 6}, kPublishedVersion};
    assessment.findings = {{Severity::kGood, "tolvex30.exe", "date", "Good."},
                           {Severity::kWarning, "filecopy.avi", "other-case", "Odd."}};
    VersionAssessment updater;
    updater.installed = "3.00.11.00";
    updater.served = true;
    updater.run.outcome = Outcome::kOffered;
    updater.run.requests = {"HEAD tolvex30.exe", "GET tolvex30.exe"};
    updater.findings = {{Severity::kNote, "updater", "offered-later", "Later."}};
    assessment.updaters.push_back(updater);
    return assessment;
}

TEST(PlainReport, HasOneLineForEachFinding) {
    EXPECT_THAT(PlainReport(Sample()), HasSubstr("\ntolvex30.exe\n  ok       Good.\n"
                                                 "\nfilecopy.avi\n  WARNING  Odd.\n"
                                                 "\nAn updater beside version 3.00.11.00\n"
                                                 "  note     Later.\n"
                                                 "  asks     HEAD tolvex30.exe, GET tolvex30.exe\n"
                                                 "\nEvery updater would be served.\n"));
}

TEST(JsonReport, IsOneObjectOfAscii) {
    EXPECT_EQ(JsonReport(Sample()),
              R"({"address":"http://tolvex.example/a \"b\"\\\u00e4\u000a/","served":true,)"
              R"("productVersion":"3.00.12.05","fileVersion":"9.08.07.06",)"
              R"("findings":[{"severity":"ok","subject":"tolvex30.exe","code":"date",)"
              R"("text":"Good."},{"severity":"warning","subject":"filecopy.avi",)"
              R"("code":"other-case","text":"Odd."}],)"
              R"("updaters":[{"installed":"3.00.11.00","served":true,"outcome":"offered",)"
              R"("requests":["HEAD tolvex30.exe","GET tolvex30.exe"],)"
              R"("findings":[{"severity":"note","subject":"updater","code":"offered-later",)"
              R"("text":"Later."}]}]})"
              "\n");
}

TEST(JsonReport, OutcomesOfSignedBuildsHaveNames) {
    Assessment assessment = Sample();
    const std::map<Outcome, std::string> names{
        {Outcome::kSignatureMissing, "signature-missing"},
        {Outcome::kSignatureInvalid, "signature-invalid"},
        {Outcome::kSigningKeyInvalid, "signing-key-invalid"}};
    for (const auto& [outcome, name] : names) {
        assessment.updaters[0].run.outcome = outcome;
        EXPECT_THAT(JsonReport(assessment), HasSubstr(R"("outcome":")" + name + '"'));
    }
}

TEST(JsonReport, NoVersionIsNull) {
    Assessment assessment = Sample();
    assessment.versions.reset();
    EXPECT_THAT(JsonReport(assessment), HasSubstr(R"("productVersion":null,"fileVersion":null)"));
}

TEST(Reports, AnyFaultIsEnough) {
    Assessment assessment = Sample();
    EXPECT_TRUE(assessment.Served());
    assessment.updaters[0].findings.push_back({Severity::kFault, "updater", "x", "Bad."});
    EXPECT_FALSE(assessment.Served());
    EXPECT_THAT(PlainReport(assessment), HasSubstr("\nNot every updater would be served.\n"));
}

}  // namespace
}  // namespace publish_check
