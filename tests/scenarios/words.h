#pragma once

#include <chrono>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace swiftpatch::scenarios {

/// Something in a table cannot be understood. The message says what and, in the end, where.
class TableError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

std::string Trimmed(std::string_view text);

/// The pieces of a text between separators, each without the blanks around it.
std::vector<std::string> SplitAt(std::string_view text, char separator);

/// Takes the first word off `text`, which keeps the rest.
std::string TakeWord(std::string& text);

/// True when `text` begins with `beginning`, which is then taken off, with the blanks after it.
bool TakeBeginning(std::string& text, std::string_view beginning);

std::size_t NumberIn(const std::string& text);

/// What a text like "2020-02-05 08:12:00" says, by whatever clock it means.
std::chrono::local_seconds TimeIn(const std::string& text);

/// \r, \n, \t, \\, \_ (a blank) and \xNN as the characters that they stand for.
std::string Unescaped(std::string_view text);

/// `text` with every `name` replaced by `value`.
std::string Replaced(std::string text, std::string_view name, std::string_view value);

}  // namespace swiftpatch::scenarios
