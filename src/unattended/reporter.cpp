#include "unattended/reporter.h"

#include <algorithm>

namespace swiftpatch {
namespace {

/// Breaks and runs of blanks become one blank: a step is a line.
std::string OneLine(const std::string& text) {
    std::string line;
    for (const char letter : text) {
        const bool blank = letter == ' ' || letter == '\r' || letter == '\n' || letter == '\t';
        if (!blank) {
            line += letter;
        } else if (!line.empty() && line.back() != ' ') {
            line += ' ';
        }
    }
    while (line.ends_with(' ')) {
        line.pop_back();
    }
    return line;
}

/// "42 % download completed": told as progress.
bool IsPercentage(const std::string& text) {
    const std::size_t digits = text.find_first_not_of("-0123456789");
    return digits != 0 && digits != std::string::npos && text.compare(digits, 2, " %") == 0;
}

std::string Hex(char16_t unit) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string hex;
    for (int shift = 12; shift >= 0; shift -= 4) {
        hex += kDigits[static_cast<std::size_t>(unit >> shift) & 15U];
    }
    return hex;
}

}  // namespace

Reporter::Reporter(ReportTarget target, Form form, bool quiet)
    : target_(std::move(target)), form_(form), quiet_(quiet) {}

bool Reporter::Step(const std::string& part, const std::string& text) {
    const std::string line = OneLine(text);
    if (line.empty() || IsPercentage(line) || shown_[part] == line) {
        return false;
    }
    shown_[part] = line;
    if (form_ == Form::kJson) {
        WriteJson("step", {{"part", JsonText(part)}, {"text", JsonText(line)}});
    } else if (!quiet_) {
        WriteLine(line);
    }
    return true;
}

void Reporter::Progress(std::int32_t percent) {
    if (form_ == Form::kJson) {
        WriteJson("progress", {{"percent", std::to_string(percent)}});
    } else if (target_.terminal && !quiet_) {
        target_.write("\r" + std::to_string(percent) + " %");
        lineOpen_ = true;
    }
}

void Reporter::Asked(const Question& question, const std::string& answer, bool known) {
    const std::string title = OneLine(question.title);
    const std::string text = OneLine(question.text);
    if (form_ == Form::kJson) {
        WriteJson("question", {{"form", JsonText(question.form)},
                               {"title", JsonText(title)},
                               {"text", JsonText(text)},
                               {"answer", JsonText(answer)},
                               {"known", known ? "true" : "false"}});
    } else if (!quiet_) {
        WriteLine("[" + title + "] " + text + " -> " + answer);
    }
}

void Reporter::Request(const std::string& verb, const std::string& url) {
    if (form_ == Form::kJson) {
        WriteJson("request", {{"method", JsonText(verb)}, {"address", JsonText(url)}});
    }
}

void Reporter::Note(const std::string& text) {
    if (form_ == Form::kJson) {
        WriteJson("note", {{"text", JsonText(OneLine(text))}});
    } else if (!quiet_) {
        WriteLine(OneLine(text));
    }
}

void Reporter::Waiting(std::uint32_t seconds) {
    if (form_ == Form::kJson) {
        WriteJson("waiting", {{"seconds", std::to_string(seconds)}});
    }
}

void Reporter::End(ExitStatus status) {
    quiet_ = false;
    if (form_ == Form::kJson) {
        WriteJson("end", {{"status", std::to_string(static_cast<int>(status))},
                          {"name", JsonText(NameOf(status))},
                          {"text", JsonText(TextOf(status))}});
    } else {
        WriteLine("Status " + std::to_string(static_cast<int>(status)) + ": " + TextOf(status));
    }
}

void Reporter::WriteLine(const std::string& text) {
    target_.write((lineOpen_ ? "\r\n" : "") + text + "\r\n");
    lineOpen_ = false;
}

void Reporter::WriteJson(const char* event, Members members) {
    if (quiet_) {
        return;
    }
    std::string line = "{\"event\":" + JsonText(event);
    for (const auto& [name, value] : members) {
        line += "," + JsonText(name) + ":" + value;
    }
    WriteLine(line + "}");
}

/// In letters of ASCII, which every code page has.
std::string Reporter::JsonText(const std::string& text) const {
    std::string json = "\"";
    for (const char16_t unit : target_.toUtf16(text)) {
        if (unit == u'"' || unit == u'\\') {
            json += '\\';
            json += static_cast<char>(unit);
        } else if (unit < u' ' || unit > u'~') {
            json += "\\u" + Hex(unit);
        } else {
            json += static_cast<char>(unit);
        }
    }
    return json + "\"";
}

}  // namespace swiftpatch
