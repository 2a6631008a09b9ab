#include "runtime/runtime_error.h"

#include <gtest/gtest.h>

#include <map>
#include <type_traits>

namespace swiftpatch {
namespace {

TEST(RuntimeErrorTest, EachNumberHasItsDescription) {
    const std::map<std::int32_t, std::string> texts{
        {5, "Invalid procedure call or argument"},
        {6, "Overflow"},
        {9, "Subscript out of range"},
        {13, "Type mismatch"},
        {52, "Bad file name or number"},
        {53, "File not found"},
        {55, "File already open"},
        {57, "Device I/O error"},
        {61, "Disk full"},
        {62, "Input past end of file"},
        {70, "Permission denied"},
        {71, "Disk not ready"},
        {75, "Path/File access error"},
        {76, "Path not found"},
        {438, "Object doesn't support this property or method"},
        {35758, "Request timed out"},
        {35764, "Still executing the last request"}};
    for (const auto& [number, text] : texts) {
        EXPECT_EQ(RuntimeError(number).Number(), number);
        EXPECT_EQ(RuntimeError(number).Description(), text);
    }
}

TEST(RuntimeErrorTest, TransferNumbersHaveTextsOfTheirOwn) {
    EXPECT_NE(RuntimeError(35752).Description(), RuntimeError(35754).Description());
    EXPECT_NE(RuntimeError(35754).Description(), RuntimeError(35756).Description());
    EXPECT_NE(RuntimeError(35756).Description(), RuntimeError(35758).Description());
}

TEST(RuntimeErrorTest, OtherNumbersHaveTheGeneralDescription) {
    EXPECT_EQ(RuntimeError(12345).Description(), "Application-defined or object-defined error");
}

TEST(RuntimeErrorTest, DescriptionCanBeGiven) {
    const RuntimeError error(75, "No.");
    EXPECT_EQ(error.Description(), "No.");
    EXPECT_STREQ(error.what(), "No.");
}

TEST(RuntimeErrorTest, SystemsBoxForAnUntrappedError) {
    EXPECT_EQ(UntrappedErrorText(RuntimeError(438)),
              "Run-time error '438':\r\n\r\nObject doesn't support this property or method");
}

TEST(RuntimeErrorTest, EndOfTheRunIsNoErrorThatATrapCouldCatch) {
    EXPECT_FALSE((std::is_base_of_v<std::exception, EndProgram>));
    EXPECT_FALSE((std::is_convertible_v<EndProgram*, RuntimeError*>));
}

}  // namespace
}  // namespace swiftpatch
