#include "cli/OptionTable.h"

#include "sensors/Areas.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <system_error>

namespace calorivo {

namespace {

template <typename Number>
bool readNumber(const std::string& text, Number& number) {
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc{} && stop == end;
}

std::string storeSeed(Options& options, const std::string& value) {
    std::uint64_t seed = 1;
    if (!value.empty() && !readNumber(value, seed)) return "a seed is a whole number from 0 on";
    options.simulationSeed = seed;
    return {};
}

std::string storeInterval(Options& options, const std::string& value) {
    constexpr double longest = 86400;
    double seconds = 0;
    if (!readNumber(value, seconds) || !(seconds >= 0 && seconds <= longest))
        return "an interval is a number of seconds from 0 to 86400";
    options.interval = std::chrono::nanoseconds(std::llround(seconds * 1e9));
    return {};
}

std::string storeCycles(Options& options, const std::string& value) {
    if (!readNumber(value, options.cycles) || options.cycles == 0)
        return "a number of cycles is a whole number from 1 on";
    return {};
}

bool isSameWord(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [lower](char x, char y) { return lower(x) == lower(y); });
}

std::string storeArea(Options& options, const std::string& value) {
    std::string names;
    for (const Area& area : areas) {
        if (isSameWord(area.name, value)) {
            options.areaTag = area.tag;
            return {};
        }
        names.append(names.empty() ? "" : ", ").append(area.name);
    }
    return "unknown area \"" + value + "\"; the areas are: " + names;
}

template <auto Member>
std::string storeText(Options& options, const std::string& value) {
    if (value.empty()) return "an empty value";
    options.*Member = value;
    return {};
}

template <auto Member>
std::string storeFlag(Options& options, const std::string& /*value*/) {
    options.*Member = true;
    return {};
}

constexpr OptionRow fahrenheitRow{"--fahrenheit", "", "degrees Fahrenheit instead of Celsius",
                                  storeFlag<&Options::isFahrenheit>};
constexpr OptionRow jsonRow{"--json", "", "one JSON object instead of text", storeFlag<&Options::isJSON>};

constexpr OptionRow cyclesRow{"--cycles", "COUNT", "end after so many checks", storeCycles};
constexpr OptionRow fansRow{"--fans", "", "the speeds of the fans too", storeFlag<&Options::isWithFans>};

constexpr OptionRow commonRows[] = {
    {"--keysfile", "FILE", "read a dump of values instead of the machine", storeText<&Options::keysFile>},
    {"--simulate", "[SEED]", "a simulated machine; same seed, same values", storeSeed},
    {"--sys", "DIR", "read DIR in place of /sys", storeText<&Options::sys>},
    {"--custommodel", "MODEL", "take the machine for this model", storeText<&Options::customModel>},
    {"--model-tables", "DIR", "model tables from DIR only", storeText<&Options::modelTables>},
    {"--all-chips", "", "on a Mac, show the chips beside its controller too",
     storeFlag<&Options::isUsingAllChips>},
};
constexpr OptionRow listRows[] = {
    {"--area", "NAME", "only the sensors of this area", storeArea},
    fahrenheitRow,
    jsonRow,
};
constexpr OptionRow watchRows[] = {
    {"--interval", "SECONDS", "time between two checks: 5 unless given, 0 for none", storeInterval},
    cyclesRow,
    {"--quiet", "", "show nothing until the end", storeFlag<&Options::isQuiet>},
    fahrenheitRow,
};
constexpr OptionRow driveRows[] = {
    fahrenheitRow,
    jsonRow,
};
constexpr OptionRow rowRows[] = {
    fansRow,
    fahrenheitRow,
};
constexpr OptionRow logRows[] = {
    {"--interval", "SECONDS", "time between two rows: 5 unless given", storeInterval},
    cyclesRow,
    fansRow,
    {"--drives", "", "the drives too, each in a column of its own", storeFlag<&Options::isWithDrives>},
    {"--print", "", "to standard output instead of a file", storeFlag<&Options::isPrinting>},
    fahrenheitRow,
};
constexpr OptionRow whyRows[] = {
    fahrenheitRow,
    jsonRow,
};
constexpr CommandRow rows[] = {
    {Command::list, "list", "every temperature and fan by area (the default)", listRows},
    {Command::watch, "watch", "the same, live, with minimum and maximum", watchRows},
    {Command::keys, "keys", "every key with its raw value, as a keys file", {}},
    {Command::fans, "fans", "every fan with its speeds and mode", {}},
    {Command::drives, "drives", "every drive with its temperature", driveRows},
    {Command::row, "row", "one check as the log writes it: header and row", rowRows},
    {Command::log, "log", "append rows to FILE, \"Calorivo Log.csv\" unless given", logRows},
    {Command::why, "why", "where a reading comes from, or why it is hidden", whyRows},
};

}  // namespace

std::span<const CommandRow> commandRows() { return rows; }
std::span<const OptionRow> commonOptionRows() { return commonRows; }
const char* nameOf(Command command) { return rows[static_cast<std::size_t>(command)].name; }

}  // namespace calorivo
