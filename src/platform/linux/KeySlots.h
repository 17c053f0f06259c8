#pragma once

#include "platform/linux/KeyStore.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

// Which keys there are for each kind of sensor.

namespace calorivo {

/// What a sensor is, as far as its key goes.
enum class KeyFamily : std::uint8_t {
    skip,
    fan,
    literal,
    cpuPackage,
    cpuCore,
    cpuCcd,
    cpuRelative,
    cpuSocket,
    cpuFirmware,
    cpuPeci,
    gpuEdge,
    gpuHotspot,
    gpuMemory,
    gpu,
    memoryModule,
    drive,
    wireless,
    network,
    board,
    ambient,
    chipset,
    battery,
    psu,
    vrm,
    other,
};

struct KeyFamilyRow {
    /// As the rule file writes it.
    std::string_view name;
    KeyFamily family;
    /// The keys in the order in which they are handed out: words of four positions, each a character or a set
    /// in brackets; the last position runs first.
    std::string_view slots;
};

/// Every family that a rule may name. Cores leave out the third characters that belong to other areas (G, S)
/// or would be listed twice (X); memory leaves out "2", network the slots of fixed names: the numbers of
/// generic names would come out twice.
inline constexpr std::array<KeyFamilyRow, 24> keyFamilies{{
    {"skip", KeyFamily::skip, ""},
    {"fan", KeyFamily::fan, ""},
    {"cpu-package", KeyFamily::cpuPackage, "TC[0-9C-F]D"},
    {"cpu-core", KeyFamily::cpuCore, "TC[1-9]C TC[A-FH-RT-WYZa-z]c"},
    {"cpu-ccd", KeyFamily::cpuCcd, "TC[1-9]C TC[A-FH-RT-WYZa-z]c"},
    {"cpu-relative", KeyFamily::cpuRelative, "TCXr"},
    {"cpu-socket", KeyFamily::cpuSocket, "TC[0-9A-F]H"},
    {"cpu-firmware", KeyFamily::cpuFirmware, "TC[0-9A-E]P"},
    {"cpu-peci", KeyFamily::cpuPeci, "TCXC"},
    {"gpu-edge", KeyFamily::gpuEdge, "TG[0-9A-Za-z]H"},
    {"gpu-hotspot", KeyFamily::gpuHotspot, "TG[0-9A-Za-z]H"},
    {"gpu-memory", KeyFamily::gpuMemory, "TG[0-9A-Za-z]H"},
    {"gpu", KeyFamily::gpu, "TG[0-9A-Za-z]P"},
    {"memory-module", KeyFamily::memoryModule, "TM[013-9A-F]S TM[0-9ABD-Za-z]D"},
    {"drive", KeyFamily::drive, "TH0[AB] TH[0-8]P"},
    {"wireless", KeyFamily::wireless, "TW0P TW[1-9A-Za-z]x"},
    {"network", KeyFamily::network, "Te[1-46-9F-Za-z]S"},
    {"board", KeyFamily::board, "TS[02]p"},
    {"ambient", KeyFamily::ambient, "TA0P TS[02]p"},
    {"chipset", KeyFamily::chipset, "TPCD"},
    {"battery", KeyFamily::battery, "TB[12]T"},
    {"psu", KeyFamily::psu, "Tp[01]C Tp[0-5]P Tp[23]H Tm0P Ta0P"},
    {"vrm", KeyFamily::vrm, "Tp[0-5]P Tp[23]H Tm0P Ta0P"},
    {"other", KeyFamily::other, ""},
}};

/// Where every family goes on when its own keys are used up, and "other" begins. The fourth character is
/// never G or g, which discovery passes over. Keys whose upper-case twin is in the list come last.
inline constexpr std::string_view overflowSlots =
    "TN[0-9A-Za-z]x TN[0-9A-Z][0-9A-FH-WYZ] TN[a-z][0-9A-FH-WYZ] TN[0-9A-Za-z][a-fh-wyz] TN[0-9A-Za-z]X";

/// The row of this name; null when there is none.
[[nodiscard]] const KeyFamilyRow* keyFamilyNamed(std::string_view name);

/// Whether a temperature may have this key: four letters or digits, the first T, the fourth not G or g, and
/// none of the keys that change the meaning of others.
[[nodiscard]] bool isTemperatureKey(std::string_view key);
/// Whether a fan may have it: "F0" to "F9".
[[nodiscard]] bool isFanKey(std::string_view key);

/// Goes through the keys of a text such as "TC[1-9]C TCXr", which must be a constant of the program.
class SlotCursor {
  public:
    explicit SlotCursor(std::string_view words) : rest_(words) {}
    /// The next key; none after the last.
    [[nodiscard]] std::optional<std::string> next();

  private:
    bool beginWord();

    std::string_view rest_;
    std::array<std::string, 4> choices_;
    std::size_t index_ = 0;
    std::size_t count_ = 0;
};

/// Hands out free keys, the lowest of a family first. Borrows the store, in which every key handed out must
/// be assigned before the next is asked for.
class KeySlots {
  public:
    explicit KeySlots(const KeyStore& store) : store_(store), overflow_(overflowSlots) {}

    /// A free key of the family, or an overflow key; empty when even those are used up.
    [[nodiscard]] std::string take(KeyFamily family);
    /// `key` itself when it is free, else an overflow key.
    [[nodiscard]] std::string takeLiteral(std::string_view key);

  private:
    [[nodiscard]] std::string nextFree(SlotCursor& cursor) const;

    const KeyStore& store_;
    std::map<KeyFamily, SlotCursor> cursors_;
    SlotCursor overflow_;
};

}  // namespace calorivo
