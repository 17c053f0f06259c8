#include "app/LinkActions.h"

#include "platform/Format.h"
#include "sensors/SensorDiscovery.h"

namespace calorivo {

namespace {

bool isEscaped(unsigned char byte) {
    constexpr std::string_view escaped = "\"#%<>[\\]^`{|}";
    return byte <= ' ' || byte >= 0x7F || escaped.find(static_cast<char>(byte)) != std::string_view::npos;
}

}  // namespace

std::string stringByAddingPercentEscapesUsingASCIIEncoding(std::string_view text) {
    std::string out;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        const bool isContinuation = (byte & 0xC0U) == 0x80U;
        if (isContinuation) continue;
        if (byte >= 0x80U)
            out += "%3F";
        else if (isEscaped(byte))
            appendFormat(out, "%%%02X", {byte});
        else
            out += character;
    }
    return out;
}

void LinkActions::thankYouFeedbackClicked() {
    const auto model = getMacModelString(sysCtl_);
    const std::string body = format("\n\n-----------------\n\nModel: %@\nOS X: %@",
                                    model ? model->c_str() : nullptr, osVersionString_);
    const std::string subjectAndBody =
        format("?subject=Feedback for Calorivo %@&body=%@",
               bundle_.objectForInfoDictionaryKey("CFBundleShortVersionString"), body);
    workspace_.openURL(stringByAddingPercentEscapesUsingASCIIEncoding(
        format("mailto:%@%@", targets_.supportMailbox, subjectAndBody)));
}

}  // namespace calorivo
