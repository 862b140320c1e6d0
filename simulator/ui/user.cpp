#include "simulator/ui/user.h"

namespace sim {

std::vector<std::string> User::UnusedAnswers() const {
    std::vector<std::string> lines;
    const auto add = [&lines](const char* what, std::size_t count) {
        if (count > 0) lines.push_back(std::to_string(count) + " arranged " + what + " never asked for");
    };
    for (const auto& [name, scripts] : dialogs) add(("dialog \"" + name + "\"").c_str(), scripts.size());
    add("folder choice", folders.size());
    add("file choice", files.size());
    add("prompt answer", prompts.size());
    add("pick", picks.size());
    add("placement", placements.size());
    add("box answer", boxAnswers.size());
    return lines;
}

}  // namespace sim
