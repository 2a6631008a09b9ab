#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "scenarios/answer.h"

namespace swiftpatch::scenarios {

/// The bytes of the build that a row calls "3.0.12.5" or "none".
using MakeBuild = std::function<std::string(const std::string& description)>;

/// The bytes that a row means by "empty", "letters 10", "text TEXT" or "first 100 of CONTENT";
/// anything else is a build. Throws TableError for one of these that cannot be understood.
std::string ContentOf(std::string description, const MakeBuild& build);

/// The keys in a data file that a row calls "maker spare": those of the key pairs of these names,
/// one behind the other; none at all for "none".
std::string KeysOf(const std::string& names);

/// The signature file with these signatures, where `offered` is on offer.
std::string SignatureFile(const std::vector<Signature>& signatures, const std::string& offered,
                          const MakeBuild& build);

/// The parts of "NAME = CONTENT". Throws TableError where the sign is missing.
std::pair<std::string, std::string> NameAndContent(const std::string& text);

/// The size of the sample build of a version where builds are made up; no two are of one size.
/// Nothing for a version of which there is none.
std::optional<std::size_t> SizeOfBuild(const std::string& version);

}  // namespace swiftpatch::scenarios
