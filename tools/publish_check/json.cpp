#include "publish_check/json.h"

#include <string_view>

namespace publish_check {

std::string JsonText(const std::string& text) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string json = "\"";
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte == '"' || byte == '\\') {
            json += '\\';
            json += character;
        } else if (byte < ' ' || byte > '~') {
            json += "\\u00";
            json += kDigits[byte >> 4U];
            json += kDigits[byte & 15U];
        } else {
            json += character;
        }
    }
    return json + "\"";
}

}  // namespace publish_check
