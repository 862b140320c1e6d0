#include "simulator/ui/user_script.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <map>
#include <memory>
#include <optional>
#include <utility>

#include <windows.h>

#include "simulator/cad/model_store.h"
#include "simulator/layout/text_file.h"
#include "simulator/report/utf8.h"
#include "simulator/ui/sim_dialog.h"
#include "simulator/ui/user.h"

namespace sim {

namespace {

struct Word {
    std::wstring text;
    int column = 1;
    bool quoted = false;

    std::string Narrow() const { return Utf8(text); }
};

struct Step {
    int line = 1;
    std::vector<Word> words;  // the command first
    bool indented = false;

    bool Is(std::wstring_view command) const { return words.front().text == command; }
};

struct ScriptError {
    int line;
    int column;
    std::string text;
};

[[noreturn]] void Fail(const Step& step, const Word& word, const std::string& text) {
    throw ScriptError{step.line, word.column, text};
}

// ---- Words

Word TakeQuoted(std::wstring_view line, std::size_t& at, int lineNumber) {
    Word word{{}, static_cast<int>(at) + 1, true};
    for (++at; at < line.size() && line[at] != L'"'; ++at) {
        if (line[at] != L'\\') {
            word.text += line[at];
            continue;
        }
        const wchar_t code = at + 1 < line.size() ? line[at + 1] : L' ';
        constexpr std::wstring_view kCodes = L"\"\\nt", kMeanings = L"\"\\\n\t";
        const std::size_t index = kCodes.find(code);
        if (index == std::wstring_view::npos)
            throw ScriptError{lineNumber, static_cast<int>(at) + 1,
                              "expected \\\", \\\\, \\n or \\t after a backslash"};
        word.text += kMeanings[index];
        ++at;
    }
    if (at == line.size()) throw ScriptError{lineNumber, word.column, "expected a closing quote"};
    ++at;
    return word;
}

// Words of a line; none for an empty line or a comment.
Step ReadStep(std::wstring_view line, int lineNumber) {
    constexpr std::wstring_view kBlanks = L" \t";
    Step step;
    step.line = lineNumber;
    step.indented = !line.empty() && kBlanks.find(line.front()) != std::wstring_view::npos;
    std::size_t at = line.find_first_not_of(kBlanks);
    while (at < line.size() && line[at] != L'#') {
        if (line[at] == L'"') {
            step.words.push_back(TakeQuoted(line, at, lineNumber));
            if (at < line.size() && kBlanks.find(line[at]) == std::wstring_view::npos)
                throw ScriptError{lineNumber, static_cast<int>(at) + 1,
                                  "expected a blank after the closing quote"};
        } else {
            const std::size_t end = std::min(line.find_first_of(L" \t\"", at), line.size());
            step.words.push_back({std::wstring(line.substr(at, end - at)), static_cast<int>(at) + 1, false});
            at = end;
        }
        at = std::min(line.find_first_not_of(kBlanks, at), line.size());
    }
    return step;
}

std::vector<Step> ReadSteps(std::wstring_view text) {
    std::vector<Step> steps;
    for (int number = 1; !text.empty(); ++number) {
        const std::size_t end = std::min(text.find(L'\n'), text.size());
        Step step = ReadStep(text.substr(0, end), number);
        if (!step.words.empty()) steps.push_back(std::move(step));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return steps;
}

// ---- What the steps take

void NeedWords(const Step& step, std::size_t least, std::size_t most, const std::string& usage) {
    const std::size_t given = step.words.size() - 1;
    if (given >= least && given <= most) return;
    Fail(step, given > most ? step.words[most + 1] : step.words.back(), "expected: " + usage);
}

bool OnOff(const Step& step, const Word& word) {
    if (word.text != L"on" && word.text != L"off") Fail(step, word, "expected on or off");
    return word.text == L"on";
}

struct StepRule {
    std::wstring_view command;
    std::size_t least, most;
    const char* usage;
};

constexpr std::size_t kAny = 10000;

constexpr StepRule kDialogSteps[] = {
    {L"choose", 2, 2, "choose COMPONENT ENTRY"},
    {L"type", 2, 2, "type COMPONENT \"TEXT\""},
    {L"check", 1, 2, "check COMPONENT [on|off]"},
    {L"press", 1, 1, "press COMPONENT"},
    {L"return", 0, 0, "return"},
    {L"select", 1, kAny, "select TABLE ROW..."},
    {L"doubleclick", 3, 3, "doubleclick TABLE ROW COLUMN"},
    {L"title", 2, 2, "title TABLE COLUMN"},
    {L"sort", 2, 3, "sort TABLE COLUMN [down]"},
    {L"filter", 1, 3, "filter TABLE [COLUMN \"TEXT\"]"},
    {L"show", 0, 1, "show [FILE.svg]"},
    {L"close", 0, 0, "close"},
    {L"expect", 2, 5, "expect text COMPONENT \"TEXT\" (or title, message, checked, cell, selected)"},
};

constexpr StepRule kExpectations[] = {
    {L"text", 3, 3, "expect text COMPONENT \"TEXT\""},
    {L"title", 2, 2, "expect title \"TEXT\""},
    {L"message", 2, 2, "expect message \"TEXT\""},
    {L"checked", 3, 3, "expect checked COMPONENT on|off"},
    {L"cell", 5, 5, "expect cell TABLE ROW COLUMN \"TEXT\""},
    {L"selected", 3, 3, "expect selected TABLE \"ROW ROW\""},
};

template <std::size_t N>
const StepRule* FindStepRule(const StepRule (&rules)[N], const Word& word) {
    const auto* rule = std::find_if(std::begin(rules), std::end(rules), [&](const StepRule& r) {
        return r.command == word.text && !word.quoted;
    });
    return rule == std::end(rules) ? nullptr : rule;
}

void CheckDialogStep(const Step& step) {
    const StepRule* rule = FindStepRule(kDialogSteps, step.words.front());
    if (rule == nullptr) Fail(step, step.words.front(), "unknown step " + step.words.front().Narrow());
    NeedWords(step, rule->least, rule->most, rule->usage);
    if (step.Is(L"check") && step.words.size() == 3) OnOff(step, step.words[2]);
    if (step.Is(L"sort") && step.words.size() == 4 && step.words[3].text != L"down")
        Fail(step, step.words[3], "expected down");
    if (step.Is(L"filter") && step.words.size() == 3) Fail(step, step.words[2], "expected a text after it");
    if (step.Is(L"show") && step.words.size() == 2 && !UpperName(step.words[1].text).ends_with(L".SVG"))
        Fail(step, step.words[1], "expected a file FILE.svg");
    if (!step.Is(L"expect")) return;
    const StepRule* expectation = FindStepRule(kExpectations, step.words[1]);
    if (expectation == nullptr)
        Fail(step, step.words[1], "expected text, title, message, checked, cell or selected");
    NeedWords(step, expectation->least, expectation->most, expectation->usage);
    if (step.words[1].text == L"checked") OnOff(step, step.words[3]);
}

// ---- Playing

class Player {
public:
    Player(User& user, SimDialog& dialog, const std::filesystem::path& file)
        : user_(user), dialog_(dialog), file_(file) {}

    void Play(const Step& step) {
        const std::size_t before = user_.problems.size();
        Do(step);
        // The component is what is usually wrong.
        const Word& word = step.words.size() > 1 ? step.words[1] : step.words.front();
        const std::string name = Utf8(file_.wstring()) + ":";
        const std::string place = FindingPlace(file_, step.line, word.column);
        for (std::size_t i = before; i < user_.problems.size(); ++i) {
            std::string& problem = user_.problems[i];
            // A step of a dialog that opened meanwhile has its own place.
            if (!problem.starts_with(name)) problem.insert(0, place);
        }
    }

private:
    void Do(const Step& step) {
        const std::string component = step.words.size() > 1 ? step.words[1].Narrow() : std::string();
        if (step.Is(L"choose")) dialog_.Choose(component, step.words[2].text);
        if (step.Is(L"type")) dialog_.Type(component, step.words[2].text);
        if (step.Is(L"check")) dialog_.Check(component, step.words.size() < 3 || step.words[2].text == L"on");
        if (step.Is(L"press")) dialog_.Press(component);
        if (step.Is(L"return")) dialog_.PressReturn();
        if (step.Is(L"select")) dialog_.SelectRows(component, Names(step, 2));
        if (step.Is(L"doubleclick"))
            dialog_.DoubleClick(component, step.words[2].Narrow(), step.words[3].Narrow());
        if (step.Is(L"title")) dialog_.ClickTitle(component, step.words[2].Narrow());
        if (step.Is(L"sort"))
            dialog_.SortRows(component, step.words[2].Narrow(), step.words.back().text == L"down");
        if (step.Is(L"filter")) Filter(step, component);
        if (step.Is(L"show")) Show(step);
        if (step.Is(L"close")) dialog_.Close();
        if (step.Is(L"expect")) Expect(step);
    }

    void Show(const Step& step) {
        if (step.words.size() == 1) {
            std::fputs(dialog_.Picture().c_str(), stdout);
            return;
        }
        std::ofstream file(std::filesystem::path(step.words[1].text), std::ios::binary);
        file << dialog_.Drawing();
        file.close();
        if (!file) user_.Problem("cannot write " + step.words[1].Narrow());
    }

    void Filter(const Step& step, const std::string& table) {
        if (step.words.size() == 4)
            dialog_.FilterRows(table, step.words[2].Narrow(), step.words[3].text);
        else
            dialog_.ShowAllRows(table);
    }

    static std::vector<std::string> Names(const Step& step, std::size_t first) {
        std::vector<std::string> names;
        for (std::size_t i = first; i < step.words.size(); ++i) names.push_back(step.words[i].Narrow());
        return names;
    }

    void Expect(const Step& step) {
        const std::wstring& what = step.words[1].text;
        const std::wstring& expected = step.words.back().text;
        const std::string component = step.words[2].Narrow();
        std::wstring found;
        if (what == L"text") found = dialog_.Text(component);
        if (what == L"title") found = dialog_.Title();
        if (what == L"checked") found = dialog_.IsChecked(component) ? L"on" : L"off";
        if (what == L"cell") found = dialog_.Cell(component, step.words[3].Narrow(), step.words[4].Narrow());
        if (what == L"selected")
            for (const std::string& row : dialog_.SelectedRows(component))
                found += (found.empty() ? L"" : L" ") + Wide(row);
        if (what == L"message" && !user_.boxes.empty()) found = user_.boxes.back().text;
        if (found != expected)
            user_.Problem("expected " + Utf8(what) + " \"" + Utf8(expected) + "\", found \"" + Utf8(found) +
                          "\"");
    }

    User& user_;
    SimDialog& dialog_;
    const std::filesystem::path& file_;
};

// ---- Arranging

constexpr std::pair<std::wstring_view, int> kItemTypes[] = {
    {L"feature", 3}, {L"surface", 5}, {L"edge", 6},     {L"csys", 25},
    {L"point", 66},  {L"plane", 176}, {L"dimension", 8}};

constexpr std::pair<std::wstring_view, int> kBoxAnswers[] = {
    {L"yes", IDYES}, {L"no", IDNO}, {L"ok", IDOK}, {L"cancel", IDCANCEL}};

constexpr std::pair<std::wstring_view, ModelKind> kModelKinds[] = {{L"asm", ModelKind::kAssembly},
                                                                   {L"prt", ModelKind::kPart},
                                                                   {L"mfg", ModelKind::kManufacturing},
                                                                   {L"drw", ModelKind::kDrawing}};

// Reads a script into a user of its own, whose answers the real one gets when all is well.
class Arranger {
public:
    Arranger(User& user, ModelStore& models, const std::filesystem::path& file)
        : user_(user), models_(models), file_(file) {}

    void Run(std::vector<Step> steps) {
        for (std::size_t i = 0; i < steps.size(); ++i) {
            const Step& step = steps[i];
            if (step.indented) Fail(step, step.words.front(), "expected a dialog line before indented steps");
            if (!step.Is(L"dialog")) {
                ArrangeAnswer(step);
                continue;
            }
            NeedWords(step, 1, 1, "dialog NAME");
            auto block = std::make_shared<std::vector<Step>>();
            for (; i + 1 < steps.size() && steps[i + 1].indented; ++i) {
                CheckDialogStep(steps[i + 1]);
                block->push_back(steps[i + 1]);
            }
            AddDialog(step.words[1].Narrow(), block);
        }
    }

    void Arrange() {
        for (auto& [name, scripts] : read_.dialogs) Append(user_.dialogs[name], scripts);
        Append(user_.folders, read_.folders);
        Append(user_.files, read_.files);
        Append(user_.prompts, read_.prompts);
        Append(user_.picks, read_.picks);
        Append(user_.placements, read_.placements);
        Append(user_.boxAnswers, read_.boxAnswers);
        Append(user_.selected, read_.selected);
        if (!read_.activated.empty()) user_.activated = read_.activated;
        user_.rightClicks = user_.rightClicks || read_.rightClicks;
    }

private:
    template <typename Queue>
    static void Append(Queue& queue, Queue& more) {
        std::move(more.begin(), more.end(), std::back_inserter(queue));
    }

    void AddDialog(const std::string& name, const std::shared_ptr<std::vector<Step>>& steps) {
        User& user = user_;
        read_.dialogs[name].push_back([&user, steps, file = file_](SimDialog& dialog) {
            Player player(user, dialog, file);
            for (const Step& step : *steps) player.Play(step);
        });
    }

    void ArrangeAnswer(const Step& step) {
        if (step.Is(L"folder"))
            read_.folders.push_back(PathOrCancel(step));
        else if (step.Is(L"file"))
            read_.files.push_back(PathOrCancel(step));
        else if (step.Is(L"prompt"))
            ArrangePrompt(step);
        else if (step.Is(L"pick"))
            ArrangePick(step);
        else if (step.Is(L"answer"))
            ArrangeBoxAnswer(step);
        else if (step.Is(L"placement"))
            ArrangePlacement(step);
        else if (step.Is(L"activated"))
            ArrangeActivated(step);
        else if (step.Is(L"selected"))
            ArrangeSelected(step);
        else if (step.Is(L"rightclick"))
            ArrangeRightClick(step);
        else if (FindStepRule(kDialogSteps, step.words.front()) != nullptr)
            Fail(step, step.words.front(), "expected an indented step below a dialog line");
        else
            Fail(step, step.words.front(), "unknown step " + step.words.front().Narrow());
    }

    static std::optional<std::wstring> PathOrCancel(const Step& step) {
        NeedWords(step, 1, 1, step.words.front().Narrow() + " \"PATH\"|cancel");
        const Word& word = step.words[1];
        if (word.quoted) return word.text;
        if (word.text != L"cancel") Fail(step, word, "expected a path in quotes or cancel");
        return std::nullopt;
    }

    void ArrangePrompt(const Step& step) {
        NeedWords(step, 1, 1, "prompt \"TEXT\"|enter|escape");
        const Word& word = step.words[1];
        if (word.quoted)
            read_.prompts.push_back({PromptAnswer::Kind::kTyped, word.text});
        else if (word.text == L"enter" || word.text == L"escape")
            read_.prompts.push_back(
                {word.text == L"enter" ? PromptAnswer::Kind::kEnter : PromptAnswer::Kind::kEscape, {}});
        else
            Fail(step, word, "expected a text in quotes, enter or escape");
    }

    void ArrangeBoxAnswer(const Step& step) {
        NeedWords(step, 1, 1, "answer yes|no|ok|cancel");
        for (const auto& [name, code] : kBoxAnswers)
            if (step.words[1].text == name) return read_.boxAnswers.push_back(code);
        Fail(step, step.words[1], "expected yes, no, ok or cancel");
    }

    void ArrangePick(const Step& step) {
        NeedWords(step, 1, kAny, "pick MODEL [item TYPE ID] [path ID...] [and MODEL...]");
        PickAnswer answer;
        const bool single = step.words.size() == 2 && !step.words[1].quoted;
        if (single && step.words[1].text == L"quit")
            answer.quit = true;
        else if (!single || step.words[1].text != L"none")
            for (std::size_t at = 1; at < step.words.size();) answer.picks.push_back(TakePick(step, at));
        read_.picks.push_back(std::move(answer));
    }

    void ArrangeSelected(const Step& step) {
        NeedWords(step, 1, kAny, "selected MODEL [item TYPE ID] [path ID...] [and MODEL...]");
        for (std::size_t at = 1; at < step.words.size();) read_.selected.push_back(TakePick(step, at));
    }

    void ArrangeActivated(const Step& step) {
        NeedWords(step, 1, 1, "activated MODEL");
        std::size_t at = 1;
        read_.activated = {TakePick(step, at)};
    }

    void ArrangePlacement(const Step& step) {
        NeedWords(step, 1, 1, "placement ok|cancel");
        const Word& word = step.words[1];
        if (word.text != L"ok" && word.text != L"cancel") Fail(step, word, "expected ok or cancel");
        read_.placements.push_back(word.text == L"ok");
    }

    void ArrangeRightClick(const Step& step) {
        NeedWords(step, 0, 0, "rightclick");
        read_.rightClicks = true;
    }

    Pick TakePick(const Step& step, std::size_t& at) {
        Pick pick;
        pick.model = PickedModel(step, step.words[at++]);
        while (at < step.words.size()) {
            const Word& word = step.words[at++];
            if (word.text == L"item") {
                pick.type = ItemType(step, at);
                pick.id = TakeNumber(step, at);
            } else if (word.text == L"path") {
                do pick.path.push_back(TakeNumber(step, at));
                while (at < step.words.size() && IsNumber(step.words[at].text));
            } else if (word.text == L"and" && at < step.words.size()) {
                return pick;
            } else {
                Fail(step, word, "expected item, path, or and with another model");
            }
        }
        return pick;
    }

    static bool IsNumber(std::wstring_view text) {
        return !text.empty() && text.size() < 10 &&
               text.find_first_not_of(L"0123456789") == std::wstring_view::npos;
    }

    static int TakeNumber(const Step& step, std::size_t& at) {
        if (at == step.words.size() || !IsNumber(step.words[at].text))
            Fail(step, step.words[std::min(at, step.words.size() - 1)], "expected a number");
        return std::stoi(step.words[at++].text);
    }

    static int ItemType(const Step& step, std::size_t& at) {
        for (const auto& [name, type] : kItemTypes) {
            if (at == step.words.size() || step.words[at].text != name) continue;
            ++at;
            return type;
        }
        return TakeNumber(step, at);
    }

    // "BOLT" or "BOLT.PRT": in memory, else from the working directory.
    SimModel* PickedModel(const Step& step, const Word& word) {
        const std::size_t dot = word.text.rfind(L'.');
        for (const auto& [extension, kind] : kModelKinds) {
            if (dot != std::wstring::npos && UpperName(word.text.substr(dot + 1)) != UpperName(extension))
                continue;
            SimModel* model = nullptr;
            if (models_.Retrieve(word.text.substr(0, dot), kind, model) == PRO_TK_NO_ERROR) return model;
        }
        Fail(step, word, "there is no model " + word.Narrow());
    }

    User& user_;
    ModelStore& models_;
    std::filesystem::path file_;
    User read_;
};

}  // namespace

std::vector<std::string> ArrangeUserScript(std::string_view bytes, const std::filesystem::path& file,
                                           User& user, ModelStore& models) {
    std::vector<std::string> errors;
    const std::optional<std::wstring> text = DecodeTextFile(bytes, file, errors, false);
    if (!text) return errors;
    try {
        Arranger arranger(user, models, file);
        arranger.Run(ReadSteps(*text));
        arranger.Arrange();
    } catch (const ScriptError& error) {
        errors.push_back(FindingPlace(file, error.line, error.column) + error.text);
    }
    return errors;
}

std::vector<std::string> ArrangeSelection(std::string_view picks, User& user, ModelStore& models) {
    try {
        Arranger arranger(user, models, {});
        arranger.Run({ReadStep(L"selected " + Wide(picks), 1)});
        arranger.Arrange();
    } catch (const ScriptError& error) {
        return {error.text};
    }
    return {};
}

std::vector<std::string> LoadUserScript(const std::filesystem::path& file, User& user, ModelStore& models) {
    const std::optional<std::string> bytes = ReadBytes(file);
    if (bytes) return ArrangeUserScript(*bytes, file, user, models);
    return {FindingPlace(file, 1, 1) + "expected a file that can be read"};
}

}  // namespace sim
