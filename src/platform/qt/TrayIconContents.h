#pragma once

#include "platform/StatusBar.h"
#include "platform/qt/StatusNotifierHost.h"

#include <QString>

#include <optional>

namespace calorivo {

enum class TrayIconKind { image, blank, digits };

/// What of title and image a panel is given to show.
struct TrayIconContents {
    TrayIconKind icon = TrayIconKind::image;
    /// Drawn when the icon is digits.
    QString digits;
    /// The text beside the icon, where there is one.
    std::optional<QString> label;

    friend bool operator==(const TrayIconContents&, const TrayIconContents&) = default;
};

/// Where a panel with these traits shows the title when the user wants it in this place.
[[nodiscard]] LabelSupport labelPlaceFor(TitlePlace wanted, const HostTraits& host);

/// Never nothing at all: an item without title and image shows an image, and so does one with a label that
/// the panel may not show.
[[nodiscard]] TrayIconContents trayIconContents(const QString& title, bool hasImage, TitlePlace wanted,
                                                const HostTraits& host);

}  // namespace calorivo
