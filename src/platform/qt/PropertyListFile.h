#pragma once

#include "platform/UserDefaults.h"

#include <QByteArray>

#include <optional>
#include <string>

namespace calorivo {

/// A property list that was read from XML: one dictionary of flags, numbers, texts and data.
struct PropertyListFile {
    /// The keys in their order; none when the list is damaged.
    std::optional<PropertyList> dictionary;
    /// "FILE:LINE: reason"; empty when there is a dictionary.
    std::string problem;
};

/// Never reads anything but `xml`; `file` names it in the problem. A list with a part that cannot be used is
/// damaged as a whole: it comes with the program, and half of it would be no better than another.
[[nodiscard]] PropertyListFile parsePropertyList(const QByteArray& xml, const std::string& file);

/// The same for a file of at most a megabyte.
[[nodiscard]] PropertyListFile readPropertyListFile(const std::string& path);

}  // namespace calorivo
