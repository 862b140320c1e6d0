// What the sub-commands of hostsim do. Each prints to stdout and answers the exit code: 0 done, 1 the plug-in
// or the files have a problem (named on stderr), 2 the call was wrong (BadInput, thrown).

#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace sim::cli {

// A mistake in the call itself: one line for the user, exit code 2.
class BadInput : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct Places {
    std::filesystem::path plugin;     // empty: beside the program
    std::filesystem::path workspace;  // empty: none given
};

struct RunOptions {
    std::string command;
    std::string model;                  // "name" or "name.ext"; empty: no model is open
    std::string script;                 // user script file, empty: nobody sits before the screen
    std::string mode;                   // overrides the model's own mode
    std::vector<std::string> selected;  // each in the words of a user script's `selected`
    bool rightClick = false;            // from the right-click menu, even if the command stands in the menu
    std::vector<std::string> settings;  // "SECTION=VALUE", for this run alone
    std::vector<std::string> options;   // "OPTION=VALUE", configuration options of the host
    bool trace = false;
    bool profile = false;
    std::filesystem::path picture;  // of the window after the command, empty: none is drawn
    bool save = false;              // saves what was changed, as the user would afterwards
};

struct GenerateOptions {
    std::string name = "generated";
    int placements = 1000;
    int depth = 6;
    unsigned seed = 1;
    int drawings = 0;
    int sheets = 3;  // a drawing
};

int ListCommands(const Places& places, const std::string& mode);
int RunCommand(const Places& places, const RunOptions& options);
int ListModels(const Places& places);
// `withIds`: identifiers of components, features and geometry as well, as picks name them.
int ShowModel(const Places& places, const std::string& model, int levels, bool withIds);
int ListExports(const std::filesystem::path& folder);
// Prints the first sheet of a workbook.
int ShowSheet(const std::filesystem::path& file);
int ShowDialog(const Places& places, const std::string& dialog, const std::string& svgFile);
int Check(const Places& places);
int Generate(const Places& places, const GenerateOptions& options);
// Makes a workspace of another program's file, and tells what is not as in it.
int Import(const Places& places, const std::filesystem::path& file);

}  // namespace sim::cli
