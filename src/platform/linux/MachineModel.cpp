#include "platform/linux/MachineModel.h"

#include "platform/linux/Sysfs.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace calorivo {

namespace {

/// What makers leave in the fields that they forget.
constexpr std::array<std::string_view, 9> fillers{
    "System Product Name",
    "To Be Filled By O.E.M.",
    "To be filled by O.E.M.",
    "Default string",
    "Not Applicable",
    "Not Specified",
    "System Version",
    "Undefined",
    "None",
};

std::string cleaned(std::string text) {
    text.resize(std::min(text.find('\0'), text.size()));
    const auto isBlank = [](char c) { return static_cast<unsigned char>(c) <= ' '; };
    text.erase(std::find_if_not(text.rbegin(), text.rend(), isBlank).base(), text.end());
    text.erase(text.begin(), std::find_if_not(text.begin(), text.end(), isBlank));
    std::erase_if(text, [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7f'; });
    return text;
}

std::optional<std::string> nameIn(int folder, const char* file) {
    std::string text = cleaned(readAttribute(folder, file).value_or(""));
    if (text.empty() || std::find(fillers.begin(), fillers.end(), text) != fillers.end()) return std::nullopt;
    return text;
}

}  // namespace

std::optional<std::string> machineModel(const std::string& sys) {
    if (const FileDescriptor dmi = openFolder(sys + "/class/dmi/id"); dmi.isOpen()) {
        if (auto product = nameIn(dmi.get(), "product_name")) return product;
        if (auto board = nameIn(dmi.get(), "board_name")) return board;
    }
    const FileDescriptor tree = openFolder(sys + "/firmware/devicetree/base");
    if (!tree.isOpen()) return std::nullopt;
    if (auto model = nameIn(tree.get(), "model")) return model;
    return nameIn(tree.get(), "compatible");
}

}  // namespace calorivo
