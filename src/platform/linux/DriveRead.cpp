#include "platform/linux/DriveRead.h"

#include "platform/linux/DriveBlocks.h"
#include "platform/linux/DriveScan.h"
#include "platform/linux/HwmonScan.h"
#include "platform/linux/SgIo.h"
#include "platform/linux/Sysfs.h"

#include <algorithm>
#include <cerrno>
#include <string_view>

namespace calorivo {

namespace {

/// A reading of the kernel's, or why there is none.
struct KernelTemperature {
    int celsius = 0;
    int error = ENOENT;
};

bool isSuspended(int device) {
    return isAsleepStatus(readAttribute(device, "power/runtime_status").value_or(""));
}

/// The temperature of the chip with this name in a folder: "hwmon3" in there.
KernelTemperature chipTemperature(int folder, std::string_view chipName) {
    // Kelvin's odd 0.15 degrees are lost on the way from whole kelvins: 37850 is 311 K, which is 38 °C.
    constexpr long roundingUp = 150;
    constexpr long lowest = -40'000;
    constexpr long highest = 150'000;
    for (const std::string& name : namesInFolder(folder)) {
        if (!name.starts_with("hwmon")) continue;
        const FileDescriptor chip = openFolderAt(folder, name.c_str());
        if (!chip.isOpen() || readAttribute(chip.get(), "name") != chipName) continue;
        const FileDescriptor input = openAttribute(chip.get(), "temp1_input");
        if (!input.isOpen()) return {0, errno};
        const AttributeReading reading = readOpenNumber(input.get());
        if (reading.error != 0) return {0, reading.error};
        // A status of the drive may come in the place of a temperature.
        if (reading.value < lowest || reading.value > highest) return {0, ERANGE};
        return {static_cast<int>((reading.value + roundingUp) / 1000), 0};
    }
    return {};
}

void setTemperature(DriveReading& reading, DriveSource source, int celsius) {
    reading.source = source;
    reading.smart = temperatureBlock(celsius);
    reading.isSwitchedOn = reading.hasStatus = reading.hasData = true;
}

std::string trimmedBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

/// An ATA drive's page 89h holds its identify data; the last byte may be a line feed, which reading an
/// attribute takes off.
std::optional<AtaBlock> identifyDataInPage(std::string_view page) {
    constexpr std::size_t begin = 60;
    if (page.size() + 1 < begin + ataBlockSize) return std::nullopt;
    AtaBlock block;
    block.back() = '\n';
    page = page.substr(begin, ataBlockSize);
    std::copy(page.begin(), page.end(), block.begin());
    return block;
}

std::optional<AtaBlock> identifyDisk(int device) {
    const auto page = readAttribute(device, "vpd_pg89");
    if (auto block = identifyDataInPage(page.value_or(""))) return block;
    constexpr std::size_t serialBegin = 4;
    const auto model = readAttribute(device, "model");
    const auto serial = readAttribute(device, "vpd_pg80");
    if (!model || !serial || serial->size() <= serialBegin) return std::nullopt;
    return identifyBlock(trimmedBlanks(*model), trimmedBlanks(serial->substr(serialBegin)));
}

std::optional<AtaBlock> identifyNvme(int folder) {
    const auto model = readAttribute(folder, "model");
    const auto serial = readAttribute(folder, "serial");
    if (!model || !serial) return std::nullopt;
    return identifyBlock(trimmedBlanks(*model), trimmedBlanks(*serial));
}

void setIdentify(DriveReading& reading, const std::optional<AtaBlock>& identify) {
    reading.hasIdentify = identify.has_value();
    if (identify) reading.identify = *identify;
}

FileDescriptor openDisk(const std::string& name, const std::string& sys) {
    return openFolder(sys + "/block/" + name + "/device");
}
FileDescriptor openNvme(const std::string& name, const std::string& sys) {
    return openFolder(sys + "/class/nvme/" + name);
}

/// By the drive's own SMART commands. Nothing is switched on or off: the drive would keep it for good, and
/// other programs rely on it.
void readSmart(AtaDevice& disk, DriveReading& reading) {
    AtaBlock identify{};
    reading.error = disk.read(ataIdentifyDevice, identify);
    if (reading.error != 0) return;
    reading.identify = identify;
    reading.hasIdentify = true;
    reading.source = DriveSource::smart;
    reading.isSwitchedOn = isSmartSwitchedOn(reading.identify);
    if (!reading.isSwitchedOn) return;
    AtaRegisters registers;
    reading.error = disk.ask(ataSmartReturnStatus, registers);
    reading.hasStatus = reading.error == 0 || reading.error == ENODATA;
    if (!reading.hasStatus) return;
    AtaBlock smart{};
    reading.error = disk.read(ataSmartReadData, smart);
    reading.hasData = reading.error == 0;
    if (reading.hasData) reading.smart = withoutWearAttribute(reading.identify, smart);
}

/// Only a privileged process may ask the drive itself.
bool isRefusal(int error) { return error == EACCES || error == EPERM || error == ENOENT; }

/// Whether the platters of a disk may stand still while it is not suspended.
bool isRotating(int device, const std::string& name) {
    return readAttribute(device, ("block/" + name + "/queue/rotational").c_str()).value_or("1") != "0";
}

/// By UDisks2; leaves everything as it is where that does not know the drive.
void readFromUDisks(const std::string& block, const DriveDevices& devices, DriveReading& reading) {
    if (block.empty() || !devices.readUDisks) return;
    const UDisksReading told = devices.readUDisks(block);
    if (told.error == ENOENT) return;
    reading.error = told.error;
    reading.isAsleep = told.isAsleep;
    if (told.error != 0) reading.failed = DriveSource::udisks;
    if (told.error != 0 || told.isAsleep) return;
    if (!reading.hasIdentify) setIdentify(reading, identifyBlock(told.model, told.serial));
    reading.source = DriveSource::udisks;
    if (told.isSwitchedOn) setTemperature(reading, DriveSource::udisks, told.celsius);
}

DriveReading readDisk(const std::string& name, const DriveRoots& roots, const DriveDevices& devices) {
    DriveReading reading;
    // Held open, the folder stays this drive's, whoever gets its name meanwhile.
    const FileDescriptor device = openDisk(name, roots.sys);
    if (!device.isOpen()) {
        reading.error = ENODEV;
        return reading;
    }
    setIdentify(reading, identifyDisk(device.get()));
    reading.isAsleep = isSuspended(device.get());
    if (reading.isAsleep) return reading;  // to open it would already wake it

    int refusal = ENOENT;
    const auto disk = roots.dev.empty() ? nullptr : devices.openAta(roots.dev + "/" + name, refusal);
    AtaRegisters power;
    const int powerError = disk ? disk->ask(ataCheckPowerMode, power) : refusal;
    reading.isAsleep = powerError == 0 && isStandby(power);
    const bool isRefused = !roots.dev.empty() && isRefusal(powerError);
    if (isRefused && devices.isInStandby && isRotating(device.get(), name))
        reading.isAsleep = devices.isInStandby(name);
    if (reading.isAsleep) return reading;

    const FileDescriptor chips = openFolderAt(device.get(), "hwmon");
    const KernelTemperature temperature =
        chips.isOpen() ? chipTemperature(chips.get(), "drivetemp") : KernelTemperature{};
    if (temperature.error == 0 && reading.hasIdentify)
        setTemperature(reading, DriveSource::drivetemp, temperature.celsius);
    else if (disk && !isRefusal(powerError))
        readSmart(*disk, reading);
    else
        reading.error = temperature.error != ENOENT ? temperature.error : powerError;
    if (isRefused && !reading.hasData) readFromUDisks(name, devices, reading);
    return reading;
}

/// The chip stands in the drive's own folder, in older kernels in its PCI device's.
KernelTemperature nvmeTemperature(int drive, int device) {
    const KernelTemperature temperature = chipTemperature(drive, "nvme");
    if (temperature.error != ENOENT || device < 0) return temperature;
    const FileDescriptor chips = openFolderAt(device, "hwmon");
    return chips.isOpen() ? chipTemperature(chips.get(), "nvme") : temperature;
}

/// The block device of the drive's first namespace; empty where it has none. One that is reached over
/// several paths is called "nvme1n1" itself, and "nvme1c0n1" on the path of this drive.
std::string namespaceOf(int drive, const std::string& name) {
    for (std::string entry : namesInFolder(drive)) {
        if (!isNvmeName(entry)) continue;
        const std::size_t path = entry.find('c');
        const std::size_t number = entry.rfind('n');
        if (number == 0 || number == std::string::npos) continue;
        if (path == std::string::npos && !entry.starts_with(name + "n")) continue;
        return path == std::string::npos ? entry : entry.erase(path, number - path);
    }
    return {};
}

DriveReading readNvme(const std::string& name, const DriveRoots& roots, const DriveDevices& devices) {
    DriveReading reading;
    const FileDescriptor folder = openNvme(name, roots.sys);
    if (folder.isOpen()) setIdentify(reading, identifyNvme(folder.get()));
    if (!reading.hasIdentify) {
        reading.error = ENODEV;
        return reading;
    }
    const FileDescriptor device = openFolderAt(folder.get(), "device");
    reading.isAsleep = device.isOpen() && isSuspended(device.get());
    if (reading.isAsleep) return reading;
    // While it is being reset the drive would hold whoever asks it.
    if (readAttribute(folder.get(), "state").value_or("live") != "live") {
        reading.error = ENODEV;
        return reading;
    }
    if (const auto temperature = nvmeTemperature(folder.get(), device.get()); temperature.error == 0) {
        setTemperature(reading, DriveSource::nvme, temperature.celsius);
        return reading;
    }
    NvmeSmartLog log{};
    reading.error = roots.dev.empty() ? ENOENT : devices.readLog(roots.dev + "/" + name, log);
    if (reading.error == 0) setTemperature(reading, DriveSource::smartLog, temperatureInNvmeLog(log));
    if (!roots.dev.empty() && isRefusal(reading.error))
        readFromUDisks(namespaceOf(folder.get(), name), devices, reading);
    return reading;
}

}  // namespace

DriveDevices systemDriveDevices() {
    const auto udisks = std::make_shared<UDisks>();
    return {openSgIo, readNvmeLog, [udisks](const std::string& block) { return udisks->isInStandby(block); },
            [udisks](const std::string& block) { return udisks->read(block); }};
}

std::optional<AtaBlock> identifyDrive(const std::string& name, const std::string& sys) {
    const FileDescriptor folder = isNvmeName(name) ? openNvme(name, sys) : openDisk(name, sys);
    if (!folder.isOpen()) return std::nullopt;
    return isNvmeName(name) ? identifyNvme(folder.get()) : identifyDisk(folder.get());
}

DriveReading readDrive(const std::string& name, const DriveRoots& roots, const DriveDevices& devices) {
    return isNvmeName(name) ? readNvme(name, roots, devices) : readDisk(name, roots, devices);
}

}  // namespace calorivo
