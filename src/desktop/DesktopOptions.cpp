#include "desktop/DesktopOptions.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

namespace calorivo {

namespace {

constexpr std::string_view helpText =
    "Usage: calorivo [OPTION]...\n"
    "Watches the temperatures, fans and drives of this machine.\n"
    "\n"
    "  --preferences        open the preferences\n"
    "  --login              started at login: stay in the background where that is set\n"
    "  --simulate[=SEED]    a simulated machine; same seed, same values\n"
    "  --keysfile FILE      read a dump of values instead of the machine\n"
    "  --sys DIR            read DIR in place of /sys\n"
    "  --custommodel MODEL  take the machine for this model\n"
    "  --model-tables DIR   model tables from DIR only\n"
    "  --all-chips          on a Mac, show the chips beside its controller too\n"
    "  --help, -h           this text\n"
    "  --version            the version of this program\n"
    "\n"
    "A second start shows the window of the first one. calorivo-cli shows the same\n"
    "values in a terminal.\n";

/// These two are as old as the program, and have one dash.
std::string modern(const std::string& argument) {
    constexpr std::array<std::string_view, 2> old{"-keysfile", "-custommodel"};
    return std::find(old.begin(), old.end(), argument) == old.end() ? argument : "-" + argument;
}

std::string seedProblem(const std::string& text, DesktopOptions& options) {
    std::uint64_t seed = 1;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, seed);
    if (!text.empty() && (error != std::errc{} || stop != end))
        return "--simulate: a seed is a whole number from 0 on";
    options.simulationSeed = seed;
    return {};
}

std::string conflictIn(const DesktopOptions& options) {
    const int sources = (options.keysFile ? 1 : 0) + (options.simulationSeed ? 1 : 0) + (options.sys ? 1 : 0);
    return sources > 1 ? "--keysfile, --simulate and --sys exclude one another" : "";
}

}  // namespace

ParsedDesktopOptions parseDesktopOptions(const std::vector<std::string>& arguments) {
    ParsedDesktopOptions parsed;
    DesktopOptions& options = parsed.options;
    bool wantsHelp = false;
    bool wantsVersion = false;

    CLI::App app;
    app.set_help_flag();
    app.add_flag("--help,-h", wantsHelp);
    app.add_flag("--version", wantsVersion);
    app.add_flag("--preferences", options.isShowingPreferences);
    app.add_flag("--login", options.isStartedAtLogin);
    app.add_flag("--all-chips", options.isUsingAllChips);
    const auto addText = [&](const char* name, std::optional<std::string>& place) {
        app.add_option(name,
                       [&parsed, &place, name](const CLI::results_t& given) {
                           if (given.back().empty()) parsed.problem = std::string(name) + ": an empty value";
                           place = given.back();
                           return true;
                       })
            ->type_name("value")
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    };
    addText("--keysfile", options.keysFile);
    addText("--sys", options.sys);
    addText("--custommodel", options.customModel);
    addText("--model-tables", options.modelTables);
    // With no value to take from the next argument, only the form with "=" gives one.
    app.add_option("--simulate",
                   [&](const CLI::results_t& given) {
                       const std::string seed =
                           given.empty() || given.back() == "true" ? std::string() : given.back();
                       if (const std::string wrong = seedProblem(seed, options); !wrong.empty())
                           parsed.problem = wrong;
                       return true;
                   })
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast)
        ->expected(0)
        ->default_str("");

    std::vector<std::string> reversed;
    std::transform(arguments.rbegin(), arguments.rend(), std::back_inserter(reversed), modern);
    try {
        app.parse(reversed);
    } catch (const CLI::ParseError& error) {
        parsed.problem = std::string(error.what()) + "; calorivo --help lists the options";
    }
    if (wantsHelp) return {{}, std::string(helpText), {}};
    if (wantsVersion) return {{}, "calorivo " CALORIVO_VERSION "\n", {}};
    if (parsed.problem.empty()) parsed.problem = conflictIn(options);
    return parsed;
}

ProcessArguments processArguments(const DesktopOptions& options) {
    ProcessArguments arguments{"calorivo"};
    if (options.customModel) arguments.insert(arguments.end(), {"-custommodel", *options.customModel});
    if (options.keysFile) arguments.insert(arguments.end(), {"-keysfile", *options.keysFile});
    return arguments;
}

}  // namespace calorivo
