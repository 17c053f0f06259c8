#include "platform/qt/ApplicationBundle.h"

#include "platform/qt/PropertyListFile.h"

#include <utility>

namespace calorivo {

ApplicationBundle::ApplicationBundle(std::string dataFolder, std::string build, std::string version)
    : dataFolder_(std::move(dataFolder)), build_(std::move(build)), version_(std::move(version)) {}

std::optional<PropertyList> ApplicationBundle::dictionaryForResource(std::string_view name,
                                                                     std::string_view type) const {
    const std::string file = std::string(name) + '.' + std::string(type);
    if (dataFolder_.empty()) {
        problems_.push_back(file + ": the program's data folder was not found");
        return std::nullopt;
    }
    PropertyListFile list = readPropertyListFile((dataFolder_ + '/').append(file));
    if (!list.problem.empty()) problems_.push_back(list.problem);
    return std::move(list.dictionary);
}

std::string ApplicationBundle::objectForInfoDictionaryKey(std::string_view key) const {
    if (key == "CFBundleVersion") return build_;
    if (key == "CFBundleShortVersionString") return version_;
    return {};
}

}  // namespace calorivo
