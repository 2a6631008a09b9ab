// The rows of the scenario table that run on the machine in memory: what takes too long for the
// real program, and, at hardly any cost, many of the others once more.
#include <utility>

#include "unit/scenario_run.h"

namespace swiftpatch {
namespace {

using scenarios::Row;
using scenarios::Table;

class UnreadableTable : public testing::Test {
public:
    explicit UnreadableTable(std::string message) : message_(std::move(message)) {}
    void TestBody() override { ADD_FAILURE() << message_; }

private:
    std::string message_;
};

bool RegisterRows() {
    constexpr char kSuite[] = "Scenario";
    try {
        static const Table kTable(SWIFTPATCH_SCENARIOS);
        for (const Row& row : kTable.Rows()) {
            if (row.onSimulation) {
                testing::RegisterTest(
                    kSuite, row.name.c_str(), nullptr, nullptr, row.line.file.c_str(),
                    row.line.number,
                    [&row]() -> testing::Test* { return new ScenarioRun(kTable, row); });
            }
        }
    } catch (const scenarios::TableError& error) {
        testing::RegisterTest("UnreadableTable", "OfScenarios", nullptr, nullptr, __FILE__,
                              __LINE__, [message = std::string(error.what())]() -> testing::Test* {
                                  return new UnreadableTable(message);
                              });
    }
    return true;
}

const bool kRegistered = RegisterRows();

}  // namespace
}  // namespace swiftpatch
