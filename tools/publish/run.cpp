#include "publish/run.h"

#include <ostream>

#include "publish/command_line.h"
#include "publish/publish.h"
#include "publish/publish_error.h"
#include "publish/report.h"
#include "publish_check/usage_error.h"

namespace publish {
namespace {

constexpr int kPublished = 0;
constexpr int kNotPublished = 1;
constexpr int kUsage = 2;
constexpr int kNotServed = 3;

/// Publishes, or says in the result why not.
Report Carry(const Order& order, Steps& steps) {
    Report report;
    try {
        report.result = Publish(order, steps);
        if (report.result.published && !order.dryRun && !order.address.empty()) {
            report.live = LookAtServer(order, report.result);
        }
    } catch (const PublishError& error) {
        report.problem = error.what();
        report.left = error.WhatIsLeft();
    } catch (const std::exception& error) {
        report.problem = ReasonOf(error);
    }
    return report;
}

}  // namespace

int RunPublish(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& errors) {
    try {
        const Order order = ReadCommandLine(arguments);
        if (order.help) {
            out << HelpText();
            return kPublished;
        }
        Steps steps(order.json ? nullptr : &out);
        const Report report = Carry(order, steps);
        out << (order.json ? JsonReport(order, steps, report) : PlainReport(order, report));
        if (!report.result.published) {
            return kNotPublished;
        }
        return report.live && !report.live->Serves() ? kNotServed : kPublished;
    } catch (const publish_check::UsageError& error) {
        errors << "publish: " << error.what() << "\n" << UsageLines();
    } catch (const std::exception& error) {
        errors << "publish: " << error.what() << "\n";
    }
    return kUsage;
}

}  // namespace publish
