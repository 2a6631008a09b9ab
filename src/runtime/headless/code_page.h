#pragma once

namespace swiftpatch::headless {

/// The system's ANSI code page while one lives: 932 (Japanese) or 1252 (Western), which it is
/// without one. Their letters are the Latin ones, in 932 those of full width too.
class CodePage {
public:
    explicit CodePage(int number);
    ~CodePage();
    CodePage(const CodePage&) = delete;
    CodePage& operator=(const CodePage&) = delete;
};

}  // namespace swiftpatch::headless
