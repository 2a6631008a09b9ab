#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>

#include "components/CabFile.h"
#include "components/system_error_text.h"
#include "runtime/runtime_error.h"

namespace swiftpatch::real_system {

/// How a call ended: error number and text, or 0 and an empty text.
struct Outcome {
    std::int32_t number = 0;
    std::string text;
};

/// Runs `action`. A raised error has to be one of the component's, with the text of its number.
inline Outcome OutcomeOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        EXPECT_TRUE(error.Source().starts_with("CabFile")) << error.Source();
        EXPECT_NE(error.Number(), 0);
        EXPECT_EQ(error.Description(), SystemErrorText(error.Number()));
        return {error.Number(), error.Description()};
    }
    return {};
}

inline CabFile Cab(const std::string& path) {
    CabFile cab;
    cab.CabName = path;
    return cab;
}

}  // namespace swiftpatch::real_system
