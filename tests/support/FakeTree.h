#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace calorivo::test {

/// A folder tree in a temporary place, for providers that read one: a recorded machine in a few lines. It
/// goes with the object.
class FakeTree {
  public:
    FakeTree();
    ~FakeTree();
    FakeTree(const FakeTree&) = delete;
    FakeTree& operator=(const FakeTree&) = delete;

    [[nodiscard]] const std::string& root() const { return root_; }
    [[nodiscard]] std::string path(std::string_view relative) const {
        return root_ + "/" + std::string(relative);
    }

    /// Writes a file and the folders above it. A file that is there keeps its identity: an open descriptor
    /// sees the new text.
    FakeTree& file(std::string_view relative, std::string_view text);
    FakeTree& folder(std::string_view relative);
    FakeTree& link(std::string_view relative, std::string_view target);
    FakeTree& remove(std::string_view relative);

    /// A chip as the kernel shows it: "devices/DEVICE/hwmon/hwmonN" with its name, the link from class/hwmon
    /// and the link back to the device. Returns the folder of its files, below the root.
    std::string chip(int number, std::string_view name, std::string_view device);
    /// Takes the chip away again, link and folder.
    FakeTree& removeChip(int number);
    /// A temperature channel of a folder that chip() gave; an empty label is none.
    FakeTree& temperature(std::string_view chip, int channel, std::string_view text,
                          std::string_view label = {});
    FakeTree& fan(std::string_view chip, int channel, std::string_view text, std::string_view label = {});

  private:
    std::string root_;
};

}  // namespace calorivo::test
