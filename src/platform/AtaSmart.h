#pragma once

#include "platform/IOKit.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace calorivo {

/// One block of a drive's identify or SMART data.
inline constexpr std::size_t ataBlockSize = 512;
using AtaBlock = std::array<std::uint8_t, ataBlockSize>;

/// The name of an interface.
using CFUUIDBytes = std::array<std::uint8_t, 16>;

inline constexpr CFUUIDBytes kIOATASMARTUserClientTypeID{0x24, 0x51, 0x4B, 0x7A, 0x28, 0x04, 0x11, 0xD6,
                                                         0x8A, 0x02, 0x00, 0x30, 0x65, 0x70, 0x48, 0x66};
inline constexpr CFUUIDBytes kIOCFPlugInInterfaceID{0xC2, 0x44, 0xE8, 0x58, 0x10, 0x9C, 0x11, 0xD4,
                                                    0x91, 0xD4, 0x00, 0x50, 0xE4, 0xC6, 0x42, 0x6F};
inline constexpr CFUUIDBytes kIOATASMARTInterfaceID{0x08, 0xAB, 0xE2, 0x1C, 0x20, 0xD4, 0x11, 0xD6,
                                                    0x8D, 0xF6, 0x00, 0x03, 0x93, 0x5A, 0x76, 0xB2};

/// The answer of QueryInterface: 0 for success.
using HRESULT = std::int32_t;

/// The SMART commands of one drive, in use until Release. Every call but Release may take long and gives
/// io_return::success or a failure.
class IOATASMARTInterface {
  public:
    IOATASMARTInterface() = default;
    IOATASMARTInterface(const IOATASMARTInterface&) = delete;
    IOATASMARTInterface& operator=(const IOATASMARTInterface&) = delete;

    virtual kern_return_t SMARTEnableDisableOperations(bool enable) = 0;
    virtual kern_return_t SMARTEnableDisableAutosave(bool enable) = 0;
    /// Whether the drive expects to fail.
    virtual kern_return_t SMARTReturnStatus(bool& exceededCondition) = 0;
    virtual kern_return_t SMARTReadData(AtaBlock& data) = 0;
    /// Fails unless the checksum of the data is right.
    virtual kern_return_t SMARTValidateReadData(const AtaBlock& data) = 0;
    /// `size` holds the room in `buffer`, receives what was written.
    virtual kern_return_t GetATAIdentifyData(std::span<std::uint8_t> buffer, std::uint32_t& size) = 0;
    virtual std::uint32_t Release() = 0;

  protected:
    ~IOATASMARTInterface() = default;  // its provider owns it
};

/// What a drive's service offers, in use until it is destroyed.
class IOCFPlugInInterface {
  public:
    IOCFPlugInInterface() = default;
    IOCFPlugInInterface(const IOCFPlugInInterface&) = delete;
    IOCFPlugInInterface& operator=(const IOCFPlugInInterface&) = delete;

    /// Success only together with an interface.
    virtual HRESULT QueryInterface(const CFUUIDBytes& interfaceID, IOATASMARTInterface*& interface) = 0;

  protected:
    ~IOCFPlugInInterface() = default;  // its provider owns it
};

/// Which drives are sought: those of a class, or those with all of these properties.
struct DriveMatching {
    std::string className;
    std::vector<std::pair<std::string, bool>> propertyMatch;
    friend bool operator==(const DriveMatching&, const DriveMatching&) = default;
};

/// The platform's services for SMART drives. One thread at a time, any thread; calls may take long.
class AtaSmart {
  public:
    AtaSmart() = default;
    AtaSmart(const AtaSmart&) = delete;
    AtaSmart& operator=(const AtaSmart&) = delete;
    virtual ~AtaSmart() = default;

    [[nodiscard]] virtual DriveMatching IOServiceMatching(std::string_view className) const {
        return {std::string(className), {}};
    }
    virtual kern_return_t IOServiceGetMatchingServices(mach_port_t masterPort, const DriveMatching& matching,
                                                       io_iterator_t& services) = 0;
    /// 0 when there is no further object.
    [[nodiscard]] virtual io_object_t IOIteratorNext(io_iterator_t iterator) = 0;
    virtual kern_return_t IOObjectRelease(io_object_t object) = 0;
    /// Success only together with a plug-in.
    virtual kern_return_t IOCreatePlugInInterfaceForService(io_service_t service,
                                                            const CFUUIDBytes& pluginType,
                                                            const CFUUIDBytes& interfaceType,
                                                            IOCFPlugInInterface*& plugIn) = 0;
    virtual kern_return_t IODestroyPlugInInterface(IOCFPlugInInterface* plugIn) = 0;
};

/// The volumes that are mounted. Any thread.
class MountedVolumes {
  public:
    MountedVolumes() = default;
    MountedVolumes(const MountedVolumes&) = delete;
    MountedVolumes& operator=(const MountedVolumes&) = delete;
    virtual ~MountedVolumes() = default;

    [[nodiscard]] virtual std::vector<std::string> mountedLocalVolumePaths() = 0;
    /// The device under a volume, "disk1s2"; empty when there is none.
    [[nodiscard]] virtual std::string BSDNameOfVolume(const std::string& path) = 0;
    [[nodiscard]] virtual std::string displayNameAtPath(const std::string& path) = 0;
};

}  // namespace calorivo
