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

TrayIconContents trayIconContents(const QString& title, bool hasImage, LabelSupport place) {
    if (title.isEmpty()) return {TrayIconKind::image, {}, std::nullopt};
    if (place != LabelSupport::none) return {hasImage ? TrayIconKind::image : TrayIconKind::blank, {}, title};
    const QString digits = firstNumber(title);
    return {digits.isEmpty() ? TrayIconKind::image : TrayIconKind::digits, digits, std::nullopt};
}

}  // namespace calorivo
