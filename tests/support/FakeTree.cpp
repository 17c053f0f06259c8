#include "support/FakeTree.h"

#include <atomic>
#include <fstream>
#include <random>

namespace calorivo::test {

namespace fs = std::filesystem;

FakeTree::FakeTree() {
    static std::atomic<unsigned> counter{0};
    const auto name =
        "calorivo-test-" + std::to_string(std::random_device{}()) + "-" + std::to_string(counter++);
    root_ = (fs::temp_directory_path() / name).string();
    fs::create_directories(root_);
}

FakeTree::~FakeTree() {
    std::error_code ignored;
    fs::remove_all(root_, ignored);
}

FakeTree& FakeTree::file(std::string_view relative, std::string_view text) {
    const fs::path whole = path(relative);
    fs::create_directories(whole.parent_path());
    std::ofstream(whole, std::ios::binary | std::ios::trunc) << text;
    return *this;
}

FakeTree& FakeTree::folder(std::string_view relative) {
    fs::create_directories(path(relative));
    return *this;
}

FakeTree& FakeTree::link(std::string_view relative, std::string_view target) {
    const fs::path whole = path(relative);
    fs::create_directories(whole.parent_path());
    fs::remove(whole);
    fs::create_symlink(target, whole);
    return *this;
}

FakeTree& FakeTree::remove(std::string_view relative) {
    fs::remove_all(path(relative));
    return *this;
}

std::string FakeTree::chip(int number, std::string_view name, std::string_view device) {
    const std::string entry = "hwmon" + std::to_string(number);
    std::string folder = "devices/" + std::string(device) + "/hwmon/" + entry;
    file(folder + "/name", std::string(name) + "\n");
    link(folder + "/device", "../../../" + fs::path(device).filename().string());
    link("class/hwmon/" + entry, "../../" + folder);
    return folder;
}

FakeTree& FakeTree::removeChip(int number) {
    const fs::path entry = path("class/hwmon/hwmon" + std::to_string(number));
    const fs::path folder = entry.parent_path() / fs::read_symlink(entry);
    fs::remove_all(folder);
    fs::remove(entry);
    return *this;
}

FakeTree& FakeTree::temperature(std::string_view chip, int channel, std::string_view text,
                                std::string_view label) {
    const std::string stem = std::string(chip) + "/temp" + std::to_string(channel);
    file(stem + "_input", std::string(text) + "\n");
    if (!label.empty()) file(stem + "_label", std::string(label) + "\n");
    return *this;
}

FakeTree& FakeTree::fan(std::string_view chip, int channel, std::string_view text, std::string_view label) {
    const std::string stem = std::string(chip) + "/fan" + std::to_string(channel);
    file(stem + "_input", std::string(text) + "\n");
    if (!label.empty()) file(stem + "_label", std::string(label) + "\n");
    return *this;
}

}  // namespace calorivo::test
