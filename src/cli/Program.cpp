#include "cli/Program.h"

#include "cli/DriveCommands.h"
#include "cli/ExplanationText.h"
#include "cli/InlineDispatch.h"
#include "cli/ListJSON.h"
#include "cli/ListText.h"
#include "cli/LogCommand.h"
#include "cli/Terminal.h"
#include "cli/Text.h"
#include "cli/Watch.h"
#include "output/LogHeader.h"
#include "smc/SmcPrinters.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace calorivo {

namespace {

bool isTerminal(const Output& output) { return output.descriptor() >= 0 && isatty(output.descriptor()) == 1; }

int runList(const Options& options, Surroundings& surroundings, Session& session, Dispatch& dispatch) {
    Engine& engine = session.discover(dispatch.mainQueue(), {});
    engine.cycle.checkTimerFired();
    Snapshot snapshot = takeSnapshot(engine, session.provider());
    if (!options.areaTag || options.areaTag == allAreasTag || options.areaTag == hardDriveAreaTag)
        snapshot.drives = readDrives(options, surroundings);
    const auto [out, errors] = surroundings.streams;
    if (options.isJSON) {
        out.write(listJSON(snapshot, options.areaTag));
        return exitAnswered;
    }
    ListLook look = lookOf(out);
    look.areaTag = options.areaTag;
    const std::string text = listText(snapshot, look);
    out.write(text);
    if (snapshot.drives.empty()) session.tellOfNoSensors();
    if (text.empty() && !engine.lists.validSensorNames.isEmpty())
        complain(errors, "no sensors in this area on this machine");
    return exitAnswered;
}

int runRow(const Options& options, Surroundings& surroundings, Session& session, Dispatch& dispatch) {
    /// Keeps the row as it is when it is handed over last.
    struct LastRow final : CycleLog {
        void logStringIncludeDateTime(std::shared_ptr<const CSVRow> row, IncludeDateTime /*with*/) override {
            text = row->text();
        }
        std::string text;
    } last;
    Engine& engine = session.discover(dispatch.mainQueue(), {.log = &last});
    engine.preferences.logToFile = true;
    engine.preferences.logTemperatures = true;
    engine.preferences.logFanSpeeds = options.isWithFans;
    engine.cycle.checkTimerFired();
    const std::string header =
        logHeader(engine.lists, engine.naming, engine.fans.fansArray(), engine.preferences);
    const auto [out, errors] = surroundings.streams;
    out.write(cleanText(header)).write("\n").write(cleanText(last.text)).write("\n");
    session.tellOfNoSensors();
    return exitAnswered;
}

int runWhy(const Options& options, Surroundings& surroundings, Session& session, Dispatch& dispatch) {
    Engine& engine = session.discover(dispatch.mainQueue(), {});
    const ExplanationParts parts{engine.lists, engine.naming, engine.reader, session.provider()};
    const auto explanation = options.key.empty() ? std::nullopt : explain(SensorKey(options.key), parts);
    const auto [out, errors] = surroundings.streams;
    if (!explanation) {
        if (explainDrive(options, surroundings)) return exitAnswered;
        complain(errors, options.key.empty() ? "no drive has the serial number \"" + options.serial + "\""
                                             : "the key \"" + options.key + "\" is not known here");
        return exitNoAnswer;
    }
    out.write(options.isJSON ? explanationJSON(*explanation) : explanationText(*explanation));
    return exitAnswered;
}

/// Runs a printer of the SMC layer into a text.
template <typename Print>
std::string printed(Print print) {
    char* text = nullptr;
    std::size_t length = 0;
    std::FILE* const memory = open_memstream(&text, &length);
    if (memory == nullptr) return {};
    smcSetOutput(memory);
    print();
    smcSetOutput(stderr);
    std::fclose(memory);
    std::string result(text, length);
    std::free(text);
    return result;
}

/// Keys and types come from the hardware as they are: on a terminal they are cleaned, line by line.
void writeDump(Output& out, std::string_view text) {
    if (!isTerminal(out)) {
        out.write(text);
        return;
    }
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        out.write(cleanText(line)).write("\n");
        text.remove_prefix(std::min(text.size(), line.size() + 1));
    }
}

int runKeys(Surroundings& surroundings) {
    writeDump(surroundings.streams.out, printed([] { smcPrintAllKeys(); }));
    return exitAnswered;
}

int runFans(Surroundings& surroundings) {
    kern_return_t result = io_return::success;
    writeDump(surroundings.streams.out, printed([&result] { result = smcPrintFans(); }));
    if (result == io_return::success) return exitAnswered;
    complain(surroundings.streams.errors, "the number of fans cannot be read");
    return exitNoAnswer;
}

int answer(const Options& options, Surroundings& surroundings, Session& session, Dispatch& dispatch) {
    switch (options.command) {
        case Command::list:
            return runList(options, surroundings, session, dispatch);
        case Command::row:
            return runRow(options, surroundings, session, dispatch);
        case Command::why:
            return runWhy(options, surroundings, session, dispatch);
        case Command::keys:
            return runKeys(surroundings);
        case Command::fans:
            return runFans(surroundings);
        case Command::drives:  // it needs no controller
        case Command::watch:
        case Command::log:
            break;  // they have a loop of their own
    }
    return exitWrongUse;
}

int flushed(int code, const Streams& streams) {
    if (!streams.out.flush()) {
        complain(streams.errors, "standard output: " + streams.out.problem());
        code = exitNoAnswer;
    }
    streams.errors.flush();
    return code;
}

}  // namespace

int runCommand(const Options& options, Surroundings& surroundings, Dispatch& dispatch) {
    if (options.command == Command::drives) return runDrives(options, surroundings);
    Session session(options, surroundings, dispatch);
    if (!session.open()) return exitNoAnswer;
    const int code = answer(options, surroundings, session, dispatch);
    if (surroundings.leave != nullptr) surroundings.leave(flushed(code, surroundings.streams));
    return code;
}

int runProgram(const std::vector<std::string>& arguments, Surroundings& surroundings) {
    const auto [out, errors] = surroundings.streams;
    const ParsedOptions parsed = parseOptions(arguments);
    if (!parsed.problem.empty()) {
        complain(errors, parsed.problem);
        errors.flush();
        return exitWrongUse;
    }
    if (!parsed.text.empty()) {
        out.write(parsed.text);
        return flushed(exitAnswered, surroundings.streams);
    }
    if (parsed.options.command == Command::watch)
        return flushed(runWatch(parsed.options, surroundings), surroundings.streams);
    if (parsed.options.command == Command::log)
        return flushed(runLog(parsed.options, surroundings), surroundings.streams);
    InlineDispatch dispatch(std::chrono::system_clock::now());
    return flushed(runCommand(parsed.options, surroundings, dispatch), surroundings.streams);
}

}  // namespace calorivo
