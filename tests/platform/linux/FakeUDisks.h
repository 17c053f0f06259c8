#pragma once

#include "platform/linux/FileDescriptor.h"
#include "support/FakeTree.h"

#include <gtest/gtest.h>

#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <variant>
#include <vector>

namespace calorivo::test {

/// A message bus of the test's own, which the environment names as the system's. It ends with this object,
/// and with the test program however that ends.
class PrivateSystemBus {
  public:
    PrivateSystemBus() {
        tree_.file(
            "services/udisks.service",
            "[D-BUS Service]\nName=org.freedesktop.UDisks2\nExec=/bin/touch " + tree_.path("started") + "\n");
        tree_.file("bus.conf",
                   "<!DOCTYPE busconfig PUBLIC '-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN'\n"
                   " 'http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd'>\n"
                   "<busconfig><type>session</type><listen>unix:path=" +
                       tree_.path("bus") + "</listen><auth>EXTERNAL</auth><servicedir>" +
                       tree_.path("services") +
                       "</servicedir><policy context='default'><allow send_destination='*'/>"
                       "<allow receive_sender='*'/><allow own='*'/></policy></busconfig>\n");
        start();
    }
    PrivateSystemBus(const PrivateSystemBus&) = delete;
    PrivateSystemBus& operator=(const PrivateSystemBus&) = delete;
    ~PrivateSystemBus() {
        unsetenv("DBUS_SYSTEM_BUS_ADDRESS");
        stop();
    }

    void stop() {
        if (daemon_ <= 0) return;
        kill(daemon_, SIGKILL);
        waitpid(daemon_, nullptr, 0);
        daemon_ = -1;
    }
    /// It answers nobody from now on, and takes connections still.
    void freeze() const { kill(daemon_, SIGSTOP); }
    /// Somebody had it start the service.
    [[nodiscard]] bool hasStartedService() const { return access(tree_.path("started").c_str(), F_OK) == 0; }

  private:
    void start() {
        std::array<int, 2> ends{};
        ASSERT_EQ(pipe(ends.data()), 0);
        const FileDescriptor reading(ends[0]);
        FileDescriptor writing(ends[1]);
        const std::string configuration = "--config-file=" + tree_.path("bus.conf");
        const std::string printing = "--print-address=" + std::to_string(writing.get());
        daemon_ = fork();
        if (daemon_ == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            // It complains of limits that it may not raise.
            dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDERR_FILENO);
            execlp("dbus-daemon", "dbus-daemon", configuration.c_str(), printing.c_str(), "--nofork",
                   "--nopidfile", nullptr);
            _exit(127);
        }
        writing.reset();
        std::array<char, 512> address{};
        const ssize_t length = read(reading.get(), address.data(), address.size() - 1);
        ASSERT_GT(length, 0) << "dbus-daemon did not start";
        std::string text(address.data());
        setenv("DBUS_SYSTEM_BUS_ADDRESS", text.substr(0, text.find('\n')).c_str(), 1);
    }

    FakeTree tree_;
    pid_t daemon_ = -1;
};

/// The service UDisks2 on that bus, with the drives and manners that the test gives it.
class FakeUDisks {
  public:
    struct ObjectPath {
        std::string path;
    };
    using Value =
        std::variant<bool, std::uint8_t, std::uint16_t, std::uint64_t, double, std::string, ObjectPath>;
    using Properties = std::map<std::string, Value>;
    static constexpr const char* drivePath = "/org/freedesktop/UDisks2/drives/SAMPLE_DISK_A1";
    static constexpr const char* ata = "org.freedesktop.UDisks2.Drive.Ata";
    static constexpr const char* nvme = "org.freedesktop.UDisks2.NVMe.Controller";

    struct Manners {
        /// By path and interface.
        std::map<std::string, std::map<std::string, Properties>> objects;
        /// The error that a method gives, by its name; "silence" for no answer at all.
        std::map<std::string, std::string> errors;
        /// What SmartUpdate puts into the interface.
        Properties update;
        /// What PmGetState gives.
        Value powerState = std::uint8_t{0xFF};
        /// The drive goes while SmartUpdate is at it.
        bool isGoing = false;
    };

    FakeUDisks() {
        EXPECT_GE(sd_bus_open_system(&bus_), 0);
        EXPECT_GE(sd_bus_add_filter(bus_, nullptr, handle, this), 0);
        EXPECT_GE(sd_bus_request_name(bus_, "org.freedesktop.UDisks2", 0), 0);
        thread_ = std::thread([this] { run(); });
    }
    FakeUDisks(const FakeUDisks&) = delete;
    FakeUDisks& operator=(const FakeUDisks&) = delete;
    ~FakeUDisks() {
        isEnding_ = true;
        thread_.join();
        sd_bus_flush_close_unref(bus_);
    }

    /// Changes what it knows and how it behaves.
    template <typename Change>
    void change(Change change) {
        const std::lock_guard lock(mutex_);
        change(manners_);
    }
    /// The disk "sda" with these SMART properties.
    void addDisk(Properties smart) {
        change([&](Manners& manners) {
            manners.objects["/org/freedesktop/UDisks2/block_devices/sda"]["org.freedesktop.UDisks2.Block"] = {
                {"Drive", ObjectPath{drivePath}}, {"DeviceNumber", std::uint64_t{2048}}};
            manners.objects[drivePath]["org.freedesktop.UDisks2.Drive"] = {
                {"Model", std::string("SAMPLE DISK")}, {"Serial", std::string("A1")}, {"Removable", false}};
            manners.objects[drivePath][ata] = std::move(smart);
        });
    }
    void setError(const std::string& method, const std::string& name) {
        change([&](Manners& manners) { manners.errors[method] = name; });
    }
    /// The methods that were called, properties aside, with the options that were true.
    [[nodiscard]] std::vector<std::string> calls() {
        const std::lock_guard lock(mutex_);
        return calls_;
    }
    /// How many messages it was sent.
    [[nodiscard]] int messageCount() {
        const std::lock_guard lock(mutex_);
        return messageCount_;
    }

