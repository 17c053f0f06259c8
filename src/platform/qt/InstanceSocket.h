#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace calorivo {

/// How instances of a program meet without a bus: by a locked file and a socket in a folder. Lock and socket
/// are the process's: both are free when it has ended, in whatever way. It never blocks, except for call().
class InstanceSocket {
  public:
    /// Tries to become the first one, as "NAME.lock" and "NAME.socket" in the folder.
    InstanceSocket(const std::string& folder, const std::string& name);
    ~InstanceSocket();
    InstanceSocket(const InstanceSocket&) = delete;
    InstanceSocket& operator=(const InstanceSocket&) = delete;

    /// Whether another process is the first one. Where nothing can be locked nobody is: two instances are
    /// better than none.
    [[nodiscard]] bool isSecond() const { return isSecond_; }

    /// For the first one: a descriptor that can be read when there is something to take; -1 when there never
    /// will be.
    [[nodiscard]] int descriptor() const { return socket_; }
    /// The text of the next waiting call, which is answered; none when no call waits.
    [[nodiscard]] std::optional<std::string> take() const;

    /// For a second one: sends a text of at most 4000 bytes to the first one. Whether it answered within so
    /// many milliseconds.
    [[nodiscard]] bool call(std::string_view text, int patienceMilliseconds) const;

  private:
    void listen();

    std::string path_;
    int lock_ = -1;
    int socket_ = -1;
    bool isSecond_ = false;
};

}  // namespace calorivo
