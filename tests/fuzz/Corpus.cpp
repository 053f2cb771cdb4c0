// Gives every file of the named folders to a target, in the order of their names: the short run that is a test.

#include "Fuzz.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

int main(int argc, char* argv[]) {
    std::vector<std::filesystem::path> files;
    for (int i = 1; i < argc; ++i) {
        for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
            if (entry.is_regular_file())
                files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    for (const auto& file : files) {
        std::printf("%s\n", file.filename().c_str());
        std::fflush(stdout); // the last one named is the one that ended the process
        std::ifstream stream(file, std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    std::printf("%zu inputs\n", files.size());
    return files.empty() ? 1 : 0;
}