  private:
    static constexpr std::uint64_t pollMicroseconds = 10'000;

    void run() {
        while (!isEnding_) {
            const int processed = sd_bus_process(bus_, nullptr);
            if (processed < 0) return;  // the bus has gone
            if (processed == 0) sd_bus_wait(bus_, pollMicroseconds);
        }
    }

    static int handle(sd_bus_message* message, void* self, sd_bus_error* /*error*/) {
        if (sd_bus_message_is_method_call(message, nullptr, nullptr) <= 0) return 0;
        static_cast<FakeUDisks*>(self)->answer(message);
        return 1;
    }

    void answer(sd_bus_message* message) {
        const std::lock_guard lock(mutex_);
        ++messageCount_;
        const std::string method = sd_bus_message_get_member(message);
        const std::string path = sd_bus_message_get_path(message);
        if (const auto error = manners_.errors.find(method); error != manners_.errors.end()) {
            if (method != "GetAll") calls_.push_back(method + optionsIn(message));
            if (error->second != "silence") fail(message, error->second);
            return;
        }
        if (!manners_.objects.contains(path))
            return fail(message, "org.freedesktop.DBus.Error.UnknownMethod");
        auto& interfaces = manners_.objects[path];
        if (method == "GetAll") return answerProperties(message, interfaces);
        calls_.push_back(method + optionsIn(message));
        sd_bus_message* reply = nullptr;
        sd_bus_message_new_method_return(message, &reply);
        if (method == "SmartUpdate") {
            for (const auto& [name, value] : manners_.update)
                interfaces[sd_bus_message_get_interface(message)][name] = value;
            if (manners_.isGoing) manners_.objects.erase(path);
        } else if (method == "PmGetState") {
            append(reply, manners_.powerState);
        }
        sd_bus_send(nullptr, reply, nullptr);
        sd_bus_message_unref(reply);
    }

    static void answerProperties(sd_bus_message* message, std::map<std::string, Properties>& interfaces) {
        const char* interface = nullptr;
        sd_bus_message_read(message, "s", &interface);
        const auto found = interfaces.find(interface);
        if (found == interfaces.end()) return fail(message, "org.freedesktop.DBus.Error.InvalidArgs");
        sd_bus_message* reply = nullptr;
        sd_bus_message_new_method_return(message, &reply);
        sd_bus_message_open_container(reply, 'a', "{sv}");
        // Of a type that no reader here expects.
        sd_bus_message_append(reply, "{sv}", "Symlinks", "aay", 0);
        for (const auto& [name, value] : found->second) {
            sd_bus_message_open_container(reply, 'e', "sv");
            sd_bus_message_append(reply, "s", name.c_str());
            sd_bus_message_open_container(reply, 'v', typeOf(value));
            append(reply, value);
            sd_bus_message_close_container(reply);
            sd_bus_message_close_container(reply);
        }
        sd_bus_message_close_container(reply);
        sd_bus_send(nullptr, reply, nullptr);
        sd_bus_message_unref(reply);
    }

    static std::string optionsIn(sd_bus_message* message) {
        std::string options;
        sd_bus_message_enter_container(message, 'a', "{sv}");
        const char* name = nullptr;
        int value = 0;
        while (sd_bus_message_read(message, "{sv}", &name, "b", &value) > 0)
            if (value != 0) options.append(" ").append(name);
        return options;
    }

    static void fail(sd_bus_message* message, const std::string& name) {
        sd_bus_reply_method_errorf(message, name.c_str(), "as the test wants it");
    }

    static const char* typeOf(const Value& value) {
        constexpr std::array types{"b", "y", "q", "t", "d", "s", "o"};
        return types.at(value.index());
    }

    static void append(sd_bus_message* reply, const Value& value) {
        struct Append {
            sd_bus_message* reply;
            void operator()(bool value) const { sd_bus_message_append(reply, "b", value ? 1 : 0); }
            void operator()(std::uint8_t value) const { sd_bus_message_append(reply, "y", value); }
            void operator()(std::uint16_t value) const { sd_bus_message_append(reply, "q", value); }
            void operator()(std::uint64_t value) const { sd_bus_message_append(reply, "t", value); }
            void operator()(double value) const { sd_bus_message_append(reply, "d", value); }
            void operator()(const std::string& value) const {
                sd_bus_message_append(reply, "s", value.c_str());
            }
            void operator()(const ObjectPath& value) const {
                sd_bus_message_append(reply, "o", value.path.c_str());
            }
        };
        std::visit(Append{reply}, value);
    }

    sd_bus* bus_ = nullptr;
    std::atomic<bool> isEnding_ = false;
    std::mutex mutex_;
    Manners manners_;
    std::vector<std::string> calls_;
    int messageCount_ = 0;
    std::thread thread_;
};

}  // namespace calorivo::test
