#include "cli/Help.h"

#include "cli/OptionTable.h"
#include "cli/Text.h"

#include <string_view>

namespace calorivo {

namespace {

constexpr std::string_view introduction =
    "Usage: calorivo-cli [COMMAND] [OPTION]...\n"
    "Shows the temperatures, fans and drives of this machine.\n"
    "\n"
    "Commands:\n";
constexpr std::string_view closing =
    "  --help, -h               this text\n"
    "  --version                the version of this program\n"
    "\n"
    "Exit codes:\n"
    "  0  answered, also when the machine has no sensors\n"
    "  1  what was asked for cannot be answered: a key that is not known, a file\n"
    "     that cannot be read, an output that cannot be written\n"
    "  2  wrong use\n";

void appendRow(std::string& text, std::string_view name, std::string_view help, std::size_t indent) {
    constexpr std::size_t helpColumn = 27;
    text.append(indent, ' ');
    appendFitted(text, name, helpColumn - indent - 2);
    text.append("  ").append(help).append("\n");
}

void appendOption(std::string& text, const OptionRow& row, std::size_t indent) {
    std::string name = row.name;
    if (row.hasOptionalValue())
        name.append("[=").append(std::string_view(row.value).substr(1));
    else if (!row.isFlag())
        name.append(" ").append(row.value);
    appendRow(text, name, row.help, indent);
}

}  // namespace

std::string helpText() {
    std::string text(introduction);
    for (const CommandRow& command : commandRows()) {
        std::string name = command.name;
        if (command.command == Command::why) name += " KEY|SERIAL";
        if (command.command == Command::log) name += " [FILE]";
        appendRow(text, name, command.help, 2);
        for (const OptionRow& row : command.options) appendOption(text, row, 4);
    }
    text += "\nOptions of all commands:\n";
    for (const OptionRow& row : commonOptionRows()) appendOption(text, row, 2);
    return text.append(closing);
}

std::string versionText() { return "calorivo-cli " CALORIVO_VERSION "\n"; }

}  // namespace calorivo
