#include "platform/linux/UDisksBus.h"

#include <dlfcn.h>
#include <systemd/sd-bus.h>

#include <cerrno>
#include <string_view>
#include <utility>

namespace calorivo {

namespace {

using std::chrono::microseconds;
using Clock = std::chrono::steady_clock;

constexpr const char* service = "org.freedesktop.UDisks2";
constexpr const char* propertiesInterface = "org.freedesktop.DBus.Properties";

int errorOf(int result) { return result < 0 ? -result : 0; }

/// No answer came, and none of this connection would be trusted.
bool isBroken(int result) {
    return result == -ETIMEDOUT || result == -ECONNRESET || result == -ENOTCONN || result == -EPIPE;
}

}  // namespace

/// The functions of the library, all of them or none. It stays loaded.
class UDisksBus::Library {
  public:
    explicit Library(const std::string& name) : library_(dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL)) {
        isComplete_ = library_ != nullptr && find(openSystem, "sd_bus_open_system") &&
                      find(closeBus, "sd_bus_close_unref") && find(isReady, "sd_bus_is_ready") &&
                      find(process, "sd_bus_process") && find(wait, "sd_bus_wait") &&
                      find(newCall, "sd_bus_message_new_method_call") &&
                      find(setAutoStart, "sd_bus_message_set_auto_start") &&
                      find(append, "sd_bus_message_append") &&
                      find(openContainer, "sd_bus_message_open_container") &&
                      find(closeContainer, "sd_bus_message_close_container") && find(call, "sd_bus_call") &&
                      find(freeMessage, "sd_bus_message_unref") && find(freeError, "sd_bus_error_free") &&
                      find(enter, "sd_bus_message_enter_container") &&
                      find(exit, "sd_bus_message_exit_container") && find(peek, "sd_bus_message_peek_type") &&
                      find(readBasic, "sd_bus_message_read_basic") && find(skip, "sd_bus_message_skip");
    }

    [[nodiscard]] bool isComplete() const { return isComplete_; }

    decltype(&sd_bus_open_system) openSystem = nullptr;
    decltype(&sd_bus_close_unref) closeBus = nullptr;
    decltype(&sd_bus_is_ready) isReady = nullptr;
    decltype(&sd_bus_process) process = nullptr;
    decltype(&sd_bus_wait) wait = nullptr;
    decltype(&sd_bus_message_new_method_call) newCall = nullptr;
    decltype(&sd_bus_message_set_auto_start) setAutoStart = nullptr;
    decltype(&sd_bus_message_append) append = nullptr;
    decltype(&sd_bus_message_open_container) openContainer = nullptr;
    decltype(&sd_bus_message_close_container) closeContainer = nullptr;
    decltype(&sd_bus_call) call = nullptr;
    decltype(&sd_bus_message_unref) freeMessage = nullptr;
    decltype(&sd_bus_error_free) freeError = nullptr;
    decltype(&sd_bus_message_enter_container) enter = nullptr;
    decltype(&sd_bus_message_exit_container) exit = nullptr;
    decltype(&sd_bus_message_peek_type) peek = nullptr;
    decltype(&sd_bus_message_read_basic) readBasic = nullptr;
    decltype(&sd_bus_message_skip) skip = nullptr;

  private:
    template <typename Function>
    [[nodiscard]] bool find(Function& function, const char* name) const {
        function = reinterpret_cast<Function>(dlsym(library_, name));
        return function != nullptr;
    }

    void* library_;
    bool isComplete_ = false;
};

/// One connection to the bus, and the reading of what comes over it.
class UDisksBus::Connection {
  public:
    using Message = std::unique_ptr<sd_bus_message, decltype(&sd_bus_message_unref)>;

    Connection(const Library& library, sd_bus* bus) : library_(library), bus_(bus) {}
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() { library_.closeBus(bus_); }

