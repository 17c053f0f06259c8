#pragma once

#include "cli/Engine.h"
#include "cli/Options.h"
#include "cli/Output.h"
#include "host/Graphics.h"
#include "host/KeysInput.h"
#include "platform/Dispatch.h"
#include "platform/SensorProvider.h"
#include "platform/SystemLog.h"
#include "platform/linux/LinuxPaths.h"

#include <memory>
#include <string>
#include <string_view>

namespace calorivo {

/// What the program finds around it: the system's files, its own folders, and where it prints.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): made of references, it cannot be begun without them
struct Surroundings {
    FileManager& files;
    LinuxPaths paths;
    Streams streams;
    /// Ends the process at once, with this exit code. A command that has given its answer calls it when it is
    /// there: the system takes all back in one go, closing each sensor's file takes a call for each.
    void (*leave)(int code) = nullptr;
    /// The program that reads drives, for this one: this one.
    std::string driveReader = "/proc/self/exe";
};

/// One run of the program: the source of values with the connection to it, and the engine on top. Main
/// thread; one at a time, because there is one connection in a process.
class Session {
  public:
    /// All must outlive it.
    Session(const Options& options, Surroundings& surroundings, Dispatch& dispatch);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session();

    /// Opens the source; false, with a message, when the keys file or folder that was named cannot be used. A
    /// machine without sensors is no failure.
    [[nodiscard]] bool open();
    /// Finds the sensors, after open(), and reports what is wrong with the files that were read.
    Engine& discover(Queue& checkQueue, const CycleOutputs& outputs);

    /// Says that there is nothing to show, if so. It is an answer, not a failure. After discover().
    void tellOfNoSensors() const;

    [[nodiscard]] SensorProvider& provider() { return *provider_; }
    [[nodiscard]] const KeysInput& keysInput() const { return keysInput_; }

  private:
    /// Of the graphics only the names are asked for, which leave no lines.
    struct NoSystemLog final : SystemLog {
        void log(std::string_view /*line*/) override {}
    };
    [[nodiscard]] ProcessArguments processArguments() const;

    const Options& options_;
    Surroundings& surroundings_;
    Dispatch& dispatch_;
    KeysInput keysInput_;
    std::unique_ptr<SensorProvider> provider_;
    NoSystemLog noSystemLog_;
    std::unique_ptr<Graphics> graphics_;
    std::unique_ptr<Engine> engine_;
};

}  // namespace calorivo
