#pragma once

#include "platform/qt/StatusNotifierTypes.h"

#include <QString>

#include <functional>
#include <optional>
#include <utility>

namespace calorivo {

/// The pixels of an icon, drawn when they are asked for first: where no panel asks, nothing is drawn. Two of
/// the same name show the same. One thread.
class DrawnPixmaps {
  public:
    DrawnPixmaps() = default;
    DrawnPixmaps(QString name, std::function<IconPixmaps()> draw)
        : name_(std::move(name)), draw_(std::move(draw)) {}

    [[nodiscard]] const IconPixmaps& get() const {
        if (!drawn_) drawn_ = draw_ ? draw_() : IconPixmaps();
        return *drawn_;
    }

    friend bool operator==(const DrawnPixmaps& a, const DrawnPixmaps& b) { return a.name_ == b.name_; }

  private:
    QString name_;
    std::function<IconPixmaps()> draw_;
    mutable std::optional<IconPixmaps> drawn_;
};

}  // namespace calorivo
