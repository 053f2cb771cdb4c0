// Recordings that an earlier run of the program left, whole or not.

#include "Fuzz.h"
#include "storage/avi/AviRepair.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>

using namespace corvanta;

namespace {

/// A file of this process in the folder for temporary ones; gone with it.
struct Scratch {
    Scratch()
        : path(std::filesystem::temp_directory_path() / ("corvanta-fuzz-" + std::to_string(::getpid()) + ".avi")) {}
    ~Scratch() {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }
    const std::filesystem::path path;
};

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Scratch scratch;
    {
        std::ofstream file(scratch.path, std::ios::binary | std::ios::trunc);
        file.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    }
    const avi::RepairResult result = avi::repairAvi(scratch.path);
    fuzz::demand(result != avi::RepairResult::Failed && result != avi::RepairResult::InUse,
                 "the file can be looked at");
    if (result == avi::RepairResult::Repaired)
        fuzz::demand(avi::repairAvi(scratch.path) == avi::RepairResult::Complete, "what was repaired is complete");
    else
        fuzz::demand(std::filesystem::file_size(scratch.path) == size, "what was not repaired stays as it is");
    return 0;
}
