// Writes job drawings into a folder, for programs that are measured from outside: bench_jobs FOLDER.
#include "job_files.h"

#include <filesystem>
#include <iostream>

int main(int argc, char** argv) {
    using namespace brenvik::bench;
    namespace fs = std::filesystem;
    if (argc != 2) {
        std::cerr << "bench_jobs: expected the folder that the drawings go to\n";
        return 2;
    }
    const fs::path folder = argv[1];
    const auto put = [&folder](const char* name, const fs::path& file) {
        fs::copy_file(file, folder / name, fs::copy_options::overwrite_existing);
    };
    fs::create_directories(folder);
    put("panel.dxf", JobFile(FileFormat::Dxf, 1, 0));
    put("panels.dxf", JobFile(FileFormat::Dxf, 1000, 0));
    put("drilled.dxf", JobFile(FileFormat::Dxf, 1000, 10));
    put("drilled.step", JobFile(FileFormat::Step, 100, 10));
    put("one-side.dxf", MachinedJobFile(10, 40, Machining::OneSide));
    put("both-sides.dxf", MachinedJobFile(10, 40, Machining::BothSides));
}
