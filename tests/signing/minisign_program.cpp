#include "minisign_program.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace swiftpatch {
namespace {

std::string Read(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void Write(const std::filesystem::path& path, std::string_view content) {
    std::ofstream file(path, std::ios::binary);
    file << content;
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

void Require(bool done) {
    if (!done) {
        throw std::runtime_error("minisign cannot do this; is it installed?");
    }
}

}  // namespace

MinisignProgram::MinisignProgram() {
    std::string name = (std::filesystem::temp_directory_path() / "minisign.XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no folder for minisign");
    }
    folder_ = name;
}

MinisignProgram::~MinisignProgram() {
    std::error_code error;
    std::filesystem::remove_all(folder_, error);
}

std::string MinisignProgram::MakeKey(const std::string& name) const {
    Require(Run("-G -W -p " + name + ".pub -s " + name + ".key"));
    const std::string file = Read(folder_ / (name + ".pub"));
    return file.substr(file.find('\n') + 1, 56);
}

std::string MinisignProgram::Sign(const std::string& keyName, const std::string& fileName,
                                  std::string_view content,
                                  const std::string& trustedComment) const {
    Write(folder_ / fileName, content);
    const std::string comment = trustedComment.empty() ? "" : " -t '" + trustedComment + "'";
    Require(Run("-S -s " + keyName + ".key -m " + fileName + comment));
    return Read(folder_ / (fileName + ".minisig"));
}

bool MinisignProgram::Verify(const std::string& publicKey, const std::string& fileName,
                             std::string_view content, std::string_view signatureFile) const {
    Write(folder_ / fileName, content);
    Write(folder_ / (fileName + ".minisig"), signatureFile);
    return Run("-V -m " + fileName + " -P " + publicKey);
}

bool MinisignProgram::Run(const std::string& arguments) const {
    const std::string command = "cd '" + folder_.string() + "' && exec minisign " + arguments +
                                " >/dev/null 2>&1 </dev/null";
    return std::system(command.c_str()) == 0;
}

}  // namespace swiftpatch
