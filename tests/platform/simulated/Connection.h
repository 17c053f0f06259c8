#pragma once

#include "platform/IOKit.h"
#include "smc/SmcClient.h"
#include "smc/SmcPrinters.h"

#include <cstdio>
#include <string>

namespace calorivo::test {

/// Makes the provider the SMC module's own while it lives, and opens the connection to it.
class Connection {
  public:
    explicit Connection(IOKit& ioKit) {
        smcSetOutput(output_);
        smcSetIOKit(&ioKit);
        openResult = smcOpen();
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() {
        smcClose();
        smcSetIOKit(nullptr);
        smcSetOutput(nullptr);
        std::fclose(output_);
    }

    /// Everything printed since the connection was begun, the dump of all keys last.
    std::string printedKeys() {
        smcPrintAllKeys();
        return printed();
    }
    std::string printed() {
        std::string text(static_cast<std::size_t>(std::ftell(output_)), '\0');
        std::rewind(output_);
        text.resize(std::fread(text.data(), 1, text.size(), output_));
        return text;
    }

    int openResult = -1;

  private:
    std::FILE* output_ = std::tmpfile();
};

}  // namespace calorivo::test
