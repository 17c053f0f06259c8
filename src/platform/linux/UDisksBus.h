#pragma once

#include <chrono>
#include <cstdint>
#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <variant>

namespace calorivo {

/// Properties of an object by their names; those of other types are left out.
using BusProperties =
    std::map<std::string, std::variant<bool, std::uint64_t, double, std::string>, std::less<>>;

/// What came of a call.
struct BusReply {
    /// 0, or an errno: ENOTCONN without a bus, ETIMEDOUT without an answer in time, EPROTO for an answer of
    /// another type, EREMOTEIO for an error that the service gave, which is then named.
    int error = 0;
    std::string errorName{};
    BusProperties properties{};
    /// Where the method gave one.
    std::optional<std::uint8_t> byte{};
};

/// The service UDisks2 on the system's message bus, which is told by DBUS_SYSTEM_BUS_ADDRESS as usual. The
/// library that speaks to the bus is loaded at the first call, and the bus connected to; both may be missing.
/// Never starts the service, never lets it ask for a password. One thread.
class UDisksBus {
  public:
    explicit UDisksBus(std::string library);
    UDisksBus(const UDisksBus&) = delete;
    UDisksBus& operator=(const UDisksBus&) = delete;
    ~UDisksBus();

    /// All properties of one of an object's interfaces.
    [[nodiscard]] BusReply properties(const std::string& path, const std::string& interface,
                                      std::chrono::microseconds patience);
    /// A method that takes a table of options, of which these are true; what it gives must be a byte or
    /// nothing.
    [[nodiscard]] BusReply call(const std::string& path, const std::string& interface,
                                const std::string& method, std::initializer_list<const char*> options,
                                std::chrono::microseconds patience);

  private:
    class Library;
    class Connection;

    [[nodiscard]] Connection* connection(std::chrono::microseconds patience, int& error);
    /// A connection on which something went wrong is not used again: its answer might come yet.
    void dropAfter(const BusReply& reply);

    std::string libraryName_;
    std::unique_ptr<const Library> library_;
    std::unique_ptr<Connection> connection_;
};

}  // namespace calorivo
