#pragma once

#include "platform/KeyValueCoding.h"
#include "platform/Property.h"

#include <QObject>

#include <functional>
#include <string>
#include <string_view>

QT_BEGIN_NAMESPACE
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QSlider;
class QSpinBox;
QT_END_NAMESPACE

namespace calorivo {

/// Ties a control to a key: the control shows the key's value from now on, and what the user does to the
/// control is assigned to the key. Showing never writes. A setter may store something else than it was asked
/// for, or ask back: after a write the control shows what the key says then. A choice that the key holds
/// already is not assigned again, since a setter may have questions for every assignment.
///
/// A binding lives as long as its control, and takes the key as the control's objectName where it has none.
/// `keys` must outlive the last thing that the user does to the control. Main thread.
class KeyBinding final : public QObject {
  public:
    static void bind(QCheckBox& box, const KeyValueCoding& keys, std::string_view key);
    /// A number beyond the control's range is shown as the nearest that it can show; these two.
    static void bind(QSlider& slider, const KeyValueCoding& keys, std::string_view key);
    static void bind(QSpinBox& box, const KeyValueCoding& keys, std::string_view key);
    /// The key holds the item's index; see showIndex for an index that is none.
    static void bind(QComboBox& box, const KeyValueCoding& keys, std::string_view key);
    /// The key holds the checked button's id; any number that is no button's id checks `idOfOthers`.
    static void bind(QButtonGroup& group, const KeyValueCoding& keys, std::string_view key, int idOfOthers);

    /// Calls `tell` now and whenever the key changes, as long as `owner` lives.
    static void follow(QObject& owner, const KeyValueCoding& keys, std::string_view key,
                       std::function<void()> tell);

    /// Selects the item; its placeholder stands for a separator and for an index beyond the items.
    static void showIndex(QComboBox& box, int index);

  private:
    KeyBinding(QObject& control, const KeyValueCoding& keys, std::string_view key,
               std::function<void(const Value&)> show);
    /// Owned by the control, which is named for the key if it has no name.
    [[nodiscard]] static KeyBinding* make(QObject& control, const KeyValueCoding& keys, std::string_view key,
                                          std::function<void(const Value&)> show);
    void show() const { show_(keys_.valueForKey(key_)); }
    void write(const Value& value);

    const KeyValueCoding& keys_;
    const std::string key_;
    const std::function<void(const Value&)> show_;
    Observation observation_;
};

}  // namespace calorivo
