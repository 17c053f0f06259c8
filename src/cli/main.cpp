#include "cli/Program.h"
#include "platform/linux/DriveReaderProcess.h"
#include "platform/linux/LinuxFileManager.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <exception>

int main(int argc, char** argv) {
    if (const auto code = calorivo::runAsDriveReader(argc, argv)) return *code;
    using namespace calorivo;
    try {
        Output out(STDOUT_FILENO);
        Output errors(STDERR_FILENO);
        LinuxFileManager files;
        Surroundings surroundings{
            files, linuxPaths(processEnvironment, executablePath()), {out, errors}, std::_Exit};
        return runProgram(std::vector<std::string>(argv + 1, argv + argc), surroundings);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "calorivo-cli: %s\n", error.what());
        return exitNoAnswer;
    }
}
