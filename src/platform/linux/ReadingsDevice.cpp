#include "platform/linux/ReadingsDevice.h"

#include <ctime>

namespace calorivo {

namespace {

/// An item is read in passes as long as it was asked for in one of so many passes before.
constexpr unsigned passesToRemember = 2;

}  // namespace

std::chrono::nanoseconds timeSinceBoot() {
    timespec time{};
    clock_gettime(CLOCK_BOOTTIME, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

Reading ReadingsDevice::ask(std::size_t item) {
    const std::lock_guard lock(mutex_);
    Item& asked = items_[item];
    asked.askedInPass = pass_;
    Reading reading = asked.reading;
    reading.isCurrent = reading.pass == pass_;
    asked.reading.wasAsked = true;
    return reading;
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
    results_.resize(chosen_.size());
    for (std::size_t i = 0; i < chosen_.size(); ++i) results_[i] = items_[chosen_[i]].reading;
}

void ReadingsDevice::publish() {
    const std::lock_guard lock(mutex_);
    for (std::size_t i = 0; i < chosen_.size(); ++i) {
        Item& item = items_[chosen_[i]];
        item.reading = results_[i];
        item.reading.pass = pass_;
        item.isRequested = false;
    }
}

void ReadingsDevice::readItems() {
    const bool isAwake = beginPass();
    for (std::size_t i = 0; i < chosen_.size(); ++i) {
        const Reading last = results_[i];
        Reading& reading = results_[i];
        reading = {};
        reading.wasRead = true;
        if (isAwake)
            readItem(chosen_[i], last, reading);
        else
            reading.isAsleep = true;
        reading.at = timeSinceBoot();
    }
}

}  // namespace calorivo
