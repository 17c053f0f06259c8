#include "platform/linux/RelaunchBundle.h"

#include <filesystem>
#include <system_error>

namespace calorivo {

namespace {

namespace fs = std::filesystem;

/// The variables are handed on to whatever the AppImage starts: they are believed only by a program that
/// runs from the very image.
std::optional<ProgramBundle> appImage(const Environment& environment, const std::string& executablePath) {
    const std::string image = environment("APPIMAGE").value_or("");
    const std::string folder = environment("APPDIR").value_or("");
    if (!image.starts_with('/') || !folder.starts_with('/') || !executablePath.starts_with(folder + '/'))
        return std::nullopt;
    std::error_code error;
    return fs::is_regular_file(image, error) ? std::optional(ProgramBundle{image}) : std::nullopt;
}

std::optional<ProgramBundle> portableFolder(const std::string& executablePath) {
    const fs::path executable(executablePath);
    const fs::path programs = executable.parent_path();
    const fs::path folder = programs.parent_path();
    std::error_code error;
    if (programs.filename() != "bin" || !fs::is_regular_file(folder / "portable", error)) return std::nullopt;
    return ProgramBundle{folder.string(), "bin/" + executable.filename().string()};
}

}  // namespace

std::optional<ProgramBundle> programBundle(const Environment& environment,
                                           const std::string& executablePath) {
    if (auto image = appImage(environment, executablePath)) return image;
    return portableFolder(executablePath);
}

}  // namespace calorivo
