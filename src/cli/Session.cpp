#include "cli/Session.h"

#include "cli/Provider.h"
#include "platform/Format.h"
#include "platform/data/ModelTableFiles.h"
#include "sensors/Areas.h"
#include "smc/SmcClient.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

namespace calorivo {

namespace {

/// The model as the system's own call tells it.
class ProviderSysCtl final : public SysCtl {
  public:
    explicit ProviderSysCtl(const SensorProvider& provider) : provider_(provider) {}

    int sysctlbyname(std::string_view name, char* buffer, std::size_t& size) override {
        if (name == "hw.model" && !std::exchange(isAsked_, true)) model_ = provider_.modelName();
        const std::optional<std::string> model = name == "hw.model" ? model_ : std::nullopt;
        const std::size_t needed = model ? model->size() + 1 : 0;
        const std::size_t room = std::exchange(size, needed);
        if (!model) return -1;
        if (buffer == nullptr) return 0;
        if (room < needed) return -1;
        buffer[model->copy(buffer, model->size())] = '\0';
        return 0;
    }

  private:
    const SensorProvider& provider_;
    /// Asked for twice: first for its length.
    std::optional<std::string> model_;
    bool isAsked_ = false;
};

/// The names that an area of a model table may have: every area but "All".
constexpr auto tableAreas = [] {
    std::array<std::string_view, areas.size() - 1> names{};
    std::transform(areas.begin() + 1, areas.end(), names.begin(), [](const Area& area) { return area.name; });
    return names;
}();

}  // namespace

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
    smcSetIOKit(provider_.get());
    smcSetOutput(stderr);
    smcOpen();
    return true;
}

Engine& Session::discover(Queue& checkQueue, const CycleOutputs& outputs) {
    engine_ = std::make_unique<Engine>(dispatch_, checkQueue, keysInput_, outputs);
    engine_->preferences.tempUnit = options_.isFahrenheit ? 1 : 0;

    ProblemList problems(surroundings_.streams.errors);
    ProviderSysCtl sysCtl(*provider_);
    const ProcessArguments arguments = processArguments();
    engine_->lists.modelName = modelNameFor(arguments, sysCtl);
    std::vector<ModelTable> tables;
    if (options_.modelTables || engine_->lists.modelName)
        tables = modelTables(engine_->lists.modelName.value_or(""), problems);
    // The provider's own names are this machine's: for another model the rules speak.
    auto machineSensors = options_.customModel ? std::vector<ModelTableEntry>{} : provider_->machineSensors();
    engine_->discover(arguments, std::move(tables), std::move(machineSensors));

    for (const KeysFileProblem& problem : engine_->keysFileLineProblems)
        problems.add(format("%@:%llu: %@", *options_.keysFile, problem.line, problem.reason));
    for (const std::string& problem : provider_->problems()) problems.add(problem);
    problems.close();
    return *engine_;
}

ProcessArguments Session::processArguments() const {
    ProcessArguments arguments{"calorivo"};
    if (options_.customModel) arguments.insert(arguments.end(), {"-custommodel", *options_.customModel});
    if (options_.keysFile) arguments.insert(arguments.end(), {"-keysfile", *options_.keysFile});
    return arguments;
}

std::vector<ModelTable> Session::modelTables(const std::string& model, ProblemList& problems) const {
    std::vector<ModelTable> tables;
    const auto take = [&](ModelTableFiles files) {
        std::move(files.tables.begin(), files.tables.end(), std::back_inserter(tables));
        for (const std::string& problem : files.problems) problems.add(problem);
    };
    if (options_.modelTables) {
        // Named by the user: every file is looked at, so that each mistake is told.
        if (const std::string wrong = folderProblem(*options_.modelTables); !wrong.empty())
            problems.add(*options_.modelTables + ": " + wrong);
        take(readModelTables(*options_.modelTables, tableAreas));
        return tables;
    }
    const std::string& user = surroundings_.paths.userFolder;
    const std::string& data = surroundings_.paths.dataFolder;
    if (!user.empty()) take(readModelTables(user + "/model-tables", tableAreas, model));
    // The program's own files are named for their machines.
    if (!data.empty()) take(readModelTableNamed(data + "/model-tables", model, tableAreas));
    return tables;
}

}  // namespace calorivo
