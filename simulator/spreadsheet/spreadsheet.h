// The spreadsheet application as the plug-in finds it on this machine.

#pragma once

#include <memory>
#include <string>
#include <vector>

#include <windows.h>

#include "simulator/spreadsheet/automation_server.h"

namespace sim {

class Spreadsheet {
public:
    Spreadsheet() : server_(std::make_shared<AutomationServer>()) {}

    // ---- Arranging. At first the application is not there, whatever is registered on the machine.
    // It is there and runs in this process, quick and under control.
    void Install() { place_ = Place::kHere; }
    // Whatever is registered under the application's name, in a process of its own.
    void UseRegistered() { place_ = Place::kRegistered; }
    void Remove() { place_ = Place::kMissing; }
    // True when something is registered under the application's name.
    static bool IsRegistered();

    // Faults, counts and open objects of the application in this process.
    AutomationServer& Server() { return *server_; }

    // What a command left behind or made the application ask; each is told once.
    std::vector<std::string> TakeLeftovers();

    // ---- For the plug-in's calls
    HRESULT ClassOfProgram(LPCOLESTR program, CLSID* programClass) const;
    HRESULT Create(REFCLSID programClass, IUnknown* outer, DWORD context, REFIID id, void** object) const;
    HRESULT EnterCom(DWORD model);
    // False: left more often than entered.
    [[nodiscard]] bool LeaveCom();

private:
    enum class Place { kMissing, kHere, kRegistered };

    Place place_ = Place::kMissing;
    std::shared_ptr<AutomationServer> server_;
    int comDepth_ = 0;
};

}  // namespace sim
