#pragma once

#include "cli/WatchScreen.h"

#include <termios.h>

namespace calorivo {

/// The terminal as a full-screen program uses it: the other screen, no cursor, keys as they are pressed. It
/// is put back on every way out, also when the program crashes. One at a time.
class Terminal {
  public:
    /// `input` is −1 when the keyboard is not at this terminal.
    Terminal(int input, int output) : input_(input), output_(output) {}
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;
    ~Terminal() { leave(); }

    void enter();
    void leave();
    /// Sets everything again, whatever others did to the terminal meanwhile.
    void enterAgain();
    [[nodiscard]] ScreenSize size() const;

  private:
    void apply() const;

    int input_;
    int output_;
    bool isEntered_ = false;
    termios before_{};
};

/// Stops the process as Ctrl-Z does; returns when it goes on.
void suspendProcess();

}  // namespace calorivo
