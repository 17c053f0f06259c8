#include "platform/linux/KernelEvents.h"

#include <gtest/gtest.h>
#include <linux/netlink.h>
#include <poll.h>

#include <array>
#include <cstring>
#include <ostream>
#include <string>

namespace calorivo {

void PrintTo(const KernelEvent& event, std::ostream* stream) {
    *stream << event.action << '@' << event.devicePath << " of " << event.subsystem;
}

namespace {

using namespace std::string_literals;

const std::string graphicsChange =
    "change@/devices/pci0000:00/0000:00:02.0/drm/card0\0ACTION=change\0"
    "DEVPATH=/devices/pci0000:00/0000:00:02.0/drm/card0\0SUBSYSTEM=drm\0HOTPLUG=1\0SEQNUM=4711\0"s;

TEST(KernelEvent, IsReadFromItsDatagram) {
    EXPECT_EQ(parseKernelEvent(graphicsChange),
              (KernelEvent{"change", "/devices/pci0000:00/0000:00:02.0/drm/card0", "drm"}));
    struct Row {
        std::string datagram;
        std::optional<KernelEvent> event;
    };
    const std::array rows{
        Row{"add@/devices/x\0SUBSYSTEM=block\0"s, KernelEvent{"add", "/devices/x", "block"}},
        Row{"add@/devices/x\0"s, KernelEvent{"add", "/devices/x", ""}},
        Row{"add@/a@b\0SUBSYSTEM=\0"s, KernelEvent{"add", "/a@b", ""}},
        Row{"add@/x\0UNKNOWN=drm\0\0=\0NOVALUE\0XSUBSYSTEM=net\0SUBSYSTEM=drm\0"s,
            KernelEvent{"add", "/x", "drm"}},
        Row{""s, std::nullopt},
        Row{"\0"s, std::nullopt},
        Row{"add@/devices/x"s, std::nullopt},
        Row{"add@/devices/x\0SUBSYSTEM=drm"s, std::nullopt},
        Row{"libudev\0\xfe\xed\xca\xfe\0"s, std::nullopt},
        Row{"@/devices/x\0SUBSYSTEM=drm\0"s, std::nullopt},
        Row{"add@\0SUBSYSTEM=drm\0"s, std::nullopt},
        Row{"SUBSYSTEM=drm\0add@/devices/x\0"s, std::nullopt},
        Row{std::string(8192, 'x'), std::nullopt},
        Row{std::string(8192, '\0'), std::nullopt},
    };
    for (const Row& row : rows) EXPECT_EQ(parseKernelEvent(row.datagram), row.event) << row.datagram;
}

/// A received message with what tells its sender.
struct Received {
    sockaddr_nl sender{};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(ucred))> control{};
    msghdr message{};

