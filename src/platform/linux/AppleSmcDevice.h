#pragma once

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/ReadingsDevice.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace calorivo {

/// The driver's window on the controller's key space. Selecting an index is one variable for the whole
/// system: another program may change it between any two calls.
class SmcKeyWindow {
  public:
    SmcKeyWindow() = default;
    SmcKeyWindow(const SmcKeyWindow&) = delete;
    SmcKeyWindow& operator=(const SmcKeyWindow&) = delete;
    virtual ~SmcKeyWindow() = default;

    [[nodiscard]] virtual std::uint32_t keyCount() = 0;
    /// 0 or an errno.
    virtual int select(std::uint32_t index) = 0;
    [[nodiscard]] virtual std::optional<std::uint32_t> selected() = 0;
    /// Four characters; a blank at the end counts. None when it cannot be read.
    [[nodiscard]] virtual std::optional<std::string> name() = 0;
    [[nodiscard]] virtual std::optional<std::string> type() = 0;
    [[nodiscard]] virtual std::optional<std::uint32_t> length() = 0;
    /// Fills at most 32 bytes; 0 or an errno.
    virtual int data(std::array<std::uint8_t, 32>& bytes) = 0;
};

/// The window of the kernel's applesmc driver in this folder; null when it may not be used: an ordinary user
/// may not select, and in a copy of a folder tree writing would change the copy and select nothing.
[[nodiscard]] std::unique_ptr<SmcKeyWindow> openSmcKeyWindow(const std::string& folder);

/// A Mac's controller with its whole key space, raw bytes as the hardware holds them. Each access selects,
/// verifies, reads and verifies again.
class AppleSmcDevice final : public ReadingsDevice {
  public:
    struct Key {
        std::uint32_t key = 0;
        std::uint32_t type = 0;
        std::uint32_t length = 0;
        std::uint32_t index = 0;
    };

    using WindowOpener = std::function<std::unique_ptr<SmcKeyWindow>()>;
    /// `open` is called again when the driver was taken away, and after a sleep of the machine; it may give
    /// null. Reader thread.
    explicit AppleSmcDevice(WindowOpener open, MachineClocks clocks = {})
        : ReadingsDevice(std::move(clocks)), open_(std::move(open)) {}

    /// In the controller's own order; the place in the list is the item. Only once the device is described.
    [[nodiscard]] const std::vector<Key>& keys() const { return keys_; }

  protected:
    bool describe() override;
    void machineHasSlept() override;
    Pass beginPass() override;
    void readItem(std::size_t item, const Reading& last, Reading& reading) override;

  private:
    std::optional<Key> describeKey(std::uint32_t index);

    WindowOpener open_;
    std::unique_ptr<SmcKeyWindow> window_;
    std::vector<Key> keys_;
    std::chrono::nanoseconds nextSearch_{};
};

}  // namespace calorivo
