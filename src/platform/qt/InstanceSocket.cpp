#include "platform/qt/InstanceSocket.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>

namespace calorivo {

namespace {

constexpr std::size_t longestText = 4000;

/// A socket's name with the type that the calls want.
struct Address {
    sockaddr_un name{};
    socklen_t length = sizeof(sockaddr_un);

    [[nodiscard]] sockaddr* get() { return static_cast<sockaddr*>(static_cast<void*>(&name)); }
};

/// Empty for a path that is too long for a socket.
std::optional<Address> addressOf(const std::string& path) {
    Address address;
    address.name.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.name.sun_path) return std::nullopt;
    std::memcpy(address.name.sun_path, path.data(), path.size());
    return address;
}

int datagramSocket() { return socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0); }

/// A socket to which an answer can be sent: the system finds a name for it that is gone with it.
int callingSocket() {
    const int descriptor = datagramSocket();
    Address any;
    any.name.sun_family = AF_UNIX;
    if (descriptor < 0 || bind(descriptor, any.get(), sizeof(sa_family_t)) == 0) return descriptor;
    close(descriptor);
    return -1;
}

bool waitToRead(int descriptor, int milliseconds) {
    pollfd waiting{descriptor, POLLIN, 0};
    return poll(&waiting, 1, milliseconds) == 1;
}

}  // namespace

InstanceSocket::InstanceSocket(const std::string& folder, const std::string& name)
    : path_(folder + '/' + name + ".socket") {
    const std::string lockPath = folder + '/' + name + ".lock";
    lock_ = open(lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600);
    if (lock_ < 0) return;
    if (flock(lock_, LOCK_EX | LOCK_NB) == 0)
        listen();
    else
        isSecond_ = errno == EWOULDBLOCK;
}

InstanceSocket::~InstanceSocket() {
    if (socket_ >= 0) {
        unlink(path_.c_str());
        close(socket_);
    }
    if (lock_ >= 0) close(lock_);
}

void InstanceSocket::listen() {
    auto address = addressOf(path_);
    if (!address) return;
    // Whoever left a socket behind has ended: the lock was free.
    unlink(path_.c_str());
    socket_ = datagramSocket();
    if (socket_ >= 0 && bind(socket_, address->get(), address->length) != 0) {
        close(socket_);
        socket_ = -1;
    }
}

std::optional<std::string> InstanceSocket::take() const {
    std::array<char, longestText> buffer{};
    Address caller;
    const ssize_t length = recvfrom(socket_, buffer.data(), buffer.size(), 0, caller.get(), &caller.length);
    if (length < 0) return std::nullopt;
    // A caller that is gone or listens to nobody needs no answer.
    sendto(socket_, "", 1, MSG_NOSIGNAL, caller.get(), caller.length);
    return std::string(buffer.data(), static_cast<std::size_t>(length));
}

bool InstanceSocket::call(std::string_view text, int patienceMilliseconds) const {
    auto address = addressOf(path_);
    const int descriptor = callingSocket();
    if (!address || descriptor < 0) return false;
    const std::string_view sent = text.substr(0, longestText);
    const bool isSent =
        sendto(descriptor, sent.data(), sent.size(), MSG_NOSIGNAL, address->get(), address->length) >= 0;
    const bool isAnswered = isSent && waitToRead(descriptor, patienceMilliseconds);
    close(descriptor);
    return isAnswered;
}

}  // namespace calorivo
