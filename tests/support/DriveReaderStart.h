#pragma once

#include "platform/linux/DriveReaderProcess.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace calorivo::test {

/// The arguments of this process, before main() has them.
inline std::vector<std::string> processArguments() {
    std::ifstream file("/proc/self/cmdline", std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(file), {});
    std::vector<std::string> arguments;
    for (std::size_t begin = 0; begin < text.size(); begin = text.find('\0', begin) + 1)
        arguments.emplace_back(text.c_str() + begin);
    return arguments;
}

/// Makes the test program its own reader of drives: one of these objects stands outside all functions.
class DriveReaderStart {
  public:
    DriveReaderStart() {
        std::vector<std::string> arguments = processArguments();
        std::vector<char*> pointers;
        for (std::string& argument : arguments) pointers.push_back(argument.data());
        if (const auto code = runAsDriveReader(static_cast<int>(pointers.size()), pointers.data()))
            std::_Exit(*code);
    }
};

}  // namespace calorivo::test
