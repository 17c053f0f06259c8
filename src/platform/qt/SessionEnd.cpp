#include "platform/qt/SessionEnd.h"

#include <fcntl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QGuiApplication>

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <utility>

namespace calorivo {

namespace {

/// What a signal handler may touch: the end of the pipe to write to.
std::atomic<int> signalPipe = -1;
static_assert(std::atomic<int>::is_always_lock_free);

void writeSignal(int /*signal*/) {
    const int error = errno;
    const char byte = 0;
    [[maybe_unused]] const ssize_t ignored = write(signalPipe.load(), &byte, 1);
    errno = error;
}

}  // namespace

SessionEnd::SessionEnd(std::function<void(EndReason)> end) : end_(std::move(end)) {
    watchSignals();
    if (auto* const application = qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        connect(
            application, &QGuiApplication::commitDataRequest, this, [this] { tell(EndReason::logout); },
            Qt::DirectConnection);
    connect(
        QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, [this] { tell(EndReason::quit); },
        Qt::DirectConnection);
}

SessionEnd::~SessionEnd() {
    restoreSignals();
    notifier_.reset();
    signalPipe = -1;
    for (const int end : pipe_)
        if (end >= 0) close(end);
}

void SessionEnd::watchSignals() {
    if (pipe2(pipe_.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;
    signalPipe = pipe_[1];
    notifier_ = std::make_unique<QSocketNotifier>(pipe_[0], QSocketNotifier::Read);
    connect(notifier_.get(), &QSocketNotifier::activated, this, &SessionEnd::signalArrived);
    for (std::size_t i = 0; i < signals_.size(); ++i) {
        struct sigaction& former = former_.at(i);
        if (sigaction(signals_.at(i), nullptr, &former) != 0 || former.sa_handler == SIG_IGN) continue;
        struct sigaction action {};
        action.sa_handler = writeSignal;
        action.sa_flags = SA_RESTART;
        sigfillset(&action.sa_mask);
        isWatched_.at(i) = sigaction(signals_.at(i), &action, nullptr) == 0;
    }
}

void SessionEnd::restoreSignals() {
    for (std::size_t i = 0; i < signals_.size(); ++i)
        if (std::exchange(isWatched_.at(i), false)) sigaction(signals_.at(i), &former_.at(i), nullptr);
}

void SessionEnd::signalArrived() {
    notifier_->setEnabled(false);
    restoreSignals();
    tell(EndReason::signal);
}

void SessionEnd::tell(EndReason reason) {
    if (const auto end = std::exchange(end_, nullptr)) end(reason);
}

}  // namespace calorivo
