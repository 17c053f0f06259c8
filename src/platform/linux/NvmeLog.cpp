#include "platform/linux/NvmeLog.h"

#include "platform/linux/FileDescriptor.h"

#include <linux/nvme_ioctl.h>
#include <sys/ioctl.h>

#include <cerrno>

namespace calorivo {

int temperatureInNvmeLog(const NvmeSmartLog& log) {
    constexpr int freezingPoint = 273;
    const int kelvin = log[1] | (log[2] << 8);
    return kelvin > freezingPoint ? kelvin - freezingPoint : 0;
}

int readNvmeLog(const std::string& path, NvmeSmartLog& log) {
    const FileDescriptor drive(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!drive.isOpen()) return errno;
    constexpr std::uint8_t getLogPage = 0x02;
    constexpr std::uint32_t smartPage = 0x02;
    constexpr std::uint32_t dwords = sizeof(log) / 4;
    nvme_admin_cmd command{};
    command.opcode = getLogPage;
    command.nsid = 0xFFFFFFFF;  // the whole drive
    command.addr = reinterpret_cast<std::uintptr_t>(log.data());
    command.data_len = sizeof(log);
    command.cdw10 = ((dwords - 1) << 16U) | smartPage;
    command.timeout_ms = 20000;  // generous: when it is over, the kernel resets the drive
    const int result = ioctl(drive.get(), NVME_IOCTL_ADMIN_CMD, &command);
    if (result < 0) return errno;
    return result == 0 ? 0 : EIO;
}

}  // namespace calorivo
