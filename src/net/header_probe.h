#pragma once

#include <cstdint>
#include <string>

namespace swiftpatch {

class frmSwiftPatch;

/// The Content-length in bytes (RFC 9110 section 8.6) that a HEAD request for `url` reports, or -1
/// when it is unknown or 0. Raises no error; one on the way costs a wait of 3 seconds. Pumps.
std::int32_t GetHTTPFileSize(frmSwiftPatch& window, const std::string& url);

/// The Last-modified value (RFC 9110 section 8.8.2) that a HEAD request for `url` reports, without
/// weekday and zone: 15 Nov 1994 08:12:31. "01/01/2001" when no usable date came back. Raises no
/// error; one on the way costs a wait of 3 seconds. Pumps.
std::string GetHTTPFileDate(frmSwiftPatch& window, const std::string& url);

/// The size that a Content-length value stands for; -1 for a text that is no number or a number
/// below 1. Raises error 6 for a number over 32 signed bits.
std::int32_t SizeFromHeader(const std::string& header);

/// The date text that a Last-modified value stands for. Raises error 5 for an empty value.
std::string DateFromHeader(const std::string& header);

}  // namespace swiftpatch
