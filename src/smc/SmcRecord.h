#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace calorivo {

/// The record exchanged with the "AppleSMC" user client, the same for input and output: 80 bytes in the
/// machine's own byte order. The layout is the service's, not ours; its gaps are named, so that a cleared
/// record is cleared in every byte.
struct SMCKeyData {
    struct Version {
        std::uint8_t major;
        std::uint8_t minor;
        std::uint8_t build;
        std::uint8_t reserved;
        std::uint16_t release;
    };
    struct PowerLimit {
        std::uint16_t version;
        std::uint16_t length;
        std::uint32_t cpuPLimit;
        std::uint32_t gpuPLimit;
        std::uint32_t memPLimit;
    };
    struct KeyInfo {
        std::uint32_t dataSize;
        std::uint32_t dataType;
        std::uint8_t dataAttributes;
        std::array<std::uint8_t, 3> padding;
    };

    std::uint32_t key;
    Version vers;
    std::array<std::uint8_t, 2> versPadding;
    PowerLimit pLimitData;
    KeyInfo keyInfo;
    std::uint8_t result;
    std::uint8_t status;
    std::uint8_t data8;
    std::uint8_t data8Padding;
    std::uint32_t data32;
    std::array<std::uint8_t, 32> bytes;
};

static_assert(std::is_trivially_copyable_v<SMCKeyData> && std::is_standard_layout_v<SMCKeyData>);
static_assert(std::has_unique_object_representations_v<SMCKeyData>);
static_assert(sizeof(SMCKeyData) == 80);
static_assert(offsetof(SMCKeyData, key) == 0);
static_assert(offsetof(SMCKeyData, vers.major) == 4);
static_assert(offsetof(SMCKeyData, vers.minor) == 5);
static_assert(offsetof(SMCKeyData, vers.build) == 6);
static_assert(offsetof(SMCKeyData, vers.reserved) == 7);
static_assert(offsetof(SMCKeyData, vers.release) == 8);
static_assert(offsetof(SMCKeyData, pLimitData.version) == 12);
static_assert(offsetof(SMCKeyData, pLimitData.length) == 14);
static_assert(offsetof(SMCKeyData, pLimitData.cpuPLimit) == 16);
static_assert(offsetof(SMCKeyData, pLimitData.gpuPLimit) == 20);
static_assert(offsetof(SMCKeyData, pLimitData.memPLimit) == 24);
static_assert(offsetof(SMCKeyData, keyInfo.dataSize) == 28);
static_assert(offsetof(SMCKeyData, keyInfo.dataType) == 32);
static_assert(offsetof(SMCKeyData, keyInfo.dataAttributes) == 36);
static_assert(offsetof(SMCKeyData, result) == 40);
static_assert(offsetof(SMCKeyData, status) == 41);
static_assert(offsetof(SMCKeyData, data8) == 42);
static_assert(offsetof(SMCKeyData, data32) == 44);
static_assert(offsetof(SMCKeyData, bytes) == 48);

/// The command codes that `data8` carries.
enum class SmcCommand : std::uint8_t {
    readBytes = 5,
    writeBytes = 6,
    readKeyByIndex = 8,
    readKeyInformation = 9,
};

/// The user client's structure method through which every request goes.
inline constexpr std::uint32_t smcStructMethodSelector = 2;

}  // namespace calorivo
