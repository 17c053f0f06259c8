#include "cli/Session.h"

#include "host/ModelTableChoice.h"
#include "host/Provider.h"
#include "host/ProviderSysCtl.h"
#include "platform/Format.h"
#include "smc/SmcClient.h"

#include <cstdio>
#include <utility>

namespace calorivo {

Session::Session(const Options& options, Surroundings& surroundings, Dispatch& dispatch)
    : options_(options), surroundings_(surroundings), dispatch_(dispatch), keysInput_(surroundings.files) {}

Session::~Session() {
    if (provider_ != nullptr) smcClose();
    smcSetIOKit(nullptr);
    smcSetOutput(nullptr);
}

bool Session::open() {
    std::string problem;
    if (options_.keysFile) problem = keysInput_.load(*options_.keysFile);
    if (options_.sys && !folderProblem(*options_.sys).empty())
        problem = *options_.sys + ": " + folderProblem(*options_.sys);
    if (!problem.empty()) {
        complain(surroundings_.streams.errors, problem);
        return false;
    }
    provider_ = makeProvider(options_, keysInput_.text(), surroundings_.paths, dispatch_);
    graphics_ = makeGraphics(options_, dispatch_, noSystemLog_);
    smcSetIOKit(provider_.get());
    smcSetOutput(stderr);
    smcOpen();
    return true;
}

Engine& Session::discover(Queue& checkQueue, const CycleOutputs& outputs) {
    GPUNames* const gpuNames = graphics_ ? &graphics_->switcher() : nullptr;
    engine_ = std::make_unique<Engine>(dispatch_, checkQueue, keysInput_, outputs, gpuNames);
    engine_->preferences.tempUnit = options_.isFahrenheit ? 1 : 0;

    ProblemList problems(surroundings_.streams.errors);
    ProviderSysCtl sysCtl(*provider_);
    const ProcessArguments arguments = processArguments();
    engine_->lists.modelName = modelNameFor(arguments, sysCtl);
    std::vector<ModelTable> tables;
    if (options_.modelTables || engine_->lists.modelName) {
        ModelTableChoice choice =
            modelTablesFor(engine_->lists.modelName.value_or(""), options_, surroundings_.paths);
        tables = std::move(choice.tables);
        for (const std::string& problem : choice.problems) problems.add(problem);
    }
    // The provider's own names are this machine's: for another model the rules speak.
    auto machineSensors = options_.customModel ? std::vector<ModelTableEntry>{} : provider_->machineSensors();
    engine_->discover(arguments, std::move(tables), std::move(machineSensors));

    for (const KeysFileProblem& problem : engine_->keysFileLineProblems)
        problems.add(format("%@:%llu: %@", *options_.keysFile, problem.line, problem.reason));
    for (const std::string& problem : provider_->problems()) problems.add(problem);
    problems.close();
    return *engine_;
}

void Session::tellOfNoSensors() const {
    if (!engine_->lists.validSensorNames.isEmpty()) return;
    Output& errors = surroundings_.streams.errors;
    if (options_.keysFile)
        complain(errors, *options_.keysFile + ": no temperatures in this keys file");
    else
        complain(errors, "no readable sensors on this machine; --simulate shows a simulated one");
}

ProcessArguments Session::processArguments() const {
    ProcessArguments arguments{"calorivo"};
    if (options_.customModel) arguments.insert(arguments.end(), {"-custommodel", *options_.customModel});
    if (options_.keysFile) arguments.insert(arguments.end(), {"-keysfile", *options_.keysFile});
    return arguments;
}

}  // namespace calorivo