    /// Waits until the bus has greeted; an errno, 0 for success.
    [[nodiscard]] int greet(microseconds patience);
    [[nodiscard]] Message message(const std::string& path, const char* interface, const char* method) const;
    /// Sends it and reads the answer with `read`, which gives an errno too.
    [[nodiscard]] BusReply send(const Message& message, microseconds patience,
                                int (Connection::*read)(sd_bus_message*, BusReply&) const) const;
    [[nodiscard]] bool appendText(const Message& message, const std::string& text) const {
        return library_.append(message.get(), "s", text.c_str()) >= 0;
    }
    [[nodiscard]] bool appendOptions(const Message& message,
                                     std::initializer_list<const char*> options) const;

    int readProperties(sd_bus_message* answer, BusReply& reply) const;
    int readByteOrNothing(sd_bus_message* answer, BusReply& reply) const;

  private:
    int readProperty(sd_bus_message* answer, BusProperties& properties) const;
    int readValue(sd_bus_message* answer, std::string_view type, BusProperties& properties,
                  const char* name) const;
    template <typename Value>
    int readAs(sd_bus_message* answer, char type, Value& value) const {
        return library_.readBasic(answer, type, &value);
    }

    const Library& library_;
    sd_bus* bus_;
};

int UDisksBus::Connection::greet(microseconds patience) {
    const Clock::time_point until = Clock::now() + patience;
    for (;;) {
        const int ready = library_.isReady(bus_);
        if (ready != 0) return errorOf(ready);
        const int processed = library_.process(bus_, nullptr);
        if (processed < 0) return errorOf(processed);
        if (processed > 0) continue;
        const auto left = std::chrono::ceil<microseconds>(until - Clock::now());
        if (left.count() <= 0) return ETIMEDOUT;
        const int waited = library_.wait(bus_, static_cast<std::uint64_t>(left.count()));
        if (waited < 0 && waited != -EINTR) return errorOf(waited);
    }
}

UDisksBus::Connection::Message UDisksBus::Connection::message(const std::string& path, const char* interface,
                                                              const char* method) const {
    sd_bus_message* made = nullptr;
    if (library_.newCall(bus_, &made, service, path.c_str(), interface, method) < 0) made = nullptr;
    Message message(made, library_.freeMessage);
    if (made != nullptr && library_.setAutoStart(made, 0) < 0) message.reset();
    return message;
}

bool UDisksBus::Connection::appendOptions(const Message& message,
                                          std::initializer_list<const char*> options) const {
    if (library_.openContainer(message.get(), 'a', "{sv}") < 0) return false;
    for (const char* option : options)
        if (library_.append(message.get(), "{sv}", option, "b", 1) < 0) return false;
    return library_.closeContainer(message.get()) >= 0;
}

BusReply UDisksBus::Connection::send(const Message& message, microseconds patience,
                                     int (Connection::*read)(sd_bus_message*, BusReply&) const) const {
    BusReply reply;
    sd_bus_error error{};
    sd_bus_message* received = nullptr;
    const int result =
        library_.call(bus_, message.get(), static_cast<std::uint64_t>(patience.count()), &error, &received);
    const Message answer(received, library_.freeMessage);
    if (result >= 0) {
        reply.error = (this->*read)(answer.get(), reply) >= 0 ? 0 : EPROTO;
    } else if (isBroken(result) || error.name == nullptr) {
        reply.error = errorOf(result);
    } else {
        reply.error = EREMOTEIO;
        reply.errorName = error.name;
    }
    library_.freeError(&error);
    return reply;
}

int UDisksBus::Connection::readProperties(sd_bus_message* answer, BusReply& reply) const {
    if (const int entered = library_.enter(answer, 'a', "{sv}"); entered <= 0) return -EPROTO;
    for (;;) {
        const int entered = library_.enter(answer, 'e', "sv");
        if (entered < 0) return entered;
        if (entered == 0) return library_.exit(answer);
        if (const int read = readProperty(answer, reply.properties); read < 0) return read;
        if (const int left = library_.exit(answer); left < 0) return left;
    }
}

