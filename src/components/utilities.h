#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "runtime/datetime.h"
#include "runtime/form.h"

namespace swiftpatch {

/// A Boolean of 16 bits as the system's automation has it (VARIANT_BOOL): True is all bits set.
using VariantBool = std::int16_t;
inline constexpr VariantBool kTrue = -1;
inline constexpr VariantBool kFalse = 0;

/// The part of `text` before its first NUL character; all of it when it holds none.
std::string TrimNull(std::string_view text);

/// Removes trailing blanks from `path`, then appends "\" unless it ends in "/" or "\".
void AddBackslash(std::string& path);

/// The Windows directory with a trailing "\"; empty when the look-up fails.
std::string GetWindowsDir();

/// The System directory with a trailing "\"; empty when the look-up fails.
std::string GetSystemDir();

/// Puts a window above all windows that are not topmost, or back among them, without moving or
/// sizing it. Only kTrue switches on; every other value switches off. Returns the system's
/// result of switching on, and always 0 for switching off: a caller cannot tell a successful
/// switch-off from a failed one, deliberately.
std::int32_t SetTopMost(WindowHandle window, const VariantBool& flag);

/// A value that may or may not be a date.
using DateValue = std::variant<std::monostate, DateTime, std::string>;

/// "m/d/yyyy h:mm AM/PM", whatever the system's date settings; nothing for a value that is no
/// date.
std::optional<std::string> FormatDateMDY(const DateValue& value);

}  // namespace swiftpatch
