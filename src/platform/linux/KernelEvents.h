#pragma once

#include "platform/linux/FileDescriptor.h"

#include <sys/socket.h>

#include <functional>
#include <optional>
#include <string_view>
#include <utility>

namespace calorivo {

/// One message of the kernel about a device. The texts lie in the datagram.
struct KernelEvent {
    /// "add", "remove", "change" ...
    std::string_view action;
    /// Below the root of sysfs: "/devices/pci0000:00/0000:00:02.0/drm/card0".
    std::string_view devicePath;
    /// "drm", "block" ...
    std::string_view subsystem;
    friend bool operator==(const KernelEvent&, const KernelEvent&) = default;
};

/// A datagram as the kernel sends it: "ACTION@PATH" and then "KEY=VALUE" texts, each closed by a NUL. Keys
/// that are not known are passed over. None for anything else.
[[nodiscard]] std::optional<KernelEvent> parseKernelEvent(std::string_view datagram);

/// Whether a datagram that was received with its sender's address and credentials comes from the kernel, and
/// whole.
[[nodiscard]] bool isFromKernel(const msghdr& message);

/// The messages of the kernel about its devices. One thread at a time.
class KernelEvents {
  public:
    using Check = std::function<bool(const msghdr&)>;

    /// Never hears anything.
    KernelEvents() = default;
    /// Takes datagrams from this socket, those that the check lets pass.
    explicit KernelEvents(FileDescriptor socket, Check check = isFromKernel)
        : socket_(std::move(socket)), check_(std::move(check)) {}

    /// Hears from now on; never anything where the system gives no such socket. In a container the socket may
    /// be there and stay silent: whoever depends on the events looks for himself now and then.
    [[nodiscard]] static KernelEvents listen();

    /// To wait for with poll(): readable when there is something to take. −1 when nothing will ever come.
    [[nodiscard]] int descriptor() const { return socket_.get(); }
    /// Takes what has arrived, without waiting. True when any of it is about the subsystem, or when messages
    /// were lost.
    [[nodiscard]] bool take(std::string_view subsystem);

  private:
    FileDescriptor socket_;
    Check check_;
};

}  // namespace calorivo
