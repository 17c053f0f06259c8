#include "platform/linux/SgIo.h"

#include "platform/linux/FileDescriptor.h"

#include <scsi/sg.h>
#include <sys/ioctl.h>

#include <array>
#include <cerrno>
#include <cstddef>

namespace calorivo {

namespace {

/// Generous: when it is over, the kernel resets the drive.
constexpr unsigned timeoutMilliseconds = 20000;

class SgIo final : public AtaDevice {
  public:
    explicit SgIo(FileDescriptor disk) : disk_(std::move(disk)) {}

    int read(const AtaCommand& command, AtaBlock& data) override {
        Exchange exchange;
        if (const int error = run(command, data.data(), data.size(), exchange)) return error;
        if (exchange.header.status != 0) return EIO;
        return exchange.header.resid == 0 ? 0 : EIO;
    }

    int ask(const AtaCommand& command, AtaRegisters& registers) override {
        Exchange exchange;
        if (const int error = run(command, nullptr, 0, exchange)) return error;
        // The registers come as sense data, with a status that looks like an error.
        const auto answer =
            registersInSense({exchange.sense.data(), static_cast<std::size_t>(exchange.header.sb_len_wr)});
        if (!answer) return exchange.header.status == 0 ? ENODATA : EIO;
        if (isFailure(*answer)) return EIO;
        registers = *answer;
        return 0;
    }

  private:
    struct Exchange {
        sg_io_hdr_t header{};
        std::array<std::uint8_t, 16> command{};
        std::array<std::uint8_t, 64> sense{};
    };

    int run(const AtaCommand& command, void* data, std::size_t size, Exchange& exchange) const {
        exchange.command = passThroughOf(command);
        sg_io_hdr_t& header = exchange.header;
        header.interface_id = 'S';
        header.dxfer_direction = data != nullptr ? SG_DXFER_FROM_DEV : SG_DXFER_NONE;
        header.cmd_len = static_cast<unsigned char>(exchange.command.size());
        header.cmdp = exchange.command.data();
        header.mx_sb_len = static_cast<unsigned char>(exchange.sense.size());
        header.sbp = exchange.sense.data();
        header.dxfer_len = static_cast<unsigned>(size);
        header.dxferp = data;
        header.timeout = timeoutMilliseconds;
        if (ioctl(disk_.get(), SG_IO, &header) != 0) return errno;
        return header.host_status == 0 ? 0 : EIO;
    }

    FileDescriptor disk_;
};

}  // namespace

std::unique_ptr<AtaDevice> openSgIo(const std::string& path, int& error) {
    FileDescriptor disk(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!disk.isOpen()) {
        error = errno;
        return nullptr;
    }
    return std::make_unique<SgIo>(std::move(disk));
}

}  // namespace calorivo
