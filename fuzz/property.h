#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace swiftpatch::fuzz {

/// Ends the program, so that the fuzzer keeps the input, when `holds` is false. `rule` says what
/// has to hold for every input.
void Always(bool holds, std::string_view rule);

/// The input as text.
std::string_view TextOf(const std::uint8_t* data, std::size_t size);

/// The input cut at its line ends, for targets that take several texts; as many as asked for, the
/// last with all that is left.
std::vector<std::string_view> Fields(std::string_view input, std::size_t count);

}  // namespace swiftpatch::fuzz

/// What the fuzzer, or the replay of the corpus, calls with one input. Defined by each target.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
