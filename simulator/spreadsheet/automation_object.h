// The automation objects behind IDispatch: one class for all of them, told apart by their kind, with a table
// of the members that each kind understands.

#pragma once

#include <memory>
#include <string>
#include <vector>

#include <windows.h>

#include <oaidl.h>

#include "simulator/spreadsheet/automation_server.h"
#include "simulator/spreadsheet/sheet.h"

namespace sim {

enum class ObjectKind {
    kApplication,
    kWorkbooks,
    kWorkbook,
    kSheets,
    kWorksheet,
    kRange,
    kInterior,
    kFont,
    kBorders
};

// Ranges of whole columns or rows can be fitted to their content.
enum class WholeLines { kNone, kColumns, kRows };

struct WorkbookState {
    Sheet sheet;
    bool saved = true;
};

// A running application; ends with its last object.
struct ApplicationState {
    explicit ApplicationState(std::shared_ptr<AutomationServer> owner);
    ~ApplicationState();
    ApplicationState(const ApplicationState&) = delete;
    ApplicationState& operator=(const ApplicationState&) = delete;

    std::shared_ptr<AutomationServer> server;
    std::vector<std::shared_ptr<WorkbookState>> workbooks;
    bool visible = false;
    bool userControl = false;
    bool alerts = true;
    int macroSecurity = 1;  // 1: macros run, 3: none does
    bool toldToQuit = false;
    bool ended = false;
};

// What an object is about.
struct ObjectState {
    ObjectKind kind = ObjectKind::kApplication;
    std::shared_ptr<ApplicationState> application;
    std::shared_ptr<WorkbookState> workbook;
    CellArea area;
    std::vector<CellArea> moreAreas;  // of a range in several places, which takes formats only
    WholeLines lines = WholeLines::kNone;
};

// Arguments of a call in the order in which a person writes them, without those left out at the end.
struct CallArguments {
    std::vector<VARIANT> given;  // not owned
    const VARIANT* assigned = nullptr;
};

// Answers S_OK, a standard error, or kApplicationError.
using MemberAction = HRESULT (*)(ObjectState& object, const CallArguments& arguments, VARIANT* result);

struct Member {
    ObjectKind kind;
    DISPID id;
    const char* name;
    WORD access;  // DISPATCH_METHOD, DISPATCH_PROPERTYGET or DISPATCH_PROPERTYPUT
    std::size_t minArguments;
    std::size_t maxArguments;
    MemberAction action;
};

const std::vector<Member>& Members();
const char* KindName(ObjectKind kind);

// A new object with one reference, as the result of a call.
HRESULT GiveObject(ObjectState state, VARIANT* result);

}  // namespace sim
