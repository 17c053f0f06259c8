#include "platform/FileURL.h"

#include <charconv>
#include <system_error>

namespace calorivo {

namespace {

constexpr std::string_view scheme = "file://";

bool isWrittenAsItIs(char c) {
    constexpr std::string_view others = "-._~/";
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           others.find(c) != std::string_view::npos;
}

/// The byte that the two digits stand for; false when they are none.
bool readByte(std::string_view digits, unsigned char& byte) {
    if (digits.size() != 2) return false;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + 2, byte, 16);
    return error == std::errc{} && end == digits.data() + 2;
}

}  // namespace

std::string fileURLWithPath(std::string_view path) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string url(scheme);
    for (const char c : path) {
        if (isWrittenAsItIs(c)) {
            url += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        url += '%';
        url += digits[byte >> 4U];
        url += digits[byte & 15U];
    }
    return url;
}

std::string pathOfFileURL(std::string_view url) {
    if (!url.starts_with(scheme) || url.substr(scheme.size()).substr(0, 1) != "/") return {};
    url.remove_prefix(scheme.size());
    std::string path;
    for (std::size_t i = 0; i < url.size(); ++i) {
        unsigned char byte = 0;
        if (url[i] == '%' && readByte(url.substr(i + 1, 2), byte)) {
            path += static_cast<char>(byte);
            i += 2;
        } else {
            path += url[i];
        }
    }
    return path;
}

std::string URLByDeletingLastPathComponent(std::string_view url) {
    return std::string(url.substr(0, url.rfind('/') + 1));
}

}  // namespace calorivo
