#include "platform/linux/AppleSmcDevice.h"

#include "platform/linux/Sysfs.h"
#include "smc/SmcService.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <span>

namespace calorivo {

namespace {

/// How often an access is tried again when another program selects in between.
constexpr int tries = 3;
/// No controller holds as many keys; a larger count is nonsense.
constexpr std::uint32_t mostKeys = 4096;

class DriverWindow final : public SmcKeyWindow {
  public:
    DriverWindow(FileDescriptor folder, FileDescriptor index)
        : folder_(std::move(folder)),
          index_(std::move(index)),
          name_(openAttribute(folder_.get(), "key_at_index_name")),
          type_(openAttribute(folder_.get(), "key_at_index_type")),
          length_(openAttribute(folder_.get(), "key_at_index_data_length")),
          data_(openAttribute(folder_.get(), "key_at_index_data")) {}

    [[nodiscard]] std::uint32_t keyCount() override {
        const auto count = readAttributeNumber(folder_.get(), "key_count");
        return count && *count > 0 ? static_cast<std::uint32_t>(*count) : 0;
    }
    int select(std::uint32_t index) override {
        std::array<char, 16> text{};
        const auto end = std::to_chars(text.data(), text.data() + text.size(), index).ptr;
        const auto size = static_cast<std::size_t>(end - text.data());
        return pwrite(index_.get(), text.data(), size, 0) < 0 ? errno : 0;
    }
    [[nodiscard]] std::optional<std::uint32_t> selected() override { return number(index_.get()); }
    [[nodiscard]] std::optional<std::string> name() override { return text(name_.get()); }
    [[nodiscard]] std::optional<std::string> type() override { return text(type_.get()); }
    [[nodiscard]] std::optional<std::uint32_t> length() override { return number(length_.get()); }
    int data(std::array<std::uint8_t, 32>& bytes) override {
        return pread(data_.get(), bytes.data(), bytes.size(), 0) < 0 ? errno : 0;
    }

  private:
    static std::optional<std::string> text(int descriptor) {
        std::array<char, 8> buffer{};
        const ssize_t length = pread(descriptor, buffer.data(), buffer.size(), 0);
        // Four characters and a line feed; the characters may be anything, blanks included.
        return length >= 4 ? std::optional(std::string(buffer.data(), 4)) : std::nullopt;
    }
    static std::optional<std::uint32_t> number(int descriptor) {
        const AttributeReading reading = readOpenNumber(descriptor);
        if (reading.error != 0 || reading.value < 0) return std::nullopt;
        return static_cast<std::uint32_t>(reading.value);
    }

    FileDescriptor folder_;
    FileDescriptor index_;
    FileDescriptor name_;
    FileDescriptor type_;
    FileDescriptor length_;
    FileDescriptor data_;
};

}  // namespace

std::unique_ptr<SmcKeyWindow> openSmcKeyWindow(const std::string& folder) {
    FileDescriptor opened = openFolder(folder);
    if (!opened.isOpen() || !isRealSysfs(opened.get())) return nullptr;
    FileDescriptor index(openat(opened.get(), "key_at_index", O_RDWR | O_CLOEXEC));
    if (!index.isOpen()) return nullptr;
    return std::make_unique<DriverWindow>(std::move(opened), std::move(index));
}

std::optional<AppleSmcDevice::Key> AppleSmcDevice::describeKey(std::uint32_t index) {
    for (int attempt = 0; attempt < tries; ++attempt) {
        if (window_->select(index) != 0) return std::nullopt;
        const auto name = window_->name();
        const auto type = window_->type();
        const auto length = window_->length();
        if (window_->selected() != index) continue;
        if (!name || !type || !length) return std::nullopt;
        return Key{smcCode(*name), smcCode(*type), std::min<std::uint32_t>(*length, 32), index};
    }
    return std::nullopt;
}

bool AppleSmcDevice::describe() {
    window_ = open_();
    if (!window_) return false;
    const std::uint32_t temperature = smcCode("sp78");
    const std::uint32_t count = std::min(window_->keyCount(), mostKeys);
    for (std::uint32_t index = 0; index < count; ++index) {
        const auto key = describeKey(index);
        if (!key) continue;
        keys_.push_back(*key);
        const bool isTemperature = key->key >> 24 == 'T' && key->type == temperature;
        addItem(isTemperature ? FirstPass::read : FirstPass::leave);
    }
    return !keys_.empty();
}

void AppleSmcDevice::machineHasSlept() {
    window_.reset();
    nextSearch_ = {};
}

AppleSmcDevice::Pass AppleSmcDevice::beginPass() {
    constexpr auto searchInterval = std::chrono::seconds(2);
    if (!window_ && sinceBoot() >= nextSearch_) {
        nextSearch_ = sinceBoot() + searchInterval;
        window_ = open_();
    }
    return Pass::read;
}

void AppleSmcDevice::readItem(std::size_t item, const Reading& /*last*/, Reading& reading) {
    const Key& key = keys_[item];
    if (!window_) {
        reading.error = ENODEV;
        return;
    }
    for (int attempt = 0; attempt < tries; ++attempt) {
        reading.error = window_->select(key.index);
        if (reading.error == ENODEV) window_.reset();
        if (reading.error != 0) return;
        const auto name = window_->name();
        if (!name) {
            reading.error = EIO;
            return;
        }
        if (smcCode(*name) != key.key) continue;
        reading.bytes = {};
        const int error = window_->data(reading.bytes);
        if (window_->selected() != key.index) continue;
        reading.error = error;
        std::fill(reading.bytes.begin() + key.length, reading.bytes.end(), std::uint8_t{0});
        return;
    }
    reading.error = EAGAIN;
}

}  // namespace calorivo
