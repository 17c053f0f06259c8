#pragma once

namespace calorivo {

/// The level bar of one sensor: its current temperature and the highest one recorded, in degrees Celsius.
class QZTemperatureLevelIndicatorCell {
  public:
    /// Shows the value; the maximum only ever rises here.
    void setObjectValue(float celsius) {
        objectValue_ = celsius;
        if (celsius > maxUsedValue_) maxUsedValue_ = celsius;
    }
    [[nodiscard]] float objectValue() const { return objectValue_; }

    /// 0 means that nothing was recorded.
    [[nodiscard]] float maxUsedValue() const { return maxUsedValue_; }
    void setMaxUsedValue(float celsius) { maxUsedValue_ = celsius; }

    friend bool operator==(const QZTemperatureLevelIndicatorCell&,
                           const QZTemperatureLevelIndicatorCell&) = default;

  private:
    float objectValue_ = 0.0F;
    float maxUsedValue_ = 0.0F;
};

}  // namespace calorivo
