#include "simulator/cli/actions.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <string_view>

#include "simulator/cad/generate.h"
#include "simulator/cad/model_drawing.h"
#include "simulator/cli/plugin_copy.h"
#include "simulator/cli/print.h"
#include "simulator/host/sim_host.h"
#include "simulator/import/import.h"
#include "simulator/import/import_error.h"
#include "simulator/report/utf8.h"
#include "simulator/spreadsheet/xlsx.h"
#include "simulator/ui/text_tree_check.h"
#include "simulator/ui/user_script.h"

namespace sim::cli {

namespace fs = std::filesystem;

namespace {

// As long as the host takes a path.
constexpr std::size_t kLongestWorkspace = 260;

fs::path WorkspaceOf(const Places& places) {
    fs::path workspace = fs::absolute(places.workspace);
    if (const std::size_t length = workspace.wstring().size(); length > kLongestWorkspace)
        throw BadInput("the path of the workspace has " + std::to_string(length) +
                       " characters; the host takes at most " + std::to_string(kLongestWorkspace));
    return workspace;
}

HostSetup SetupFor(const Places& places) {
    HostSetup setup;
    setup.pluginHome = places.plugin.empty() ? SimHost::DefaultPluginHome() : places.plugin;
    if (!fs::exists(setup.pluginHome / kPluginFile))
        throw BadInput("no " + Utf8(kPluginFile) + " in " + Utf8(setup.pluginHome.wstring()) +
                       "; name its folder with --plugin");
    if (!places.workspace.empty()) {
        setup.workspace = WorkspaceOf(places);
        std::error_code error;
        if (!fs::is_directory(setup.workspace, error))
            throw BadInput("the workspace " + Utf8(places.workspace.wstring()) + " is no folder");
    }
    // Reports stay where a person can read them.
    if (const wchar_t* folder = _wgetenv(L"LOCALAPPDATA"); folder != nullptr) setup.localData = folder;
    return setup;
}

HostMode ModeFromText(const std::string& text) {
    constexpr std::array<std::pair<std::string_view, HostMode>, 7> kModes = {{
        {"none", HostMode::kNone},
        {"part", HostMode::kPart},
        {"sheetmetal", HostMode::kSheetmetal},
        {"assembly", HostMode::kAssembly},
        {"drawing", HostMode::kDrawing},
        {"manufacture", HostMode::kManufacture},
        {"mould", HostMode::kMould},
    }};
    for (const auto& [name, mode] : kModes)
        if (text == name) return mode;
    throw BadInput("unknown mode \"" + text +
                   "\": use none, part, sheetmetal, assembly, drawing, manufacture or mould");
}

// The newest file of the model that a person means by "pump" or "pump.asm": of several kinds the first of
// asm, prt, mfg, drw, frm.
ModelFile FindModel(const ModelStore& models, const std::string& text) {
    const std::wstring wanted = UpperName(Wide(text));
    const std::vector<ModelFile> files = models.NewestFiles(models.WorkingDirectory());
    if (files.empty()) throw BadInput("no models in " + Utf8(models.WorkingDirectory().wstring()));
    for (const ModelFile& file : files)
        if (UpperName(file.name) == wanted || UpperName(file.name + L"." + file.extension) == wanted)
            return file;
    throw BadInput("no model \"" + text + "\" in " + Utf8(models.WorkingDirectory().wstring()) +
                   "; `hostsim models` lists what is there");
}

// What is wrong with the files that were met on the way; the rest was used. The exit code.
int ReportLines(const std::vector<std::string>& lines) {
    for (const std::string& line : lines) std::fprintf(stderr, "hostsim: %s\n", line.c_str());
    return lines.empty() ? 0 : 1;
}

SimModel& RetrieveModel(ModelStore& models, const std::string& text) {
    const ModelFile file = FindModel(models, text);
    SimModel* model = nullptr;
    const ProError status = models.Retrieve(file.name, file.kind, model);
    if (status == PRO_TK_NO_ERROR) return *model;
    ReportLines(models.Problems());
    throw BadInput("cannot read " + Utf8(file.path.wstring()));
}

// ---- What a run starts with

void ArrangeUser(Session& session, const RunOptions& options) {
    if (!options.script.empty()) {
        const std::vector<std::string> errors =
            LoadUserScript(fs::path(Wide(options.script)), session.user, session.models);
        for (const std::string& error : errors) std::fprintf(stderr, "%s\n", error.c_str());
        if (!errors.empty()) throw BadInput("the user script cannot be played");
    }
    for (const std::string& picks : options.selected) {
        const std::vector<std::string> errors = ArrangeSelection(picks, session.user, session.models);
        if (!errors.empty()) throw BadInput("--select \"" + picks + "\": " + errors.front());
    }
}

void SetOptions(Session& session, const RunOptions& options) {
    for (const std::string& option : options.options) {
        const std::size_t mark = option.find('=');
        if (mark == std::string::npos || mark == 0)
            throw BadInput("--option \"" + option + "\": expected OPTION=VALUE");
        session.configOptions[UpperName(Wide(option.substr(0, mark)))] = {Wide(option.substr(mark + 1))};
    }
}

void OpenModel(SimHost& host, const RunOptions& options) {
    Session& session = host.State();
    if (options.model.empty()) {
        if (!options.mode.empty()) session.models.currentMode = static_cast<int>(ModeFromText(options.mode));
        return;
    }
    SimModel& model = RetrieveModel(session.models, options.model);
    host.Open(model);
    if (!options.mode.empty()) host.Open(model, ModeFromText(options.mode));
}

// What is wrong with the way to a picked component; empty: nothing.
std::string PathFault(SimModel* top, const Pick& pick) {
    if (pick.path.empty()) return {};
    if (top == nullptr) return "a path needs an open assembly, see --model";
    if (top->MfgAssembly() != nullptr) top = top->MfgAssembly();
    for (const int id : pick.path) {
        const Feature* feature = top->FindFeature(id);
        if (feature == nullptr || feature->component == nullptr)
            return FileLabel(*top) + " has no component " + std::to_string(id) +
                   "; `hostsim show --ids` lists them";
        top = feature->component;
    }
    return top == pick.model ? "" : "the path leads to " + FileLabel(*top);
}

void SelectArranged(SimHost& host) {
    const Session& session = host.State();
    for (const Pick& pick : session.user.selected)
        if (const std::string fault = PathFault(session.models.current, pick); !fault.empty())
            throw BadInput("cannot select " + FileLabel(*pick.model) + ": " + fault);
    host.Select(session.user.selected);
}

void ActivateArranged(SimHost& host) {
    for (const Pick& pick : host.State().user.activated) {
        const SimModel* top = host.State().desk.Top();
        if (top == nullptr || (top != pick.model && !top->HasBelow(*pick.model)))
            throw BadInput("cannot activate " + FileLabel(*pick.model) + ": it is not in the open assembly");
        host.Activate(*pick.model);
    }
}

// The first right-click after the start lets the plug-in install its entries, the next ones show them.
void FillPopup(SimHost& host, const std::string& command, bool inMenu) {
    const std::string missing =
        inMenu ? "" : "no command \"" + command + "\" in the menu that `hostsim commands` lists, and ";
    host.RightClick();
    const std::vector<PopupButton> entries = host.RightClick();
    if (entries.empty())
        throw BadInput(missing + "the right-click menu has no entry of the plug-in: RmbDisable is \"" +
                       Utf8(PluginSetting(host.PluginHome(), L"RmbDisable")) + "\" in " +
                       Utf8(PluginSettingsFile(host.PluginHome()).wstring()) +
                       "; run with --setting RmbDisable=0");
    const auto isNamed = [&command](const PopupButton& entry) {
        return entry.name == command || Utf8(entry.label) == command;
    };
    if (std::ranges::any_of(entries, isNamed)) return;
    std::string names;
    for (const PopupButton& entry : entries) names += (names.empty() ? "" : ", ") + entry.name;
    throw BadInput(missing + "the right-click menu holds " + names);
}

// Answers whether the command is chosen from the right-click menu.
bool Prepare(SimHost& host, const RunOptions& options) {
    Session& session = host.State();
    try {
        ArrangeUser(session, options);
        SetOptions(session, options);
        OpenModel(host, options);
        SelectArranged(host);
        ActivateArranged(host);
        const bool inMenu = session.screen.FindCommand(options.command) != nullptr;
        const bool rightClick = options.rightClick || session.user.rightClicks || !inMenu;
        if (rightClick) FillPopup(host, options.command, inMenu);
        return rightClick;
    } catch (const BadInput&) {
        // Nobody is going to ask for them.
        host.ForgetAnswers();
        throw;
    }
}

int ReportProblems(const std::vector<std::string>& problems) {
    for (const std::string& problem : problems) std::fprintf(stderr, "problem: %s\n", problem.c_str());
    return problems.empty() ? 0 : 1;
}

// Saving an assembly saves what is below it as well, so the changed models are listed first. The exit code.
int SaveChanged(ModelStore& models) {
    int exitCode = 0;
    std::vector<SimModel*> changed = models.All();
    std::erase_if(changed, [](const SimModel* model) { return !model->IsModified(); });
    for (SimModel* model : changed) {
        if (model->IsModified()) (void)models.Save(*model);
        // Of a model that is written some below may not be: they are in the list themselves.
        if (!model->IsModified()) {
            std::printf("saved          %s\n", FileLabel(*model).c_str());
            continue;
        }
        std::fprintf(stderr, "hostsim: %s was not saved\n", FileLabel(*model).c_str());
        exitCode = 1;
    }
    return exitCode;
}

// A manufacturing model shows its assembly.
void DrawWindow(const Session& session, const fs::path& file) {
    const SimModel* shown = session.models.current;
    if (shown != nullptr && shown->MfgAssembly() != nullptr) shown = shown->MfgAssembly();
    const bool isSolid =
        shown != nullptr && (shown->Kind() == ModelKind::kPart || shown->Kind() == ModelKind::kAssembly);
    if (!isSolid) throw BadInput("the window shows neither a part nor an assembly to draw");
    std::ofstream stream(file, std::ios::binary);
    stream << ModelDrawing(*shown, session.desk.ViewOf(*session.models.current));
    if (!stream.flush()) throw BadInput("cannot write " + Utf8(file.wstring()));
}

bool SaveDrawings(ModelStore& models, const std::vector<SimModel*>& drawings) {
    return std::ranges::all_of(
        drawings, [&models](SimModel* drawing) { return models.Save(*drawing) == PRO_TK_NO_ERROR; });
}

}  // namespace

int ListCommands(const Places& places, const std::string& mode) {
    SimHost host(SetupFor(places));
    host.State().models.currentMode = static_cast<int>(ModeFromText(mode.empty() ? "assembly" : mode));
    PrintMenu(host.State());
    return ReportProblems(host.TakeProblems());
}

int RunCommand(const Places& places, const RunOptions& options) {
    HostSetup setup = SetupFor(places);
    // Outlives the host, which has the copied module loaded.
    std::optional<PluginCopy> copy;
    if (!options.settings.empty()) {
        setup.pluginHome = copy.emplace(setup.pluginHome).Home();
        for (const std::string& setting : options.settings) copy->Set(setting);
    }
    SimHost host(setup);
    Session& session = host.State();
    const bool rightClick = Prepare(host, options);
    const SimModel* before = session.models.current;

    if (Spreadsheet::IsRegistered())
        host.Spreadsheet().UseRegistered();
    else
        host.Spreadsheet().Install();
    session.report.SetTracing(options.trace);
    session.user.progress.realClock = true;
    // A person at the command line sees where the command leaves the directory; it is no fault by itself.
    host.AllowDirectoryChange();
    const ProError status = rightClick ? host.RunFromPopup(options.command) : host.Run(options.command);
    if (options.trace) PrintTrace(session.report);
    PrintSeen(session.user);
    if (const SimModel* shown = session.models.current; shown != before && shown != nullptr)
        std::printf("shown          %s\n", FileLabel(*shown).c_str());
    std::printf("%s answered %d\n", options.command.c_str(), static_cast<int>(status));
    if (options.profile) PrintProfile(session.report);
    if (!options.picture.empty()) DrawWindow(session, options.picture);
    const int saving = options.save ? SaveChanged(session.models) : 0;
    // Saving may have met more of them.
    const int damaged = ReportLines(session.models.Problems());
    const int deadEnds = ReportLines(session.models.DeadEnds());
    return std::max({saving, damaged, deadEnds, ReportProblems(host.TakeProblems())});
}

int ListModels(const Places& places) {
    const ModelStore models(WorkspaceOf(places));
    const std::vector<ModelFile> files = models.NewestFiles(models.WorkingDirectory());
    for (const ModelFile& file : files) std::printf("%s\n", Utf8(file.path.filename().wstring()).c_str());
    if (files.empty()) throw BadInput("no models in " + Utf8(models.WorkingDirectory().wstring()));
    return 0;
}

int ShowModel(const Places& places, const std::string& model, int levels, bool withIds) {
    ModelStore models(WorkspaceOf(places));
    const SimModel& shown = RetrieveModel(models, model);
    PrintModel(shown, levels, withIds);
    if (withIds) PrintItems(shown);
    return ReportLines(models.Problems());
}

int ListExports(const fs::path& folder) {
    std::error_code error;
    if (!fs::is_directory(folder, error)) throw BadInput(Utf8(folder.wstring()) + " is no folder");
    PrintExports(FindExports(fs::absolute(folder)));
    return 0;
}

int ShowSheet(const fs::path& file) {
    const std::optional<Sheet> sheet = ReadXlsx(fs::absolute(file));
    if (!sheet) throw BadInput(Utf8(file.wstring()) + " is no workbook that can be read");
    PrintSheet(*sheet);
    return 0;
}

int ShowDialog(const Places& places, const std::string& dialog, const std::string& svgFile) {
    SimHost host(SetupFor(places));
    Session& session = host.State();
    std::string fault;
    Dialog* shown = session.screen.LoadDialog(dialog, dialog, fault);
    if (shown == nullptr) throw BadInput("cannot show the dialog " + dialog + ": " + fault);
    const SimDialog seen(session.screen, session.user, *shown);
    std::printf("%s", seen.Picture().c_str());
    if (!svgFile.empty()) std::ofstream(fs::path(Wide(svgFile)), std::ios::binary) << seen.Drawing();
    session.screen.DestroyDialog(dialog);
    return ReportProblems(host.TakeProblems());
}

int Check(const Places& places) {
    SimHost host(SetupFor(places));
    std::vector<std::string> problems = CheckTextTree(host.State().screen, host.State().texts);
    const std::size_t commands = host.State().screen.Commands().size();
    for (std::string& problem : host.TakeProblems()) problems.push_back(std::move(problem));
    std::printf("%zu commands, %zu problems\n", commands, problems.size());
    return ReportProblems(problems);
}

int Generate(const Places& places, const GenerateOptions& options) {
    const fs::path workspace = WorkspaceOf(places);
    std::error_code error;
    fs::create_directories(workspace, error);
    ModelStore models(workspace);
    SimModel& top =
        GenerateAssembly(models, options.placements, options.depth, options.seed, Wide(options.name));
    // Saving the top assembly writes everything below it.
    if (models.Save(top) != PRO_TK_NO_ERROR)
        throw BadInput("cannot write into " + Utf8(places.workspace.wstring()));
    if (!SaveDrawings(models, GenerateDrawings(models, top, options.drawings, options.sheets)))
        throw BadInput("cannot write into " + Utf8(places.workspace.wstring()));
    std::printf("%s: %zu models written\n", FileLabel(top).c_str(), models.All().size());
    return 0;
}

int Import(const Places& places, const fs::path& file) {
    const fs::path workspace = WorkspaceOf(places);
    try {
        const ImportReport report = ImportWorkspace(fs::absolute(file), workspace);
        for (const std::string& top : report.tops) std::printf("top            %s\n", top.c_str());
        for (const std::string& note : report.notes) std::printf("note           %s\n", note.c_str());
        std::printf("%zu models, %zu components\n", report.models, report.components);
        return 0;
    } catch (const ImportError& error) {
        std::fprintf(stderr, "hostsim: %s\n", error.what());
        return 1;
    }
}

}  // namespace sim::cli
