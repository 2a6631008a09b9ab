#include "scenarios/content.h"

#include <map>

#include "scenarios/words.h"
#include "support/minisign_signer.h"

namespace swiftpatch::scenarios {

std::string ContentOf(std::string description, const MakeBuild& build) {
    if (TakeBeginning(description, "empty")) {
        return {};
    }
    if (TakeBeginning(description, "letters")) {
        return std::string(NumberIn(description), 'x');
    }
    if (TakeBeginning(description, "text")) {
        return Unescaped(description);
    }
    if (TakeBeginning(description, "first")) {
        const std::size_t size = NumberIn(TakeWord(description));
        TakeBeginning(description, "of");
        return ContentOf(description, build).substr(0, size);
    }
    return build(description);
}

std::string KeysOf(const std::string& names) {
    if (names == "none") {
        return {};
    }
    std::string keys;
    for (const std::string& name : SplitAt(names, ' ')) {
        keys += (keys.empty() ? "" : " ") + MinisignSigner(name).PublicKeyText();
    }
    return keys;
}

std::string SignatureFile(const std::vector<Signature>& signatures, const std::string& offered,
                          const MakeBuild& build) {
    std::string file;
    for (const Signature& signature : signatures) {
        const std::string bytes = build(signature.version.empty() ? offered : signature.version);
        file += MinisignSigner(signature.key)
                    .SignBuild(HashOfBuild(bytes), TrustedCommentFor(signature.file));
    }
    return file;
}

std::pair<std::string, std::string> NameAndContent(const std::string& text) {
    const std::size_t sign = text.find('=');
    if (sign == std::string::npos) {
        throw TableError("an = is missing: " + text);
    }
    return {Trimmed(text.substr(0, sign)), Trimmed(text.substr(sign + 1))};
}

std::optional<std::size_t> SizeOfBuild(const std::string& version) {
    static const std::map<std::string, std::size_t> kSizes{
        {"2.9.0.0", 201111},   {"3.0.11.0", 202222},    {"3.0.12.5", 203333},
        {"3.1.0.123", 204444}, {"3.0.40000.1", 205555}, {"none", 206666}};
    const auto found = kSizes.find(version);
    return found == kSizes.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace swiftpatch::scenarios
