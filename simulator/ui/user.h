// The user before the host: the answers arranged for questions, and everything that was shown.

#pragma once

#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "simulator/cad/pick.h"

namespace sim {

class SimDialog;

// A message box of Windows as the user saw it.
struct ShownBox {
    std::wstring text;
    std::wstring caption;
    unsigned flags;  // as passed to MessageBoxW
    bool hasOwner;
    long long calls;  // host calls of the command before it
};

// A program or file that the plug-in started (never really started).
struct StartedProgram {
    std::wstring verb;
    std::wstring file;
    std::wstring parameters;
    int showMode;
};

// A choice of a file as Windows was asked for it; `filter` with '|' for its separators.
struct FileQuestion {
    std::wstring folder;
    std::wstring filter;
    std::wstring extension;
    unsigned long flags;
    std::wstring name;  // what is proposed
    bool hasOwner;
};

// A progress window of the plug-in as the user saw it.
struct ProgressSight {
    std::vector<std::wstring> texts;
    std::vector<std::wstring> buttons;
    bool isActive;
    bool isOwned;
};

// The user before a long run.
struct ProgressPlay {
    unsigned long long now = 1'000'000;  // of the clock, in milliseconds
    unsigned long long step = 0;         // what passes between two looks at the clock; 0: it stands still
    bool realClock = false;              // it is the machine's
    bool windowsFail = false;            // Windows makes no window
    long long cancelAfter = -1;          // items after which the user presses the button; below 0: never
    std::vector<ProgressSight> sights;
    // What else the user does at each sight of the window, by its handle.
    std::function<void(void* window)> onSight;
};

// One answer at a text or number prompt.
struct PromptAnswer {
    enum class Kind { kTyped, kEnter, kEscape };
    Kind kind = Kind::kTyped;
    std::wstring text;
};

// One answer to a question for picks. Empty picks: Done without a pick.
struct PickAnswer {
    bool quit = false;
    std::vector<Pick> picks;
};

// Questions are answered in the order in which the answers were arranged, dialogs by their name. A question
// without an answer is a problem: it is recorded with its text and answered by cancelling.
class User {
public:
    // ---- Arranged answers
    std::map<std::string, std::deque<std::function<void(SimDialog&)>>> dialogs;
    std::deque<std::optional<std::wstring>> folders;  // nullopt: Cancel
    std::deque<std::optional<std::wstring>> files;
    std::deque<PromptAnswer> prompts;
    std::deque<PickAnswer> picks;
    std::deque<bool> placements;  // in the host's dialog for constraints: true OK, false Cancel
    std::deque<int> boxAnswers;   // for boxes with more than an OK button: IDYES, IDNO, ...
    ProgressPlay progress;
    bool programsFail = false;  // Windows starts nothing
    // What the user does before the command: selects, and asks for the right-click menu to start it from.
    std::vector<Pick> selected;
    bool rightClicks = false;
    std::vector<Pick> activated;  // the component that is activated; at most one
    // The user's local application data.
    std::filesystem::path localData;

    // ---- What was shown or done
    std::vector<ShownBox> boxes;
    std::vector<std::wstring> messageArea;  // messages and prompts, translated and formatted
    std::vector<std::wstring> questions;    // titles of folder and file choices
    std::vector<FileQuestion> fileQuestions;
    std::vector<StartedProgram> started;
    std::vector<std::wstring> macros;
    std::wstring clipboard;
    bool clipboardBusy = false;  // another program has it open

    // ---- Problems: unexpected questions, and user actions that the screen did not allow
    void Problem(const std::string& text) { problems.push_back(text); }
    std::vector<std::string> problems;

    // Answers left over at the end: somebody expected a question that never came. One line each.
    std::vector<std::string> UnusedAnswers() const;
};

}  // namespace sim
