#pragma once

#include <optional>
#include <string>

#include "publish_check/server_state.h"
#include "publish_check/version.h"
#include "runtime/datetime.h"

namespace publish_check {

/// A Windows executable of so many bytes that does nothing but carry a version block; one without a
/// block where there is no version.
std::string SampleBuild(const std::optional<Version>& version, std::size_t size);

/// An answer "200 OK" with these header lines, each ended by CR LF.
Answer Ok(const std::string& headers, const std::string& body = {});

/// A file as a server in order publishes it.
PublishedFile Published(const std::string& body, const std::string& date = {});

inline constexpr Version kPublishedVersion{3, 0, 12, 5};
inline constexpr const char* kPublishedDate = "Wed, 05 Feb 2020 08:12:00 GMT";

/// The time at which the tests look at it: noon of the day after.
swiftpatch::DateTime LookTime();

/// A server folder in which everything is in order.
ServerState GoodServer();

}  // namespace publish_check
