// The plug-in's text tree, checked as a whole: layouts, message files, menu texts, icons.

#pragma once

#include <string>
#include <vector>

namespace sim {

class Interface;
class TextTree;

// One line a problem. The plug-in has to be started, its commands are what is looked for.
std::vector<std::string> CheckTextTree(const Interface& screen, const TextTree& texts);

}  // namespace sim
