#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "runtime/events.h"
#include "runtime/headless/world.h"
#include "runtime/inet.h"
#include "runtime/runtime_error.h"

namespace swiftpatch {

/// The number of the run-time error that `action` raises, 0 for none.
inline std::int32_t ErrorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return error.Number();
    }
    return 0;
}

/// A test of the transfer control alone, against the scripted server.
class InetTest : public testing::Test {
protected:
    InetTest() {
        // Ends a test whose wait would last for ever.
        world.AtPump(2000000, [] { EndRunAtNextPump(); });
        inet.StateChanged = [this](int state) { states.push_back(state); };
    }

    /// Answers a request for http://host/file with `reply`.
    void Script(const std::string& verb, headless::Reply reply) {
        world.network.Answer(verb + " http://host/file", std::move(reply));
    }

    /// A request that is answered in none of its states and never ends by itself.
    void ScriptSilence(std::vector<int> theStates = {}) {
        headless::Reply reply;
        reply.states = std::move(theStates);
        reply.silent = true;
        Script("GET", reply);
        Script("HEAD", reply);
    }

    /// Requests `body` in blocks of that size and pumps until it can be read.
    void StartBody(const std::string& body, std::size_t blockSize,
                   std::function<void(headless::Reply&)> change = {}) {
        headless::Reply reply = headless::FileReply(body);
        reply.blockSize = blockSize;
        if (change) {
            change(reply);
        }
        Script("GET", reply);
        inet.Execute("host/file", "GET");
        while (inet.StillExecuting()) {
            Pump(1);
        }
    }

    void Pump(std::int64_t milliseconds) { world.PumpFor(milliseconds); }

    headless::World world;
    Inet inet{"Inet1"};
    std::vector<int> states;
};

}  // namespace swiftpatch
