#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "Fuzz.h"

/// Runs a fuzz target once for each file of the corpus folder that is its argument.
int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) {
        std::cerr << "usage: " << arguments[0] << " corpus-folder\n";
        return 2;
    }
    int replayed = 0;
    for (const auto& entry : std::filesystem::directory_iterator{arguments[1]}) {
        std::ifstream file{entry.path(), std::ios::binary};
        const std::string content{std::istreambuf_iterator<char>{file}, {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(content.data()), content.size());
        ++replayed;
    }
    std::cout << replayed << " inputs replayed\n";
    return replayed > 0 ? 0 : 1;
}
