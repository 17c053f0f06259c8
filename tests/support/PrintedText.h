#pragma once

#include "smc/SmcClient.h"

#include <array>
#include <cstddef>
#include <cstdio>
#include <stdexcept>
#include <string>

namespace calorivo::test {

/// Takes what the SMC module prints, instead of standard output, while it lives.
class PrintedText {
  public:
    PrintedText() : file_(std::tmpfile()) {
        if (file_ == nullptr) throw std::runtime_error("no temporary file");
        smcSetOutput(file_);
    }
    ~PrintedText() {
        smcSetOutput(nullptr);
        std::fclose(file_);
    }
    PrintedText(const PrintedText&) = delete;
    PrintedText& operator=(const PrintedText&) = delete;

    /// Everything printed so far.
    [[nodiscard]] std::string text() {
        std::string all;
        std::array<char, 4096> part{};
        std::rewind(file_);
        while (const std::size_t size = std::fread(part.data(), 1, part.size(), file_))
            all.append(part.data(), size);
        std::fseek(file_, 0, SEEK_END);
        return all;
    }

  private:
    std::FILE* file_;
};

}  // namespace calorivo::test
