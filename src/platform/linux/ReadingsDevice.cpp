#include "platform/linux/ReadingsDevice.h"

#include <algorithm>

namespace calorivo {

namespace {

/// An item is read in passes as long as it was asked for in one of so many passes before.
constexpr unsigned passesToRemember = 2;

}  // namespace

Reading ReadingsDevice::ask(std::size_t item) {
    if (published_.load(std::memory_order_acquire) != takenOver_) takeOver();
    Reading reading = readings_[item];
    readings_[item].wasAsked = true;
    return reading;
}

void ReadingsDevice::takeOver() {
    const std::lock_guard lock(mutex_);
    readings_.resize(items_.size());
    for (std::size_t i = 0; i < items_.size(); ++i) {
        if (readings_[i].wasAsked) items_[i].askedInPass = pass_;
        readings_[i] = items_[i].reading;
        readings_[i].isCurrent = readings_[i].pass == pass_;
    }
    takenOver_ = published_.load(std::memory_order_relaxed);
}

Reading ReadingsDevice::peek(std::size_t item) const {
    const std::lock_guard lock(mutex_);
    return items_[item].reading;
}

void ReadingsDevice::request(std::size_t item) {
    const std::lock_guard lock(mutex_);
    items_[item].isRequested = true;
}

bool ReadingsDevice::isDescribed() const {
    const std::lock_guard lock(mutex_);
    return isDescribed_;
}

std::size_t ReadingsDevice::addItem(FirstPass firstPass) {
    const std::lock_guard lock(mutex_);
    items_.emplace_back().askedInPass = firstPass == FirstPass::read ? pass_ : neverAsked;
    return items_.size() - 1;
}

void ReadingsDevice::perform(DeviceJob job) {
    if (job == DeviceJob::describe && !describe()) return;
    choose(job);
    readItems();
    publish();
    if (job != DeviceJob::describe) return;
    firstPassEnded();
    const std::lock_guard lock(mutex_);
    isDescribed_ = true;
}

void ReadingsDevice::choose(DeviceJob job) {
    const std::lock_guard lock(mutex_);
    const bool isForRequested = job == DeviceJob::refreshRequested;
    if (!isForRequested) ++pass_;
    chosen_.clear();
    for (std::size_t i = 0; i < items_.size(); ++i)
        if (isForRequested ? items_[i].isRequested : pass_ - items_[i].askedInPass <= passesToRemember)
            chosen_.push_back(i);
    results_.resize(items_.size());
}

void ReadingsDevice::publish() {
    const std::lock_guard lock(mutex_);
    for (const std::size_t i : chosen_) {
        Item& item = items_[i];
        item.reading = results_[i];
        item.reading.pass = pass_;
        item.isRequested = false;
    }
    published_.fetch_add(1, std::memory_order_release);
}

void ReadingsDevice::readItems() {
    // A reading is as old as its pass: an early moment never makes an old value look new, nor one from before
    // a sleep like one from after it.
    const std::chrono::nanoseconds now = sinceBoot();
    if (sleepWatch_.hasSlept()) {
        machineHasSlept();
        std::fill(results_.begin(), results_.end(), Reading{});
    }
    const Pass pass = beginPass();
    if (pass != Pass::keep) fullPassAt_ = now;
    for (const std::size_t i : chosen_) {
        const Reading last = results_[i];
        Reading& reading = results_[i];
        const bool hasValue = last.wasRead && !last.isAsleep && last.at >= fullPassAt_;
        if (pass != Pass::keep || !hasValue) {
            reading = {};
            reading.wasRead = true;
            if (pass == Pass::leaveAsleep)
                reading.isAsleep = true;
            else
                readItem(i, last, reading);
        }
        reading.at = now;
    }
}

}  // namespace calorivo
