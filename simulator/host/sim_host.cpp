#include "simulator/host/sim_host.h"

#include <cstdio>
#include <system_error>
#include <utility>

#include <windows.h>

#include "simulator/report/utf8.h"
#include "simulator/windows/desktop.h"
#include "simulator/windows/plugin_heap.h"

namespace sim {

namespace fs = std::filesystem;

namespace {

std::function<void(const std::string&)>& ProblemHandler() {
    static std::function<void(const std::string&)> handler;
    return handler;
}

fs::path& PluginHomeSetting() {
    static fs::path home;
    return home;
}

void ReportProblem(const std::string& problem) {
    if (ProblemHandler())
        ProblemHandler()(problem);
    else
        std::fprintf(stderr, "hostsim: %s\n", problem.c_str());
}

// A path that nobody uses yet; nothing is there.
fs::path NewTemporaryPath() {
    static int counter = 0;
    const std::wstring name =
        L"hostsim-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++counter);
    fs::path folder = fs::temp_directory_path() / name;
    std::error_code error;
    fs::remove_all(folder, error);
    return folder;
}

}  // namespace

SimHost::SimHost(const HostSetup& setup) {
    pluginHome_ = setup.pluginHome.empty() ? DefaultPluginHome() : setup.pluginHome;
    if (setup.workspace.empty()) ownWorkspace_ = NewTemporaryPath();
    if (!ownWorkspace_.empty()) fs::create_directories(ownWorkspace_);
    if (setup.localData.empty()) ownLocalData_ = NewTemporaryPath();
    session_ = std::make_unique<Session>(setup.workspace.empty() ? ownWorkspace_ : setup.workspace,
                                         setup.textDirectory.empty() ? pluginHome_ : setup.textDirectory);
    session_->user.localData = setup.localData.empty() ? ownLocalData_ : setup.localData;
    if (setup.asDocumented) session_->BeAsDocumented();
    session_->screen.release = setup.release;
    ResetPluginHeap();
    plugin_ = std::make_unique<Plugin>(*session_);
    if (const std::string error = plugin_->Load(pluginHome_); !error.empty()) {
        problems_.push_back(error);
        plugin_.reset();
        return;
    }
    if (setup.initialize) Initialize();
}

SimHost::~SimHost() {
    Terminate();
    for (const std::string& problem : TakeProblems()) ReportProblem(problem);
    plugin_.reset();
    session_.reset();
    std::error_code error;
    if (!ownWorkspace_.empty()) fs::remove_all(ownWorkspace_, error);
    if (!ownLocalData_.empty()) fs::remove_all(ownLocalData_, error);
}

int SimHost::Initialize() {
    if (!plugin_) return -1;
    std::wstring message;
    const int status = plugin_->Initialize(session_->screen.release, message);
    running_ = status == 0;
    LookForOpenItems();
    if (!running_)
        problems_.push_back("user_initialize answered " + std::to_string(status) + ": " + Utf8(message));
    return status;
}

void SimHost::Terminate() {
    if (plugin_ && running_) plugin_->Terminate();
    LookForOpenItems();
    // Its procedure is about to be unloaded.
    if (running_ && !DesktopTimers().empty())
        session_->report.Violation("the plug-in ends while a timer of its own runs");
    running_ = false;
}

void SimHost::FireTimers() {
    FireDesktopTimers();
    LookForOpenItems();
}

// ---- Models

SimModel& SimHost::Add(std::wstring_view name, ModelKind kind, ModelSubtype subtype) {
    SimModel* model = session_->models.Create(name, kind, subtype);
    if (model != nullptr) return *model;
    std::fprintf(stderr, "hostsim: the model name \"%s\" is taken or too long\n", Utf8(name).c_str());
    std::abort();
}

SimModel& SimHost::AddPart(std::wstring_view name) {
    return Add(name, ModelKind::kPart, ModelSubtype::kSolidPart);
}

SimModel& SimHost::AddSheetmetal(std::wstring_view name) {
    return Add(name, ModelKind::kPart, ModelSubtype::kSheetmetal);
}

SimModel& SimHost::AddSkeleton(std::wstring_view name) {
    return Add(name, ModelKind::kPart, ModelSubtype::kSkeleton);
}

SimModel& SimHost::AddAssembly(std::wstring_view name) {
    return Add(name, ModelKind::kAssembly, ModelSubtype::kDesignAssembly);
}

SimModel& SimHost::AddDrawing(std::wstring_view name, const std::vector<std::wstring>& sheets,
                              const std::vector<SimModel*>& shown) {
    SimModel& drawing = Add(name, ModelKind::kDrawing, ModelSubtype::kNone);
    for (const std::wstring& size : sheets) drawing.AddSheet(size);
    for (int sheet = 1; static_cast<std::size_t>(sheet) <= sheets.size(); ++sheet)
        for (SimModel* model : shown) drawing.AddView(*model, sheet);
    return drawing;
}

void SimHost::AddDrawingFile(std::wstring_view name, const std::vector<std::wstring>& sheets,
                             const std::vector<SimModel*>& shown) {
    Store(AddDrawing(name, sheets, shown));
}

void SimHost::Store(SimModel& model) {
    if (session_->models.Save(model) != PRO_TK_NO_ERROR)
        problems_.push_back("cannot write the model " + Utf8(model.Name()));
    session_->models.Erase(model);
}

SimModel& SimHost::AddManufacturing(std::wstring_view name, SimModel& assembly, bool mould) {
    return Add(name, ModelKind::kManufacturing, mould ? ModelSubtype::kMould : ModelSubtype::kNone)
        .SetMfgAssembly(assembly);
}

SimModel* SimHost::Retrieve(std::wstring_view name, ModelKind kind) {
    SimModel* model = nullptr;
    return session_->models.Retrieve(name, kind, model) == PRO_TK_NO_ERROR ? model : nullptr;
}

void SimHost::Open(SimModel& model) {
    session_->desk.Open(model);
}

void SimHost::Open(SimModel& model, HostMode mode) {
    Open(model);
    session_->models.currentMode = static_cast<int>(mode);
}

void SimHost::Activate(SimModel& model) {
    session_->desk.Activate(model);
}

// ---- Answers

void SimHost::OnDialog(std::string name, std::function<void(SimDialog&)> actions) {
    session_->user.dialogs[std::move(name)].push_back(std::move(actions));
}

void SimHost::AnswerFolder(std::optional<std::wstring> folder) {
    session_->user.folders.push_back(std::move(folder));
}
void SimHost::AnswerFile(std::optional<std::wstring> file) {
    session_->user.files.push_back(std::move(file));
}
void SimHost::AnswerPrompt(PromptAnswer answer) {
    session_->user.prompts.push_back(std::move(answer));
}
void SimHost::AnswerPick(PickAnswer answer) {
    session_->user.picks.push_back(std::move(answer));
}
void SimHost::AnswerPlacement(bool defined) {
    session_->user.placements.push_back(defined);
}
void SimHost::AnswerBox(int answer) {
    session_->user.boxAnswers.push_back(answer);
}

void SimHost::WatchProgress(unsigned long long step, long long cancelAfter) {
    session_->user.progress.step = step;
    session_->user.progress.cancelAfter = cancelAfter;
}

void SimHost::Select(const std::vector<Pick>& picks) {
    session_->desk.selected = picks;
}

// ---- Acting

int SimHost::Availability(std::string_view command) {
    const Command* found = session_->screen.FindCommand(command);
    return found == nullptr ? kNotRegistered : static_cast<int>(session_->screen.Availability(*found));
}

// What a command has to leave as it found it.
struct SimHost::Before {
    fs::path directory;
    fs::path processDirectory;
    std::map<std::wstring, std::vector<std::wstring>> options;
    PluginHeapFigures heap;
};

ProError SimHost::Run(std::string_view command) {
    return RunWatched([&] { return session_->screen.RunCommand(command); });
}

ProError SimHost::RunFromPopup(std::string_view entry) {
    return RunWatched([&] {
        Interface& screen = session_->screen;
        screen.OpenPopup(kSelectionMenu);
        const ProError status = screen.ChoosePopupEntry(entry);
        screen.ClosePopup();
        return status;
    });
}

std::vector<PopupButton> SimHost::RightClick() {
    std::vector<PopupButton> entries = session_->screen.OpenPopup(kSelectionMenu).buttons;
    session_->screen.ClosePopup();
    return entries;
}

ProError SimHost::RunWatched(const std::function<ProError()>& command) {
    ResetPluginHeap();
    std::error_code error;
    const Before before = {WorkingDirectory(), fs::current_path(error), session_->configOptions,
                           PluginHeap()};
    session_->desk.StartCommand();
    session_->report.ResetCalls();
    const ProError status = command();
    LookForLeftovers(before);
    return status;
}

// What a command takes from the host it gives back before it ends.
void SimHost::LookForLeftovers(const Before& before) {
    LookForOpenItems();
    for (std::string& item : session_->spreadsheet.TakeLeftovers()) problems_.push_back(std::move(item));
    if (!directoryMayChange_ && before.directory != WorkingDirectory())
        problems_.push_back("the working directory was left at " + Utf8(WorkingDirectory().wstring()));
    directoryMayChange_ = false;
    std::error_code error;
    if (const fs::path process = fs::current_path(error); process != before.processDirectory) {
        problems_.push_back("the process's directory was left at " + Utf8(process.wstring()));
        fs::current_path(before.processDirectory, error);
    }
    LookForMemory(before.heap);
    auto now = session_->configOptions;
    // An option of the session that had no value may get one for good: there is no call that takes it away.
    std::erase_if(now, [&before](const auto& option) { return !before.options.contains(option.first); });
    if (before.options != now) problems_.push_back("a configuration option was left changed");
    for (const std::string& line : session_->desk.Leftovers()) problems_.push_back(line);
}

void SimHost::LookForOpenItems() {
    for (const std::string& item : session_->report.OpenItems()) problems_.push_back("left open: " + item);
    session_->report.DropOpenItems();
}

// A command gives back all that it has allocated. Only the first exception of a loaded module has the
// run-time library make something for good.
void SimHost::LookForMemory(const PluginHeapFigures& before) {
    const PluginHeapFigures now = PluginHeap();
    const bool isFirstThrow = now.failed > 0 && !hasThrown_;
    hasThrown_ = hasThrown_ || now.failed > 0;
    const long long blocks = now.liveBlocks - before.liveBlocks;
    const long long bytes = now.liveBytes - before.liveBytes;
    if (isFirstThrow || (blocks == 0 && bytes == 0)) return;
    problems_.push_back("the plug-in's heap has " + std::to_string(blocks) + " blocks and " +
                        std::to_string(bytes) + " bytes more than before the command");
}

// ---- Seeing

std::optional<ExportRecord> SimHost::Exported(const fs::path& file) const {
    return ReadExport(WorkingDirectory() / file);
}

std::vector<std::wstring> SimHost::ExportedFiles() const {
    std::vector<std::wstring> files;
    for (const ExportedFile& file : FindExports(WorkingDirectory())) files.push_back(file.path.wstring());
    return files;
}

std::wstring SimHost::LastMessage() const {
    return Boxes().empty() ? std::wstring() : Boxes().back().text;
}

std::vector<std::string> SimHost::TakeProblems() {
    std::vector<std::string> problems = std::move(problems_);
    problems_.clear();
    for (const std::string& violation : session_->report.Violations())
        problems.push_back("violation: " + violation);
    session_->report.ClearViolations();
    for (const std::string& problem : session_->user.problems) problems.push_back(problem);
    session_->user.problems.clear();
    for (const std::string& unused : session_->user.UnusedAnswers()) problems.push_back(unused);
    ForgetAnswers();
    return problems;
}

void SimHost::ForgetAnswers() {
    session_->user.dialogs.clear();
    session_->user.folders.clear();
    session_->user.files.clear();
    session_->user.prompts.clear();
    session_->user.picks.clear();
    session_->user.placements.clear();
    session_->user.boxAnswers.clear();
}

// ---- All hosts

void SimHost::SetProblemHandler(std::function<void(const std::string&)> handler) {
    ProblemHandler() = std::move(handler);
}

fs::path SimHost::DefaultPluginHome() {
    if (!PluginHomeSetting().empty()) return PluginHomeSetting();
    std::wstring program(32768, L'\0');
    program.resize(GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size())));
    return fs::path(program).parent_path().parent_path() / "korvane";
}

void SimHost::SetDefaultPluginHome(fs::path home) {
    PluginHomeSetting() = std::move(home);
}

}  // namespace sim
