// The simulator's control interface: arrange a workspace, answer the plug-in, run its commands, look at what
// happened. Tests and the command line drive the host through it.

#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/export/export_file.h"
#include "simulator/session/session.h"
#include "simulator/ui/sim_dialog.h"
#include "simulator/windows/plugin.h"
#include "simulator/windows/plugin_heap.h"

namespace sim {

struct HostSetup {
    // The folder that holds the plug-in's module, KVconfig and text. Empty: DefaultPluginHome().
    std::filesystem::path pluginHome;
    // The working directory. Empty: a new temporary folder that goes with the host.
    std::filesystem::path workspace;
    // The registered text directory. Empty: the plug-in's home.
    std::filesystem::path textDirectory;
    // The user's local application data. Empty: a folder that is made when it is needed and goes with the
    // host.
    std::filesystem::path localData;
    // False: the plug-in is loaded but user_initialize waits for Initialize().
    bool initialize = true;
    // The host behaves as documented where it otherwise goes along with the plug-in (Strictness).
    bool asDocumented = false;
    // What the host tells the plug-in of itself at the start.
    std::string release = "hostsim 9";
};

// Host modes by their numbers in the host.
enum class HostMode {
    kNone = -1,
    kPart = 1,
    kSheetmetal = 2,
    kAssembly = 5,
    kDrawing = 6,
    kManufacture = 7,
    kMould = 8
};

inline constexpr int kNotRegistered = -2;
// The right-click menu of the graphics window and the model tree.
inline constexpr char kSelectionMenu[] = "Sel Obj Menu";

class SimHost {
public:
    explicit SimHost(const HostSetup& setup = {});
    // Stops the plug-in (user_terminate), and reports every problem that was not taken with TakeProblems.
    ~SimHost();
    SimHost(const SimHost&) = delete;
    SimHost& operator=(const SimHost&) = delete;

    // ---- Arranging models
    SimModel& AddPart(std::wstring_view name);
    SimModel& AddSheetmetal(std::wstring_view name);
    SimModel& AddSkeleton(std::wstring_view name);
    SimModel& AddAssembly(std::wstring_view name);
    // A drawing with these sheets, e.g. {L"A3", L"A4"}, and a view of every shown model on each.
    SimModel& AddDrawing(std::wstring_view name, const std::vector<std::wstring>& sheets,
                         const std::vector<SimModel*>& shown = {});
    // The same, but it lies in the working directory, not in memory.
    void AddDrawingFile(std::wstring_view name, const std::vector<std::wstring>& sheets,
                        const std::vector<SimModel*>& shown = {});
    // Writes a model with all that is below it to the working directory and takes it out of memory; what only
    // it used goes when the host erases what is not displayed.
    void Store(SimModel& model);
    SimModel& AddManufacturing(std::wstring_view name, SimModel& assembly, bool mould = true);
    // Retrieves a model of the working directory; null: there is none, or it is damaged.
    SimModel* Retrieve(std::wstring_view name, ModelKind kind);
    // Shows the model and makes it current, in the mode that fits it, or in `mode`.
    void Open(SimModel& model);
    void Open(SimModel& model, HostMode mode);

    // The user activates a component's model in the open assembly.
    void Activate(SimModel& model);

    // ---- The user's answers, each used once, in order
    void OnDialog(std::string name, std::function<void(SimDialog&)> actions);
    void AnswerFolder(std::optional<std::wstring> folder);  // nullopt: Cancel
    void AnswerFile(std::optional<std::wstring> file);
    void AnswerPrompt(PromptAnswer answer);
    void AnswerPick(PickAnswer answer);
    // The user's end of the host's dialog for constraints: OK or Cancel.
    void AnswerPlacement(bool defined);
    void AnswerBox(int answer);
    // Each look of the plug-in at the clock takes `step` milliseconds, and the user watches its progress
    // window. `cancelAfter`: items after which the user presses its button; below 0: never.
    void WatchProgress(unsigned long long step, long long cancelAfter = -1);
    // What is selected in the graphics window now.
    void Select(const std::vector<Pick>& picks);

    // ---- Acting
    // Picks the command from the menu. GENERAL_ERROR and a problem when it is unknown or not available now.
    // After it the host looks for what was left behind: open items, automation objects, memory of the
    // plug-in, a changed working directory (the host's and the process's), changed options.
    ProError Run(std::string_view command);
    // Right-clicks on what is selected and chooses an entry, by its name or label; refused like Run.
    ProError RunFromPopup(std::string_view entry);
    // Right-clicks on what is selected and takes nothing; answers what the menu held, hidden entries too.
    std::vector<PopupButton> RightClick();
    // Availability of a command as the host would show it: 0 hidden, 1 greyed, 3 available; else
    // kNotRegistered.
    int Availability(std::string_view command);
    // Starts the plug-in when the setup said not to; its answer.
    int Initialize();
    // Stops the plug-in early (the destructor then does not).
    void Terminate();
    // Lets the plug-in's timers tick.
    void FireTimers();
    // The next Run may end in another working directory.
    void AllowDirectoryChange() { directoryMayChange_ = true; }

    // ---- Seeing
    const std::vector<ShownBox>& Boxes() const { return session_->user.boxes; }
    // Text of the last message box; empty: none was shown.
    std::wstring LastMessage() const;
    const std::filesystem::path& WorkingDirectory() const { return session_->models.WorkingDirectory(); }
    const std::filesystem::path& PluginHome() const { return pluginHome_; }
    // What an exported file of the working directory records, e.g. L"PDF\\pump.pdf"; nothing when there is no
    // such file, or it is not complete. Disk trouble is arranged in State().disk.
    std::optional<ExportRecord> Exported(const std::filesystem::path& file) const;
    // Paths of all exported files in the working directory and below it, "PDF\\pump.pdf", in order.
    std::vector<std::wstring> ExportedFiles() const;
    // Host calls of the last Run, all or of one function.
    long long Calls() const { return session_->report.CallCount(); }
    long long Calls(std::string_view function) const { return session_->report.CallCount(function); }
    // Everything wrong so far: violations, open items, unexpected questions, arranged answers that were never
    // asked for. Taken problems are not reported again.
    std::vector<std::string> TakeProblems();
    // Arranged answers that were not asked for are no problem from here on.
    void ForgetAnswers();

    // The spreadsheet application; absent unless installed.
    sim::Spreadsheet& Spreadsheet() { return session_->spreadsheet; }

    Session& State() { return *session_; }

    // ---- For all hosts of the process
    // Where problems go when a host ends; without a handler they go to stderr.
    static void SetProblemHandler(std::function<void(const std::string&)> handler);
    // `../korvane` beside the folder of the running program, unless set.
    static std::filesystem::path DefaultPluginHome();
    static void SetDefaultPluginHome(std::filesystem::path home);

private:
    SimModel& Add(std::wstring_view name, ModelKind kind, ModelSubtype subtype);
    struct Before;
    ProError RunWatched(const std::function<ProError()>& command);
    void LookForLeftovers(const Before& before);
    void LookForOpenItems();
    void LookForMemory(const PluginHeapFigures& before);

    std::filesystem::path pluginHome_;
    std::filesystem::path ownWorkspace_;  // empty: the workspace is somebody's
    std::filesystem::path ownLocalData_;  // empty: the user's data are somebody's
    std::unique_ptr<Session> session_;
    std::unique_ptr<Plugin> plugin_;
    std::vector<std::string> problems_;
    bool running_ = false;
    bool hasThrown_ = false;  // an allocation of the plug-in was made to fail in a command
    bool directoryMayChange_ = false;
};

}  // namespace sim