int UDisksBus::Connection::readProperty(sd_bus_message* answer, BusProperties& properties) const {
    const char* name = nullptr;
    if (const int read = readAs(answer, 's', name); read < 0) return read;
    char variant = 0;
    const char* type = nullptr;
    if (const int peeked = library_.peek(answer, &variant, &type); peeked < 0) return peeked;
    if (const int entered = library_.enter(answer, 'v', type); entered < 0) return entered;
    if (const int read = readValue(answer, type, properties, name); read < 0) return read;
    return library_.exit(answer);
}

int UDisksBus::Connection::readValue(sd_bus_message* answer, std::string_view type, BusProperties& properties,
                                     const char* name) const {
    int result = 0;
    if (type == "b") {
        int value = 0;
        result = readAs(answer, 'b', value);
        properties[name] = value != 0;
    } else if (type == "q") {
        std::uint16_t value = 0;
        result = readAs(answer, 'q', value);
        properties[name] = std::uint64_t{value};
    } else if (type == "t") {
        std::uint64_t value = 0;
        result = readAs(answer, 't', value);
        properties[name] = value;
    } else if (type == "d") {
        double value = 0;
        result = readAs(answer, 'd', value);
        properties[name] = value;
    } else if (type == "s" || type == "o") {
        const char* value = "";
        result = readAs(answer, type.front(), value);
        properties[name] = std::string(value);
    } else {
        result = library_.skip(answer, type.data());
    }
    return result;
}

int UDisksBus::Connection::readByteOrNothing(sd_bus_message* answer, BusReply& reply) const {
    char type = 0;
    const int peeked = library_.peek(answer, &type, nullptr);
    if (peeked <= 0) return peeked;
    if (type != 'y') return -EPROTO;
    return readAs(answer, type, reply.byte.emplace());
}

UDisksBus::UDisksBus(std::string library) : libraryName_(std::move(library)) {}

UDisksBus::~UDisksBus() = default;

UDisksBus::Connection* UDisksBus::connection(microseconds patience, int& error) {
    error = ENOTCONN;
    if (library_ == nullptr) library_ = std::make_unique<const Library>(libraryName_);
    if (!library_->isComplete()) return nullptr;
    if (connection_ != nullptr) return connection_.get();
    sd_bus* bus = nullptr;
    if (library_->openSystem(&bus) < 0) return nullptr;
    auto connection = std::make_unique<Connection>(*library_, bus);
    if (const int greeted = connection->greet(patience); greeted != 0) {
        if (greeted == ETIMEDOUT) error = greeted;
        return nullptr;
    }
    connection_ = std::move(connection);
    return connection_.get();
}

void UDisksBus::dropAfter(const BusReply& reply) {
    if (isBroken(-reply.error)) connection_.reset();
}

BusReply UDisksBus::properties(const std::string& path, const std::string& interface, microseconds patience) {
    BusReply reply;
    Connection* const bus = connection(patience, reply.error);
    if (bus == nullptr) return reply;
    const auto message = bus->message(path, propertiesInterface, "GetAll");
    if (message == nullptr || !bus->appendText(message, interface)) {
        reply.error = EINVAL;
        return reply;
    }
    reply = bus->send(message, patience, &Connection::readProperties);
    dropAfter(reply);
    return reply;
}

BusReply UDisksBus::call(const std::string& path, const std::string& interface, const std::string& method,
                         std::initializer_list<const char*> options, microseconds patience) {
    BusReply reply;
    Connection* const bus = connection(patience, reply.error);
    if (bus == nullptr) return reply;
    const auto message = bus->message(path, interface.c_str(), method.c_str());
    if (message == nullptr || !bus->appendOptions(message, options)) {
        reply.error = EINVAL;
        return reply;
    }
    reply = bus->send(message, patience, &Connection::readByteOrNothing);
    dropAfter(reply);
    return reply;
}

}  // namespace calorivo
