#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "property.h"

namespace {

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// Says the name first: the target ends the program when a rule is broken.
void Replay(const std::filesystem::path& path) {
    std::cout << path.filename().string() << std::endl;
    const std::string input = ReadFile(path);
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

}  // namespace

/// Runs a target once with every file of the folder that is its one argument. Fails when there is
/// no file, because a corpus that was mislaid would otherwise pass.
int main(int count, char** arguments) {
    try {
        int replayed = 0;
        for (const auto& entry : std::filesystem::directory_iterator(arguments[count - 1])) {
            Replay(entry.path());
            ++replayed;
        }
        return replayed == 0 ? 1 : 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