    Received(std::uint32_t port, uid_t user) {
        sender.nl_family = AF_NETLINK;
        sender.nl_pid = port;
        message.msg_name = &sender;
        message.msg_namelen = sizeof sender;
        message.msg_control = control.data();
        message.msg_controllen = control.size();
        header()->cmsg_level = SOL_SOCKET;
        header()->cmsg_type = SCM_CREDENTIALS;
        header()->cmsg_len = CMSG_LEN(sizeof(ucred));
        const ucred credentials{.pid = 0, .uid = user, .gid = 0};
        std::memcpy(CMSG_DATA(header()), &credentials, sizeof credentials);
    }
    Received(const Received&) = delete;
    Received& operator=(const Received&) = delete;
    cmsghdr* header() { return CMSG_FIRSTHDR(&message); }
};

TEST(KernelEvents, AreTheKernelsOwnOnly) {
    EXPECT_TRUE(isFromKernel(Received(0, 0).message));
    EXPECT_FALSE(isFromKernel(Received(1234, 0).message)) << "a process of root";
    EXPECT_FALSE(isFromKernel(Received(0, 1000).message));
    EXPECT_FALSE(isFromKernel(msghdr{}));
    const auto changed = [](const auto& change) {
        Received received(0, 0);
        change(received);
        return isFromKernel(received.message);
    };
    EXPECT_FALSE(changed([](Received& r) { r.message.msg_flags = MSG_TRUNC; })) << "longer than any";
    EXPECT_FALSE(changed([](Received& r) { r.message.msg_flags = MSG_CTRUNC; }));
    EXPECT_FALSE(changed([](Received& r) { r.message.msg_namelen = 2; }));
    EXPECT_FALSE(changed([](Received& r) { r.sender.nl_family = AF_UNIX; }));
    EXPECT_FALSE(changed([](Received& r) { r.message.msg_controllen = 0; })) << "no credentials";
    EXPECT_FALSE(changed([](Received& r) { r.header()->cmsg_type = SCM_RIGHTS; }));
    EXPECT_FALSE(changed([](Received& r) { r.header()->cmsg_level = SOL_NETLINK; }));
    EXPECT_FALSE(changed([](Received& r) { r.header()->cmsg_len = CMSG_LEN(4); }));
}

class KernelEventsTest : public testing::Test {
  protected:
    KernelEventsTest() {
        std::array<int, 2> ends{};
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends.data()), 0);
        kernel = FileDescriptor(ends[0]);
        events =
            KernelEvents(FileDescriptor(ends[1]), [this](const msghdr& /*message*/) { return isTrusted; });
    }
    void send(const std::string& datagram) const {
        EXPECT_EQ(::send(kernel.get(), datagram.data(), datagram.size(), 0),
                  static_cast<ssize_t>(datagram.size()));
    }
    [[nodiscard]] bool isReadable() const {
        pollfd source{events.descriptor(), POLLIN, 0};
        return poll(&source, 1, 0) == 1;
    }

    FileDescriptor kernel;
    KernelEvents events;
    bool isTrusted = true;
};

TEST_F(KernelEventsTest, AreTakenAllAtOnce) {
    EXPECT_FALSE(events.take("drm"));
    send(graphicsChange);
    EXPECT_TRUE(isReadable());
    EXPECT_TRUE(events.take("drm"));
    EXPECT_FALSE(events.take("drm"));
    send(graphicsChange);
    send("add@/devices/x\0SUBSYSTEM=block\0"s);
    EXPECT_TRUE(events.take("drm"));
    EXPECT_FALSE(isReadable());
    send("add@/devices/x\0SUBSYSTEM=block\0"s);
    EXPECT_FALSE(events.take("drm"));
}

TEST_F(KernelEventsTest, OfOthersAndNonsenseAreDropped) {
    send("");
    send("nonsense");
    EXPECT_FALSE(events.take("drm"));
    isTrusted = false;
    send(graphicsChange);
    EXPECT_FALSE(events.take("drm"));
    isTrusted = true;
    EXPECT_FALSE(events.take("drm"));
    send(graphicsChange);
    EXPECT_TRUE(events.take("drm"));
}

TEST_F(KernelEventsTest, FromASocketPairPassNoRealCheck) {
    std::array<int, 2> ends{};
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends.data()), 0);
    kernel = FileDescriptor(ends[0]);
    events = KernelEvents(FileDescriptor(ends[1]));
    send(graphicsChange);
    EXPECT_FALSE(events.take("drm"));
}

TEST(KernelEventsWithoutASocket, NeverCome) {
    KernelEvents events;
    EXPECT_EQ(events.descriptor(), -1);
    EXPECT_FALSE(events.take("drm"));
}

TEST(KernelEventsWithABrokenSocket, AreGivenUpAfterOneLook) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    const FileDescriptor writing(ends[1]);
    KernelEvents events{FileDescriptor(ends[0])};
    EXPECT_TRUE(events.take("drm"));
    EXPECT_EQ(events.descriptor(), -1);
    EXPECT_FALSE(events.take("drm"));
}

TEST(KernelEventsOfThisMachine, AreHeardOrNot) {
    KernelEvents events = KernelEvents::listen();
    if (events.descriptor() < 0) GTEST_SKIP() << "the system gives no socket for the kernel's messages";
    // What comes meanwhile is this machine's business; it must only be taken.
    static_cast<void>(events.take("nothing is called so"));
    EXPECT_GE(events.descriptor(), 0);
}

}  // namespace
}  // namespace calorivo
