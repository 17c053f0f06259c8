#pragma once

#include <cstdint>

namespace calorivo {

using OSType = std::uint32_t;
using OSErr = std::int16_t;

inline constexpr OSErr noErr = 0;
/// There is nothing under this selector.
inline constexpr OSErr gestaltUndefSelectorErr = -5551;

/// Four characters as a selector.
[[nodiscard]] constexpr OSType selector(const char (&text)[5]) {
    OSType value = 0;
    for (int i = 0; i < 4; ++i) value = value << 8U | static_cast<unsigned char>(text[i]);
    return value;
}

inline constexpr OSType gestaltSystemVersion = selector("sysv");
inline constexpr OSType gestaltSystemVersionMajor = selector("sys1");
inline constexpr OSType gestaltSystemVersionMinor = selector("sys2");
inline constexpr OSType gestaltSystemVersionBugFix = selector("sys3");

/// Facts about the running system, asked for by selectors. Any thread.
class SystemSelectors {
  public:
    SystemSelectors() = default;
    SystemSelectors(const SystemSelectors&) = delete;
    SystemSelectors& operator=(const SystemSelectors&) = delete;
    virtual ~SystemSelectors() = default;

    /// `response` is set on success only.
    [[nodiscard]] virtual OSErr Gestalt(OSType selector, std::int32_t& response) const = 0;
};

}  // namespace calorivo
