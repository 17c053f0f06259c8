#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

namespace calorivo {

/// A subscription: the observer is told of changes until this handle is dropped. It may outlive what it
/// observes.
class Observation {
  public:
    Observation() = default;
    explicit Observation(std::function<void()> cancel) : cancel_(std::move(cancel)) {}
    Observation(Observation&& other) noexcept : cancel_(std::exchange(other.cancel_, nullptr)) {}
    Observation& operator=(Observation&& other) noexcept {
        if (this != &other) {
            drop();
            cancel_ = std::exchange(other.cancel_, nullptr);
        }
        return *this;
    }
    Observation(const Observation&) = delete;
    Observation& operator=(const Observation&) = delete;
    ~Observation() { drop(); }

    /// Ends the subscription now; does nothing the second time.
    void drop() {
        if (auto cancel = std::exchange(cancel_, nullptr)) cancel();
    }

  private:
    std::function<void()> cancel_;
};

/// The observers of one value. An observer may subscribe, unsubscribe or announce while it is being told: one
/// that is added meanwhile hears the next announcement, one that is dropped meanwhile hears nothing more. An
/// observer may even destroy what it observes: then nobody hears more. Main thread only.
class Observers {
  public:
    Observers() = default;
    Observers(const Observers&) = delete;
    Observers& operator=(const Observers&) = delete;

    [[nodiscard]] Observation add(std::function<void()> observer) {
        if (!slots_) slots_ = std::make_shared<Slots>();
        auto slot = std::make_shared<Slot>(Slot{std::move(observer), true});
        slots_->push_back(slot);
        // Weak, so that an observer may hold its own observation.
        return Observation([slots = std::weak_ptr(slots_), weakSlot = std::weak_ptr(slot)] {
            const auto dropped = weakSlot.lock();
            if (!dropped) return;
            dropped->isLive = false;
            if (const auto owner = slots.lock()) std::erase(*owner, dropped);
        });
    }

    void announce() const {
        if (!slots_ || slots_->empty()) return;
        const std::weak_ptr<Slots> owner = slots_;
        const Slots told = *slots_;
        for (const auto& slot : told) {
            if (owner.expired()) return;
            if (slot->isLive) slot->tell();
        }
    }

  private:
    struct Slot {
        std::function<void()> tell;
        bool isLive;
    };
    using Slots = std::vector<std::shared_ptr<Slot>>;
    std::shared_ptr<Slots> slots_;
};

/// A value that tells its observers whenever it is assigned, equal or not. Numbers and flags are stored
/// atomically, so that another queue may read them; assigning and observing belong to the main thread.
template <typename T>
class Property {
  public:
    Property() : value_(T{}) {}
    explicit Property(T value) : value_(std::move(value)) {}
    Property(const Property&) = delete;
    Property& operator=(const Property&) = delete;

    Property& operator=(T value) {
        set(std::move(value));
        return *this;
    }
    void set(T value) {
        store(std::move(value));
        announce();
    }
    /// Stores without telling anybody: for a setter that announces at a moment of its own.
    void store(T value) {
        if constexpr (isAtomic)
            value_.store(value, std::memory_order_relaxed);
        else
            value_ = std::move(value);
    }
    void announce() const { observers_.announce(); }

    [[nodiscard]] auto get() const -> std::conditional_t<std::is_arithmetic_v<T>, T, const T&> {
        if constexpr (isAtomic)
            return value_.load(std::memory_order_relaxed);
        else
            return value_;
    }
    // NOLINTNEXTLINE(google-explicit-constructor): a property reads like the value that it holds.
    operator std::conditional_t<std::is_arithmetic_v<T>, T, const T&>() const { return get(); }

    [[nodiscard]] Observation observe(std::function<void()> observer) {
        return observers_.add(std::move(observer));
    }

  private:
    static constexpr bool isAtomic = std::is_arithmetic_v<T>;
    std::conditional_t<isAtomic, std::atomic<T>, T> value_;
    Observers observers_;
};

}  // namespace calorivo
