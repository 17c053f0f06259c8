#include "platform/linux/LinuxReachability.h"

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/SmallFile.h"

#include <sys/socket.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <system_error>
#include <vector>

namespace calorivo {

namespace {

constexpr std::uint32_t routeIsUp = 0x1;
constexpr std::uint32_t routeRefuses = 0x200;

std::vector<std::string_view> fieldsOf(std::string_view line) {
    constexpr std::string_view blanks = " \t";
    std::vector<std::string_view> fields;
    for (;;) {
        line.remove_prefix(std::min(line.size(), line.find_first_not_of(blanks)));
        if (line.empty()) return fields;
        fields.push_back(line.substr(0, line.find_first_of(blanks)));
        line.remove_prefix(fields.back().size());
    }
}

std::uint32_t hexadecimal(std::string_view text) {
    std::uint32_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [next, error] = std::from_chars(text.data(), end, number, 16);
    return error == std::errc() && next == end ? number : 0;
}

bool isZero(std::string_view digits, std::size_t length) {
    return digits.size() == length && digits.find_first_not_of('0') == std::string_view::npos;
}

template <typename IsWanted>
bool anyLine(std::string_view text, const IsWanted& isWanted) {
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        if (isWanted(fieldsOf(line))) return true;
        text.remove_prefix(std::min(text.size(), line.size() + 1));
    }
    return false;
}

}  // namespace

bool hasDefaultRoute(std::string_view routes) {
    // Iface Destination Gateway Flags RefCnt Use Metric Mask ...
    return anyLine(routes, [](const std::vector<std::string_view>& fields) {
        const std::uint32_t flags = fields.size() > 7 ? hexadecimal(fields[3]) : 0;
        return (flags & routeIsUp) != 0 && (flags & routeRefuses) == 0 && isZero(fields[1], 8) &&
               isZero(fields[7], 8);
    });
}

bool hasDefaultIpv6Route(std::string_view routes) {
    // destination prefix source prefix next-hop metric references use flags device
    return anyLine(routes, [](const std::vector<std::string_view>& fields) {
        const std::uint32_t flags = fields.size() > 9 ? hexadecimal(fields[8]) : 0;
        return (flags & routeIsUp) != 0 && (flags & routeRefuses) == 0 && isZero(fields[0], 32) &&
               isZero(fields[1], 2) && fields[9] != "lo";
    });
}

std::optional<std::uint32_t> LinuxReachability::flagsForAddress(const ZeroAddress& /*address*/) {
    const SmallFile ipv4 = readSmallFile(procFolder_ + "/net/route", SymbolicLinks::followed);
    const SmallFile ipv6 = readSmallFile(procFolder_ + "/net/ipv6_route", SymbolicLinks::followed);
    if (ipv4.state != SmallFile::State::read && ipv6.state != SmallFile::State::read) return std::nullopt;
    return hasDefaultRoute(ipv4.text) || hasDefaultIpv6Route(ipv6.text) ? ReachabilityFlags::reachable : 0U;
}

bool LinuxReachability::createConnection(const URLRequest& request) {
    const std::string_view url = request.url;
    if (!url.starts_with("https://") && !url.starts_with("http://")) return false;
    for (const int family : {AF_INET, AF_INET6})
        if (FileDescriptor(::socket(family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)).isOpen())
            return true;
    return false;
}

}  // namespace calorivo
