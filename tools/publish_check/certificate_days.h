#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace publish_check {

/// Whole days until the certificate ends that the server at `url` (https://) shows; nothing where
/// the system does not tell. Makes a request of its own.
std::optional<std::int64_t> CertificateDays(const std::string& url);

}  // namespace publish_check
