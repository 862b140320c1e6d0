// hostsim: the host on the command line.

#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include <windows.h>

#include "simulator/cli/actions.h"
#include "simulator/report/utf8.h"

namespace {

using sim::cli::GenerateOptions;
using sim::cli::Places;
using sim::cli::RunOptions;

// UTF-8 from the command line becomes a path without passing the code page of the machine.
CLI::Option* AddFolder(CLI::App* app, const std::string& flag, std::filesystem::path& folder,
                       const std::string& help) {
    return app
        ->add_option_function<std::string>(
            flag, [&folder](const std::string& text) { folder = std::filesystem::path(sim::Wide(text)); },
            help)
        ->type_name("DIR");
}

// What the options and sub-commands fill in; it outlives the parsing.
struct Line {
    Places places;
    std::string mode;
    RunOptions run;
    std::string model;
    int levels = 25;
    bool withIds = false;
    std::filesystem::path exportFolder;
    std::filesystem::path workbook;
    std::string dialog;
    std::string svgFile;
    GenerateOptions generate;
    std::filesystem::path imported;
    int exitCode = 0;
};

void AddPluginCommands(CLI::App& app, Line& line) {
    CLI::App* commands =
        app.add_subcommand("commands", "list the plug-in's menu with texts and availability");
    commands->add_option("--mode", line.mode,
                         "none, part, sheetmetal, assembly, drawing, manufacture or mould");
    commands->callback([&line] { line.exitCode = sim::cli::ListCommands(line.places, line.mode); });

    RunOptions& run = line.run;
    CLI::App* command = app.add_subcommand("run", "run one command of the plug-in");
    command
        ->add_option("COMMAND", run.command,
                     "command name, see `hostsim commands`, or an entry of the right-click menu")
        ->required();
    AddFolder(command, "--workspace", line.places.workspace, "folder with the models (working directory)")
        ->required();
    command->add_option("--model", run.model, "model to open first, e.g. pump or pump.asm");
    command->add_option("--user", run.script, "script of the playing user")->type_name("FILE");
    command->add_option("--mode", run.mode, "open the model in this mode instead of its own");
    command
        ->add_option(
            "--select", run.selected,
            "what is selected, e.g. \"bolt path 3 5\" or \"bolt item surface 7 and nut\"; `hostsim show "
            "--ids` tells the numbers")
        ->type_name("PICKS")
        ->allow_extra_args(false);
    command->add_flag("--right-click", run.rightClick,
                      "choose COMMAND from the right-click menu (implied if it is nowhere else)");
    command
        ->add_option("--setting", run.settings,
                     "change KvConfig.ini in a copy of the plug-in for this run, e.g. RmbDisable=0: with the "
                     "right-click menu")
        ->type_name("SECTION[.KEY]=VALUE")
        ->allow_extra_args(false);
    command
        ->add_option("--option", run.options,
                     "set a configuration option of the host for this run, e.g. "
                     "template_solidpart=../templates/start_part.prt")
        ->type_name("OPTION=VALUE")
        ->allow_extra_args(false);
    command->add_flag("--trace", run.trace, "print every host call");
    command->add_flag("--profile", run.profile, "print calls by function, times and memory");
    AddFolder(command, "--picture", run.picture, "draw the window after the command into this file")
        ->type_name("FILE.svg");
    command->add_flag("--save", run.save, "save changed models afterwards, as the user would");
    command->callback([&line] { line.exitCode = sim::cli::RunCommand(line.places, line.run); });
}

void AddTextTreeCommands(CLI::App& app, Line& line) {
    CLI::App* layout = app.add_subcommand("dialog", "print a dialog of the plug-in's text tree");
    layout->add_option("NAME", line.dialog, "dialog name, e.g. KvParams")->required();
    layout->add_option("--svg", line.svgFile, "draw it into this file as well")->type_name("FILE");
    layout->callback(
        [&line] { line.exitCode = sim::cli::ShowDialog(line.places, line.dialog, line.svgFile); });

    CLI::App* check = app.add_subcommand("check", "load the plug-in and verify its whole text tree");
    check->callback([&line] { line.exitCode = sim::cli::Check(line.places); });
}

void AddModelCommands(CLI::App& app, Line& line) {
    CLI::App* models = app.add_subcommand("models", "list the models of a folder");
    AddFolder(models, "--workspace", line.places.workspace, "folder with the models")->required();
    models->callback([&line] { line.exitCode = sim::cli::ListModels(line.places); });

    CLI::App* show = app.add_subcommand("show", "print a model: components, parameters, sheets");
    show->add_option("MODEL", line.model, "name or name.ext")->required();
    AddFolder(show, "--workspace", line.places.workspace, "folder with the models")->required();
    show->add_option("--levels", line.levels, "depth of the component tree")->check(CLI::Range(0, 25));
    show->add_flag("--ids", line.withIds, "with the identifiers that --select and picks name");
    show->callback(
        [&line] { line.exitCode = sim::cli::ShowModel(line.places, line.model, line.levels, line.withIds); });

    GenerateOptions& generate = line.generate;
    CLI::App* generator =
        app.add_subcommand("generate", "write an assembly of a given size and depth, and drawings");
    AddFolder(generator, "--workspace", line.places.workspace, "folder to write into")->required();
    generator->add_option("--name", generate.name, "name of the top assembly")->capture_default_str();
    generator->add_option("--placements", generate.placements, "placements in all levels")
        ->capture_default_str()
        ->check(CLI::Range(1, 1000000));
    generator->add_option("--depth", generate.depth, "levels below the top")
        ->capture_default_str()
        ->check(CLI::Range(1, 24));
    generator->add_option("--seed", generate.seed, "same seed, same assembly")->capture_default_str();
    generator->add_option("--drawings", generate.drawings, "drawings of the assembly and its models")
        ->capture_default_str()
        ->check(CLI::Range(0, 10000));
    generator->add_option("--sheets", generate.sheets, "sheets of each drawing")
        ->capture_default_str()
        ->check(CLI::Range(1, 100));
    generator->callback([&line] { line.exitCode = sim::cli::Generate(line.places, line.generate); });

    CLI::App* import =
        app.add_subcommand("import", "make a workspace of a STEP file or a table of components (.csv)");
    AddFolder(import, "FILE", line.imported, "product structure of another program")
        ->required()
        ->type_name("");
    AddFolder(import, "--workspace", line.places.workspace, "folder to make; it must not exist, or be empty")
        ->required();
    import->callback([&line] { line.exitCode = sim::cli::Import(line.places, line.imported);
});
}  // namespace

void AddFileCommands(CLI::App& app, Line& line) {
    CLI::App* exports = app.add_subcommand("exports", "list exported files and what they hold");
    AddFolder(exports, "FOLDER", line.exportFolder, "folder to search, with all below it")->required();
    exports->callback([&line] { line.exitCode = sim::cli::ListExports(line.exportFolder); });

    CLI::App* sheet = app.add_subcommand("sheet", "print the first sheet of a workbook");
    AddFolder(sheet, "FILE", line.workbook, "workbook, e.g. pump_bom.xlsx")->required()->type_name("");
    sheet->callback([&line] { line.exitCode = sim::cli::ShowSheet(line.workbook); });
}

int Main(std::vector<std::string> arguments) {
    CLI::App app{
        "hostsim stands in for a CAD host: it loads the Korvane plug-in, shows its menu, runs its commands "
        "on models\n"
        "in a folder, and reports every call. Exit code 0: done; 1: a problem, named; 2: the call was "
        "wrong."};
    app.name("hostsim");
    // A path that begins with a slash is no option.
    app.allow_windows_style_options(false);
    app.require_subcommand(1);
    app.fallthrough();
    app.set_help_all_flag("--help-all", "help of all sub-commands");
    Line line;
    AddFolder(&app, "--plugin", line.places.plugin,
              "home of the plug-in (default: ../korvane beside this program)");
    AddPluginCommands(app, line);
    AddModelCommands(app, line);
    AddFileCommands(app, line);
    AddTextTreeCommands(app, line);

    try {
        std::reverse(arguments.begin(), arguments.end());
        app.parse(arguments);
    } catch (const CLI::ParseError& error) {
        const bool wasHelp = error.get_exit_code() == 0;
        app.exit(error);
        return wasHelp ? 0 : 2;
    } catch (const sim::cli::BadInput& error) {
        std::fprintf(stderr, "hostsim: %s\n", error.what());
        return 2;
    } catch (const std::exception& error) {
        // Nothing is left to be done about it, but the user hears of it.
        std::fprintf(stderr, "hostsim: broken off: %s\n", error.what());
        return 1;
    }
    return line.exitCode;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    SetConsoleOutputCP(CP_UTF8);
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i) arguments.push_back(sim::Utf8(argv[i]));
    return Main(std::move(arguments));
}
