#include "platform/linux/KernelEvents.h"

#include <linux/netlink.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>

namespace calorivo {

namespace {

/// The kernel's own messages; the device manager sends its own to another group.
constexpr unsigned kernelGroup = 1;
/// More than the kernel puts into one message.
constexpr std::size_t longestDatagram = 8192;
/// So many are taken in one go: a flood must not keep the thread from its other tasks.
constexpr int mostAtOnce = 256;

/// Takes the text up to the first NUL, and the NUL; empty when there is none.
std::string_view takeText(std::string_view& datagram) {
    const std::size_t end = datagram.find('\0');
    if (end == std::string_view::npos) {
        datagram = {};
        return {};
    }
    const std::string_view text = datagram.substr(0, end);
    datagram.remove_prefix(end + 1);
    return text;
}

const void* asVoid(const sockaddr_nl& address) { return &address; }

}  // namespace

std::optional<KernelEvent> parseKernelEvent(std::string_view datagram) {
    if (!datagram.ends_with('\0')) return std::nullopt;
    const std::string_view head = takeText(datagram);
    const std::size_t at = head.find('@');
    if (at == std::string_view::npos || at == 0 || at + 1 == head.size()) return std::nullopt;
    KernelEvent event{.action = head.substr(0, at), .devicePath = head.substr(at + 1), .subsystem = {}};
    constexpr std::string_view subsystemKey = "SUBSYSTEM=";
    while (!datagram.empty()) {
        const std::string_view text = takeText(datagram);
        if (text.starts_with(subsystemKey)) event.subsystem = text.substr(subsystemKey.size());
    }
    return event;
}

bool isFromKernel(const msghdr& message) {
    if ((message.msg_flags & (MSG_TRUNC | MSG_CTRUNC)) != 0) return false;
    sockaddr_nl sender{};
    if (message.msg_name == nullptr || message.msg_namelen != sizeof sender) return false;
    std::memcpy(&sender, message.msg_name, sizeof sender);
    if (sender.nl_family != AF_NETLINK || sender.nl_pid != 0) return false;

    const cmsghdr* const control = CMSG_FIRSTHDR(&message);
    if (control == nullptr || control->cmsg_level != SOL_SOCKET || control->cmsg_type != SCM_CREDENTIALS ||
        control->cmsg_len != CMSG_LEN(sizeof(ucred)))
        return false;
    ucred credentials{};
    std::memcpy(&credentials, CMSG_DATA(control), sizeof credentials);
    return credentials.uid == 0;
}

KernelEvents KernelEvents::listen() {
    FileDescriptor descriptor(
        socket(AF_NETLINK, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_KOBJECT_UEVENT));
    if (!descriptor.isOpen()) return {};
    const int on = 1;
    sockaddr_nl address{};
    address.nl_family = AF_NETLINK;
    address.nl_groups = kernelGroup;
    if (setsockopt(descriptor.get(), SOL_SOCKET, SO_PASSCRED, &on, sizeof on) != 0 ||
        bind(descriptor.get(), static_cast<const sockaddr*>(asVoid(address)), sizeof address) != 0)
        return {};
    return KernelEvents(std::move(descriptor));
}

bool KernelEvents::take(std::string_view subsystem) {
    bool isAbout = false;
    std::array<char, longestDatagram> text{};
    for (int count = 0; count < mostAtOnce && socket_.isOpen(); ++count) {
        alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(ucred))> control{};
        sockaddr_nl sender{};
        iovec place{text.data(), text.size()};
        msghdr message{};
        message.msg_name = &sender;
        message.msg_namelen = sizeof sender;
        message.msg_iov = &place;
        message.msg_iovlen = 1;
        message.msg_control = control.data();
        message.msg_controllen = control.size();
        const ssize_t length = recvmsg(socket_.get(), &message, MSG_DONTWAIT | MSG_CMSG_CLOEXEC);
        if (length < 0) {
            if (errno == EINTR) continue;
            if (errno == EAGAIN) break;
            // Too many came at once: what the lost ones said is to be found out.
            isAbout = true;
            if (errno != ENOBUFS) socket_.reset();
            continue;
        }
        if (!check_(message)) continue;
        const auto event = parseKernelEvent({text.data(), static_cast<std::size_t>(length)});
        isAbout |= event && event->subsystem == subsystem;
    }
    return isAbout;
}

}  // namespace calorivo
