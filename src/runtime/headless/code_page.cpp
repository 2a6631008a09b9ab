#include "runtime/headless/code_page.h"

#include "runtime/code_page.h"

namespace swiftpatch {
namespace {

constexpr int kWestern = 1252;
constexpr int kJapanese = 932;

int& CodePageInForce() {
    static int number = kWestern;
    return number;
}

bool IsBetween(char byte, unsigned char first, unsigned char last) {
    const auto code = static_cast<unsigned char>(byte);
    return code >= first && code <= last;
}

char WesternCapital(char letter) {
    constexpr char kDivisionSign = '\xF7';
    if (letter == '\xFF') {
        return '\x9F';
    }
    if (letter == '\x9A' || letter == '\x9C' || letter == '\x9E') {
        return static_cast<char>(letter - 0x10);
    }
    const bool small = IsBetween(letter, 0xE0, 0xFE) && letter != kDivisionSign;
    return small ? static_cast<char>(letter - 0x20) : letter;
}

char Capital(char letter) {
    if (IsBetween(letter, 'a', 'z')) {
        return static_cast<char>(letter - 0x20);
    }
    return CodePageInForce() == kWestern ? WesternCapital(letter) : letter;
}

/// The second byte of the capital, where the character is a Latin letter of full width.
char FullWidthCapital(char lead, char trail) {
    const bool small = lead == '\x82' && IsBetween(trail, 0x81, 0x9A);
    return small ? static_cast<char>(trail - 0x21) : trail;
}

}  // namespace

headless::CodePage::CodePage(int number) { CodePageInForce() = number; }

headless::CodePage::~CodePage() { CodePageInForce() = kWestern; }

bool IsLeadByte(char byte) {
    return CodePageInForce() == kJapanese &&
           (IsBetween(byte, 0x81, 0x9F) || IsBetween(byte, 0xE0, 0xFC));
}

std::string UpperCase(std::string_view text) {
    std::string capitals(text);
    for (std::size_t i = 0; i < capitals.size(); ++i) {
        if (IsLeadByte(capitals[i]) && i + 1 < capitals.size()) {
            capitals[i + 1] = FullWidthCapital(capitals[i], capitals[i + 1]);
            ++i;
        } else {
            capitals[i] = Capital(capitals[i]);
        }
    }
    return capitals;
}

}  // namespace swiftpatch
