// Scripts of the playing user: what a person types, presses and answers, one step a line.
//
//     # Stamps the material into every model.
//     dialog KvParams                  the steps at this dialog follow, indented: a block each time
//       choose TypeRadio AsmAndPart    an entry of a radio group, option menu or list, by label or name
//       type ParaName "MATERIAL"       text of a field
//       check KvOutlineOrder on        or off
//       press Add                      a push button
//       return                         the Return key: the default button
//       select bom_list 1 2            rows of a table
//       doubleclick bom_list 1 num     a cell, by row and column
//       sort bom_list param1 down      what the host's own table can do: also without down
//       filter bom_list param1 "M8"    only the rows with this text; without column and text: all rows
//       expect text ParaName "M"       what a component shows
//       expect title "Parameters"      the dialog's title
//       expect checked SortBox on      or off
//       expect cell bom_list 1 num "4"
//       expect selected bom_list "1 2"
//       expect message "\tDone!\t"     text of the last message box
//       show                           prints the dialog
//       show "kvbom.svg"               draws it into a file of the folder that the program was started in
//       close                          the close box
//     folder "C:\\backup"              answers, each kind used in order; also: folder cancel
//     file "C:\\a.drw"                 also: file cancel
//     prompt "NEW_NAME"                also: prompt enter, prompt escape
//     pick BOLT                        also: pick none, pick quit, pick BOLT and NUT,
//                                      pick BOLT item surface 7 path 3 5
//     answer yes                       of a box with several buttons: yes, no, ok, cancel
//     placement ok                     of the host's dialog for constraints: ok, cancel
//     activated SUB                    before the command starts: a component of the open assembly
//     selected BOLT path 3             before the command starts, in the words of pick; lines add up
//     rightclick                       the command is chosen from the right-click menu of what is selected
//
// Texts with blanks stand in quotes; \" \\ \n \t are what they are in C. Files are UTF-8.

#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

class ModelStore;
class User;

// Arranges the script's answers with the user. Every mistake is a line "file:line:column: ...", and with one
// nothing is arranged. Picked models are looked up, and loaded from the working directory if need be. What
// turns out wrong while playing becomes a problem of the user with the same kind of place.
std::vector<std::string> LoadUserScript(const std::filesystem::path& file, User& user, ModelStore& models);

// The same from the script's bytes; `file` names it in the lines.
std::vector<std::string> ArrangeUserScript(std::string_view bytes, const std::filesystem::path& file,
                                           User& user, ModelStore& models);

// Adds to what the user has selected, in the words of `selected`; the mistakes have no place.
std::vector<std::string> ArrangeSelection(std::string_view picks, User& user, ModelStore& models);

}  // namespace sim
