#include "ui/qt/KeyBinding.h"

#include <QAbstractButton>
#include <QAbstractItemModel>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QPointer>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>
#include <QString>

#include <cstdint>
#include <utility>

namespace calorivo {

KeyBinding::KeyBinding(QObject& control, const KeyValueCoding& keys, std::string_view key,
                       std::function<void(const Value&)> show)
    : QObject(&control), keys_(keys), key_(key), show_(std::move(show)) {
    observation_ = keys_.observe(key_, [this] { this->show(); });
    this->show();
}

void KeyBinding::write(const Value& value) {
    const QPointer<KeyBinding> guarded = this;
    if (keys_.valueForKey(key_) != value) keys_.setValueForKey(value, key_);
    // The setter may have run an alert, and much can end while that is open.
    if (guarded) show();
}

KeyBinding* KeyBinding::make(QObject& control, const KeyValueCoding& keys, std::string_view key,
                             std::function<void(const Value&)> show) {
    if (control.objectName().isEmpty())
        control.setObjectName(QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size())));
    return new KeyBinding(control, keys, key, std::move(show));
}

void KeyBinding::bind(QCheckBox& box, const KeyValueCoding& keys, std::string_view key) {
    auto* const binding =
        make(box, keys, key, [&box](const Value& value) { box.setChecked(value.boolValue()); });
    connect(&box, &QCheckBox::clicked, binding, [binding](bool isChecked) { binding->write(isChecked); });
}

void KeyBinding::bind(QSlider& slider, const KeyValueCoding& keys, std::string_view key) {
    auto* const binding = make(slider, keys, key, [&slider](const Value& value) {
        const QSignalBlocker blocker(slider);
        slider.setValue(value.intValue());
    });
    connect(&slider, &QSlider::valueChanged, binding,
            [binding](int value) { binding->write(std::int32_t{value}); });
}

void KeyBinding::bind(QSpinBox& box, const KeyValueCoding& keys, std::string_view key) {
    auto* const binding = make(box, keys, key, [&box](const Value& value) {
        const QSignalBlocker blocker(box);
        box.setValue(value.intValue());
    });
    connect(&box, &QSpinBox::valueChanged, binding,
            [binding](int value) { binding->write(std::int32_t{value}); });
}

void KeyBinding::bind(QComboBox& box, const KeyValueCoding& keys, std::string_view key) {
    auto* const binding =
        make(box, keys, key, [&box](const Value& value) { showIndex(box, value.intValue()); });
    connect(&box, &QComboBox::activated, binding,
            [binding](int index) { binding->write(std::int32_t{index}); });
}

void KeyBinding::bind(QButtonGroup& group, const KeyValueCoding& keys, std::string_view key, int idOfOthers) {
    auto* const binding = make(group, keys, key, [&group, idOfOthers](const Value& value) {
        QAbstractButton* const known = group.button(value.intValue());
        (known != nullptr ? known : group.button(idOfOthers))->setChecked(true);
    });
    connect(&group, &QButtonGroup::idClicked, binding,
            [binding](int id) { binding->write(std::int32_t{id}); });
}

void KeyBinding::follow(QObject& owner, const KeyValueCoding& keys, std::string_view key,
                        std::function<void()> tell) {
    // Owned by its parent.
    static_cast<void>(
        new KeyBinding(owner, keys, key, [tell = std::move(tell)](const Value& /*value*/) { tell(); }));
}

void KeyBinding::showIndex(QComboBox& box, int index) {
    const QAbstractItemModel& model = *box.model();
    const bool isItem = index >= 0 && index < box.count() &&
                        model.flags(model.index(index, box.modelColumn())).testFlag(Qt::ItemIsEnabled);
    box.setCurrentIndex(isItem ? index : -1);
}

}  // namespace calorivo
