#pragma once

#include "platform/Bundle.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace calorivo {

/// The program's version, and the resources in its data folder. Main thread.
class ApplicationBundle final : public Bundle {
  public:
    /// `version` for people who ask for help (the "CFBundleShortVersionString"), `build` for the menu (the
    /// "CFBundleVersion"). `dataFolder` may be empty, when the program came without one.
    ApplicationBundle(std::string dataFolder, std::string build, std::string version);

    /// The property list "FOLDER/NAME.TYPE".
    [[nodiscard]] std::optional<PropertyList> dictionaryForResource(std::string_view name,
                                                                    std::string_view type) const override;
    [[nodiscard]] std::string objectForInfoDictionaryKey(std::string_view key) const override;

    /// What is wrong with the resources that were asked for so far, as "FILE:LINE: reason".
    [[nodiscard]] const std::vector<std::string>& problems() const { return problems_; }

  private:
    std::string dataFolder_;
    std::string build_;
    std::string version_;
    mutable std::vector<std::string> problems_;
};

}  // namespace calorivo
