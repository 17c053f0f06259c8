#include "cli/DrivesText.h"

#include "cli/Text.h"
#include "platform/Format.h"
#include "sensors/Areas.h"
#include "sensors/SmartInfo.h"

#include <algorithm>
#include <string_view>

namespace calorivo {

namespace {

/// What there is to say beside the temperature.
std::string noteOf(const DriveDetails& drive) {
    if (drive.isAsleep && drive.trouble.empty()) return "asleep, before it fell asleep";
    return drive.trouble;
}

std::string_view meaningOf(std::string_view source) {
    if (source == "drivetemp" || source == "nvme") return "the kernel's own reading";
    if (source == "smart") return "the drive's SMART data";
    if (source == "udisks2") return "what the service UDisks2 read from the drive";
    return source.empty() ? "" : "the drive's health log";
}

/// One aligned line; none for an empty text.
void appendField(std::string& out, std::string_view label, std::string_view text) {
    if (text.empty()) return;
    out += "  ";
    appendFitted(out, label, 9);
    out.append(cleanText(text)).append("\n");
}

}  // namespace

std::string descriptionOf(const DriveDetails& drive) {
    if (drive.model.empty() && drive.serial.empty()) return drive.device;
    const DriveDictionary dictionary{drive.model, drive.serial, 0};
    return driveDescriptionFromDictionary(&dictionary);
}

std::string drivesText(const std::vector<DriveRow>& drives, const ListLook& look) {
    constexpr std::string_view gap = "   ";
    std::size_t nameWidth = 24;
    std::size_t deviceWidth = 0;
    std::size_t valueWidth = 4;
    for (const DriveRow& drive : drives) {
        nameWidth = std::max(nameWidth, displayWidth(cleanText(descriptionOf(drive.details))));
        deviceWidth = std::max(deviceWidth, displayWidth(drive.details.device));
        valueWidth = std::max(valueWidth, displayWidth(drive.text));
    }
    const std::size_t others = 2 * gap.size() + deviceWidth + valueWidth + 4;
    if (look.columns > others) nameWidth = std::min(nameWidth, look.columns - others);
    std::string text;
    for (const DriveRow& drive : drives) {
        const DriveDetails& details = drive.details;
        appendFitted(text, cleanText(descriptionOf(details)), nameWidth);
        text += gap;
        std::string device;
        appendFitted(device, details.device, deviceWidth);
        look.style.append(text, device, Ink::faint);
        text += gap;
        const Level level = levelOf(details.celsius.value_or(0));
        std::string value;
        appendFitted(value, drive.text, valueWidth, Align::right);
        if (const std::string_view mark = markOf(level); !mark.empty()) value.append(" ").append(mark);
        look.style.append(text, value, inkOf(level));
        if (const std::string note = noteOf(details); !note.empty()) {
            text += gap;
            look.style.append(text, cleanText(note), Ink::faint);
        }
        text += '\n';
    }
    return text;
}

std::string driveExplanationText(const DriveRow& drive) {
    const DriveDetails& details = drive.details;
    std::string text = cleanText(descriptionOf(details)) + "\n\n";
    appendField(text, "device", details.device);
    if (!details.source.empty())
        appendField(text, "source", format("%@: %@", details.source, meaningOf(details.source)));
    if (details.celsius)
        appendField(text, "reading", format("%d °C: shown as %@", *details.celsius, drive.text));
    if (details.isAsleep)
        appendField(text, "note",
                    details.celsius ? "It sleeps and was not woken: the reading is an earlier one."
                                    : "It sleeps and was not woken.");
    appendField(text, "area", details.isListed ? "Hard Drive" : "");
    if (details.isListed)
        appendField(text, "shown", details.trouble.empty() ? "yes" : "yes, as N/A: " + details.trouble);
    else
        appendField(text, "shown", "no: " + details.trouble);
    return text;
}

}  // namespace calorivo
