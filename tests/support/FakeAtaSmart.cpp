#include "support/FakeAtaSmart.h"

#include <algorithm>

namespace calorivo::test {

namespace {

constexpr io_iterator_t capableIterator = 100;
constexpr io_iterator_t blockStorageIterator = 200;

std::string nameOf(const CFUUIDBytes& identifier) {
    if (identifier == kIOATASMARTUserClientTypeID) return "user client";
    if (identifier == kIOCFPlugInInterfaceID) return "plug-in";
    return identifier == kIOATASMARTInterfaceID ? "SMART" : "?";
}

std::string textOf(const DriveMatching& matching) {
    std::string text = matching.className;
    for (const auto& [name, value] : matching.propertyMatch) text += name + (value ? "=yes" : "=no");
    return text;
}

}  // namespace

struct FakeAtaSmart::PlugIn final : IOCFPlugInInterface, IOATASMARTInterface {
    PlugIn(FakeAtaSmart& owner, FakeDrive drive) : owner_(owner), drive_(std::move(drive)) {}

    [[nodiscard]] kern_return_t answer(const std::string& call, const std::string& argument = {}) const {
        owner_.calls.push_back(argument.empty() ? call : call + " " + argument);
        const bool isFailing =
            std::ranges::find(drive_.failing, call) != drive_.failing.end() ||
            std::ranges::find(drive_.failing, call + " " + argument) != drive_.failing.end();
        return isFailing ? io_return::ioError : io_return::success;
    }

    HRESULT QueryInterface(const CFUUIDBytes& interfaceID, IOATASMARTInterface*& interface) override {
        const HRESULT result = answer("QueryInterface", nameOf(interfaceID));
        if (result == 0) interface = this;
        return result;
    }
    kern_return_t SMARTEnableDisableOperations(bool enable) override {
        return answer("SMARTEnableDisableOperations", enable ? "on" : "off");
    }
    kern_return_t SMARTEnableDisableAutosave(bool enable) override {
        return answer("SMARTEnableDisableAutosave", enable ? "on" : "off");
    }
    kern_return_t SMARTReturnStatus(bool& exceededCondition) override {
        exceededCondition = true;
        return answer("SMARTReturnStatus");
    }
    kern_return_t SMARTReadData(AtaBlock& data) override {
        const kern_return_t result =
            answer("SMARTReadData", data == AtaBlock{} ? "zeroed" : "with something in it");
        data = drive_.smart;  // a failing drive may leave anything there
        return result;
    }
    kern_return_t SMARTValidateReadData(const AtaBlock& data) override {
        return answer("SMARTValidateReadData", data == drive_.smart ? "what was read" : "something else");
    }
    kern_return_t GetATAIdentifyData(std::span<std::uint8_t> buffer, std::uint32_t& size) override {
        const kern_return_t result = answer("GetATAIdentifyData", std::to_string(size));
        if (result != io_return::success) return result;
        std::ranges::copy(drive_.identify, buffer.begin());
        size = static_cast<std::uint32_t>(drive_.identify.size());
        return result;
    }
    std::uint32_t Release() override {
        owner_.calls.emplace_back("Release");
        return 0;
    }

  private:
    FakeAtaSmart& owner_;
    FakeDrive drive_;
};

const std::vector<FakeDrive>& FakeAtaSmart::drivesOf(io_iterator_t iterator) const {
    return iterator < blockStorageIterator ? capable : blockStorage;
}

kern_return_t FakeAtaSmart::IOServiceGetMatchingServices(mach_port_t masterPort,
                                                         const DriveMatching& matching,
                                                         io_iterator_t& services) {
    calls.push_back("IOServiceGetMatchingServices " + std::to_string(masterPort) + " " + textOf(matching));
    if (isMatchingFailing) return io_return::error;
    services = matching.className.empty() ? capableIterator : blockStorageIterator;
    positions_[services] = 0;
    return io_return::success;
}

io_object_t FakeAtaSmart::IOIteratorNext(io_iterator_t iterator) {
    calls.push_back("IOIteratorNext " + std::to_string(iterator));
    std::size_t& position = positions_.at(iterator);
    if (position == drivesOf(iterator).size()) return 0;
    return iterator + static_cast<io_object_t>(++position);
}

kern_return_t FakeAtaSmart::IOObjectRelease(io_object_t object) {
    calls.push_back("IOObjectRelease " + std::to_string(object));
    return io_return::success;
}

kern_return_t FakeAtaSmart::IOCreatePlugInInterfaceForService(io_service_t service,
                                                              const CFUUIDBytes& pluginType,
                                                              const CFUUIDBytes& interfaceType,
                                                              IOCFPlugInInterface*& plugIn) {
    const io_iterator_t iterator = service < blockStorageIterator ? capableIterator : blockStorageIterator;
    const FakeDrive& drive = drivesOf(iterator).at(service - iterator - 1);
    const auto made = std::make_shared<PlugIn>(*this, drive);
    const kern_return_t result =
        made->answer("IOCreatePlugInInterfaceForService",
                     std::to_string(service) + " " + nameOf(pluginType) + ", " + nameOf(interfaceType));
    if (result != io_return::success) return result;
    plugIns_.push_back(made);
    plugIn = made.get();
    return result;
}

kern_return_t FakeAtaSmart::IODestroyPlugInInterface(IOCFPlugInInterface* plugIn) {
    calls.emplace_back("IODestroyPlugInInterface");
    return plugIn != nullptr ? io_return::success : io_return::badArgument;
}

}  // namespace calorivo::test
