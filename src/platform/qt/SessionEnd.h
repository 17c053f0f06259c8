#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <signal.h>

#include <array>
#include <functional>
#include <memory>

namespace calorivo {

/// Why the program is to end.
enum class EndReason {
    /// SIGTERM, SIGHUP or SIGINT.
    signal,
    /// The user logs out.
    logout,
    /// The event loop was told to end.
    quit,
};

/// Tells, once, that the program is to end: by a signal, with the session, or of its own. One object at a
/// time; it needs an application object. Signals that were ignored at the start stay so ("nohup"). After the
/// first signal they have their usual effect again, so that a second one ends a program that hangs. Main
/// thread.
class SessionEnd final : public QObject {
    Q_OBJECT

  public:
    /// `end` has done everything when it returns; for a signal it also has to end the event loop. It is not
    /// called after this object's end.
    explicit SessionEnd(std::function<void(EndReason)> end);
    ~SessionEnd() override;

  private:
    static constexpr std::array<int, 3> signals_{SIGTERM, SIGHUP, SIGINT};

    void watchSignals();
    void restoreSignals();
    void signalArrived();
    void tell(EndReason reason);

    std::function<void(EndReason)> end_;
    std::array<struct sigaction, signals_.size()> former_{};
    std::array<bool, signals_.size()> isWatched_{};
    std::array<int, 2> pipe_{-1, -1};
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace calorivo
