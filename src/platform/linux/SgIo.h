#pragma once

#include "platform/linux/AtaCommand.h"

#include <memory>
#include <string>

namespace calorivo {

/// Opens a disk ("/dev/sda") for commands, for reading only; null, with the errno in `error`, when that is
/// not possible. That it opens does not mean that commands are permitted: they need CAP_SYS_RAWIO.
[[nodiscard]] std::unique_ptr<AtaDevice> openSgIo(const std::string& path, int& error);

}  // namespace calorivo
