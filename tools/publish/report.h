#pragma once

#include <optional>
#include <string>

#include "publish/order.h"
#include "publish/publish.h"
#include "publish/publish_error.h"
#include "publish/steps.h"

namespace publish {

/// What the server that the folder belongs to gives to updaters.
struct LiveLook {
    std::string problem;  ///< Why it could not be looked at; empty when it could.
    std::optional<publish_check::Assessment> assessment;

    bool Serves() const { return assessment && assessment->Served(); }
};

/// Asks the server of the order whether it serves the build that was published.
LiveLook LookAtServer(const Order& order, const Result& result);

/// All that there is to say in the end.
struct Report {
    Result result;
    std::string problem;  ///< Why nothing was published, where it is not the build's fault.
    Left left = Left::kAsItWas;
    std::optional<LiveLook> live;
};

/// The result in plain sentences.
std::string PlainReport(const Order& order, const Report& report);

/// The result for machines: one object, ended by a line break.
std::string JsonReport(const Order& order, const Steps& steps, const Report& report);

}  // namespace publish
