#include "cli/Terminal.h"

#include "cli/Output.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <string_view>

namespace calorivo {

namespace {

// Other screen, cursor hidden, no wrapping of long lines; the screen is cleared.
constexpr std::string_view enterText = "\033[?1049h\033[?25l\033[?7l\033[2J";
constexpr std::string_view leaveText = "\033[0m\033[?7h\033[?25h\033[?1049l";

/// What a crash has to put back. Only what may be called from a signal handler is used there.
struct Rescue {
    int input = -1;
    int output = -1;
    termios before{};
};
Rescue rescue;
constexpr std::array<int, 5> crashSignals{SIGABRT, SIGBUS, SIGFPE, SIGILL, SIGSEGV};

extern "C" void restoreAfterCrash(int signal) {
    [[maybe_unused]] const ssize_t written = write(rescue.output, leaveText.data(), leaveText.size());
    if (rescue.input >= 0) tcsetattr(rescue.input, TCSANOW, &rescue.before);
    // The handler was set for one time: the signal now does what it always does.
    raise(signal);
}

void onCrash(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int signal : crashSignals) sigaction(signal, &action, nullptr);
}

}  // namespace

void Terminal::enter() {
    if (isEntered_) return;
    if (input_ >= 0 && tcgetattr(input_, &before_) != 0) input_ = -1;
    rescue = {input_, output_, before_};
    onCrash(restoreAfterCrash);
    isEntered_ = true;
    apply();
}

void Terminal::enterAgain() {
    if (isEntered_) apply();
}

void Terminal::apply() const {
    if (input_ >= 0) {
        termios keys = before_;
        keys.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
        keys.c_cc[VMIN] = 1;
        keys.c_cc[VTIME] = 0;
        tcsetattr(input_, TCSANOW, &keys);
    }
    Output output(output_);
    output.write(enterText).flush();
}

void Terminal::leave() {
    if (!isEntered_) return;
    isEntered_ = false;
    Output output(output_);
    output.write(leaveText).flush();
    if (input_ >= 0) tcsetattr(input_, TCSANOW, &before_);
    onCrash(SIG_DFL);
}

void suspendProcess() {
    sigset_t stop;
    sigset_t before;
    sigemptyset(&stop);
    sigaddset(&stop, SIGTSTP);
    raise(SIGTSTP);
    // While the signal is blocked it waits; here it comes through and the process stands still.
    pthread_sigmask(SIG_UNBLOCK, &stop, &before);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

ScreenSize Terminal::size() const {
    winsize window{};
    if (ioctl(output_, TIOCGWINSZ, &window) != 0 || window.ws_col == 0 || window.ws_row == 0) return {};
    return {window.ws_col, window.ws_row};
}

}  // namespace calorivo
