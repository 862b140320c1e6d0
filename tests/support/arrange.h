// What the plug-in's tests share: arranging settings and folders, right-clicking, reading message boxes.

#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/host/sim_host.h"

namespace test {

// ---- Arranging

// A host whose plug-in waits for Initialize().
sim::HostSetup Unstarted();

// Changes one value of a settings file and leaves the rest.
void ChangeSetting(std::wstring_view file, std::wstring_view section, std::wstring_view key,
                   std::wstring_view value);

// Makes a folder in the working directory.
std::filesystem::path MakeFolder(const sim::SimHost& host, const std::filesystem::path& relative);

// The user goes to a folder of the working directory, made if need be.
void EnterFolder(sim::SimHost& host, const std::filesystem::path& relative);

// What the user selects: a whole model, or an item of one by its type code and number.
sim::Pick Whole(sim::SimModel& model);
sim::Pick ItemOf(sim::SimModel& model, int type, int id);

// Starts the plug-in with its right-click entries switched on and opens the first menu, which installs them.
void StartWithRightClick(sim::SimHost& host);

// ---- Acting and looking

inline constexpr char kSelectionPopup[] = "Sel Obj Menu";

// The user right-clicks; the entries of the popup menu as the host made it, which stays open. Nothing that
// the host handed out may stay with the plug-in.
std::vector<sim::PopupButton> RightClick(sim::SimHost& host, std::string_view menu = kSelectionPopup);

// Availability of an entry, kAbsent when it is not there.
inline constexpr int kAbsent = -9;
int StateOf(const std::vector<sim::PopupButton>& entries, std::string_view name);

// Texts of all message boxes so far. Each box has to be captioned, without owner and above every window.
using Texts = std::vector<std::wstring>;
Texts Messages(const sim::SimHost& host);

// What an exported file records; a failure of the test when there is none, or it is not complete.
sim::ExportRecord RecordOf(const sim::SimHost& host, const std::filesystem::path& file);

// A path without its last separator, for comparing.
std::wstring PathText(const std::filesystem::path& path);

// Text in code page 936.
std::string Encode936(std::wstring_view text);

}  // namespace test
