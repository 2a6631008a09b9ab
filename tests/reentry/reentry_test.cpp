// Every event from inside every yield of every kind of run.
//
// A yield that reads like the one before it (the same stage, the same windows and buttons) belongs
// to the same stretch, such as the thousand chunks of a download or the ticks of a wait. Of each
// stretch the first two yields, the one in the middle and the last are taken. With the environment
// variable SWIFTPATCH_EVERY_YIELD set, every single yield is.
#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <random>

#include "reentry/machine.h"

namespace swiftpatch::reentry {
namespace {

bool EveryYield() { return std::getenv("SWIFTPATCH_EVERY_YIELD") != nullptr; }

/// States that no handler looks at are reported only where every yield is tried.
std::vector<Event> EventsToTry() {
    std::vector<Event> events = AllEvents();
    if (!EveryYield()) {
        std::erase_if(events, [](const Event& event) {
            return event.name.starts_with("transfer state ") &&
                   (event.name.ends_with('2') || event.name.ends_with('6') ||
                    event.name.ends_with('7') || event.name.ends_with('8') ||
                    event.name.ends_with('0'));
        });
    }
    return events;
}

/// The numbers of the yields to be tried, from 1 on.
std::vector<std::int64_t> Samples(const std::vector<std::string>& yields) {
    std::set<std::int64_t> samples;
    std::size_t first = 0;
    for (std::size_t i = 0; i < yields.size(); ++i) {
        const bool last = i + 1 == yields.size() || yields[i + 1] != yields[i];
        if (last || EveryYield()) {
            for (const std::size_t each : {first, std::min(first + 1, i), (first + i) / 2, i}) {
                samples.insert(static_cast<std::int64_t>(each) + 1);
            }
            first = i + 1;
        }
    }
    return {samples.begin(), samples.end()};
}

/// Tells each problem once, with the shortest way to it and how often it came.
class Findings {
public:
    void Add(const std::string& way, const Outcome& outcome) {
        ++runs_;
        for (const std::string& problem : outcome.problems) {
            Found& found = found_[problem];
            found.first = found.count++ == 0 ? way : found.first;
        }
    }

    void Report(const std::string& what) const {
        std::cout << what << ": " << runs_ << " runs\n";
        for (const auto& [problem, found] : found_) {
            ADD_FAILURE() << problem << "\n  " << found.count << " times, first with "
                          << found.first;
        }
    }

private:
    struct Found {
        std::string first;
        int count = 0;
    };
    std::map<std::string, Found> found_;
    int runs_ = 0;
};

/// The second run of a pair of event and yield is the first one over again where nobody asks.
using Asked = std::set<std::pair<std::int64_t, const Event*>>;

class Reentry : public testing::TestWithParam<Scenario> {
protected:
    void Sweep(const Scenario& scenario, const std::vector<Event>& events, MsgBoxAnswer answer);
    /// Of everything, with both answers.
    void Sweep(const Scenario& scenario, const std::vector<Event>& events) {
        Sweep(scenario, events, MsgBoxAnswer::kYes);
        Sweep(scenario, events, MsgBoxAnswer::kNo);
        findings_.Report(std::to_string(events.size()) + " events");
    }

    Findings findings_;
    Asked asked_;
};

void Reentry::Sweep(const Scenario& scenario, const std::vector<Event>& events,
                    MsgBoxAnswer answer) {
    const Outcome base = Play(scenario, answer, {}, true);
    ASSERT_TRUE(base.problems.empty()) << testing::PrintToString(base.problems);
    const std::vector<std::int64_t> samples = Samples(base.yields);
    const bool all = answer == MsgBoxAnswer::kYes || base.asked;
    for (const std::int64_t yield : samples) {
        for (const Event& event : events) {
            if (!all && asked_.count({yield, &event}) == 0) {
                continue;
            }
            const Outcome outcome = Play(scenario, answer, {{yield, &event}});
            if (outcome.asked) {
                asked_.insert({yield, &event});
            }
            findings_.Add(event.name + " in yield " + std::to_string(yield) + ", answer " +
                              NameOf(answer) + ": " +
                              base.yields[static_cast<std::size_t>(yield) - 1],
                          outcome);
        }
    }
    std::cout << NameOf(answer) << ": " << samples.size() << " of " << base.yields.size()
              << " yields\n";
}

TEST_P(Reentry, OfEveryEventIntoEveryYield) { Sweep(GetParam(), EventsToTry()); }

TEST_P(Reentry, OfEveryDiskFaultIntoEveryYield) { Sweep(GetParam(), AllDiskFaults()); }

TEST_P(Reentry, OfAPressOfGoBackIntoEveryYield) { Sweep(WithWayBack(GetParam()), PressOfGoBack()); }

/// Events inside the yields of other events' procedures, and one after the other.
TEST_P(Reentry, OfSeveralEventsAtRandom) {
    constexpr unsigned kSeed = 20260310;
    const int runs = EveryYield() ? 5000 : 150;
    const std::vector<Event> events = AllEvents();
    std::mt19937 random(kSeed);
    const auto below = [&random](std::size_t limit) { return random() % limit; };
    const std::size_t yields = Play(GetParam(), MsgBoxAnswer::kYes, {}, true).yields.size();
    for (int run = 0; run < runs; ++run) {
        const MsgBoxAnswer answer = below(2) == 0 ? MsgBoxAnswer::kYes : MsgBoxAnswer::kNo;
        Intrusions intrusions;
        std::string way = std::string("answer ") + NameOf(answer);
        std::int64_t yield = 1 + static_cast<std::int64_t>(below(yields));
        for (int i = 0; i < 4; ++i) {
            const Event& event = events[below(events.size())];
            intrusions[yield] = &event;
            way += "; " + event.name + " in yield " + std::to_string(yield);
            yield += 1 + static_cast<std::int64_t>(below(below(2) == 0 ? 4 : 60));
        }
        findings_.Add(way, Play(GetParam(), answer, intrusions));
    }
    findings_.Report("seed " + std::to_string(kSeed));
}

INSTANTIATE_TEST_SUITE_P(Runs, Reentry, testing::ValuesIn(AllScenarios()),
                         [](const auto& kind) { return kind.param.name; });

}  // namespace

void PrintTo(const Scenario& scenario, std::ostream* out) { *out << scenario.name; }

}  // namespace swiftpatch::reentry
