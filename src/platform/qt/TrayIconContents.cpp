#include "platform/qt/TrayIconContents.h"

#include "platform/qt/TrayIconDigits.h"

namespace calorivo {

LabelSupport labelPlaceFor(TitlePlace wanted, const HostTraits& host) {
    switch (wanted) {
        case TitlePlace::besideIcon:
            return host.label == LabelSupport::none ? LabelSupport::besideIcon : host.label;
        case TitlePlace::insideIcon:
            // A panel that knows icons by name only would show a missing image instead of the digits.
            return host.drawsPixmaps ? LabelSupport::none : host.label;
        case TitlePlace::automatic:
            break;
    }
    return host.label;
}

TrayIconContents trayIconContents(const QString& title, bool hasImage, TitlePlace wanted,
                                  const HostTraits& host) {
    if (title.isEmpty()) return {TrayIconKind::image, {}, std::nullopt};
    if (labelPlaceFor(wanted, host) != LabelSupport::none) {
        const bool isLabelSure = host.label != LabelSupport::none;
        return {isLabelSure && !hasImage ? TrayIconKind::blank : TrayIconKind::image, {}, title};
    }
    const QString digits = firstNumber(title);
    return {digits.isEmpty() ? TrayIconKind::image : TrayIconKind::digits, digits, std::nullopt};
}

}  // namespace calorivo
