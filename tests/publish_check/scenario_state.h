#pragma once

#include <optional>

#include "publish_check/assessment.h"
#include "scenarios/table.h"

namespace publish_check {

/// The server and the machine that a row of the scenario table is about.
struct ScenarioState {
    ServerState server;
    FieldMachine machine;
    /// The keys that the data file names.
    std::optional<std::string> keys;
    /// What is installed, where nothing else tells the machine from any other.
    std::optional<Installed> plain;
};

/// Nothing for a row about something that a publisher has no hand in: its user, its disk, an answer
/// that changes from request to request.
std::optional<ScenarioState> StateOf(const swiftpatch::scenarios::Row& row);

}  // namespace publish_check
