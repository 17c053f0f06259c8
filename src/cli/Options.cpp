#include "cli/Options.h"

#include "cli/Help.h"
#include "cli/OptionTable.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <algorithm>

namespace calorivo {

namespace {

constexpr std::string_view olderForms[] = {"-custommodel", "-keysfile"};

/// The arguments put in order: the command taken out, older forms of options turned into today's.
struct SortedArguments {
    const CommandRow* command = nullptr;
    std::vector<std::string> rest;
    bool wantsHelp = false;
    bool wantsVersion = false;
    std::string problem;
};

bool takesNextArgument(std::string_view option) {
    const auto isIt = [option](const OptionRow& row) {
        return option == row.name && !row.isFlag() && !row.hasOptionalValue();
    };
    return std::ranges::any_of(commonOptionRows(), isIt) ||
           std::ranges::any_of(commandRows(), [isIt](const CommandRow& command) {
               return std::ranges::any_of(command.options, isIt);
           });
}

const CommandRow* commandNamed(std::string_view name) {
    const auto rows = commandRows();
    const auto found = std::ranges::find(rows, name, &CommandRow::name);
    return found == rows.end() ? nullptr : &*found;
}

SortedArguments sorted(const std::vector<std::string>& arguments) {
    SortedArguments result;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::string argument = arguments[i];
        if (argument == "--") {
            result.rest.insert(result.rest.end(), arguments.begin() + static_cast<std::ptrdiff_t>(i),
                               arguments.end());
            break;
        }
        if (std::ranges::find(olderForms, argument) != std::end(olderForms)) argument.insert(0, "-");
        const bool isOption = argument.size() > 1 && argument.starts_with('-');
        if (argument == "--help" || argument == "-h") result.wantsHelp = true;
        if (argument == "--version") result.wantsVersion = true;
        if (!isOption && result.command == nullptr) {
            result.command = commandNamed(argument);
            if (result.command == nullptr) {
                result.problem = "unknown command \"" + argument + "\"";
                return result;
            }
            continue;
        }
        const bool hasValue = takesNextArgument(argument);
        result.rest.push_back(std::move(argument));
        if (hasValue && i + 1 < arguments.size()) result.rest.push_back(arguments[++i]);
    }
    if (result.command == nullptr) result.command = commandRows().data();
    return result;
}

void addOption(CLI::App& app, const OptionRow& row, Options& options, std::string& problem) {
    const auto store = [&row, &options, &problem](const CLI::results_t& given) {
        // A flag without a value arrives as "true".
        const std::string value = given.empty() || given.back() == "true" ? std::string() : given.back();
        const std::string wrong =
            row.isFlag() && !value.empty() ? "takes no value" : row.store(options, value);
        if (!wrong.empty() && problem.empty()) problem = std::string(row.name) + ": " + wrong;
        return true;
    };
    CLI::Option* const option = app.add_option(row.name, store);
    option->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    if (row.isFlag()) option->expected(0);
    // With no value to take from the next argument, only the form with "=" gives one.
    if (row.hasOptionalValue()) option->expected(0)->default_str("");
}

std::string conflictIn(const Options& options) {
    const int sources = (options.keysFile ? 1 : 0) + (options.simulationSeed ? 1 : 0) + (options.sys ? 1 : 0);
    if (sources > 1) return "--keysfile, --simulate and --sys exclude one another";
    if (options.command == Command::why && options.serial.empty())
        return "why needs a key, for example TC0P, or the serial number of a drive";
    if (options.command == Command::log && options.interval.count() == 0)
        return "--interval: log needs a pause between two rows";
    if (options.isPrinting && options.logFile) return "--print and a file exclude one another";
    return {};
}

/// A key or a serial number. A short key is filled up with blanks, as the controller's own are.
std::string storeKey(Options& options, const std::string& text) {
    constexpr std::size_t keyLength = 4;
    if (text.empty()) return "a key has four characters";
    options.serial = text;
    if (text.size() > keyLength) return {};
    options.key = text;
    options.key.resize(keyLength, ' ');
    return {};
}

std::string storeLogFile(Options& options, const std::string& text) {
    if (text.empty()) return "an empty file name";
    options.logFile = text;
    return {};
}

/// The one argument of a command that is no option.
void addOperand(CLI::App& app, Options& options, std::string& problem) {
    const auto add = [&](const char* name, std::string (*store)(Options&, const std::string&)) {
        app.add_option(name, [&options, &problem, store](const CLI::results_t& texts) {
            const std::string wrong = store(options, texts.back());
            if (!wrong.empty() && problem.empty()) problem = wrong;
            return true;
        });
    };
    if (options.command == Command::why) add("KEY", storeKey);
    if (options.command == Command::log) add("FILE", storeLogFile);
}

}  // namespace

ParsedOptions parseOptions(const std::vector<std::string>& arguments) {
    const SortedArguments given = sorted(arguments);
    if (!given.problem.empty()) return {{}, {}, given.problem + "; calorivo-cli --help lists them"};
    if (given.wantsHelp) return {{}, helpText(), {}};
    if (given.wantsVersion) return {{}, versionText(), {}};

    ParsedOptions parsed;
    Options& options = parsed.options;
    options.command = given.command->command;
    CLI::App app;
    app.set_help_flag();
    for (const OptionRow& row : commonOptionRows()) addOption(app, row, options, parsed.problem);
    for (const OptionRow& row : given.command->options) addOption(app, row, options, parsed.problem);
    addOperand(app, options, parsed.problem);
    try {
        app.parse(std::vector<std::string>(given.rest.rbegin(), given.rest.rend()));
    } catch (const CLI::ParseError& error) {
        parsed.problem = error.what();
    }
    if (parsed.problem.empty()) parsed.problem = conflictIn(options);
    return parsed;
}

}  // namespace calorivo
